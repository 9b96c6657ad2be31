#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "base/bytes.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

constexpr long long kLeast = std::numeric_limits<long long>::min();
constexpr long long kMost = std::numeric_limits<long long>::max();

int Compare(int id, void* a, void* b, unsigned count, unsigned char format, unsigned lengthA = 0,
            unsigned lengthB = 0, int* status = nullptr) {
  XoTypeMgr const manager;
  int error = 4711;
  int const result =
      manager.Cmp(static_cast<char>(id), lengthA, a, lengthB, b, 0, count, format, error);
  if (status != nullptr) {
    *status = error;
  } else {
    EXPECT_EQ(error, 0);
  }
  return result;
}

unsigned Hash(int id, void* data, unsigned count, unsigned char format, unsigned length = 0,
              int expectedError = 0) {
  XoTypeMgr const manager;
  int error = 4711;
  unsigned const hash = manager.Hash(static_cast<char>(id), length, data, count, format, error);
  EXPECT_EQ(error, expectedError);
  return hash;
}

// Row 26.

TEST(Int64Row, NewElementsAreZero) {
  XoTypeMgr manager;
  for (unsigned count : {0u, 1u, 5u}) {
    auto* const values = static_cast<XoInt64*>(manager.Create(26, count));
    for (unsigned index = 0; index < std::max(count, 1u); ++index)
      EXPECT_EQ(values[index].Get8b(), 0);
    EXPECT_EQ(manager.Delete(26, values, count), nullptr);
  }
  EXPECT_EQ(manager.Delete(26, nullptr, 5), nullptr);
}

TEST(Int64Row, AWordAheadOfAnArrayHoldsItsCount) {
  XoTypeMgr manager;
  auto* const values = static_cast<unsigned char*>(manager.Create(26, 3));
  EXPECT_EQ(LoadBytes<std::uint64_t>(values - 8), 3u);
  // The word says how many there are; the argument only that there is one.
  manager.Delete(26, values, 2);
}

TEST(Int64Row, StoresTheLowHalfFirstInEveryFormat) {
  XoTypeMgr const manager;
  XoInt64 value(0x89ABCDEFu, 0x01234567);
  unsigned char disk[8];
  EXPECT_EQ(manager.Store(26, disk, &value, FormLittle, 1), 8u);
  EXPECT_EQ(ByteList(disk, disk + 8), (ByteList{0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01}));
  EXPECT_EQ(manager.Store(26, disk, &value, FormBig, 1), 8u);
  EXPECT_EQ(ByteList(disk, disk + 8), (ByteList{0x89, 0xAB, 0xCD, 0xEF, 0x01, 0x23, 0x45, 0x67}));
  EXPECT_EQ(manager.Store(26, disk, &value, FormBig | FormatIndexKey, 1), 8u);
  EXPECT_EQ(disk[0], 0x89);
  XoInt64 loaded;
  EXPECT_EQ(manager.Load(26, &loaded, disk, FormBig, 1), 8u);
  EXPECT_EQ(loaded, value);
  EXPECT_EQ(manager.Store(26, disk, &value, FormBig, 0), 0u);
}

TEST(Int64Row, TakesEightBytesAnElement) {
  XoTypeMgr const manager;
  for (int format : {0, 1, 2, 8, 0x81, 0x82}) {
    auto const form = static_cast<unsigned char>(format);
    EXPECT_EQ(manager.DiskLenGet(26, nullptr, form, 3, 8), 24u);
    EXPECT_EQ(manager.DiskLenGetFromMemFile(26, nullptr, form, 3), 24u);
  }
  EXPECT_EQ(CurrentTypeTable[26]->NullSizeGet(3), 24u);
}

TEST(Int64Row, ItsFunctionsAreThoseOfTheClass) {
  TypeDescriptor const& row = *CurrentTypeTable[26];
  EXPECT_EQ(row.Create, XoInt64::Create);
  EXPECT_EQ(row.Delete, XoInt64::Delete);
  EXPECT_EQ(row.Store, XoInt64::Store);
  EXPECT_EQ(row.Load, XoInt64::Load);
  EXPECT_EQ(row.NullSizeGet, XoInt64::NullSizeGet);
  EXPECT_EQ(row.SizeGet, XoInt64::SizeGet);
}

TEST(Int64Row, TranslatesAsTypesOfFixedWidthDo) {
  XoTypeMgr const manager;
  XoInt64 values[2] = {XoInt64(1), XoInt64(-2)};
  unsigned char disk[16];
  EXPECT_EQ(manager.Translate(26, disk, FormBig, 16, values, 8, 16, 2), 16u);
  EXPECT_EQ(disk[3], 1);
  XoInt64 back[2];
  EXPECT_EQ(manager.Translate(26, back, 8, 16, disk, FormBig, 16, 2), 16u);
  EXPECT_EQ(back[1], XoInt64(-2));
  EXPECT_EQ(manager.Translate(26, back, 8, 0, values, 8, 0, 2), 16u);
  EXPECT_EQ(back[0], XoInt64(1));
}

TEST(Int64Row, AssignsAndFills) {
  TypeDescriptor const& row = *CurrentTypeTable[26];
  XoInt64 source[3] = {XoInt64(1), XoInt64(2), XoInt64(3)};
  XoInt64 target[3];
  row.Assignment(target, source, 3, 0);
  EXPECT_EQ(target[2], XoInt64(3));
  row.Copy(target, source, 3, 1);
  EXPECT_EQ(target[2], XoInt64(1));
  row.Constructor(target, 3, 0);
  EXPECT_EQ(target[2], XoInt64(0));
}

TEST(Int64Row, StepsFromZeroUpward) {
  TypeDescriptor const& row = *CurrentTypeTable[26];
  XoInt64 value(kLeast);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kLowestValue), 0);
  EXPECT_EQ(value, XoInt64(0));
  EXPECT_EQ(row.GetValue(&value, 1, 8, kPresentValue), 0);
  EXPECT_EQ(value, XoInt64(0));
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValue), 0);
  EXPECT_EQ(value, XoInt64(1));
  value = 0xFFFFFFFFu;
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValueToo), 0);
  EXPECT_EQ(value, XoInt64(0u, 1));
  value = kMost;
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValue), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(value, XoInt64(kMost));
  EXPECT_EQ(row.GetValue(&value, 1, 1, kNextValue), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(row.GetValue(&value, 1, 8, 'P'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(row.GetValue(&value, 1, 1, kLowestValue), ERR_TM_NOT_SUPPORTED);
}

TEST(Int64Row, HashIsOfBothHalves) {
  XoInt64 value(0x12345678u, 0x0F0F0F0F);
  EXPECT_EQ(Hash(26, &value, 1, 8), (0x12345678u ^ 0x0F0F0F0Fu) * 1103515245u);
  XoInt64 values[2] = {XoInt64(1), XoInt64(4)};
  EXPECT_EQ(Hash(26, values, 2, 1), 5u * 1103515245u);
  unsigned char disk[16];
  XoTypeMgr().Store(26, disk, values, FormBig, 2);
  EXPECT_EQ(Hash(26, disk, 2, FormBig), 5u * 1103515245u);
  EXPECT_EQ(Hash(26, values, 2, 8, 8, ERR_TM_LENGTH_EXCEEDED), 1103515245u);
  EXPECT_EQ(Hash(26, values, 0, 8), 0u);
}

class Int64RowOrder : public RandomTest {};

TEST_F(Int64RowOrder, IsThatOfTheNumbersInEveryForm) {
  XoTypeMgr const manager;
  EXPECT_EQ(CurrentTypeTable[26]->Compare, Int64Compare);
  std::vector<long long> numbers = {0, 1, -1, kMost, kLeast, 0xFFFFFFFF, 0x100000000};
  for (int round = 0; round < 50; ++round)
    numbers.push_back(static_cast<long long>(Bits()) >> Below(64));
  for (long long const a : numbers) {
    for (long long const b : numbers) {
      int const expected = (a > b) - (a < b);
      XoInt64 x[2] = {XoInt64(7), XoInt64(a)};
      XoInt64 y[2] = {XoInt64(7), XoInt64(b)};
      for (int format : {8, 1, 2, 0x82, 3}) {
        auto const form = static_cast<unsigned char>(format);
        unsigned char diskX[16], diskY[16];
        manager.Store(26, diskX, x, form, 2);
        manager.Store(26, diskY, y, form, 2);
        EXPECT_EQ(Compare(26, diskX, diskY, 2, form), expected) << a << ' ' << b;
        EXPECT_EQ(Compare(26, diskX + 8, diskY + 8, 1, form), expected) << a << ' ' << b;
      }
    }
  }
  int status = 0;
  XoInt64 x[3] = {XoInt64(1), XoInt64(2), XoInt64(3)};
  XoInt64 y[3] = {XoInt64(1), XoInt64(2), XoInt64(4)};
  EXPECT_EQ(Compare(26, x, y, 3, 8, 16, 0, &status), 0);
  EXPECT_EQ(status, ERR_TM_LENGTH_EXCEEDED);
}

TEST(Int64Row, TextOfItsOwnLanguage) {
  EXPECT_EQ(Print(26, std::vector<XoInt64>{XoInt64(-5)}.data(), nullptr, 1, "x="), "x=-5");
  EXPECT_EQ(PrintOne(26, XoInt64(255), "%x"), "replaced0xff");
  XoInt64 values[3] = {XoInt64(1), XoInt64(-2), XoInt64(3)};
  EXPECT_EQ(Print(26, values, "<%d>", 3, "x"), "x<1>,<-2>,<3>");
  EXPECT_EQ(ScanOne<XoInt64>(26, "0x10"), XoInt64(16));
  EXPECT_EQ(ScanOne<XoInt64>(26, "0x10", "%d"), XoInt64(-1));
  EXPECT_EQ(ScanOne<XoInt64>(26, "", nullptr, XoInt64(17)), XoInt64(17));
  XoString text("5");
  EXPECT_EQ(XoTypeMgr().ScanFromXoString(26, nullptr, text, nullptr, 1), nullptr);
}

TEST(Int64Row, ConvertsByItsOwnScan) {
  EXPECT_EQ(ToText(26, XoInt64(kLeast)), "-9223372036854775808");
  EXPECT_EQ((FromTexts<XoInt64>(26, {"-7", "0x10", NullString(), "", "abc"}, 6)),
            (std::vector<XoInt64>{XoInt64(-7), XoInt64(16), XoInt64(0), XoInt64(0), XoInt64(-1),
                                  XoInt64(0)}));
}

// The other numbers give their text the default code set of one byte a character.
TEST(Int64Row, ConvertsToTheDefaultCodeSet) {
  unsigned char const before = XoString::GetDefaultCodeSet();
  XoString::SetDefaultCodeSet(253);
  XoTypeMgr manager;
  XoInt64 value(-7);
  XoTypeConvertData* const strings = manager.ConvertTo(26, &value, 1);
  EXPECT_EQ(strings->GetString(0)->codeSet, 253);
  EXPECT_EQ(static_cast<int>(*strings->GetString(0)), -7);
  delete strings;
  o_4b number = -7;
  XoTypeConvertData* const numbers = manager.ConvertTo(2, &number, 1);
  EXPECT_EQ(numbers->GetString(0)->codeSet, XoString::GetDefault8CodeSet());
  EXPECT_STREQ(numbers->GetString(0)->StrGet(), "-7");
  delete numbers;
  XoString::SetDefaultCodeSet(before);
}

TEST(Int64Row, DefaultAndNullAreZero) {
  XoTypeMgr manager;
  for (int asNull : {0, 1}) {
    auto* const values = static_cast<XoInt64*>(manager.DefaultValue(26, 2, asNull));
    EXPECT_EQ(values[1], XoInt64(0));
    manager.Delete(26, values, 2);
  }
  XoInt64 value(5);
  EXPECT_EQ(manager.SetNullValue(26, &value), 0);
  EXPECT_EQ(value, XoInt64(0));
}

// Row 27.

XoBoolean OfByte(int byte) {
  XoBoolean value;
  value.value = static_cast<signed char>(byte);
  return value;
}

TEST(BooleanRow, NewElementsAreFalse) {
  XoTypeMgr manager;
  for (unsigned count : {0u, 1u, 5u}) {
    auto* const values = static_cast<XoBoolean*>(manager.Create(27, count));
    for (unsigned index = 0; index < std::max(count, 1u); ++index)
      EXPECT_EQ(values[index].value, 0);
    EXPECT_EQ(manager.Delete(27, values, count), nullptr);
  }
  XoBoolean values[2] = {OfByte(1), OfByte(255)};
  CurrentTypeTable[27]->Constructor(values, 2, 0);
  EXPECT_EQ(values[1].value, 0);
}

TEST(BooleanRow, BytesAreStoredAsTheyStand) {
  XoTypeMgr const manager;
  unsigned char bytes[] = {0, 1, 2, 255};
  for (int format : {0, 1, 2, 8, 0x81}) {
    auto const form = static_cast<unsigned char>(format);
    unsigned char disk[4] = {}, memory[4] = {};
    EXPECT_EQ(manager.Store(27, disk, bytes, form, 4), 4u);
    EXPECT_EQ(manager.Load(27, memory, disk, form, 4), 4u);
    EXPECT_EQ(std::memcmp(disk, bytes, 4), 0);
    EXPECT_EQ(std::memcmp(memory, bytes, 4), 0);
    EXPECT_EQ(manager.DiskLenGet(27, bytes, form, 4, 8), 4u);
    EXPECT_EQ(manager.DiskLenGetFromMemFile(27, nullptr, form, 4), 4u);
  }
  EXPECT_EQ(CurrentTypeTable[27]->NullSizeGet(4), 4u);
  XoBoolean two;
  manager.Load(27, &two, bytes + 2, FormLittle, 1);
  EXPECT_NE(two == XoBoolean(1), 0);
  EXPECT_EQ(PrintOne(27, two), "FALSE");
}

TEST(BooleanRow, OrderPutsNullFirst) {
  EXPECT_EQ(CurrentTypeTable[27]->Compare, BooleanCompare);
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      int const orderA = a == 255 ? -1000 : static_cast<signed char>(a);
      int const orderB = b == 255 ? -1000 : static_cast<signed char>(b);
      auto x = OfByte(a), y = OfByte(b);
      for (int format : {8, 1, 2})
        EXPECT_EQ(Compare(27, &x, &y, 1, static_cast<unsigned char>(format)),
                  (orderA > orderB) - (orderA < orderB))
            << a << ' ' << b;
    }
  }
}

TEST(BooleanRow, ANullHashesApartWhenItIsDecoded) {
  XoBoolean null = OfByte(255);
  EXPECT_EQ(Hash(27, &null, 1, 8), 0xFFFFFFFFu * 1103515245u);
  EXPECT_EQ(Hash(27, &null, 1, 1), 0xFFFFFFFFu * 1103515245u);
  EXPECT_EQ(Hash(27, &null, 1, 2), 255u * 1103515245u);
  XoBoolean isTrue(1);
  EXPECT_EQ(Hash(27, &isTrue, 1, 8), 1103515245u);
  EXPECT_EQ(Hash(27, &isTrue, 1, 2), 1103515245u);
}

TEST(BooleanRow, StepsToTrue) {
  TypeDescriptor const& row = *CurrentTypeTable[27];
  XoBoolean value = OfByte(255);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kPresentValue), 0);
  EXPECT_EQ(value.value, -1);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValue), 0);
  EXPECT_EQ(value.value, 1);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValue), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(value.value, 1);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kLowestValue), 0);
  EXPECT_EQ(value.value, 0);
  EXPECT_EQ(row.GetValue(&value, 1, 8, kNextValueToo), 0);
  EXPECT_EQ(value.value, 1);
  EXPECT_EQ(row.GetValue(&value, 1, 1, kNextValue), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(row.GetValue(&value, 1, 8, 'P'), ERR_TM_NOT_SUPPORTED);
}

TEST(BooleanRow, NullIsItsOwn) {
  XoTypeMgr manager;
  XoBoolean value(1);
  EXPECT_EQ(manager.IsNullValue(27, &value), 0);
  EXPECT_EQ(manager.SetNullValue(27, &value), 0);
  EXPECT_EQ(value.value, -1);
  EXPECT_NE(manager.IsNullValue(27, &value), 0);
}

TEST(BooleanRow, DefaultIsFalseOrNull) {
  XoTypeMgr manager;
  for (unsigned count : {1u, 3u}) {
    auto* values = static_cast<XoBoolean*>(manager.DefaultValue(27, count, 0));
    EXPECT_EQ(values[count - 1].value, 0);
    manager.Delete(27, values, count);
    values = static_cast<XoBoolean*>(manager.DefaultValue(27, count, 1));
    EXPECT_NE(values[count - 1].IsNullValue(), 0);
    manager.Delete(27, values, count);
  }
}

TEST(BooleanRow, PrintsThreeWords) {
  EXPECT_EQ(PrintOne(27, XoBoolean(1)), "TRUE");
  EXPECT_EQ(PrintOne(27, XoBoolean(0)), "FALSE");
  EXPECT_EQ(PrintOne(27, OfByte(2)), "FALSE");
  EXPECT_EQ(PrintOne(27, OfByte(255)), "{NULL}");
  EXPECT_EQ(PrintOne(27, XoBoolean(1), "%n%s"), "TRUE");
  XoBoolean values[] = {XoBoolean(1), OfByte(255)};
  EXPECT_EQ(Print(27, values, nullptr, 2), "TRUE,{NULL}");
}

TEST(BooleanRow, ScansFewSpellingsOfTrue) {
  for (char const* text : {"T", "t", "1", "TRUE", "true"})
    EXPECT_EQ(ScanOne<XoBoolean>(27, text).value, 1) << text;
  for (char const* text : {"True", "tRUE", "TRUE ", " T", "11", "TR", "FALSE", "", "yes"})
    EXPECT_EQ(ScanOne(27, text, nullptr, XoBoolean(1)).value, 0) << text;
  EXPECT_EQ(ScanOne<XoBoolean>(27, "{NULL}").value, -1);
  EXPECT_EQ(ScanOne<XoBoolean>(27, "{NULL} and more").value, -1);
  EXPECT_EQ(ScanOne(27, "{NULL", nullptr, XoBoolean(1)).value, 0);
  XoString text("T");
  EXPECT_EQ(XoTypeMgr().ScanFromXoString(27, nullptr, text, nullptr, 1), nullptr);
}

TEST(BooleanRow, ConvertsByOneDigit) {
  EXPECT_EQ(ToText(27, XoBoolean(1)), "1");
  EXPECT_EQ(ToText(27, XoBoolean(0)), "0");
  EXPECT_EQ(ToText(27, OfByte(2)), "0");
  EXPECT_EQ(ToText(27, OfByte(255)), kNullString);
  std::vector<int> bytes;
  for (XoBoolean const value :
       FromTexts<XoBoolean>(27, {"1", "0", "TRUE", "1x", "", " 1", NullString()}, 8))
    bytes.push_back(value.value);
  EXPECT_EQ(bytes, (std::vector<int>{1, 0, 0, 1, 0, 0, -1, -1}));
}

TEST(BooleanRow, ConversionsStandUnderTheirOwnNames) {
  EXPECT_EQ(CurrentTypeTable[26]->ConvertTo, Int64ConvertToXoString);
  EXPECT_EQ(CurrentTypeTable[26]->ConvertFrom, Int64ConvertFromXoString);
  EXPECT_EQ(CurrentTypeTable[27]->ConvertTo, BooleanConvertToXoString);
  EXPECT_EQ(CurrentTypeTable[27]->ConvertFrom, BooleanConvertFromXoString);
}

class NullText {
 public:
  explicit NullText(XoString const& text) : previous(XoTypeMgr::GetNullPrintString()) {
    XoTypeMgr::SetNullPrintString(text);
  }
  ~NullText() { XoTypeMgr::SetNullPrintString(previous); }
  NullText(NullText const&) = delete;
  NullText& operator=(NullText const&) = delete;

 private:
  XoString previous;
};

TEST(NullPrintText, CanBeChanged) {
  NullText const text(XoString("-"));
  EXPECT_EQ(PrintOne(27, OfByte(255)), "-");
  EXPECT_EQ(ScanOne<XoBoolean>(27, "-").value, -1);
  EXPECT_EQ(ScanOne<XoBoolean>(27, "{NULL}").value, 0);
}

TEST(NullPrintText, AWideOneIsFoundInNarrowText) {
  unsigned short const wide[] = {'-', '-', 0};
  NullText const text{XoString(wide)};
  EXPECT_EQ(ScanOne<XoBoolean>(27, "--").value, -1);
  EXPECT_EQ(ScanOne<XoBoolean>(27, XoString(wide)).value, -1);
  EXPECT_EQ(ScanOne<XoBoolean>(27, "-").value, 0);
}

// Every text begins with an empty one.
TEST(NullPrintText, AnEmptyOneMakesEveryTextNullInEveryRow) {
  NullText const text{XoString("")};
  EXPECT_EQ(PrintOne(27, OfByte(255)), "");
  XoTypeMgr manager;
  for (char const type : {XoSTRING_T, XoDATE_T, XoTIME_T, XoOBJID_T, XoCLID_T, XoREF_T, XoBLOB_T,
                          XoDATIME_T, XoBOOLEAN_T, XoNULL_1B_T, XoNULL_INT_T, XoNULL_FLOAT_T,
                          XoNULL_XOINT64_T, XoDATIME_N_T, XoTIMESPAN_T, XoNULL_8B_T}) {
    void* const value = manager.Create(type, 1);
    XoString digit("1");
    manager.ScanFromXoString(type, value, digit, nullptr, 1);
    EXPECT_NE(manager.IsNullValue(type, value), 0) << int{type};
    manager.Delete(type, value, 1);
  }
}

}  // namespace
}  // namespace xo::test

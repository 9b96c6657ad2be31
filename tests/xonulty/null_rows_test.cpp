#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "base/bytes.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xonulty/null_row_types.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

template <class Row>
class NullRows : public RandomTest {
 protected:
  using Class = typename Row::Element;
  using Number = typename Row::Plain;
  static constexpr char kId = Row::kId;
  static constexpr char kPlain = Row::kPlain;
  static constexpr unsigned kDiskWidth = sizeof(Number) + 1;

  TypeDescriptor const& row = *CurrentTypeTable[Row::kId];
  XoTypeMgr manager;

  static Class Null() { return Class(); }
  static bool IsNull(Class const& element) {
    return element.isNull == 1 && element.value == Number(0);
  }
  static bool Holds(Class const& element, Number value) {
    return element.isNull == 0 && element.value == value;
  }

  /// A null or a number, small ones often, so that pairs are equal now and then.
  Class Any() {
    if (OneIn(4)) return Null();
    if (OneIn(2)) return Number(static_cast<int>(Below(3)));
    std::uint64_t const bits = Bits();
    return LoadBytes<Number>(&bits);
  }

  int Compare(void* a, void* b, unsigned count, unsigned char format, unsigned lengthA = 0,
              unsigned lengthB = 0, int expectedStatus = 0) {
    int status = 4711;
    int const result = manager.Cmp(kId, lengthA, a, lengthB, b, 0, count, format, status);
    EXPECT_EQ(status, expectedStatus);
    return result;
  }

  unsigned Hash(void* data, unsigned count, unsigned char format, unsigned length = 0,
                int expectedError = 0) {
    int error = 4711;
    unsigned const hash = manager.Hash(kId, length, data, count, format, error);
    EXPECT_EQ(error, expectedError);
    return hash;
  }
};
TYPED_TEST_SUITE(NullRows, NullRowTypes, RowName);

TYPED_TEST(NullRows, NewElementsAreNull) {
  using Element = typename TypeParam::Element;
  for (unsigned count : {0u, 1u, 5u}) {
    auto* const values = static_cast<Element*>(this->manager.Create(this->kId, count));
    for (unsigned index = 0; index < std::max(count, 1u); ++index)
      EXPECT_TRUE(this->IsNull(values[index]));
    if (count > 1) {
      EXPECT_EQ(
          LoadBytes<std::uint64_t>(static_cast<unsigned char*>(static_cast<void*>(values)) - 8),
          count);
    }
    EXPECT_EQ(this->manager.Delete(this->kId, values, count), nullptr);
  }
  EXPECT_EQ(this->manager.Delete(this->kId, nullptr, 5), nullptr);
}

TYPED_TEST(NullRows, ConstructAssignAndCopy) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  Element source[3] = {Plain(1), this->Null(), Plain(3)};
  Element target[3] = {Plain(9), Plain(9), Plain(9)};
  this->row.Assignment(target, source, 3, 0);
  EXPECT_TRUE(this->Holds(target[0], Plain(1)));
  EXPECT_TRUE(this->IsNull(target[1]));
  EXPECT_TRUE(this->Holds(target[2], Plain(3)));
  this->row.Copy(target, source, 3, 1);
  EXPECT_TRUE(this->Holds(target[2], Plain(1)));
  this->row.Copy(target, source, 0, 1);
  this->row.Copy(nullptr, source, 1, 0);
  this->row.Constructor(target, 2, 0);
  EXPECT_TRUE(this->IsNull(target[0]));
  EXPECT_TRUE(this->IsNull(target[1]));
  EXPECT_TRUE(this->Holds(target[2], Plain(1)));
  this->row.Destructor(target, 3, 0);
  EXPECT_TRUE(this->Holds(target[2], Plain(1)));
}

TYPED_TEST(NullRows, TheNullByteStandsAheadOnDiskAndBehindInMemoryForm) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  constexpr unsigned kWidth = sizeof(Plain);
  Element values[2] = {Plain(1), this->Null()};
  for (int format : {0, 1, 2, 8, 9, 0x81, 0x82, 0x88}) {
    auto const form = static_cast<unsigned char>(format);
    auto const nibble = static_cast<unsigned char>(format & 15);
    unsigned char plain[kWidth];
    this->manager.Store(this->kPlain, plain, &values[0].value, nibble, 1);
    std::vector<unsigned char> expected;
    auto const put = [&](unsigned char null, bool zero) {
      if ((format & 8) == 0) expected.push_back(null);
      for (unsigned char const byte : plain) expected.push_back(zero ? 0 : byte);
      if ((format & 8) != 0) expected.push_back(null);
    };
    put(0, false);
    put(1, true);
    std::vector<unsigned char> disk(expected.size());
    EXPECT_EQ(this->manager.Store(this->kId, disk.data(), values, form, 2), 2 * (kWidth + 1));
    EXPECT_EQ(disk, expected) << format;
    Element loaded[2] = {this->Null(), Plain(7)};
    EXPECT_EQ(this->manager.Load(this->kId, loaded, disk.data(), form, 2), 2 * (kWidth + 1));
    EXPECT_TRUE(this->Holds(loaded[0], Plain(1))) << format;
    EXPECT_TRUE(this->IsNull(loaded[1])) << format;
    EXPECT_EQ(this->manager.Store(this->kId, disk.data(), values, form, 0), 0u);
    EXPECT_EQ(this->manager.Load(this->kId, loaded, disk.data(), form, 0), 0u);
  }
}

TYPED_TEST(NullRows, NoNullByteButOneLoadsAsNull) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  for (int null = 0; null < 256; ++null) {
    for (int format : {1, 2, 8}) {
      auto const form = static_cast<unsigned char>(format);
      Element value = Plain(1);
      unsigned char disk[this->kDiskWidth];
      this->manager.Store(this->kId, disk, &value, form, 1);
      disk[format == 8 ? sizeof(Plain) : 0] = static_cast<unsigned char>(null);
      this->manager.Load(this->kId, &value, disk, form, 1);
      EXPECT_TRUE(null == 1 ? this->IsNull(value) : this->Holds(value, Plain(1))) << null;
      this->manager.Store(this->kId, disk, &value, form, 1);
      EXPECT_EQ(disk[format == 8 ? sizeof(Plain) : 0], null == 1 ? 1 : 0);
    }
  }
  // In memory every byte but 0 is null, and is stored as 1.
  Element value = Plain(1);
  value.isNull = 2;
  unsigned char disk[this->kDiskWidth];
  this->manager.Store(this->kId, disk, &value, FormLittle, 1);
  EXPECT_EQ(disk[0], 1);
}

TYPED_TEST(NullRows, SizesAreThoseOfTheNumberAndAByte) {
  unsigned const size = 3 * this->kDiskWidth;
  EXPECT_EQ(this->row.NullSizeGet(3), size);
  for (int format : {0, 1, 2, 8, 0x81}) {
    auto const form = static_cast<unsigned char>(format);
    EXPECT_EQ(this->row.SizeGet(nullptr, 8, form, 3), size);
    EXPECT_EQ(this->row.SizeGetFromMemFile(nullptr, form, 3), size);
  }
  EXPECT_EQ(this->row.MemLen, sizeof(typename TypeParam::Element));
}

TYPED_TEST(NullRows, Translates) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  Element values[2] = {Plain(1), this->Null()};
  unsigned const size = 2 * this->kDiskWidth;
  std::vector<unsigned char> disk(size), stored(size);
  this->manager.Store(this->kId, stored.data(), values, FormBig, 2);
  EXPECT_EQ(this->manager.Translate(this->kId, disk.data(), FormBig, size, values, 8, 0, 2), size);
  EXPECT_EQ(disk, stored);
  Element back[2];
  EXPECT_EQ(this->manager.Translate(this->kId, back, 8, 0, disk.data(), FormBig, size, 2), size);
  EXPECT_TRUE(this->Holds(back[0], Plain(1)));
  EXPECT_TRUE(this->IsNull(back[1]));
  Element copy[2];
  EXPECT_EQ(this->manager.Translate(this->kId, copy, 8, 0, values, 8, 0, 2), sizeof copy);
  EXPECT_TRUE(this->Holds(copy[0], Plain(1)));
  // No more elements than a length holds whole.
  EXPECT_EQ(this->manager.Translate(this->kId, disk.data(), FormBig, size - 1, values, 8, 0, 2),
            this->kDiskWidth);
  // Between disk forms bytes stay as they are.
  std::vector<unsigned char> cut(this->kDiskWidth + 1);
  EXPECT_EQ(this->manager.Translate(this->kId, cut.data(), FormLittle, this->kDiskWidth + 1,
                                    stored.data(), FormBig, size, 2),
            this->kDiskWidth + 1);
  EXPECT_TRUE(std::equal(cut.begin(), cut.end(), stored.begin()));
}

TYPED_TEST(NullRows, NullComesFirstInEveryForm) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  Element null, five = Plain(5), six = Plain(6);
  for (int format : {1, 2, 8, 0x82}) {
    auto const form = static_cast<unsigned char>(format);
    auto const stored = [&](Element& element) {
      if (format == 8) {
        auto const* bytes = static_cast<unsigned char const*>(static_cast<void*>(&element));
        return std::vector<unsigned char>(bytes, bytes + sizeof element);
      }
      std::vector<unsigned char> disk(this->kDiskWidth);
      this->manager.Store(this->kId, disk.data(), &element, form, 1);
      return disk;
    };
    auto n = stored(null), a = stored(five), b = stored(six);
    EXPECT_EQ(this->Compare(n.data(), a.data(), 1, form), -1);
    EXPECT_EQ(this->Compare(a.data(), n.data(), 1, form), 1);
    EXPECT_EQ(this->Compare(n.data(), n.data(), 1, form), 0);
    EXPECT_EQ(this->Compare(a.data(), b.data(), 1, form), -1);
    EXPECT_EQ(this->Compare(b.data(), a.data(), 1, form), 1);
    EXPECT_EQ(this->Compare(a.data(), a.data(), 1, form), 0);
    EXPECT_EQ(this->Compare(nullptr, nullptr, 0, form), 0);
  }
}

/// Order of two elements by a slow, plain rule.
template <class Element>
int OrderOf(XoTypeMgr const& manager, int plainId, Element a, Element b) {
  if (a.isNull != 0 || b.isNull != 0) return (b.isNull != 0) - (a.isNull != 0);
  return manager.Cmp(static_cast<char>(plainId), &a.value, &b.value, 0, 1, 8);
}

TYPED_TEST(NullRows, ArraysCompareByTheFirstPairThatDiffers) {
  using Element = typename TypeParam::Element;
  for (int round = 0; round < 400; ++round) {
    unsigned const count = 1 + this->Below(60);
    std::vector<Element> a(count), b(count);
    for (auto& element : a) element = this->Any();
    b = a;
    for (unsigned changes = this->Below(3); changes != 0; --changes)
      b[this->Below(count)] = this->Any();
    for (int format : {1, 2, 8}) {
      auto const form = static_cast<unsigned char>(format);
      unsigned const width = format == 8 ? sizeof(Element) : this->kDiskWidth;
      std::vector<unsigned char> storedA(std::size_t{count} * width), storedB(storedA.size());
      if (format == 8) {
        std::memcpy(storedA.data(), a.data(), storedA.size());
        std::memcpy(storedB.data(), b.data(), storedB.size());
      } else {
        this->manager.Store(this->kId, storedA.data(), a.data(), form, count);
        this->manager.Store(this->kId, storedB.data(), b.data(), form, count);
      }
      unsigned const whole = 1 + this->Below(count);
      unsigned const length = this->OneIn(2) ? 0 : (whole - 1) * width + 1 + this->Below(width);
      unsigned const reachable = length == 0 ? count : whole;
      int expected = 0;
      unsigned place = 0;
      for (; place < reachable && expected == 0; ++place)
        expected = OrderOf(this->manager, this->kPlain, a[place], b[place]);
      bool const usedUp = place == reachable && reachable < count;
      EXPECT_EQ(this->Compare(storedA.data(), storedB.data(), count, form, length, 0,
                              usedUp ? ERR_TM_LENGTH_EXCEEDED : 0),
                expected);
      EXPECT_EQ(this->Compare(storedB.data(), storedA.data(), count, form, 0, length,
                              usedUp ? ERR_TM_LENGTH_EXCEEDED : 0),
                -expected);
    }
  }
}

TYPED_TEST(NullRows, PaddingDoesNotTakePart) {
  using Element = typename TypeParam::Element;
  alignas(Element) unsigned char a[40 * sizeof(Element)], b[40 * sizeof(Element)];
  std::memset(a, 0xAA, sizeof a);
  std::memset(b, 0x55, sizeof b);
  for (std::size_t index = 0; index < 40; ++index) {
    for (unsigned char* memory : {a, b}) {
      std::memset(memory + index * sizeof(Element), 1, sizeof(typename TypeParam::Plain));
      memory[index * sizeof(Element) + sizeof(typename TypeParam::Plain)] = 0;
    }
  }
  EXPECT_EQ(this->Compare(a, b, 40, 8), 0);
  EXPECT_EQ(this->Hash(a, 40, 8), this->Hash(b, 40, 8));
}

TYPED_TEST(NullRows, PrintAndScanAsThePlainNumberDoes) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  constexpr int kType = TypeParam::kId;
  Element const five = Plain('5');
  EXPECT_EQ(PrintOne(kType, Element()), "{NULL}");
  EXPECT_EQ(PrintOne(kType, five), PrintOne(TypeParam::kPlain, Plain('5')));
  EXPECT_EQ(PrintOne(kType, five, "<%d>"), PrintOne(TypeParam::kPlain, Plain('5'), "<%d>"));
  Element values[3] = {five, Element(), five};
  std::string const plain = Print(TypeParam::kPlain, &values[0].value);
  EXPECT_EQ(Print(kType, values, nullptr, 3), plain + ",{NULL}," + plain);

  EXPECT_TRUE(this->IsNull(ScanOne(kType, "{NULL}", nullptr, five)));
  EXPECT_TRUE(this->IsNull(ScanOne(kType, "{NULL}5", nullptr, five)));
  EXPECT_TRUE(this->IsNull(ScanOne(kType, "", nullptr, five)));
  EXPECT_TRUE(this->IsNull(ScanOne(kType, NullString(), nullptr, five)));
  EXPECT_TRUE(
      this->Holds(ScanOne(kType, "7", nullptr, Element()), ScanOne<Plain>(TypeParam::kPlain, "7")));
  // What does not match is present all the same.
  EXPECT_TRUE(
      this->Holds(ScanOne(kType, "x", nullptr, Element()), ScanOne<Plain>(TypeParam::kPlain, "x")));
  XoString text("7");
  EXPECT_EQ(this->manager.ScanFromXoString(this->kId, nullptr, text, nullptr, 1), nullptr);
}

TYPED_TEST(NullRows, WhatIsPrintedScansBack) {
  using Element = typename TypeParam::Element;
  for (int round = 0; round < 500; ++round) {
    Element const value = this->Any();
    Element const read =
        ScanOne<Element>(TypeParam::kId, XoString(PrintOne(TypeParam::kId, value).c_str()));
    if constexpr (std::is_floating_point_v<typename TypeParam::Plain>) {
      if (std::isnan(value.value)) {
        EXPECT_TRUE(std::isnan(read.value));
        continue;
      }
    }
    if constexpr (std::is_same_v<typename TypeParam::Plain, XoInt64>) {
      // Print appends.
      XoString out;
      Element printed = value;
      this->manager.PrintToXoString(this->kId, out, &printed, nullptr, 1);
      EXPECT_TRUE(ScanOne<Element>(TypeParam::kId, out).value == value.value);
      continue;
    }
    EXPECT_EQ(read.isNull, value.isNull);
    EXPECT_TRUE(read.value == value.value);
  }
}

TYPED_TEST(NullRows, ConvertAsThePlainNumberDoes) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  Element values[3] = {Plain(7), Element(), Plain(0)};
  EXPECT_EQ(ToTexts(TypeParam::kId, values, 3),
            (std::vector<std::string>{ToText(TypeParam::kPlain, Plain(7)), kNullString,
                                      ToText(TypeParam::kPlain, Plain(0))}));
  auto const read = FromTexts<Element>(TypeParam::kId, {"7", NullString(), "", "0x10"}, 5);
  EXPECT_TRUE(this->Holds(read[0], Plain(7)));
  EXPECT_TRUE(this->IsNull(read[1]));
  EXPECT_TRUE(this->Holds(read[2], Plain(0)));
  EXPECT_TRUE(this->Holds(read[3], FromText<Plain>(TypeParam::kPlain, "0x10")));
  EXPECT_TRUE(this->IsNull(read[4]));
}

TYPED_TEST(NullRows, DefaultIsZeroOrNull) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  for (unsigned count : {1u, 3u}) {
    auto* values = static_cast<Element*>(this->manager.DefaultValue(this->kId, count, 0));
    EXPECT_TRUE(this->Holds(values[count - 1], Plain(0)));
    this->manager.Delete(this->kId, values, count);
    values = static_cast<Element*>(this->manager.DefaultValue(this->kId, count, 1));
    EXPECT_TRUE(this->IsNull(values[count - 1]));
    this->manager.Delete(this->kId, values, count);
  }
}

TYPED_TEST(NullRows, NullIsItsOwn) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  Element value = Plain(5);
  EXPECT_EQ(this->manager.IsNullValue(this->kId, &value), 0);
  EXPECT_EQ(this->manager.SetNullValue(this->kId, &value), 0);
  EXPECT_TRUE(this->IsNull(value));
  EXPECT_EQ(this->manager.IsNullValue(this->kId, &value), 1);
  value.isNull = 7;
  EXPECT_EQ(this->manager.IsNullValue(this->kId, &value), 7);
}

TYPED_TEST(NullRows, StepAsThePlainNumberDoes) {
  using Element = typename TypeParam::Element;
  using Plain = typename TypeParam::Plain;
  TypeDescriptor const& plainRow = *CurrentTypeTable[TypeParam::kPlain];
  for (NextValueCode const code : {kNextValue, kNextValueToo}) {
    Element value;
    Plain lowest = Plain(1);
    EXPECT_EQ(plainRow.GetValue(&lowest, 1, 8, kLowestValue), 0);
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, code), 0);
    EXPECT_EQ(value.isNull, 0);
    EXPECT_EQ(std::memcmp(&value.value, &lowest, sizeof lowest), 0);

    value = Plain(5);
    Plain next = Plain(5);
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, code), plainRow.GetValue(&next, 1, 8, code));
    EXPECT_TRUE(this->Holds(value, next));
  }
  if constexpr (std::numeric_limits<Plain>::is_specialized) {
    Element value = std::numeric_limits<Plain>::max();
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, kNextValue), ERR_TM_NO_NEXT_VALUE);
    EXPECT_TRUE(this->Holds(value, std::numeric_limits<Plain>::max()));
  }
  Element null;
  for (NextValueCode const code : {kPresentValue, kLowestValue, NextValueCode{'P'}})
    EXPECT_EQ(this->row.GetValue(&null, 1, 8, code), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(this->row.GetValue(&null, 1, 1, kNextValue), ERR_TM_NOT_SUPPORTED);
  EXPECT_TRUE(this->IsNull(null));
}

TEST(NullRowValues, StatedExamples) {
  XoTypeMgr manager;
  XoNull_int value;
  EXPECT_EQ(manager.GetValue(XoNULL_INT_T, &value, 1, 8, kNextValue), 0);
  EXPECT_EQ(value.value, -2147483647 - 1);
  EXPECT_EQ(value.isNull, 0);
  // On disk: a null byte, then the number.
  unsigned char disk[5] = {1, 0, 0, 0, 0};
  EXPECT_EQ(manager.GetValue(XoNULL_INT_T, disk, 1, FormLittle, kNextValue), 0);
  EXPECT_EQ(disk[0], 0);
  EXPECT_EQ(disk[4], 0x80);
  XoNull_XoInt64 wide;
  EXPECT_EQ(manager.GetValue(XoNULL_XOINT64_T, &wide, 1, 8, kNextValue), 0);
  EXPECT_EQ(wide.value, XoInt64(0));
  XoNull_double number;
  EXPECT_EQ(manager.GetValue(XoNULL_DOUBLE_T, &number, 1, 8, kNextValue), 0);
  EXPECT_TRUE(std::isnan(number.value));
  EXPECT_EQ(number.isNull, 0);
}

}  // namespace
}  // namespace xo::test

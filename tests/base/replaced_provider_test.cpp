#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"

/// An embedding system's own base services and internationalisation hook, linked in place of the
/// library's. They take note of what they are asked, and keep `int` in two bytes under `FormBig`.

namespace {

struct Call {
  std::string name;
  unsigned char format;
  unsigned count;

  bool operator==(Call const&) const = default;
};

std::vector<Call> calls;

unsigned Note(char const* name, void* target, void const* source, unsigned char format,
              unsigned count, unsigned width) {
  calls.push_back({name, format, count});
  std::memmove(target, source, std::size_t{count} * width);
  return count * width;
}

bool HasShortIntegers(unsigned char format) { return (format & 15) == FormBig; }

/// What `IntSizeGet` was asked last.
struct SizeQuestion {
  void const* data;
  unsigned char dataFormat;
  unsigned char diskFormat;
};
SizeQuestion lastQuestion;

unsigned NoteSize(char const* name, void const* data, unsigned char dataFormat,
                  unsigned char diskFormat, unsigned count, unsigned width) {
  calls.push_back({name, diskFormat, count});
  lastQuestion = {data, dataFormat, diskFormat};
  return count * width;
}

struct ModuleCall {
  int start;
  XoTypeMgr* manager;
};
std::vector<ModuleCall> moduleCalls;

std::vector<int> versionQuestion;

}  // namespace

unsigned CharStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("CharStore", target, source, format, count, 1);
}
unsigned ShortStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("ShortStore", target, source, format, count, 2);
}
unsigned ShortStoreOne(void* target, void const* source, unsigned char format) {
  return Note("ShortStoreOne", target, source, format, 1, 2);
}
unsigned LongStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("LongStore", target, source, format, count, 4);
}
unsigned LongStoreOne(void* target, void const* source, unsigned char format) {
  return Note("LongStoreOne", target, source, format, 1, 4);
}
unsigned IntStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("IntStore", target, source, format, count, 4);
}
unsigned IntLoad(void* target, void const* source, unsigned char format, unsigned count) {
  if (!HasShortIntegers(format)) return Note("IntLoad", target, source, format, count, 4);
  calls.push_back({"IntLoad", format, count});
  auto const* const bytes = static_cast<unsigned char const*>(source);
  for (unsigned index = 0; index < count; ++index) {
    o_4b const value = static_cast<o_2b>(bytes[index * 2] << 8 | bytes[index * 2 + 1]);
    std::memcpy(static_cast<char*>(target) + index * 4, &value, 4);
  }
  return count * 2;
}
unsigned UnsignedStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("UnsignedStore", target, source, format, count, 4);
}
unsigned UnsignedLoad(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("UnsignedLoad", target, source, format, count, 4);
}
unsigned FloatStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("FloatStore", target, source, format, count, 4);
}
unsigned DoubleStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("DoubleStore", target, source, format, count, 8);
}
unsigned O_8BStore(void* target, void const* source, unsigned char format, unsigned count) {
  return Note("O_8BStore", target, source, format, count, 8);
}
unsigned O_8BStoreOne(void* target, void const* source, unsigned char format) {
  return Note("O_8BStoreOne", target, source, format, 1, 8);
}
unsigned CharSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("CharSizeGet", data, from, to, count, 1);
}
unsigned ShortSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("ShortSizeGet", data, from, to, count, 2);
}
unsigned LongSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("LongSizeGet", data, from, to, count, 4);
}
unsigned IntSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("IntSizeGet", data, from, to, count, HasShortIntegers(to) ? 2 : 4);
}
unsigned FloatSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("FloatSizeGet", data, from, to, count, 4);
}
unsigned DoubleSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("DoubleSizeGet", data, from, to, count, 8);
}
unsigned O_8BSizeGet(void const* data, unsigned char from, unsigned char to, unsigned count) {
  return NoteSize("O_8BSizeGet", data, from, to, count, 8);
}
unsigned CharNullSizeGet(unsigned count) { return count; }
unsigned ShortNullSizeGet(unsigned count) { return count * 2; }
unsigned LongNullSizeGet(unsigned count) { return count * 4; }
unsigned IntNullSizeGet(unsigned count) { return count * 4; }
unsigned FloatNullSizeGet(unsigned count) { return count * 4; }
unsigned DoubleNullSizeGet(unsigned count) { return count * 8; }
unsigned O_8BNullSizeGet(unsigned count) { return count * 8; }

void ___XoI18NContext(int start) { moduleCalls.push_back({start, DefaultTypeManager}); }

int CheckXoVersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build,
                         unsigned fifth, int flags) {
  versionQuestion = {static_cast<int>(major), static_cast<int>(minor), static_cast<int>(patch),
                     static_cast<int>(build), static_cast<int>(fifth), flags};
  return 77;
}

namespace {

class ReplacedProvider : public testing::Test {
 protected:
  void SetUp() override { calls.clear(); }

  static bool Called(char const* name) {
    return std::any_of(calls.begin(), calls.end(),
                       [&](Call const& call) { return call.name == name; });
  }

  /// Leaves the conversions: how wide an element is may be asked at any time.
  static void ForgetSizeQuestions() {
    std::erase_if(calls, [](Call const& call) { return call.name.ends_with("SizeGet"); });
  }

  XoTypeMgr manager;
  unsigned char a[16] = {0x00, 0x05, 0xFF, 0xFE};
  unsigned char b[16] = {0x00, 0x05, 0x00, 0x01};
};

TEST_F(ReplacedProvider, StoredIntegersHaveTheWidthThatItTells) {
  for (char const type : {XoINT_T, XoENUM_T, XoUNSIGNED_T}) {
    int status = -1;
    int const order = manager.Cmp(type, 4, a, 4, b, 0, 2, FormBig, status);
    // The second elements are -2, or the unsigned number of these bits, and 1.
    EXPECT_EQ(order, type == XoUNSIGNED_T ? 1 : -1);
    EXPECT_EQ(status, 0);
    // Four bytes hold two such elements, not three.
    manager.Cmp(type, 4, a, 4, a, 0, 3, FormBig, status);
    EXPECT_EQ(status, ERR_TM_LENGTH_EXCEEDED);
    int error = -1;
    EXPECT_EQ(manager.Hash(type, 4, a, 2, FormBig, error), (5U ^ 0xFFFFFFFEU) * 1103515245U);
    EXPECT_EQ(error, 0);
  }
}

TEST_F(ReplacedProvider, NarrowStoredIntegersAreNotReadBeyondTheirEnd) {
  // Of exactly the stored size on the heap, so that the sanitizer sees a byte too far.
  std::vector<unsigned char> const content{0, 5, 0, 6};
  auto first = content;
  auto second = content;
  int status = -1;
  EXPECT_EQ(manager.Cmp(XoINT_T, 0, first.data(), 0, second.data(), 0, 2, FormBig, status), 0);
  EXPECT_EQ(status, 0);
  int error = -1;
  EXPECT_EQ(manager.Hash(XoINT_T, 0, first.data(), 2, FormBig, error), (5U ^ 6U) * 1103515245U);
}

TEST_F(ReplacedProvider, WidthIsAskedWithoutDataForMemoryFormAndTheNibble) {
  int status = 0;
  manager.Cmp(XoINT_T, 4, a, 4, b, 0, 2, 0xE2, status);
  EXPECT_EQ(lastQuestion.data, nullptr);
  EXPECT_EQ(lastQuestion.dataFormat, FormMemory);
  EXPECT_EQ(lastQuestion.diskFormat, FormBig);
}

TEST_F(ReplacedProvider, UnsignedElementsAreDecodedAsIntIs) {
  int status = 0;
  manager.Cmp(XoUNSIGNED_T, 0, a, 0, b, 0, 1, FormBig, status);
  manager.Hash(XoUNSIGNED_T, 0, a, 1, FormBig, status);
  EXPECT_TRUE(Called("IntLoad"));
  EXPECT_FALSE(Called("UnsignedLoad"));
}

TEST_F(ReplacedProvider, ElementsInTheMachinesOrderAreReadWithoutACall) {
  for (int const id : xo::test::kScalarRows) {
    char const type = xo::test::Id(id);
    for (unsigned char const format : {FormLittle, FormMemory}) {
      for (int const upper : {0x00, 0x80, 0xE0}) {
        auto const form = static_cast<unsigned char>(format | upper);
        int status = 0;
        manager.Cmp(type, 0, a, 0, b, 0, 1, form, status);
        manager.Hash(type, 0, a, 1, form, status);
      }
    }
  }
  ForgetSizeQuestions();
  EXPECT_TRUE(calls.empty());
}

TEST_F(ReplacedProvider, SixteenBitsAreComparedAsTheyLieInEveryFormButBig) {
  int status = 0;
  for (unsigned nibble = 0; nibble < 16; ++nibble) {
    calls.clear();
    auto const format = static_cast<unsigned char>(nibble);
    manager.Cmp(Xo2B_T, 0, a, 0, b, 0, 1, format, status);
    manager.Cmp(Xo1B_T, 0, a, 0, b, 0, 1, format, status);
    EXPECT_TRUE(calls.empty() || nibble == FormBig) << nibble;
    // The hash decodes with the helper wherever it does not read in place.
    manager.Hash(Xo2B_T, 0, a, 1, format, status);
    EXPECT_EQ(Called("ShortStoreOne"), nibble != FormLittle && nibble != FormMemory) << nibble;
  }
}

TEST_F(ReplacedProvider, DecodingComparisonsGoThroughTheHelperOfTheType) {
  struct {
    char type;
    char const* helper;
  } const expected[] = {
      {Xo4B_T, "LongStoreOne"},    {XoU4B_T, "LongStoreOne"}, {XoBLOCKID_T, "LongStoreOne"},
      {Xo8B_T, "O_8BStoreOne"},    {XoU8B_T, "O_8BStoreOne"}, {XoFLOAT_T, "FloatStore"},
      {XoDOUBLE_T, "DoubleStore"}, {XoINT_T, "IntLoad"},      {XoENUM_T, "IntLoad"}};
  for (auto const& row : expected) {
    calls.clear();
    int status = 0;
    manager.Cmp(row.type, 0, a, 0, b, 0, 1, 0x84, status);
    ForgetSizeQuestions();
    EXPECT_EQ(calls, (std::vector<Call>{{row.helper, 4, 1}, {row.helper, 4, 1}}));
  }
}

TEST_F(ReplacedProvider, BoundsAreReadByTheHelperWhereMoreThanBytesAreSwapped) {
  struct {
    char type;
    std::vector<Call> calls;
  } const expected[] = {
      {Xo1B_T, {}},
      {Xo2B_T, {}},
      {Xo4B_T, {}},
      {XoBLOCKID_T, {}},
      {XoU8B_T, {}},
      {XoINT_T, {{"IntLoad", 2, 1}, {"IntLoad", 2, 1}, {"IntLoad", 2, 1}}},
      {XoUNSIGNED_T, {{"IntLoad", 2, 1}, {"IntLoad", 2, 1}, {"IntLoad", 2, 1}}},
      {XoFLOAT_T,
       {{"FloatStore", 2, 1},
        {"FloatStore", 2, 1},
        {"FloatStore", 2, 1},
        {"FloatSizeGet", 130, 1}}},
      {XoDOUBLE_T,
       {{"DoubleStore", 2, 1},
        {"DoubleStore", 2, 1},
        {"DoubleStore", 2, 1},
        {"DoubleSizeGet", 130, 1}}},
      {XoINT64_T, {{"LongStore", 2, 2}, {"LongStore", 2, 2}, {"LongStore", 2, 2}}},
  };
  XoIdxBounds range;
  range.low = a;
  range.high = b;
  for (auto const& row : expected) {
    calls.clear();
    unsigned short op = 1;
    manager.EvalAndBound(row.type, &range, op, a, 0x82, 1, nullptr, nullptr);
    EXPECT_EQ(calls, row.calls) << int{row.type};
  }
  EXPECT_EQ(lastQuestion.data, nullptr);
  EXPECT_EQ(lastQuestion.dataFormat, FormMemory);
}

TEST_F(ReplacedProvider, ABoundOfIntegersHasTheirWidthInMemory) {
  XoIdxBounds bounds;
  unsigned short op = 1;
  manager.EvalAndBound(XoINT_T, nullptr, op, a, FormBig, 2, &bounds, nullptr);
  EXPECT_EQ(bounds.lowLen, 8);
  EXPECT_EQ(std::memcmp(bounds.low, a, 8), 0);
  ReleaseBounds(bounds);
}

TEST_F(ReplacedProvider, TranslateStoresUnderTheNibbleAndLoadsUnderTheWholeByte) {
  unsigned char target[16];
  manager.Translate(Xo4B_T, target, 0x82, 0, a, FormMemory, 0, 2);
  manager.Translate(Xo4B_T, target, FormMemory, 0, a, 0x82, 0, 2);
  manager.Translate(XoUNSIGNED_T, target, 0x41, 0, a, FormMemory, 0, 2);
  manager.Translate(XoUNSIGNED_T, target, FormMemory, 0, a, 0x41, 0, 2);
  manager.Translate(XoINT_T, target, 0xE1, 0, a, FormMemory, 0, 3);
  manager.Translate(XoINT_T, target, FormMemory, 0, a, 0xE1, 0, 3);
  EXPECT_EQ(calls, (std::vector<Call>{{"LongStore", 2, 2},
                                      {"LongStore", 0x82, 2},
                                      {"UnsignedStore", 1, 2},
                                      {"UnsignedLoad", 0x41, 2},
                                      {"IntStore", 1, 3},
                                      {"IntLoad", 0xE1, 3}}));
}

TEST_F(ReplacedProvider, TheManagerHandsTheWholeFormatToTheRowsHelpers) {
  unsigned char target[16];
  manager.Store(Xo2B_T, target, a, 0xE2, 3);
  manager.Load(XoDOUBLE_T, target, a, 0x82, 1);
  EXPECT_EQ(calls, (std::vector<Call>{{"ShortStore", 0xE2, 3}, {"DoubleStore", 0x82, 1}}));
}

TEST_F(ReplacedProvider, SizesInAFileOfRealsAndIntegersAreItsToKnow) {
  MemFile file(a, sizeof a);
  EXPECT_EQ(manager.DiskLenGetFromMemFile(XoINT_T, &file, FormBig, 3), 6U);
  EXPECT_EQ(manager.DiskLenGetFromMemFile(XoFLOAT_T, &file, 0x82, 3), 12U);
  EXPECT_EQ(manager.DiskLenGetFromMemFile(XoDOUBLE_T, &file, 0x82, 3), 24U);
  EXPECT_EQ(calls, (std::vector<Call>{
                       {"IntSizeGet", 2, 3}, {"FloatSizeGet", 2, 3}, {"DoubleSizeGet", 2, 3}}));
  calls.clear();
  for (char const type : {Xo1B_T, Xo2B_T, Xo4B_T, XoBLOCKID_T, Xo8B_T}) {
    manager.DiskLenGetFromMemFile(type, &file, FormBig, 3);
  }
  EXPECT_TRUE(calls.empty());
}

TEST_F(ReplacedProvider, RowsHoldItsHelpers) {
  EXPECT_EQ(manager.StorePtrGet(XoUNSIGNED_T), UnsignedStore);
  EXPECT_EQ(manager.LoadPtrGet(XoUNSIGNED_T), UnsignedLoad);
  EXPECT_EQ(manager.LoadPtrGet(XoENUM_T), IntLoad);
  EXPECT_EQ(CurrentTypeTable[D_INTERVAL_T]->SizeGet, FloatSizeGet);
}

TEST_F(ReplacedProvider, ModuleHookComesFirstInBothDirections) {
  moduleCalls.clear();
  ___XoTypemgrContext(5);
  XoTypeMgr* const started = DefaultTypeManager;
  ___XoTypemgrContext(0);
  ASSERT_EQ(moduleCalls.size(), 2U);
  EXPECT_EQ(moduleCalls[0].start, 5);
  EXPECT_EQ(moduleCalls[0].manager, nullptr);
  EXPECT_EQ(moduleCalls[1].start, 0);
  EXPECT_EQ(moduleCalls[1].manager, started);
}

TEST_F(ReplacedProvider, ModuleCheckAsksForItsOwnVersionAndPassesTheAnswer) {
  EXPECT_EQ(XoCheckDll(8), 77);
  EXPECT_EQ(versionQuestion, (std::vector<int>{12, 0, 2, 248, 0, 11}));
}

}  // namespace

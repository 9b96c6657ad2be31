#include <gtest/gtest.h>

#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/stored_bytes.hpp"
#include "tests/xotypmgr/expected_rows.hpp"
#include "tests/xotypmgr/row_probe.hpp"

namespace xo::test {
namespace {

using Bytes = std::vector<unsigned char>;
using Codes = std::initializer_list<NextValueCode>;

/// Applies the operation to stored bytes and gives them back.
struct Outcome {
  int result;
  Bytes bytes;
  bool operator==(Outcome const&) const = default;
};

Outcome Derive(int id, Bytes bytes, unsigned char format, unsigned char code) {
  XoTypeMgr const manager;
  PlacedBytes const placed(bytes, 1);
  int const result = manager.GetValue(Id(id), placed.Data(), 1, format, code);
  bytes.assign(placed.Data(), placed.Data() + bytes.size());
  return {result, bytes};
}

TEST(NextValueOnDisk, StoredNumbersAreReplaced) {
  EXPECT_EQ(Derive(2, {0xFF, 0, 0, 0}, 1, 'M'), (Outcome{0, {0, 1, 0, 0}}));
  EXPECT_EQ(Derive(2, {0xFF, 0, 0, 0}, 0x81, 'N'), (Outcome{0, {0, 1, 0, 0}}));
  EXPECT_EQ(Derive(1, {0xFF, 0xFF}, 1, 'N'), (Outcome{0, {0, 0}}));
  EXPECT_EQ(Derive(0, {0x80}, 1, 'N'), (Outcome{0, {0x81}}));
  EXPECT_EQ(Derive(7, {9, 0, 0, 0}, 1, 'M'), (Outcome{0, {10, 0, 0, 0}}));
  EXPECT_EQ(Derive(8, {9, 0, 0, 0x80}, 1, 'M'), (Outcome{0, {10, 0, 0, 0x80}}));
  EXPECT_EQ(Derive(14, {9, 0, 0, 0x80}, 1, 'M'), (Outcome{0, {10, 0, 0, 0x80}}));
  EXPECT_EQ(Derive(42, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}, 1, 'M'),
            (Outcome{0, {0, 0, 0, 0, 1, 0, 0, 0}}));
  // 1.0 and the number above it.
  EXPECT_EQ(Derive(3, {0, 0, 0, 0, 0, 0, 0xF0, 0x3F}, 1, 'M'),
            (Outcome{0, {1, 0, 0, 0, 0, 0, 0xF0, 0x3F}}));
  EXPECT_EQ(Derive(4, {0, 0, 0x80, 0x3F}, 1, 'N'), (Outcome{0, {1, 0, 0x80, 0x3F}}));
}

TEST(NextValueOnDisk, PresentValueOfAnIntegerIsItself) {
  EXPECT_EQ(Derive(2, {1, 2, 3, 4}, 1, 'O'), (Outcome{0, {1, 2, 3, 4}}));
  EXPECT_EQ(Derive(2, {1, 2, 3, 4}, 2, 'O'), (Outcome{0, {1, 2, 3, 4}}));
  EXPECT_EQ(Derive(3, {1, 2, 3, 4, 5, 6, 7, 8}, 1, 'O'),
            (Outcome{ERR_TM_NOT_SUPPORTED, {1, 2, 3, 4, 5, 6, 7, 8}}));
}

TEST(NextValueOnDisk, TopOfTheTypeStays) {
  EXPECT_EQ(Derive(0, {127}, 1, 'M'), (Outcome{ERR_TM_NO_NEXT_VALUE, {127}}));
  EXPECT_EQ(Derive(10, {127}, 1, 'M'), (Outcome{0, {128}}));
  EXPECT_EQ(Derive(10, {255}, 1, 'M'), (Outcome{ERR_TM_NO_NEXT_VALUE, {255}}));
  EXPECT_EQ(Derive(2, {0xFF, 0xFF, 0xFF, 0x7F}, 1, 'N'),
            (Outcome{ERR_TM_NO_NEXT_VALUE, {0xFF, 0xFF, 0xFF, 0x7F}}));
}

TEST(NextValueOnDisk, OfAnEnumThereIsNone) {
  for (NextValueCode code : Codes{'M', 'N', 'O'})
    for (unsigned char format : Formats{1, 2, 0x81, 8})
      EXPECT_EQ(Derive(9, {1, 0, 0, 0}, format, code),
                (Outcome{ERR_TM_NOT_SUPPORTED, {1, 0, 0, 0}}));
}

// Only the bits 0x81 of the format reach the row: a big-endian format arrives as 0, which copies.
TEST(NextValueOnDisk, BigEndianFormatIsMaskedAway) {
  EXPECT_EQ(Derive(2, {0, 0, 0, 0xFF}, 2, 'M'), (Outcome{0, {1, 0, 0, 0xFF}}));
  EXPECT_EQ(Derive(2, {0, 0, 0, 0xFF}, 0x82, 'M'), (Outcome{0, {1, 0, 0, 0xFF}}));
  EXPECT_EQ(Derive(1, {0xFF, 0x00}, 2, 'N'), (Outcome{0, {0x00, 0x01}}));
}

TEST(NextValueOnDisk, MemoryFormIsTheWholeByte) {
  // 0x88 and 9 are no memory form here, and come down to the disk forms 0x80 and 1.
  RowKeeper const row(CurrentTypeTable[2]);
  static Words formats;
  formats.clear();
  row->Load = [](void* memory, void const* disk, unsigned char format, unsigned count) {
    formats.push_back(format);
    return LongStore(memory, disk, format, count);
  };
  row->Store = [](void* disk, void const* memory, unsigned char format, unsigned count) {
    formats.push_back(format);
    return LongStore(disk, memory, format, count);
  };
  for (unsigned char format : Formats{0, 1, 2, 9, 0x48, 0x81, 0x82, 0x88, 0xE1, 0xFF})
    EXPECT_EQ(Derive(2, {7, 0, 0, 0}, format, 'M'), (Outcome{0, {8, 0, 0, 0}})) << +format;
  EXPECT_EQ(formats, (Words{0,    0,    1,    1,    0,    0,    1,    1,    0,    0,
                            0x81, 0x81, 0x80, 0x80, 0x80, 0x80, 0x81, 0x81, 0x81, 0x81}));
}

/// The steps of the operation on a row of the test's own.
Words steps;
char temporary;
void* createAnswer;
unsigned loadAnswer, storeAnswer;
int getValueAnswer;

class NextValueSteps : public testing::Test {
 protected:
  void SetUp() override {
    steps.clear();
    createAnswer = &temporary;
    loadAnswer = 4;
    storeAnswer = 4;
    getValueAnswer = 0;
    for (TypeDescriptor* each : {CurrentTypeTable[41], CurrentTypeTable[11]}) {
      each->Create = [](unsigned count) {
        Note(WordsOf(1, count));
        return createAnswer;
      };
      each->Load = [](void* memory, void const* stored, unsigned char format, unsigned count) {
        Note(WordsOf(2, memory, stored, format, count));
        return loadAnswer;
      };
      each->GetValue = [](void* value, unsigned count, unsigned char format, NextValueCode code) {
        Note(WordsOf(3, value, count, format, code));
        return getValueAnswer;
      };
      each->Store = [](void* stored, void const* memory, unsigned char format, unsigned count) {
        Note(WordsOf(4, stored, memory, format, count));
        return storeAnswer;
      };
      each->Delete = [](void* values, unsigned count) -> void* {
        Note(WordsOf(5, values, count));
        return nullptr;
      };
    }
  }

  static void Note(Words const& step) { steps.insert(steps.end(), step.begin(), step.end()); }

  XoTypeMgr manager;
  RowKeeper row{CurrentTypeTable[41]};
  RowKeeper stringRow{CurrentTypeTable[11]};
  char disk = 0;
};

Words Joined(std::vector<Words> const& parts) {
  Words all;
  for (Words const& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

TEST_F(NextValueSteps, DiskDataGoesThroughATemporary) {
  EXPECT_EQ(manager.GetValue(41, &disk, 77, 0xE1, 'O'), 0);
  EXPECT_EQ(steps, Joined({WordsOf(1, 1), WordsOf(2, &temporary, &disk, 0x81, 1),
                           WordsOf(3, &temporary, 0, 8, 'O'),
                           WordsOf(4, &disk, &temporary, 0x81, 1), WordsOf(5, &temporary, 1)}));
}

TEST_F(NextValueSteps, MemoryDataIsTheRowsAffair) {
  getValueAnswer = 1234;
  EXPECT_EQ(manager.GetValue(41, &disk, 77, 8, 'N'), 1234);
  EXPECT_EQ(steps, WordsOf(3, &disk, 77, 8, 'N'));
}

TEST_F(NextValueSteps, FailedCreateEndsIt) {
  createAnswer = nullptr;
  EXPECT_EQ(manager.GetValue(41, &disk, 1, 1, 'M'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(steps, WordsOf(1, 1));
}

TEST_F(NextValueSteps, FailedLoadDeletesTheTemporary) {
  loadAnswer = 0;
  EXPECT_EQ(manager.GetValue(41, &disk, 1, 1, 'M'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(steps, Joined({WordsOf(1, 1), WordsOf(2, &temporary, &disk, 1, 1),
                           WordsOf(5, &temporary, 1)}));
}

TEST_F(NextValueSteps, FailedStepStoresNothing) {
  getValueAnswer = ERR_TM_NO_NEXT_VALUE;
  EXPECT_EQ(manager.GetValue(41, &disk, 1, 1, 'M'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(steps, Joined({WordsOf(1, 1), WordsOf(2, &temporary, &disk, 1, 1),
                           WordsOf(3, &temporary, 0, 8, 'M'), WordsOf(5, &temporary, 1)}));
}

TEST_F(NextValueSteps, FailedStoreIsReported) {
  storeAnswer = 0;
  EXPECT_EQ(manager.GetValue(41, &disk, 1, 1, 'M'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(steps, Joined({WordsOf(1, 1), WordsOf(2, &temporary, &disk, 1, 1),
                           WordsOf(3, &temporary, 0, 8, 'M'), WordsOf(4, &disk, &temporary, 1, 1),
                           WordsOf(5, &temporary, 1)}));
}

TEST_F(NextValueSteps, OtherCodesDoNotReachTheRow) {
  for (int id : {11, 41}) {
    for (int code = 0; code < 256; ++code) {
      if (code == 'M' || code == 'N' || code == 'O') continue;
      for (unsigned char format : Formats{8, 1, 0x81})
        EXPECT_EQ(manager.GetValue(Id(id), &disk, 1, format, static_cast<unsigned char>(code)),
                  ERR_TM_NOT_SUPPORTED);
    }
  }
  EXPECT_TRUE(steps.empty());
}

TEST_F(NextValueSteps, StringsAreHandedOverInEveryFormat) {
  for (unsigned char format : Formats{0, 1, 2, 8, 0x81, 0x88}) {
    for (NextValueCode code : Codes{'M', 'N', 'O'}) {
      steps.clear();
      getValueAnswer = 55;
      EXPECT_EQ(manager.GetValue(11, &disk, 77, format, code), 55);
      EXPECT_EQ(steps, WordsOf(3, &disk, 77, format, code));
    }
  }
}

}  // namespace
}  // namespace xo::test

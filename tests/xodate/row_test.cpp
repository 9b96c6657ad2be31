#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/stopped_clock.hpp"
#include "tests/xodate/temporal_rows.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kFormats[] = {FormLittle, FormBig, FormLittle | FormatIndexKey,
                                      FormBig | FormatIndexKey | 0x40};

bool IsBig(unsigned char format) { return (format & 15) == FormBig; }

FieldList SampleFields(TemporalRow const& row) {
  if (!row.hasYear) return {13, 5, 9};
  FieldList fields = {2021, 4, 15, 13, 5, 9, 250000000};
  fields.resize(FieldCount(row));
  return fields;
}

class TemporalRows : public RandomTest {
 protected:
  FieldList RandomFields(TemporalRow const& row) {
    FieldList fields;
    for (std::size_t i = 0; i < FieldCount(row); ++i) {
      fields.push_back(Cut(row, i, static_cast<int>(Bits())));
    }
    return fields;
  }
};

TEST(TemporalStore, PutsTheFieldsOneBehindTheOther) {
  XoDate const date(2021, 4, 15);
  unsigned char disk[4];
  EXPECT_EQ(CurrentTypeTable[XoDATE_T]->Store(disk, &date, FormLittle, 1), 4u);
  EXPECT_EQ(ByteList(disk, disk + 4), (ByteList{0xE5, 0x07, 4, 15}));
  EXPECT_EQ(CurrentTypeTable[XoDATE_T]->Store(disk, &date, FormBig, 1), 4u);
  EXPECT_EQ(ByteList(disk, disk + 4), (ByteList{0x07, 0xE5, 4, 15}));
  XoDateTimeN const value(2021, 4, 15, 13, 5, 9, 0x01020304);
  unsigned char long_[11];
  EXPECT_EQ(CurrentTypeTable[XoDATIME_N_T]->Store(long_, &value, FormBig, 1), 11u);
  EXPECT_EQ(ByteList(long_, long_ + 11), (ByteList{0x07, 0xE5, 4, 15, 13, 5, 9, 1, 2, 3, 4}));
}

TEST_F(TemporalRows, LoadGivesBackWhatStoreWrote) {
  for (TemporalRow const& row : kTemporal) {
    for (unsigned char format : kFormats) {
      for (unsigned count : {0u, 1u, 2u, 5u}) {
        ByteList memory, stored;
        for (unsigned i = 0; i < count; ++i) {
          FieldList const fields = RandomFields(row);
          memory += InMemory(row, fields);
          stored += Stored(row, fields, IsBig(format));
        }
        // At odd addresses, with a byte behind that must stay.
        ByteList disk(stored.size() + 2, 0x77), back(memory.size() + 2, 0xA5);
        memory.insert(memory.begin(), 0xA5);
        ASSERT_EQ(Row(row).Store(disk.data() + 1, memory.data() + 1, format, count),
                  count * row.disk);
        ASSERT_EQ(ByteList(disk.begin() + 1, disk.end() - 1), stored);
        ASSERT_EQ(disk.back(), 0x77);
        ASSERT_EQ(Row(row).Load(back.data() + 1, disk.data() + 1, format, count), count * row.disk);
        memory.push_back(0xA5);
        ASSERT_EQ(back, memory);
        ASSERT_EQ(Row(row).NullSizeGet(count), count * row.disk);
        ASSERT_EQ(Row(row).SizeGet(nullptr, FormMemory, format, count), count * row.disk);
        ASSERT_EQ(Row(row).SizeGetFromMemFile(nullptr, format, count), count * row.disk);
      }
    }
    EXPECT_EQ(Row(row).MemLen, row.memory);
  }
}

TEST_F(TemporalRows, TranslateFollowsTheFormsOfBothSides) {
  for (TemporalRow const& row : kTemporal) {
    FieldList const first = RandomFields(row), second = RandomFields(row);
    ByteList memory = InMemory(row, first), stored = Stored(row, first, true);
    memory += InMemory(row, second);
    stored += Stored(row, second, true);
    auto& translate = *Row(row).Translate;

    ByteList disk(stored.size(), 0x55);
    EXPECT_EQ(translate(disk.data(), FormBig, 0, memory.data(), 8, 0, 2), 2 * row.disk);
    EXPECT_EQ(disk, stored);
    // Whole elements that fit, and nothing behind.
    disk.assign(stored.size(), 0x55);
    EXPECT_EQ(translate(disk.data(), FormBig, 2 * row.disk - 1, memory.data(), 8, 0, 2), row.disk);
    EXPECT_EQ(disk[row.disk], 0x55);

    ByteList back(memory.size(), 0xA5);
    EXPECT_EQ(translate(back.data(), 8, 0, stored.data(), FormBig, 0, 2), 2 * row.disk);
    EXPECT_EQ(back, memory);
    EXPECT_EQ(translate(back.data(), 8, 0, stored.data(), FormBig, row.disk - 1, 2), 0u);

    ByteList copy(memory.size(), 0);
    EXPECT_EQ(translate(copy.data(), 8, 1, memory.data(), 8, 1, 2), 2 * row.memory);
    EXPECT_EQ(copy, memory);

    // Between disk forms bytes are copied as they are, cut or filled up with zeros.
    ByteList target(stored.size() + 3, 0x55);
    EXPECT_EQ(
        translate(target.data(), FormLittle, row.disk - 1, stored.data(), FormBig, 2 * row.disk, 2),
        row.disk - 1);
    EXPECT_EQ(ByteList(target.begin(), target.begin() + row.disk - 1),
              ByteList(stored.begin(), stored.begin() + row.disk - 1));
    EXPECT_EQ(target[row.disk - 1], 0x55);
    EXPECT_EQ(translate(target.data(), FormLittle, 2 * row.disk + 3, stored.data(), FormBig,
                        2 * row.disk, 2),
              2 * row.disk);
    ByteList filled = stored;
    filled += ByteList(3, 0);
    EXPECT_EQ(target, filled);
  }
}

TEST(TemporalCreate, MakesPresentDatesAndTimesAndNullValues) {
  StoppedClock const clock;
  ByteList const now[] = {InMemory(kTemporal[0], {2021, 4, 15}), InMemory(kTemporal[1], {13, 5, 9}),
                          InMemory(kTemporal[2], {2021, 4, 15, 13, 5, 9}),
                          InMemory(kTemporal[3], {-32768, -128, -128, -128, -128, -128, 0}),
                          InMemory(kTemporal[4], {-32768, -128, -128, -128, -128, -128, 0})};
  for (int i = 0; i < 5; ++i) {
    TemporalRow const& row = kTemporal[i];
    for (unsigned count : {0u, 1u, 2u, 7u}) {
      auto* const values = static_cast<unsigned char*>(Row(row).Create(count));
      for (unsigned element = 0; element < std::max(count, 1u); ++element) {
        unsigned char const* const bytes = values + element * row.memory;
        ByteList expected = now[i];
        if (row.memory != row.disk) expected[7] = bytes[7];
        EXPECT_EQ(ByteList(bytes, bytes + row.memory), expected);
      }
      if (count > 1) {
        std::uint64_t word = 0;
        std::memcpy(&word, values - 8, 8);
        EXPECT_EQ(word, count);
      }
      EXPECT_EQ(Row(row).Delete(values, count), nullptr);
      alignas(8) unsigned char raw[7 * 12];
      Row(row).Constructor(raw, count, 0);
      if (count > 0) {
        EXPECT_EQ(std::memcmp(raw, now[i].data(), 3), 0);
      }
      Row(row).Destructor(raw, count, 0);
    }
    EXPECT_EQ(Row(row).Delete(nullptr, 0), nullptr);
    EXPECT_EQ(Row(row).Delete(nullptr, 2), nullptr);
  }
}

TEST(TemporalDefault, IsTheClassesDefaultOrNull) {
  for (TemporalRow const& row : kTemporal) {
    for (unsigned count : {0u, 1u, 3u}) {
      auto* values = static_cast<unsigned char*>(Row(row).DefaultValue(count, 0));
      FieldList fields = {-4713, 11, 24, 0, 0, 0, 0};
      if (!row.hasYear) fields = {0, 0, 0};
      fields.resize(FieldCount(row));
      for (unsigned i = 0; i < std::max(count, 1u); ++i) {
        unsigned char const* const bytes = values + i * row.memory;
        ByteList const expected = InMemory(
            row, fields, row.memory != row.disk ? bytes[7] : static_cast<unsigned char>(0));
        EXPECT_EQ(ByteList(bytes, bytes + row.memory), expected);
        EXPECT_EQ(Row(row).IsNull(values + i * row.memory), 0);
      }
      Row(row).Delete(values, count);
      values = static_cast<unsigned char*>(Row(row).DefaultValue(count, 1));
      for (unsigned i = 0; i < std::max(count, 1u); ++i) {
        EXPECT_EQ(Row(row).IsNull(values + i * row.memory), 1);
      }
      Row(row).Delete(values, count);
    }
  }
}

TEST(TemporalNull, IsSetAndFoundAtAnyAddress) {
  for (TemporalRow const& row : kTemporal) {
    ByteList value = InMemory(row, SampleFields(row));
    value.insert(value.begin(), 0);
    EXPECT_EQ(Row(row).IsNull(value.data() + 1), 0);
    EXPECT_EQ(Row(row).SetNull(value.data() + 1), 0);
    EXPECT_EQ(Row(row).IsNull(value.data() + 1), 1);
    EXPECT_EQ(value[row.hasYear ? 3 : 1], 0x80);
    XoTypeMgr const manager;
    EXPECT_EQ(manager.IsNullValue(static_cast<char>(row.id), value.data() + 1), 1);
    EXPECT_EQ(manager.SupportsNullValue(static_cast<char>(row.id)), 1);
  }
}

TEST_F(TemporalRows, AssignmentAndCopyTakeAllElementsOrTheFirst) {
  for (TemporalRow const& row : kTemporal) {
    for (auto* const assign : {Row(row).Assignment, Row(row).Copy}) {
      alignas(8) unsigned char source[3 * 12], target[4 * 12];
      ByteList const values[] = {InMemory(row, RandomFields(row)), InMemory(row, RandomFields(row)),
                                 InMemory(row, RandomFields(row))};
      for (unsigned i = 0; i < 3; ++i) {
        std::memcpy(source + i * row.memory, values[i].data(), row.memory);
      }
      for (int fill : {0, 1, -7}) {
        std::memset(target, 0x11, sizeof target);
        assign(target, source, 3, fill);
        for (unsigned i = 0; i < 3; ++i) {
          XoTypeMgr const manager;
          EXPECT_EQ(manager.Cmp(static_cast<char>(row.id), target + i * row.memory,
                                const_cast<unsigned char*>(values[fill != 0 ? 0 : i].data()), 0x10,
                                1, FormMemory),
                    0);
        }
        EXPECT_EQ(target[3 * row.memory], 0x11);
        std::memset(target, 0x11, sizeof target);
        assign(target, source, 0, fill);
        EXPECT_EQ(target[0], 0x11);
      }
    }
  }
}

// Hash.

unsigned Hash(TemporalRow const& row, ByteList data, unsigned char format, unsigned count = 1,
              unsigned length = 0, int expectedError = 0) {
  int error = 99;
  unsigned const hash = Row(row).Hash(format, length, data.data(), count, error);
  EXPECT_EQ(error, expectedError);
  return hash;
}

unsigned Fold(int high, int middle, int low) {
  return static_cast<unsigned>(high) * 65536u + static_cast<unsigned>(middle) * 256u +
         static_cast<unsigned>(low);
}

unsigned FoldAll(TemporalRow const& row, FieldList const& f) {
  unsigned fold = Fold(f[0], f[1], f[2]);
  if (f.size() > 3) fold ^= Fold(f[3], f[4], f[5]);
  if (row.hasNano) fold ^= static_cast<unsigned>(f[6]);
  return fold;
}

TEST(TemporalHash, IsTheFoldOfTheFieldsTimesAConstant) {
  EXPECT_EQ(Hash(kTemporal[0], InMemory(kTemporal[0], {2021, 4, 15}), 8),
            ((2021u << 16) + (4u << 8) + 15u) * 1103515245u);
  EXPECT_EQ(Hash(kTemporal[1], InMemory(kTemporal[1], {13, 5, 9}), 8),
            ((13u << 16) + (5u << 8) + 9u) * 1103515245u);
  // ByteList behind the year count as signed.
  EXPECT_EQ(Hash(kTemporal[0], InMemory(kTemporal[0], {-1, -2, -3}), 8),
            (0xFFFF0000u - 512u - 3u) * 1103515245u);
}

TEST_F(TemporalRows, HashIsTheXorOfTheElementsFolds) {
  for (int round = 0; round < 300; ++round) {
    for (TemporalRow const& row : kTemporal) {
      unsigned const count = 1 + Below(5);
      unsigned folds = 0;
      ByteList memory, little, big;
      for (unsigned i = 0; i < count; ++i) {
        FieldList const fields = RandomFields(row);
        folds ^= FoldAll(row, fields);
        memory += InMemory(row, fields, Byte());
        little += Stored(row, fields);
        big += Stored(row, fields, true);
      }
      unsigned const hash = folds * 1103515245u;
      ASSERT_EQ(Hash(row, memory, 8, count), hash);
      ASSERT_EQ(Hash(row, memory, 0x88, count), hash);
      ASSERT_EQ(Hash(row, little, 1, count), hash);
      // Dates and times hash the bytes as they lie, whatever the form.
      if (row.id == XoDATE_T) {
        ASSERT_EQ(Hash(row, big, 2, count), Hash(row, big, 1, count));
      } else {
        ASSERT_EQ(Hash(row, big, 2, count), hash);
      }
    }
  }
}

TEST_F(TemporalRows, HashEndsWithItsData) {
  for (TemporalRow const& row : kTemporal) {
    FieldList const fields = SampleFields(row);
    ByteList three = Stored(row, fields);
    three += Stored(row, fields);
    three += Stored(row, fields);
    unsigned const one = FoldAll(row, fields) * 1103515245u;
    EXPECT_EQ(Hash(row, three, 1, 0), 0u);
    EXPECT_EQ(Hash(row, three, 1, 3), one);
    EXPECT_EQ(Hash(row, three, 1, 3, row.disk, ERR_TM_LENGTH_EXCEEDED), one);
    EXPECT_EQ(Hash(row, three, 1, 3, row.disk + 1, ERR_TM_LENGTH_EXCEEDED), 0u);
    EXPECT_EQ(Hash(row, three, 1, 3, 3 * row.disk), one);
  }
}

// Step.

template <class Value>
int Step(int id, Value& value, unsigned char code, unsigned char format = FormMemory) {
  return CurrentTypeTable[id]->GetValue(&value, 1, format, code);
}

TEST(TemporalStep, NextValueIsOneDaySecondOrNanosecondOn) {
  for (unsigned char code : {'M', 'N'}) {
    XoDate date(2020, 2, 29);
    EXPECT_EQ(Step(XoDATE_T, date, code), 0);
    EXPECT_EQ(date, XoDate(2020, 3, 1));
    XoTime time(12, 59, 59);
    EXPECT_EQ(Step(XoTIME_T, time, code), 0);
    EXPECT_EQ(time, XoTime(13, 0, 0));
    XoDateTime both(XoDate(2021, 12, 31), XoTime(23, 59, 59));
    EXPECT_EQ(Step(XoDATIME_T, both, code), 0);
    EXPECT_EQ(both, XoDateTime(XoDate(2022, 1, 1), XoTime(0, 0, 0)));
    XoDateTimeN nano(2021, 12, 31, 23, 59, 59, 999999999);
    EXPECT_EQ(Step(XoDATIME_N_T, nano, code), 0);
    EXPECT_EQ(nano, XoDateTimeN(2022, 1, 1, 0, 0, 0, 0));
    XoTimeSpan span(0, 11, 29, 23, 59, 59, 999999999);
    EXPECT_EQ(Step(XoTIMESPAN_T, span, code), 0);
    EXPECT_EQ(span, XoTimeSpan(1, 0, 0, 0, 0, 0, 0));
  }
}

TEST(TemporalStep, WithoutAGreaterValueThereIsNoNext) {
  XoTime time(23, 59, 59);
  EXPECT_EQ(Step(XoTIME_T, time, 'N'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(time, XoTime(23, 59, 59));
  XoDate date(32767, 12, 31);
  EXPECT_EQ(Step(XoDATE_T, date, 'M'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(date, XoDate(32767, 12, 31));
  XoTimeSpan span(32767, 11, 29, 23, 59, 59, 999999999);
  EXPECT_EQ(Step(XoTIMESPAN_T, span, 'M'), ERR_TM_NO_NEXT_VALUE);
  // Its day number is -106190, and -106189 is this very date again: so far back conversion is off.
  XoDate past(-5003, 2, 29);
  EXPECT_EQ(Step(XoDATE_T, past, 'N'), ERR_TM_NO_NEXT_VALUE);
  // A year of -1 counts as a number here, or the next day would not be greater.
  XoDate newYear(-2, 12, 31);
  EXPECT_EQ(Step(XoDATE_T, newYear, 'M'), 0);
  EXPECT_EQ(newYear, XoDate(-1, 1, 1));
  // 2021-02-31 is 3 March, and a day on is the fourth.
  XoDate odd(2021, 2, 31);
  EXPECT_EQ(Step(XoDATE_T, odd, 'M'), 0);
  EXPECT_EQ(odd, XoDate(2021, 3, 4));
}

TEST(TemporalStep, PresentValueAsksTheClock) {
  StoppedClock const clock;
  XoDate date(1, 1, 1);
  EXPECT_EQ(Step(XoDATE_T, date, 'O'), 0);
  EXPECT_EQ(date, XoDate(2021, 4, 15));
  XoTime time(1, 1, 1);
  EXPECT_EQ(Step(XoTIME_T, time, 'O'), 0);
  EXPECT_EQ(time, XoTime(13, 5, 9));
  XoDateTime both(XoDate(1, 1, 1), XoTime(1, 1, 1));
  EXPECT_EQ(Step(XoDATIME_T, both, 'O'), 0);
  EXPECT_EQ(both, XoDateTime(date, time));
  XoDateTimeN nano;
  EXPECT_EQ(Step(XoDATIME_N_T, nano, 'O'), 0);
  EXPECT_EQ(nano, XoDateTimeN(2021, 4, 15, 13, 5, 9, 250000000));
  XoTimeSpan span(1, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(Step(XoTIMESPAN_T, span, 'O'), 0);
  EXPECT_EQ(span, XoTimeSpan(1, 2, 3, 4, 5, 6, 7));
}

TEST(TemporalStep, LowestValueIsNull) {
  for (TemporalRow const& row : kTemporal) {
    ByteList value = InMemory(row, SampleFields(row));
    EXPECT_EQ(Row(row).GetValue(value.data(), 1, FormMemory, 2), 0);
    EXPECT_EQ(Row(row).IsNull(value.data()), 1);
  }
}

TEST(TemporalStep, KnowsMemoryFormAndFourCodes) {
  for (TemporalRow const& row : kTemporal) {
    ByteList const value = InMemory(row, SampleFields(row));
    ByteList copy = value;
    for (int code = 0; code < 256; ++code) {
      if (code == 2 || code == 'M' || code == 'N' || code == 'O') continue;
      EXPECT_EQ(Row(row).GetValue(copy.data(), 1, FormMemory, static_cast<unsigned char>(code)),
                ERR_TM_NOT_SUPPORTED);
    }
    for (unsigned char const format : std::initializer_list<unsigned char>{1, 2, 0x88, 0}) {
      EXPECT_EQ(Row(row).GetValue(copy.data(), 1, format, 'M'), ERR_TM_NOT_SUPPORTED);
    }
    EXPECT_EQ(copy, value);
  }
}

TEST(TemporalStep, OfStoredDataGoesThroughLoadAndStore) {
  StoppedClock const clock;
  XoTypeMgr const manager;
  for (TemporalRow const& row : kTemporal) {
    ByteList stored = Stored(row, SampleFields(row));
    ByteList memory = InMemory(row, SampleFields(row));
    ASSERT_EQ(manager.GetValue(static_cast<char>(row.id), stored.data(), 1, FormLittle, 'M'), 0);
    ASSERT_EQ(manager.GetValue(static_cast<char>(row.id), memory.data(), 1, FormMemory, 'M'), 0);
    ByteList restored(row.disk);
    Row(row).Store(restored.data(), memory.data(), FormLittle, 1);
    EXPECT_EQ(stored, restored);
  }
  ByteList date = Stored(kTemporal[0], {1, 1, 1});
  EXPECT_EQ(manager.GetValue(XoDATE_T, date.data(), 1, FormLittle, 'O'), 0);
  EXPECT_EQ(date, Stored(kTemporal[0], {2021, 4, 15}));
}

// Print and scan.

TEST(TemporalTextSlots, PrintAndScanTheFirstValue) {
  for (TemporalRow const& row : kTemporal) {
    ByteList value = InMemory(row, SampleFields(row));
    value.insert(value.begin(), 0);
    XoString out("old");
    char const* const format = row.hasYear ? "%O %N" : "%T";
    EXPECT_EQ(&Row(row).PrintToXoString(out, value.data() + 1, format, 2), &out);
    std::string const expected = !row.hasYear    ? "13:05:09"
                                 : row.disk == 4 ? "2021-04-15T00:00:00 0"
                                 : row.hasNano   ? "2021-04-15T13:05:09 250000000"
                                                 : "2021-04-15T13:05:09 0";
    EXPECT_EQ(out.StrGet(), expected);
    ByteList back(value.size(), 0x33);
    back[0] = 0;
    EXPECT_EQ(Row(row).ScanFromXoString(back.data() + 1, out, format, 2), back.data() + 1);
    if (row.memory == 8) back[8] = value[8];
    if (row.memory == 12) back[8] = value[8];
    EXPECT_EQ(back, value);
    EXPECT_EQ(Row(row).ScanFromXoString(nullptr, out, format, 1), nullptr);
    XoString shortText("5");
    EXPECT_EQ(Row(row).ScanFromXoString(back.data() + 1, shortText, "%d %d", 1), nullptr);
  }
}

TEST(TemporalTextSlots, AFailedScanLeavesWhatItRead) {
  XoString text("7");
  for (TemporalRow const& row : kTemporal) {
    ByteList value = InMemory(row, SampleFields(row));
    EXPECT_EQ(Row(row).ScanFromXoString(value.data(), text, row.hasYear ? "%m %d" : "%M %S", 1),
              nullptr);
    FieldList fields(FieldCount(row), 0);
    fields[1] = 7;
    ByteList expected = InMemory(row, fields);
    if (row.memory != row.disk) expected[7] = value[7];
    EXPECT_EQ(value, expected);
  }
}

TEST(TemporalTextSlots, DefaultFormatsOfTheRowsPrint) {
  char const* const expected[] = {"Thu 15.Apr 2021", "01:05:09 pm", "Thu 15.Apr 2021 01:05:09 pm",
                                  "2021-04-15T13:05:09.250", "727695.13:05:09.250"};
  for (int i = 0; i < 5; ++i) {
    ByteList value = InMemory(kTemporal[i], SampleFields(kTemporal[i]));
    XoString out;
    Row(kTemporal[i]).PrintToXoString(out, value.data(), Row(kTemporal[i]).Format, 1);
    EXPECT_STREQ(out.StrGet(), expected[i]);
  }
}

TEST(TemporalConversion, PrintsAndScansInTheRowsFormat) {
  XoTypeMgr manager;
  XoDate const dates[] = {XoDate(2021, 4, 15), XoDate::NullValue(), XoDate(2021, 12, 24)};
  XoDate copies[] = {dates[0], dates[1], dates[2]};
  XoTypeConvertData* const strings = manager.ConvertTo(XoDATE_T, copies, 3);
  ASSERT_NE(strings, nullptr);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "Thu 15.Apr 2021");
  EXPECT_EQ(strings->GetString(1)->IsNullValue(), 1);
  EXPECT_STREQ(strings->GetString(2)->StrGet(), "Fri 24.Dec 2021");
  // One string less than values are asked for: the last is null.
  auto* const back = static_cast<XoDate*>(manager.ConvertFrom(XoDATE_T, strings, 4));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(back[i], dates[i]);
  EXPECT_EQ(back[3].IsNullValue(), 1);
  manager.Delete(XoDATE_T, back, 4);
  delete strings;
}

TEST(TemporalConversion, FollowsAnExchangedFormat) {
  XoTypeMgr manager;
  char const* const before = manager.ExchangeFormat(XoDATIME_N_T, "%D %T %N");
  XoDateTimeN value(2021, 4, 15, 13, 5, 9, 7);
  XoTypeConvertData* const strings = manager.ConvertTo(XoDATIME_N_T, &value, 1);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "2021-04-15 13:05:09 7");
  auto* const back = static_cast<XoDateTimeN*>(manager.ConvertFrom(XoDATIME_N_T, strings, 1));
  EXPECT_EQ(*back, value);
  manager.Delete(XoDATIME_N_T, back, 1);
  delete strings;
  manager.ExchangeFormat(XoDATIME_N_T, before);
}

TEST(TemporalConversion, WithoutStringsIsNull) {
  XoTypeMgr manager;
  for (TemporalRow const& row : kTemporal) {
    ByteList value = InMemory(row, SampleFields(row));
    EXPECT_EQ(manager.SetNullValue(static_cast<char>(row.id), value.data()), 0);
    EXPECT_EQ(Row(row).IsNull(value.data()), 1);
    void* const none = manager.ConvertFrom(static_cast<char>(row.id), nullptr, 1);
    EXPECT_EQ(Row(row).IsNull(none), 1);
    manager.Delete(static_cast<char>(row.id), none, 1);
  }
}

}  // namespace
}  // namespace xo::test

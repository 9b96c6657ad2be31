#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/odmg/odmg_support.hpp"
#include "tests/xodate/stopped_clock.hpp"
#include "tests/xodate/temporal_rows.hpp"

namespace xo::test {
namespace {

/// Fields in the order of the record, all but the year of one byte.
constexpr TemporalRow kRecords[] = {{D_DATE_T, 4, 4, true, 2, false},
                                    {D_TIME_T, 6, 6, false, 6, false},
                                    {D_TIMESTAMP_T, 10, 10, true, 8, false}};
constexpr int kIds[] = {D_DATE_T, D_TIME_T, D_TIMESTAMP_T, D_INTERVAL_T};
constexpr unsigned char kFormats[] = {FormLittle, FormBig, FormLittle | FormatIndexKey};

TypeDescriptor& Slots(int id) { return *CurrentTypeTable[id]; }
char Id(int id) { return static_cast<char>(id); }

template <class Value>
ByteList BytesOf(Value const& value) {
  ByteList bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

class OdmgRows : public RandomTest {
 protected:
  FieldList RandomFields(TemporalRow const& row) {
    FieldList fields;
    for (std::size_t i = 0; i < FieldCount(row); ++i) fields.push_back(static_cast<int>(Bits()));
    return fields;
  }
};

TEST(OdmgStore, OnlyTheYearFollowsTheByteOrder) {
  d_Timestamp const stamp(d_Date(2021, 4, 15), d_Time(10, 5, 9.25F, 2, 30));
  ByteList disk(10);
  EXPECT_EQ(Slots(D_TIMESTAMP_T).Store(disk.data(), &stamp, FormLittle, 1), 10u);
  EXPECT_EQ(disk, (ByteList{0xE5, 0x07, 4, 15, 2, 30, 12, 35, 9, 25}));
  EXPECT_EQ(Slots(D_TIMESTAMP_T).Store(disk.data(), &stamp, FormBig, 1), 10u);
  EXPECT_EQ(disk, (ByteList{0x07, 0xE5, 4, 15, 2, 30, 12, 35, 9, 25}));
}

TEST(OdmgStore, AnIntervalIsStoredAsItsNumber) {
  d_Interval const spans[] = {d_Interval::OfSeconds(1), d_Interval::OfSeconds(-2)};
  ByteList disk(8);
  EXPECT_EQ(Slots(D_INTERVAL_T).Store(disk.data(), spans, FormBig, 2), 8u);
  EXPECT_EQ(disk, (ByteList{0x3F, 0x80, 0, 0, 0xC0, 0, 0, 0}));
  d_Interval back[2];
  EXPECT_EQ(Slots(D_INTERVAL_T).Load(back, disk.data(), FormBig, 2), 8u);
  EXPECT_EQ(back[0].Seconds(), 1);
  EXPECT_EQ(back[1].Seconds(), -2);
  EXPECT_EQ(Slots(D_INTERVAL_T).Store(disk.data(), spans, FormBig, 0), 0u);
  EXPECT_EQ(Slots(D_INTERVAL_T).SizeGetFromMemFile(nullptr, FormBig, 3), 12u);
  EXPECT_EQ(Slots(D_INTERVAL_T).NullSizeGet(3), 12u);
  EXPECT_EQ(Slots(D_INTERVAL_T).Translate(back, 8, 0, disk.data(), FormBig, 7, 2), 4u);
  EXPECT_EQ(Slots(D_INTERVAL_T).Translate(disk.data(), FormLittle, 0, back, 8, 0, 2), 8u);
  EXPECT_EQ(disk[3], 0x3F);
}

TEST_F(OdmgRows, LoadGivesBackWhatStoreWrote) {
  for (TemporalRow const& row : kRecords) {
    for (unsigned char format : kFormats) {
      for (unsigned count : {0u, 1u, 2u, 5u}) {
        ByteList memory, stored;
        for (unsigned i = 0; i < count; ++i) {
          FieldList const fields = RandomFields(row);
          memory += Stored(row, fields);
          stored += Stored(row, fields, (format & 15) == FormBig);
        }
        ByteList disk(stored.size()), back(memory.size());
        ASSERT_EQ(Row(row).Store(disk.data(), memory.data(), format, count), count * row.disk);
        ASSERT_EQ(disk, stored);
        ASSERT_EQ(Row(row).Load(back.data(), disk.data(), format, count), count * row.disk);
        ASSERT_EQ(back, memory);
        ASSERT_EQ(Row(row).NullSizeGet(count), count * row.disk);
        ASSERT_EQ(Row(row).SizeGet(nullptr, FormMemory, format, count), count * row.disk);
        ASSERT_EQ(Row(row).SizeGetFromMemFile(nullptr, format, count), count * row.disk);
      }
    }
  }
}

TEST_F(OdmgRows, TranslateStopsAtEveryLength) {
  for (TemporalRow const& row : kRecords) {
    FieldList const fields = RandomFields(row);
    ByteList value = Stored(row, fields), stored = Stored(row, fields, true);
    for (unsigned length = 1; length <= row.disk + 1; ++length) {
      unsigned const there = std::min(length, row.disk);
      ByteList source(stored.begin(), stored.begin() + there), target(row.disk, 0x55);
      unsigned const whole = length >= row.disk ? row.disk : 0;
      EXPECT_EQ(Row(row).Translate(target.data(), 8, row.memory, source.data(), FormBig, length, 1),
                whole);
      EXPECT_EQ(target, whole != 0 ? value : ByteList(row.disk, 0x55));
      // Between disk forms bytes are copied as they are, and the rest is cleared.
      EXPECT_EQ(
          Row(row).Translate(target.data(), FormLittle, row.disk, source.data(), FormBig, there, 1),
          there);
      ByteList expected = source;
      expected.resize(row.disk);
      EXPECT_EQ(target, expected);
    }
    ByteList copy(row.disk);
    EXPECT_EQ(Row(row).Translate(copy.data(), 8, 1, value.data(), 8, 1, 1), row.disk);
    EXPECT_EQ(copy, value);
  }
}

TEST(OdmgCreate, MakesThePresentAndIntervalsOfNothing) {
  StoppedClock const clock;
  DefaultZone const zone(2);
  ByteList const present[] = {
      {0xE5, 7, 4, 15}, {2, 0, 15, 5, 9, 0}, {0xE5, 7, 4, 15, 2, 0, 15, 5, 9, 0}, {0, 0, 0, 0}};
  for (unsigned count : {0u, 1u, 2u, 7u}) {
    for (int i = 0; i < 4; ++i) {
      TypeDescriptor const& row = Slots(kIds[i]);
      void* const made[] = {row.Create(count), row.DefaultValue(count, 0),
                            row.DefaultValue(count, 1)};
      for (void* const values : made) {
        for (unsigned element = 0; element < std::max(count, 1u); ++element) {
          auto const* const bytes = static_cast<unsigned char*>(values) + element * row.MemLen;
          EXPECT_EQ(ByteList(bytes, bytes + row.MemLen), present[i]);
        }
        EXPECT_EQ(row.Delete(values, count), nullptr);
      }
      EXPECT_EQ(row.Delete(nullptr, count), nullptr);
    }
  }
}

TEST(OdmgNull, ThereIsNoneAndItsSubstituteIsWhatAnEmptyTextReadsAs) {
  DefaultZone const zone(2);
  XoTypeMgr manager;
  d_Date date(2021, 4, 15);
  d_Time time(10, 0);
  d_Timestamp stamp(2021, 4, 15);
  d_Interval span(1);
  void* const values[] = {&date, &time, &stamp, &span};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Slots(kIds[i]).SetNull, nullptr);
    EXPECT_EQ(manager.SupportsNullValue(Id(kIds[i])), 0);
    EXPECT_EQ(manager.IsNullValue(Id(kIds[i]), values[i]), 0);
    EXPECT_EQ(manager.SetNullValue(Id(kIds[i]), values[i]), 0);
  }
  EXPECT_EQ(Text(date), "0-0-0");
  EXPECT_EQ(Fields(time), (TimeBytes{2, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Text(stamp.date()), "0-0-0");
  EXPECT_EQ(span.Seconds(), 0);
}

TEST(OdmgAssignment, TakesAllElementsOrTheFirst) {
  d_Date const source[] = {d_Date(1, 1, 1), d_Date(2, 2, 2)};
  for (auto* const assign : {Slots(D_DATE_T).Assignment, Slots(D_DATE_T).Copy}) {
    d_Date target[] = {d_Date(9, 9, 9), d_Date(9, 9, 9), d_Date(9, 9, 9)};
    assign(target, const_cast<d_Date*>(source), 2, 0);
    EXPECT_EQ(Text(target[1]), "2-2-2");
    assign(target, const_cast<d_Date*>(source), 2, 1);
    EXPECT_EQ(Text(target[1]), "1-1-1");
    EXPECT_EQ(Text(target[2]), "9-9-9");
  }
}

// Hash.

unsigned HashOf(int id, ByteList data, unsigned char format, unsigned count = 1,
                unsigned length = 0, int expectedError = 0) {
  int error = 99;
  unsigned const hash = Slots(id).Hash(format, length, data.data(), count, error);
  EXPECT_EQ(error, expectedError);
  return hash;
}

TEST(OdmgHash, FoldsTheValueInEveryForm) {
  constexpr unsigned kFactor = 1103515245u;
  unsigned const date = (2021u << 16) + (4u << 8) + 15u;
  EXPECT_EQ(HashOf(D_DATE_T, {0xE5, 0x07, 4, 15}, 8), date * kFactor);
  EXPECT_EQ(HashOf(D_DATE_T, {0xE5, 0x07, 4, 15}, 1), date * kFactor);
  EXPECT_EQ(HashOf(D_DATE_T, {0x07, 0xE5, 4, 15}, 2), date * kFactor);
  // Month and day count as signed.
  EXPECT_EQ(HashOf(D_DATE_T, {0, 0, 0xFF, 0xFF}, 1), (0u - 256u - 1u) * kFactor);
  unsigned const time = 0xFF0203u ^ 0x04FE06u;
  EXPECT_EQ(HashOf(D_TIME_T, {0xFF, 2, 3, 4, 0xFE, 6}, 8), time * kFactor);
  EXPECT_EQ(HashOf(D_TIMESTAMP_T, {0xE5, 7, 4, 15, 0xFF, 2, 3, 4, 0xFE, 6}, 1),
            (date ^ time) * kFactor);
  EXPECT_EQ(HashOf(D_TIMESTAMP_T, {7, 0xE5, 4, 15, 0xFF, 2, 3, 4, 0xFE, 6}, 2),
            (date ^ time) * kFactor);
  EXPECT_EQ(HashOf(D_INTERVAL_T, {0, 0, 0x80, 0x3F}, 8), 0x3F800000u * kFactor);
  EXPECT_EQ(HashOf(D_INTERVAL_T, {0x3F, 0x80, 0, 0}, 2), 0x3F800000u * kFactor);
  EXPECT_EQ(HashOf(D_DATE_T, {}, 1, 0), 0u);
}

TEST(OdmgHash, EndsWithTheElementInWhichTheLengthEnds) {
  ByteList const two = {1, 0, 2, 3, 4, 0, 5, 6};
  EXPECT_EQ(HashOf(D_DATE_T, two, 1, 5, 5, ERR_TM_LENGTH_EXCEEDED), HashOf(D_DATE_T, two, 1, 2));
  EXPECT_EQ(HashOf(D_DATE_T, two, 1, 2, 5), HashOf(D_DATE_T, two, 1, 2));
  EXPECT_EQ(HashOf(D_DATE_T, two, 1, 2, 4, ERR_TM_LENGTH_EXCEEDED), HashOf(D_DATE_T, two, 1, 1));
}

// Step.

template <class Value>
int Step(int id, Value& value, unsigned char code) {
  return Slots(id).GetValue(&value, 1, FormMemory, code);
}

TEST(OdmgNextValue, IsADayOrASecondOn) {
  for (unsigned char code : {kNextValue, kNextValueToo}) {
    d_Date date(1582, 10, 4);
    EXPECT_EQ(Step(D_DATE_T, date, code), 0);
    EXPECT_EQ(Text(date), "1582-10-15");
    // Hundredths and zone stay as they are.
    d_Time time(10, 59, 59.29F, 2, 30);
    TimeBytes next = Fields(time);
    next[2] = 13;
    next[3] = 30;
    next[4] = 0;
    EXPECT_EQ(Step(D_TIME_T, time, code), 0);
    EXPECT_EQ(Fields(time), next);
    d_Timestamp stamp(d_Date(2021, 12, 31), d_Time(23, 59, 59.29F, 2, 30));
    EXPECT_EQ(Step(D_TIMESTAMP_T, stamp, code), 0);
    EXPECT_EQ(Text(stamp.date()), "2022-1-1");
    EXPECT_EQ(Printed(stamp.time(), "%T"), "00:00:00");
    EXPECT_EQ(stamp.tz_minute(), 30);
    d_Interval span = d_Interval::OfSeconds(1);
    EXPECT_EQ(Step(D_INTERVAL_T, span, code), 0);
    EXPECT_EQ(span.Seconds(), 1 + std::numeric_limits<float>::epsilon());
  }
}

TEST(OdmgNextValue, TheLastOneHasNoneAndStays) {
  d_Date date(32767, 12, 31);
  EXPECT_EQ(Step(D_DATE_T, date, kNextValue), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(Text(date), "32767-12-31");
  d_Time time(23, 59, 59.5F, 2, 0);
  TimeBytes const before = Fields(time);
  EXPECT_EQ(Step(D_TIME_T, time, kNextValue), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(Fields(time), before);
  d_Timestamp stamp(date, time);
  EXPECT_EQ(Step(D_TIMESTAMP_T, stamp, kNextValue), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(Fields(stamp.time()), before);
  d_Interval span = d_Interval::OfSeconds(std::numeric_limits<float>::max());
  EXPECT_EQ(Step(D_INTERVAL_T, span, kNextValue), ERR_TM_NO_NEXT_VALUE);
}

TEST(OdmgNextValue, EverySecondOfADayLeadsToTheNext) {
  d_Time time(0, 0, 0, -7, 45);
  for (int second = 1; second < 86400; ++second) {
    ASSERT_EQ(Step(D_TIME_T, time, kNextValue), 0) << second;
    TimeBytes const f = Fields(time);
    ASSERT_EQ(((f[2] + 7) * 60 + f[3] - 45) * 60 + f[4], second);
  }
  EXPECT_EQ(Step(D_TIME_T, time, kNextValue), ERR_TM_NO_NEXT_VALUE);
}

TEST_F(OdmgRows, AStepOfAnyBytesIsGreaterOrLeavesThem) {
  for (int round = 0; round < 20000; ++round) {
    for (TemporalRow const& row : kRecords) {
      ByteList const before = Bytes(row.memory);
      ByteList after = before;
      int const result = Row(row).GetValue(after.data(), 1, FormMemory, kNextValue);
      int status = 0;
      ByteList old = before;
      int const order = Row(row).Compare(FormMemory, 0, after.data(), 0, old.data(), 0, 1, status);
      ASSERT_TRUE(result == 0 ? order > 0 : result == ERR_TM_NO_NEXT_VALUE && after == before);
    }
  }
}

TEST(OdmgPresentValue, IsNowAndIntervalsHaveNone) {
  StoppedClock const clock;
  d_Timestamp stamp(1, 1, 1);
  d_Date date(1, 1, 1);
  d_Time time(0, 0);
  d_Interval span(1);
  EXPECT_EQ(Step(D_TIMESTAMP_T, stamp, kPresentValue), 0);
  EXPECT_EQ(Step(D_DATE_T, date, kPresentValue), 0);
  EXPECT_EQ(Step(D_TIME_T, time, kPresentValue), 0);
  EXPECT_EQ(Printed(stamp, "%O"), "2021-04-15T13:05:09");
  EXPECT_EQ(Text(date), "2021-4-15");
  EXPECT_EQ(Printed(time, "%T"), "13:05:09");
  EXPECT_EQ(Step(D_INTERVAL_T, span, kPresentValue), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(span.Seconds(), 86400);
  // Other codes, other formats.
  for (int id : {D_DATE_T, D_TIME_T, D_TIMESTAMP_T}) {
    ByteList value(10);
    EXPECT_EQ(Slots(id).GetValue(value.data(), 1, FormMemory, 'P'), ERR_TM_NOT_SUPPORTED);
    EXPECT_EQ(Slots(id).GetValue(value.data(), 1, FormLittle, 'M'), ERR_TM_NOT_SUPPORTED);
    EXPECT_EQ(value, ByteList(10));
  }
  ByteList disk = {0xE5, 0x07, 4, 15};
  EXPECT_EQ(XoTypeMgr().GetValue(D_DATE_T, disk.data(), 1, FormLittle, 'M'), 0);
  EXPECT_EQ(disk[3], 16);
}

// Text.

TEST(OdmgConversions, ArePrintAndScanInTheFormatOfTheRow) {
  XoTypeMgr manager;
  d_Interval spans[] = {d_Interval(1, 2, 3, 4), d_Interval(0, 5)};
  XoTypeConvertData* const strings = manager.ConvertTo(D_INTERVAL_T, spans, 2);
  ASSERT_NE(strings, nullptr);
  EXPECT_EQ(Text(*strings->GetString(0)), "01 days, 02 hours, 03 minutes, 04 seconds");
  EXPECT_EQ(Text(*strings->GetString(1)), "00 days, 05 hours, 00 minutes, 00 seconds");
  // Missing texts read as empty ones.
  auto* const back = static_cast<d_Interval*>(manager.ConvertFrom(D_INTERVAL_T, strings, 3));
  EXPECT_EQ(back[0].Seconds(), spans[0].Seconds());
  EXPECT_EQ(back[1].Seconds(), spans[1].Seconds());
  EXPECT_EQ(back[2].Seconds(), 0);
  manager.Delete(D_INTERVAL_T, back, 3);
  delete strings;

  char const* const before = manager.ExchangeFormat(D_DATE_T, "%Y/%m/%d");
  d_Date date(2021, 4, 15);
  XoTypeConvertData* const text = manager.ConvertTo(D_DATE_T, &date, 1);
  EXPECT_EQ(Text(*text->GetString(0)), "2021/04/15");
  auto* const dates = static_cast<d_Date*>(manager.ConvertFrom(D_DATE_T, text, 1));
  EXPECT_EQ(Text(*dates), "2021-4-15");
  manager.Delete(D_DATE_T, dates, 1);
  manager.ExchangeFormat(D_DATE_T, before);
  delete text;
}

TEST(OdmgConversions, NoneOfNothing) {
  XoTypeMgr manager;
  for (int id : kIds) {
    void* const values = manager.ConvertFrom(Id(id), nullptr, 1);
    EXPECT_NE(values, nullptr);
    manager.Delete(Id(id), values, 1);
    XoTypeConvertData* const strings = manager.ConvertTo(Id(id), nullptr, 0);
    EXPECT_EQ(strings->count, 0u);
    delete strings;
  }
}

TEST_F(OdmgRows, PrintAndScanTakeValuesAtAnyAddress) {
  for (int id : kIds) {
    TypeDescriptor const& row = Slots(id);
    ByteList value = Bytes(std::size_t{row.MemLen} + 1);
    XoString out;
    EXPECT_EQ(&row.PrintToXoString(out, value.data() + 1, row.Format, 1), &out);
    EXPECT_EQ(row.ScanFromXoString(nullptr, out, row.Format, 1), nullptr);
    XoString text("01 02 03 04 05 06 07 08");
    EXPECT_EQ(row.ScanFromXoString(value.data() + 1, text, "%d %H %M %S", 1), value.data() + 1);
    XoString empty;
    EXPECT_EQ(row.ScanFromXoString(value.data() + 1, empty, row.Format, 1), nullptr);
  }
}

// Time stamps.

class StoredStamp : public testing::Test {
 protected:
  ByteList Store(int id, unsigned char format = FormLittle) {
    ByteList disk(12, 0x55);
    int const size = XoTypeMgr().StoreTimeStamp(Id(id), disk.data(), format, &record);
    disk.resize(static_cast<std::size_t>(std::max(size, 0)));
    return disk;
  }

  XoDateTimeN record{2021, 4, 15, 13, 5, 9, 2};
};

TEST_F(StoredStamp, TakesItsPartOfTheMoment) {
  EXPECT_EQ(Store(XoDATE_T), (ByteList{0xE5, 7, 4, 15}));
  EXPECT_EQ(Store(XoTIME_T), (ByteList{13, 5, 9}));
  EXPECT_EQ(Store(XoDATIME_T, FormBig), (ByteList{7, 0xE5, 4, 15, 13, 5, 9}));
  EXPECT_EQ(Store(XoDATIME_N_T), (ByteList{0xE5, 7, 4, 15, 13, 5, 9, 2, 0, 0, 0}));
  EXPECT_EQ(Store(D_DATE_T, FormBig), (ByteList{7, 0xE5, 4, 15}));
}

TEST_F(StoredStamp, OfZonedTimesIsInTheDefaultZoneWithTheFractionAsSeconds) {
  DefaultZone const zone(3);
  EXPECT_EQ(Store(D_TIME_T), (ByteList{3, 0, 16, 5, 11, 0}));
  EXPECT_EQ(Store(D_TIMESTAMP_T), (ByteList{0xE5, 7, 4, 15, 3, 0, 16, 5, 11, 0}));
  // 250,000,009 is none of a float, whose neighbour is 250,000,016, and its low byte is 0x90.
  record.nanoSeconds = 250000000;
  EXPECT_EQ(Store(D_TIME_T)[4], 0x90);
}

TEST_F(StoredStamp, OtherTypesAndNoMomentAreNotSupported) {
  for (int id = -128; id < 128; ++id) {
    unsigned char target = 0x55;
    switch (id) {
      case XoDATE_T:
      case XoTIME_T:
      case XoDATIME_T:
      case D_DATE_T:
      case D_TIME_T:
      case D_TIMESTAMP_T:
      case XoDATIME_N_T:
        break;
      default:
        EXPECT_EQ(XoTypeMgr().StoreTimeStamp(Id(id), &target, 1, &record), ERR_TM_NOT_SUPPORTED);
    }
    EXPECT_EQ(XoTypeMgr().StoreTimeStamp(Id(id), &target, 1, nullptr), ERR_TM_NOT_SUPPORTED);
    EXPECT_EQ(target, 0x55);
  }
}

}  // namespace
}  // namespace xo::test

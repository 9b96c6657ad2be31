#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/evaluated.hpp"

/// The evaluation of dates, times and identifiers against one that is written down step by step for
/// each row, on its own reading of the bytes: every form and relation, wildcards and odd fields,
/// ranges that are missing, half known or in the wrong order, bounds that are there before.
namespace xo::test {
namespace {

constexpr unsigned short kPattern = 8, kLiteral = 0x10;

/// A value as it is understood, field by field. Those that a row lacks are 0.
struct Fields {
  int year = 0, month = 0, day = 0;
  int zoneHour = 0, zoneMinute = 0, hour = 0, minute = 0, second = 0, hundredths = 0;
  int nanoSeconds = 0;
};

/// Which of the fields a row stores, in this order.
struct Shape {
  char id;
  bool hasDate, hasZone, hasTime, hasNanoSeconds;
  unsigned Width() const {
    return (hasDate ? 4 : 0) + (hasTime ? 3 : 0) + (hasZone ? 3 : 0) + (hasNanoSeconds ? 4 : 0);
  }
  /// With the padding that some have in memory.
  unsigned MemoryWidth() const { return Width() + (hasDate && hasTime && !hasZone ? 1 : 0); }
};

constexpr Shape kShapes[] = {
    {XoDATE_T, true, false, false, false},   {XoTIME_T, false, false, true, false},
    {XoDATIME_T, true, false, true, false},  {XoDATIME_N_T, true, false, true, true},
    {XoTIMESPAN_T, true, false, true, true}, {D_DATE_T, true, false, false, false},
    {D_TIME_T, false, true, true, false},    {D_TIMESTAMP_T, true, true, true, false},
};

ByteList Stored(Shape const& shape, Fields const& fields, unsigned char format,
                bool isPadded = false) {
  ByteList bytes;
  auto const add = [&](int field) { bytes.push_back(static_cast<unsigned char>(field)); };
  if (shape.hasDate) {
    bytes = Encode<std::int16_t>({static_cast<std::int16_t>(fields.year)}, format);
    add(fields.month), add(fields.day);
  }
  if (shape.hasZone) add(fields.zoneHour), add(fields.zoneMinute);
  if (shape.hasTime) add(fields.hour), add(fields.minute), add(fields.second);
  if (shape.hasZone) add(fields.hundredths);
  if (isPadded && shape.MemoryWidth() != shape.Width()) bytes.push_back(0xEE);
  if (shape.hasNanoSeconds) bytes = bytes + Encode<int>({fields.nanoSeconds}, format);
  return bytes;
}

// The numbers.

/// Fliegel and Van Flandern, CACM 11 (1968) 657.
int DayNumber(int year, int month, int day) {
  int const a = (month - 14) / 12;
  int const b = year + 4800 + a;
  return day - 32075 + (1461 * b) / 4 + (367 * (month - 2 - 12 * a)) / 12 -
         (3 * ((b + 100) / 100)) / 4;
}

double NumberOf(Shape const& shape, Fields const& f) {
  switch (shape.id) {
    case XoDATE_T:
      return DayNumber(f.year, f.month, f.day);
    case XoTIME_T:
    case D_TIME_T:
      return (f.hour * 60 + f.minute) * 60 + f.second;
    case D_DATE_T:
      return ((f.year + 40000) * 12 + f.month) * 31 + f.day;
    case D_TIMESTAMP_T: {
      double const days = ((f.year + 40000) * 12 + f.month) * 31 + f.day;
      return ((days * 24.0 + f.hour) * 60.0 + f.minute) * 60.0 + f.second;
    }
    default:
      return ((((f.year * 12.0 + f.month) * 31.0 + f.day) * 24.0 + f.hour) * 60.0 + f.minute) *
                 60.0 +
             f.second;
  }
}

// The ends of a value.

struct Ends {
  Fields low, high;  ///< as the bounds hold them
  Fields lowNumber;  ///< as the lower one is counted
  bool isPattern = false;
  bool clearsFlags = false;
};

Ends EndsOfDate(Fields const& value) {
  Ends ends{value, value, {}};
  auto& [low, high, raised, isPattern, clears] = ends;
  if (value.year == -1) low.year = -4713, high.year = 0x7FFE, isPattern = true;
  if (value.month == -1) low.month = low.year == -4713 ? 11 : 1, high.month = 12, isPattern = true;
  if (value.day == -1) {
    low.day = low.year == -4713 && low.month == 11 ? 24 : 1;
    int const nextYear = high.month == 12 ? high.year + 1 : high.year;
    int const nextMonth = high.month == 12 ? 1 : high.month + 1;
    high.day = DayNumber(nextYear, nextMonth, 1) - DayNumber(high.year, high.month, 1);
    isPattern = true;
  }
  raised = low;
  if (raised.year < -4713) raised.year = -4713;
  if (raised.year == -4713 && raised.month < 11) raised.month = 11;
  if (raised.year == -4713 && raised.month == 11 && raised.day < 24) raised.day = 24;
  return ends;
}

Ends EndsOfOdmg(Shape const& shape, Fields const& value) {
  Ends ends{value, value, {}};
  if (shape.hasDate) {
    if (value.year == -1) ends.low.year = -32768, ends.high.year = 32767, ends.isPattern = true;
    if (value.month == -1) ends.low.month = -128, ends.high.month = 127, ends.isPattern = true;
    if (value.day == -1) ends.low.day = -128, ends.high.day = 127, ends.isPattern = true;
  }
  ends.lowNumber = ends.low;
  return ends;
}

Ends EndsOfFields(Shape const& shape, Fields const& value, bool isLiteral) {
  Ends ends{value, value, {}};
  bool& wild = ends.isPattern;
  auto const widen = [&](int& low, int& high, int lowest, int highest) {
    if (low == -1 && !isLiteral) wild = true;
    if (wild) low = lowest, high = highest;
  };
  if (shape.hasDate) {
    widen(ends.low.year, ends.high.year, -32768, 32767);
    widen(ends.low.month, ends.high.month, -128, 127);
    widen(ends.low.day, ends.high.day, -128, 127);
  }
  widen(ends.low.hour, ends.high.hour, -128, 127);
  widen(ends.low.minute, ends.high.minute, -128, 127);
  widen(ends.low.second, ends.high.second, -128, 127);
  if (shape.hasNanoSeconds) {
    ends.clearsFlags = wild;
    widen(ends.low.nanoSeconds, ends.high.nanoSeconds, 0, 1000000000);
  }
  ends.lowNumber = ends.low;
  return ends;
}

Ends EndsOf(Shape const& shape, Fields const& value, bool isLiteral) {
  if (shape.id == XoDATE_T) return EndsOfDate(value);
  if (shape.id == D_DATE_T || shape.hasZone) return EndsOfOdmg(shape, value);
  return EndsOfFields(shape, value, isLiteral);
}

float ShareOfKeys(Shape const& shape, unsigned short op, Fields const& value, Ends const& ends,
                  double low, double high) {
  double const total = high - low + 1.0;
  double area = 0;
  if (shape.id == D_DATE_T || shape.id == D_TIME_T) {
    double const place = NumberOf(shape, value) - low + 1;
    if ((op & 2) != 0) area += place - 1;
    if ((op & 4) != 0) area += total - place;
    if ((op & 1) != 0) area += 1;
    if (area < 0) area = 0;
  } else {
    area = BoundRangeArea(op, NumberOf(shape, ends.lowNumber), NumberOf(shape, ends.high), low,
                          high, 1.0);
  }
  return area == 0 || total == 0 ? 0.0F : static_cast<float>(area / total);
}

unsigned short BitsLeft(char id, unsigned short op) {
  if (id == D_TIME_T) return op;
  return op & (id == XoDATE_T || id == D_DATE_T || id == D_TIMESTAMP_T ? 0x800F : 0x8007);
}

class TemporalOracle : public RandomTest, public testing::WithParamInterface<Shape> {
 protected:
  Shape const& shape = GetParam();

  int AnyByte() {
    switch (Below(8)) {
      case 0:
        return -1;
      case 1:
        return static_cast<int>(Below(126)) - 128;
      default:
        return static_cast<int>(Below(16)) - 1;
    }
  }
  int AnyYear() {
    static constexpr int kYears[] = {-1, -4713, -4714, -4712, -32768, 0x7FFE, 0x7FFF, 0, 2020};
    if (OneIn(3)) return kYears[Below(std::size(kYears))];
    return OneIn(4) ? static_cast<std::int16_t>(Bits()) : 2018 + static_cast<int>(Below(4));
  }
  Fields AnyFields() {
    Fields fields;
    if (shape.hasDate) fields.year = AnyYear(), fields.month = AnyByte(), fields.day = AnyByte();
    if (shape.hasZone) fields.zoneHour = AnyByte(), fields.zoneMinute = AnyByte();
    if (shape.hasTime) {
      fields.hour = AnyByte(), fields.minute = AnyByte(), fields.second = AnyByte();
    }
    if (shape.hasZone) fields.hundredths = AnyByte();
    if (shape.hasNanoSeconds) {
      fields.nanoSeconds = OneIn(4) ? -1 : static_cast<std::int32_t>(Bits());
    }
    return fields;
  }
};

INSTANTIATE_TEST_SUITE_P(All, TemporalOracle, testing::ValuesIn(kShapes), [](auto const& instance) {
  return "Id" + std::to_string(int{instance.param.id});
});

TEST_P(TemporalOracle, AgreesOnAnyPredicate) {
  constexpr int kRounds = 20000;
  XoTypeMgr const manager;
  bool const isDateTime = shape.hasDate && shape.hasTime && !shape.hasZone;
  for (int round = 0; round < kRounds && !HasFailure(); ++round) {
    static constexpr unsigned char kAllForms[] = {1, 2, 8, 0x81, 0x82, 0x88, 0, 0xF2};
    unsigned char const format = kAllForms[Below(std::size(kAllForms))];
    bool const isMemory = format % 16 == 8;
    auto const op = static_cast<unsigned short>(OneIn(2) ? Bits() : Below(8));
    unsigned const count = Below(4);
    Fields const fields = AnyFields(), lowFields = AnyFields(), highFields = AnyFields();
    ByteList value = Stored(shape, fields, format, isMemory);
    for (unsigned index = 1; index < count; ++index) {
      value = value + Stored(shape, AnyFields(), format, isMemory);
    }
    PlacedBytes const operand(value, 1);
    PlacedBytes const lowest(Stored(shape, lowFields, format, isMemory), 1);
    PlacedBytes const highest(Stored(shape, highFields, format, isMemory), 1);
    XoIdxBounds range{OneIn(20) ? nullptr : lowest.Data(), OneIn(20) ? nullptr : highest.Data()};
    XoIdxBounds* const known = OneIn(20) ? nullptr : &range;
    bool const hasEnds = known != nullptr && range.low != nullptr && range.high != nullptr;

    Ends const ends = EndsOf(shape, fields, (op & kLiteral) != 0);
    auto const expectedOp =
        static_cast<unsigned short>(BitsLeft(shape.id, op) | (ends.isPattern ? kPattern : 0));
    float const expected = hasEnds
                               ? ShareOfKeys(shape, op, fields, ends, NumberOf(shape, lowFields),
                                             NumberOf(shape, highFields))
                               : 0.0F;
    // A bound that is there before ends with its memory.
    MaybeBytes const presentLow = OneIn(4) ? MaybeBytes(Bytes(1 + Below(12))) : std::nullopt;
    MaybeBytes const presentHigh = OneIn(4) ? MaybeBytes(Bytes(1 + Below(12))) : std::nullopt;
    PlacedKey const lowBefore(presentLow), highBefore(presentHigh);
    auto const boundOf = [&](MaybeBytes present, bool isOpen, Fields const& end) {
      ByteList const first = Stored(shape, end, format);
      std::size_t room = 0;
      if (present) {
        if (isDateTime) room = std::min(first.size(), present->size());
      } else if (isOpen) {
        return present;
      } else {
        present = ByteList(value.begin(), value.begin() + shape.Width() * count);
        room = std::min(first.size(), present->size());
      }
      std::copy_n(first.begin(), room, present->begin());
      return present;
    };
    MaybeBytes const expectedLow = boundOf(presentLow, (op & 2) != 0, ends.low);
    MaybeBytes const expectedHigh = boundOf(presentHigh, (op & 4) != 0, ends.high);

    XoIdxBounds bounds{lowBefore.Data(),
                       highBefore.Data(),
                       lowBefore.Length(),
                       highBefore.Length(),
                       0xABCD,
                       0x1235,
                       9};
    unsigned short opAfter = op, opAlone = op;
    EXPECT_EQ(manager.EvalAndBound(shape.id, known, opAlone, operand.Data(), format, count, nullptr,
                                   nullptr),
              expected);
    EXPECT_EQ(opAlone, expectedOp);
    EXPECT_EQ(manager.EvalAndBound(shape.id, known, opAfter, operand.Data(), format, count, &bounds,
                                   nullptr),
              expected);
    EXPECT_EQ(opAfter, expectedOp);
    EXPECT_EQ(BoundBytes(bounds.low, bounds.lowLen), expectedLow);
    EXPECT_EQ(BoundBytes(bounds.high, bounds.highLen), expectedHigh);
    EXPECT_EQ(bounds.lowFlags, ends.clearsFlags ? 0xABCC : 0xABCD);
    EXPECT_EQ(bounds.highFlags, ends.clearsFlags ? 0x1234 : 0x1235);
    EXPECT_EQ(bounds.keyLimit, 9);
    if (presentLow) bounds.low = nullptr;
    if (presentHigh) bounds.high = nullptr;
    ReleaseBounds(bounds);
    if (HasFailure()) {
      ADD_FAILURE() << "round " << round << " op " << std::hex << op << " format " << +format
                    << " count " << count << testing::PrintToString(value)
                    << testing::PrintToString(Stored(shape, lowFields, format))
                    << testing::PrintToString(Stored(shape, highFields, format));
    }
  }
}

// Identifiers.

struct Identity {
  char id;
  unsigned width, memoryWidth;
};

class IdentityOracle : public RandomTest, public testing::WithParamInterface<Identity> {
 protected:
  /// Bytes of few values, so that numbers meet.
  ByteList AnyKey(unsigned size) {
    ByteList bytes = Bytes(size);
    if (OneIn(2)) return bytes;
    for (unsigned char& byte : bytes) byte = OneIn(2) ? 0 : OneIn(2) ? 0xFF : byte & 3;
    return bytes;
  }
};

INSTANTIATE_TEST_SUITE_P(All, IdentityOracle,
                         testing::Values(Identity{XoOBJID_T, 10, 12}, Identity{XoREF_T, 14, 16},
                                         Identity{XoSEAL_T, 6, 6}, Identity{XoCLID_T, 0, 4},
                                         Identity{XoBLOB_T, 0, 4}),
                         [](auto const& instance) {
                           return "Id" + std::to_string(int{instance.param.id});
                         });

double Word(ByteList const& key, unsigned place, unsigned char format) {
  return DecodeAt<std::uint16_t>(key.data() + place, format);
}
double Long(ByteList const& key, unsigned place, unsigned char format) {
  return DecodeAt<std::uint32_t>(key.data() + place, format);
}

double NumberOf(char id, ByteList const& key, unsigned char format) {
  if (id == XoOBJID_T) return Word(key, 8, format) * 65535.0 + Long(key, 4, format);
  unsigned char const words = format == 8 ? 1 : 2;
  return Word(key, 0, words) * 4294967296.0 + Word(key, 2, words) * 65536.0 + Word(key, 4, words);
}

float IdentityShare(char id, unsigned op, ByteList const& value, ByteList const& low,
                    ByteList const& high, unsigned char format) {
  double const number = NumberOf(id, value, format);
  double const least = NumberOf(id, low, format), most = NumberOf(id, high, format);
  double area = BoundRangeArea(static_cast<unsigned short>(op), number, number, least, most, 1.0);
  if (id == XoSEAL_T && area == 0 && least <= most && ((op & 4) != 0 || least <= number) &&
      ((op & 2) != 0 || number <= most)) {
    area = 1.0;
  }
  return area == 0 ? 0.0F : static_cast<float>(area / (most - least + 1.0));
}

float ReferenceShare(unsigned op, ByteList const& value, unsigned char format) {
  double const kSpace = 1.8446744065119617e+19;
  double const x = (Word(value, 10, format) * 65535.0 + Word(value, 8, format)) * 4294967295.0 +
                   Long(value, 4, format);
  double area = 0;
  if ((op & 2) != 0) area += x;
  if ((op & 4) != 0) area += kSpace - (x + 1.0);
  if ((op & 1) != 0) area += 1.0;
  return static_cast<float>(area / kSpace);
}

TEST_P(IdentityOracle, AgreesOnAnyPredicate) {
  char const id = GetParam().id;
  unsigned const width = GetParam().width, memoryWidth = GetParam().memoryWidth;
  XoTypeMgr const manager;
  for (int round = 0; round < 20000 && !HasFailure(); ++round) {
    static constexpr unsigned char kAllForms[] = {1, 2, 8, 0x81, 0x82, 0x88, 0, 0xF2};
    unsigned char const format = kAllForms[Below(std::size(kAllForms))];
    auto const op = static_cast<unsigned short>(OneIn(2) ? Bits() : Below(8));
    unsigned const count = Below(4);
    ByteList const value = AnyKey(memoryWidth * std::max(count, 1U));
    ByteList low = AnyKey(memoryWidth);
    ByteList high = OneIn(4) ? low : AnyKey(memoryWidth);
    PlacedBytes const operand(value, 1), lowest(low, 1), highest(high, 1);
    XoIdxBounds range{OneIn(20) ? nullptr : lowest.Data(), OneIn(20) ? nullptr : highest.Data()};
    XoIdxBounds* const known = OneIn(20) ? nullptr : &range;
    bool const hasEnds = known != nullptr && range.low != nullptr && range.high != nullptr;

    float expected = 1.0F;
    if (id == XoREF_T) {
      expected = ReferenceShare(op, value, format);
    } else if (id == XoOBJID_T || id == XoSEAL_T) {
      expected = hasEnds ? IdentityShare(id, op, value, low, high, format) : 0.0F;
    }
    unsigned char presentLow[1], presentHigh[1];
    XoIdxBounds bounds;
    if (OneIn(4)) bounds.low = presentLow, bounds.lowLen = 77;
    if (OneIn(4)) bounds.high = presentHigh, bounds.highLen = 77;
    XoIdxBounds const before = bounds;
    unsigned short opAfter = op;
    EXPECT_EQ(
        manager.EvalAndBound(id, known, opAfter, operand.Data(), format, count, &bounds, nullptr),
        expected);
    EXPECT_EQ(opAfter, id == XoREF_T ? op & 0x800F : op);
    auto const check = [&](void*& end, std::uint8_t& length, void* there, bool isOpen) {
      if (there != nullptr) {
        EXPECT_EQ(end, there);
        EXPECT_EQ(length, 77);
        end = nullptr;
      } else if (isOpen || width == 0) {
        EXPECT_EQ(end, nullptr);
        EXPECT_EQ(length, 0);
      } else {
        EXPECT_EQ(BoundBytes(end, length), ByteList(value.begin(), value.begin() + width * count));
      }
    };
    check(bounds.low, bounds.lowLen, before.low, (op & 2) != 0);
    check(bounds.high, bounds.highLen, before.high, (op & 4) != 0);
    ReleaseBounds(bounds);
    if (HasFailure()) {
      ADD_FAILURE() << "round " << round << " op " << std::hex << op << " format " << +format
                    << " count " << count << testing::PrintToString(value)
                    << testing::PrintToString(low) << testing::PrintToString(high);
    }
  }
}

}  // namespace
}  // namespace xo::test

#include <algorithm>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/compare_oracle.hpp"

namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

struct ArrayRow {
  char id;
  unsigned width;
  decltype(&CompareByTheBook<int>) compareByTheBook;
};

class ArrayCompare : public RandomTest, public testing::WithParamInterface<ArrayRow> {
 protected:
  struct Operand {
    unsigned length;
    ByteList bytes;
    unsigned offset;
  };

  /// Compares both ways round, with operands that end where their memory ends.
  void Check(unsigned char format, Operand const& a, Operand const& b, unsigned count) {
    PlacedBytes const first(a.bytes, a.offset), second(b.bytes, b.offset);
    CheckOneWay(format, a.length, first, b.length, second, count);
    CheckOneWay(format, b.length, second, a.length, first, count);
    ASSERT_TRUE(std::equal(a.bytes.begin(), a.bytes.end(), first.Data()));
    ASSERT_TRUE(std::equal(b.bytes.begin(), b.bytes.end(), second.Data()));
  }

  /// A buffer for an operand whose text begins as another does, and goes on at random.
  ByteList Continued(ByteList const& start, unsigned size) {
    ByteList bytes = Bytes(size);
    std::copy_n(start.begin(), std::min(start.size(), bytes.size()), bytes.begin());
    return bytes;
  }

  unsigned Size(unsigned length, unsigned count) const { return Readable(width, length, count); }

  char const id = GetParam().id;
  unsigned const width = GetParam().width;

 private:
  void CheckOneWay(unsigned char format, unsigned length1, PlacedBytes const& first,
                   unsigned length2, PlacedBytes const& second, unsigned count) {
    CompareAnswer const expected =
        GetParam().compareByTheBook(format, length1, first.Data(), length2, second.Data(), count);
    int status = 4711;
    auto const op = static_cast<unsigned short>(Bits());
    int const result =
        compare(format, length1, first.Data(), length2, second.Data(), op, count, status);
    ASSERT_EQ((CompareAnswer{result, status}), expected)
        << "format " << +format << " lengths " << length1 << ' ' << length2 << " count " << count;
  }

  XCompare* compare = XoTypeMgr().CmpFuncPtrGet(id);
};

INSTANTIATE_TEST_SUITE_P(Scalars, ArrayCompare,
                         testing::ValuesIn(RowValues(
                             ScalarRows{},
                             [](auto row) {
                               using Element = typename decltype(row)::Value;
                               return ArrayRow{row.kId, sizeof(Element), CompareByTheBook<Element>};
                             })),
                         RowName{});

TEST_P(ArrayCompare, EveryFormatByteAtEveryPlaceOfDifference) {
  for (unsigned format = 0; format < 256; ++format) {
    for (unsigned count : {1u, 2u, 3u, 9u}) {
      auto const bytes = Bytes(count * width);
      for (unsigned place = 0; place <= count; ++place) {
        auto other = bytes;
        if (place < count) other[place * width + Below(width)] ^= 0x81;
        Check(static_cast<unsigned char>(format), {0, bytes, Below(8)}, {0, other, Below(8)},
              count);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(ArrayCompare, EverySingleBitDecides) {
  for (unsigned char format : Formats{8, 1, 2}) {
    for (unsigned count : {1u, 2u, 17u}) {
      auto const bytes = Bytes(count * width);
      for (unsigned bit = 0; bit < count * width * 8; ++bit) {
        auto other = bytes;
        other[bit / 8] = static_cast<unsigned char>(other[bit / 8] ^ 1u << bit % 8);
        Check(format, {0, bytes, bit % 3}, {0, other, bit % 5}, count);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(ArrayCompare, FirstDifferenceDecidesAndLaterOnesDoNot) {
  for (int round = 0; round < 800; ++round) {
    unsigned const count = 2 + Below(60);
    auto const first = Bytes(count * width);
    unsigned const place = Below(count);
    auto second = Bytes(count * width);
    std::copy_n(first.begin(), place * width, second.begin());
    Check(Byte(), {0, first, 1}, {0, second, 2}, count);
    if (HasFatalFailure()) return;
  }
}

TEST_P(ArrayCompare, AllLengthsOfShortArrays) {
  for (unsigned count = 1; count <= 4; ++count) {
    unsigned const limit = (count + 1) * width + 1;
    for (unsigned length1 = 0; length1 <= limit; ++length1) {
      for (unsigned length2 = 0; length2 <= length1; ++length2) {
        for (unsigned char format : Formats{8, 1, 2}) {
          auto const first = Bytes(Size(length1, count));
          auto second = Continued(first, Size(length2, count));
          if (OneIn(2)) second[Below(static_cast<unsigned>(second.size()))] ^= 0x40;
          Check(format, {length1, first, 0}, {length2, second, 1}, count);
          if (HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST_P(ArrayCompare, RandomArraysAndLengths) {
  for (int round = 0; round < 2000; ++round) {
    unsigned const count = OneIn(40) ? Below(2001) : OneIn(4) ? Below(200) : Below(41);
    unsigned const limit = (count + 2) * width;
    unsigned const length1 = OneIn(3) ? 0 : Below(limit);
    unsigned const length2 = OneIn(3) ? 0 : OneIn(2) ? length1 : Below(limit);
    auto const first = Bytes(Size(length1, count));
    auto second = Continued(first, Size(length2, count));
    if (!second.empty() && OneIn(2)) second[Below(static_cast<unsigned>(second.size()))] ^= Byte();
    Check(Byte(), {length1, first, Below(9)}, {length2, second, Below(9)}, count);
    if (HasFatalFailure()) return;
  }
}

TEST_P(ArrayCompare, LongEqualArraysWithOneDifference) {
  for (unsigned char format : Formats{8, 1, 2, 0x81, 0x82, 3}) {
    for (unsigned count : {255u, 256u, 1024u, 2000u}) {
      auto const bytes = Bytes(count * width);
      Check(format, {0, bytes, 0}, {0, bytes, 1}, count);
      for (int round = 0; round < 8; ++round) {
        auto other = bytes;
        other[Below(count * width)] ^= static_cast<unsigned char>(1u << Below(8));
        unsigned const cut = OneIn(2) ? 0 : 1 + Below(count * width);
        auto front = other;
        front.resize(Size(cut, count));
        Check(format, {0, bytes, Below(8)}, {cut, front, Below(8)}, count);
        if (HasFatalFailure()) return;
      }
    }
  }
}

// Long runs are searched by blocks, so every place about a border of one is a case of its own.
TEST_P(ArrayCompare, FirstDifferenceAboutTheBordersOfBlocks) {
  for (unsigned border : kBlockBorders) {
    for (unsigned byte = border - 9; byte <= border + 9; ++byte) {
      unsigned const count = byte / width + 1;
      auto const ending = Bytes(count * width);
      auto endingOther = ending;
      endingOther[byte] ^= static_cast<unsigned char>(1u << Below(8));
      // The same, with more that differs behind it.
      auto const longer = Continued(ending, kLongArray);
      auto const longerOther = Continued(endingOther, kLongArray);
      for (unsigned char format : Formats{8, 1, 2}) {
        Check(format, {0, ending, 0}, {0, endingOther, 1}, count);
        Check(format, {0, ending, 0}, {0, ending, 1}, count);
        Check(format, {0, longer, 1}, {0, longerOther, 0}, kLongArray / width);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(ArrayCompare, CountsFarBeyondTheDataEndAtItsLength) {
  for (unsigned char format : Formats{8, 1, 2}) {
    for (unsigned elements : {1u, 2u, 9u, 100u}) {
      auto const bytes = Bytes(elements * width);
      for (unsigned count : {elements + 1, 0x20000001u, 0x40000001u, 0x80000001u, 0xFFFFFFFFu}) {
        unsigned const length = elements * width;
        Check(format, {length, bytes, 0}, {length, bytes, 3}, count);
        auto other = bytes;
        other[length - 1] ^= 1;
        Check(format, {length, bytes, 0}, {length, other, 3}, count);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(ArrayCompare, NothingComparesEqual) {
  XoTypeMgr const manager;
  for (unsigned format = 0; format < 256; ++format) {
    for (unsigned length : {0u, 1u, 8u}) {
      int status = 4711;
      EXPECT_EQ(manager.Cmp(id, length, nullptr, 8 - length, nullptr, 0xFFFF, 0,
                            static_cast<unsigned char>(format), status),
                0);
      EXPECT_EQ(status, 0);
    }
  }
}

TEST_P(ArrayCompare, ManagerGivesTheSameAnswers) {
  XoTypeMgr const manager;
  XCompare* const slot = manager.CmpFuncPtrGet(id);
  for (int round = 0; round < 2000; ++round) {
    unsigned const count = 1 + Below(5);
    auto first = Bytes(count * width), second = first;
    if (!OneIn(4)) second[Below(count * width)] ^= Byte();
    unsigned const length = Below(count * width + 1);
    unsigned char const format = Byte();
    int direct = 1, through = 2;
    int const expected = slot(format, length, first.data(), 0, second.data(), 0, count, direct);
    EXPECT_EQ(manager.Cmp(id, length, first.data(), 0, second.data(), 0, count, format, through),
              expected);
    EXPECT_EQ(through, direct);
    EXPECT_EQ(manager.Cmp(id, first.data(), second.data(), 0, count, format),
              slot(format, 0, first.data(), 0, second.data(), 0, count, direct));
  }
}

}  // namespace
}  // namespace xo::test

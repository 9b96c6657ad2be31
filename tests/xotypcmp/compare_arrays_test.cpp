#include <algorithm>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/compare_oracle.hpp"

namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

template <class Row>
class ArrayCompare : public RandomTest {
 protected:
  using Element = typename Row::Value;
  static constexpr unsigned kWidth = sizeof(Element);

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

  unsigned Size(unsigned length, unsigned count) const { return Readable<Element>(length, count); }

 private:
  void CheckOneWay(unsigned char format, unsigned length1, PlacedBytes const& first,
                   unsigned length2, PlacedBytes const& second, unsigned count) {
    CompareAnswer const expected =
        CompareByTheBook<Element>(format, length1, first.Data(), length2, second.Data(), count);
    int status = 4711;
    auto const op = static_cast<unsigned short>(Bits());
    int const result =
        compare(format, length1, first.Data(), length2, second.Data(), op, count, status);
    ASSERT_EQ((CompareAnswer{result, status}), expected)
        << "format " << +format << " lengths " << length1 << ' ' << length2 << " count " << count;
  }

  XCompare* compare = XoTypeMgr().CmpFuncPtrGet(Row::kId);
};

TYPED_TEST_SUITE(ArrayCompare, ScalarRows, ScalarName);

TYPED_TEST(ArrayCompare, EveryFormatByteAtEveryPlaceOfDifference) {
  for (unsigned format = 0; format < 256; ++format) {
    for (unsigned count : {1u, 2u, 3u, 9u}) {
      auto const bytes = this->Bytes(count * this->kWidth);
      for (unsigned place = 0; place <= count; ++place) {
        auto other = bytes;
        if (place < count) other[place * this->kWidth + this->Below(this->kWidth)] ^= 0x81;
        this->Check(static_cast<unsigned char>(format), {0, bytes, this->Below(8)},
                    {0, other, this->Below(8)}, count);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TYPED_TEST(ArrayCompare, EverySingleBitDecides) {
  for (unsigned char format : Formats{8, 1, 2}) {
    for (unsigned count : {1u, 2u, 17u}) {
      auto const bytes = this->Bytes(count * this->kWidth);
      for (unsigned bit = 0; bit < count * this->kWidth * 8; ++bit) {
        auto other = bytes;
        other[bit / 8] = static_cast<unsigned char>(other[bit / 8] ^ 1u << bit % 8);
        this->Check(format, {0, bytes, bit % 3}, {0, other, bit % 5}, count);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TYPED_TEST(ArrayCompare, FirstDifferenceDecidesAndLaterOnesDoNot) {
  for (int round = 0; round < 800; ++round) {
    unsigned const count = 2 + this->Below(60);
    auto const first = this->Bytes(count * this->kWidth);
    unsigned const place = this->Below(count);
    auto second = this->Bytes(count * this->kWidth);
    std::copy_n(first.begin(), place * this->kWidth, second.begin());
    this->Check(this->Byte(), {0, first, 1}, {0, second, 2}, count);
    if (this->HasFatalFailure()) return;
  }
}

TYPED_TEST(ArrayCompare, AllLengthsOfShortArrays) {
  for (unsigned count = 1; count <= 4; ++count) {
    unsigned const limit = (count + 1) * this->kWidth + 1;
    for (unsigned length1 = 0; length1 <= limit; ++length1) {
      for (unsigned length2 = 0; length2 <= length1; ++length2) {
        for (unsigned char format : Formats{8, 1, 2}) {
          auto const first = this->Bytes(this->Size(length1, count));
          auto second = this->Continued(first, this->Size(length2, count));
          if (this->OneIn(2)) second[this->Below(static_cast<unsigned>(second.size()))] ^= 0x40;
          this->Check(format, {length1, first, 0}, {length2, second, 1}, count);
          if (this->HasFatalFailure()) return;
        }
      }
    }
  }
}

TYPED_TEST(ArrayCompare, RandomArraysAndLengths) {
  for (int round = 0; round < 2000; ++round) {
    unsigned const count = this->OneIn(40)  ? this->Below(2001)
                           : this->OneIn(4) ? this->Below(200)
                                            : this->Below(41);
    unsigned const limit = (count + 2) * this->kWidth;
    unsigned const length1 = this->OneIn(3) ? 0 : this->Below(limit);
    unsigned const length2 = this->OneIn(3) ? 0 : this->OneIn(2) ? length1 : this->Below(limit);
    auto const first = this->Bytes(this->Size(length1, count));
    auto second = this->Continued(first, this->Size(length2, count));
    if (!second.empty() && this->OneIn(2))
      second[this->Below(static_cast<unsigned>(second.size()))] ^= this->Byte();
    this->Check(this->Byte(), {length1, first, this->Below(9)}, {length2, second, this->Below(9)},
                count);
    if (this->HasFatalFailure()) return;
  }
}

TYPED_TEST(ArrayCompare, LongEqualArraysWithOneDifference) {
  for (unsigned char format : Formats{8, 1, 2, 0x81, 0x82, 3}) {
    for (unsigned count : {255u, 256u, 1024u, 2000u}) {
      auto const bytes = this->Bytes(count * this->kWidth);
      this->Check(format, {0, bytes, 0}, {0, bytes, 1}, count);
      for (int round = 0; round < 8; ++round) {
        auto other = bytes;
        other[this->Below(count * this->kWidth)] ^=
            static_cast<unsigned char>(1u << this->Below(8));
        unsigned const cut = this->OneIn(2) ? 0 : 1 + this->Below(count * this->kWidth);
        auto front = other;
        front.resize(this->Size(cut, count));
        this->Check(format, {0, bytes, this->Below(8)}, {cut, front, this->Below(8)}, count);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

// Long runs are searched by blocks, so every place about a border of one is a case of its own.
TYPED_TEST(ArrayCompare, FirstDifferenceAboutTheBordersOfBlocks) {
  constexpr unsigned kStep = TestFixture::kWidth;
  for (unsigned border : kBlockBorders) {
    for (unsigned byte = border - 9; byte <= border + 9; ++byte) {
      unsigned const count = byte / kStep + 1;
      auto const ending = this->Bytes(count * kStep);
      auto endingOther = ending;
      endingOther[byte] ^= static_cast<unsigned char>(1u << this->Below(8));
      // The same, with more that differs behind it.
      auto const longer = this->Continued(ending, kLongArray);
      auto const longerOther = this->Continued(endingOther, kLongArray);
      for (unsigned char format : Formats{8, 1, 2}) {
        this->Check(format, {0, ending, 0}, {0, endingOther, 1}, count);
        this->Check(format, {0, ending, 0}, {0, ending, 1}, count);
        this->Check(format, {0, longer, 1}, {0, longerOther, 0}, kLongArray / kStep);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TYPED_TEST(ArrayCompare, CountsFarBeyondTheDataEndAtItsLength) {
  for (unsigned char format : Formats{8, 1, 2}) {
    for (unsigned elements : {1u, 2u, 9u, 100u}) {
      auto const bytes = this->Bytes(elements * this->kWidth);
      for (unsigned count : {elements + 1, 0x20000001u, 0x40000001u, 0x80000001u, 0xFFFFFFFFu}) {
        unsigned const length = elements * this->kWidth;
        this->Check(format, {length, bytes, 0}, {length, bytes, 3}, count);
        auto other = bytes;
        other[length - 1] ^= 1;
        this->Check(format, {length, bytes, 0}, {length, other, 3}, count);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TYPED_TEST(ArrayCompare, NothingComparesEqual) {
  XoTypeMgr const manager;
  for (unsigned format = 0; format < 256; ++format) {
    for (unsigned length : {0u, 1u, 8u}) {
      int status = 4711;
      EXPECT_EQ(manager.Cmp(TypeParam::kId, length, nullptr, 8 - length, nullptr, 0xFFFF, 0,
                            static_cast<unsigned char>(format), status),
                0);
      EXPECT_EQ(status, 0);
    }
  }
}

TYPED_TEST(ArrayCompare, ManagerGivesTheSameAnswers) {
  XoTypeMgr const manager;
  XCompare* const slot = manager.CmpFuncPtrGet(TypeParam::kId);
  for (int round = 0; round < 2000; ++round) {
    unsigned const count = 1 + this->Below(5);
    auto first = this->Bytes(count * this->kWidth), second = first;
    if (!this->OneIn(4)) second[this->Below(count * this->kWidth)] ^= this->Byte();
    unsigned const length = this->Below(count * this->kWidth + 1);
    unsigned char const format = this->Byte();
    int direct = 1, through = 2;
    int const expected = slot(format, length, first.data(), 0, second.data(), 0, count, direct);
    EXPECT_EQ(manager.Cmp(TypeParam::kId, length, first.data(), 0, second.data(), 0, count, format,
                          through),
              expected);
    EXPECT_EQ(through, direct);
    EXPECT_EQ(manager.Cmp(TypeParam::kId, first.data(), second.data(), 0, count, format),
              slot(format, 0, first.data(), 0, second.data(), 0, count, direct));
  }
}

}  // namespace
}  // namespace xo::test

#include <cstring>
#include <vector>

#include "tests/base/random_test.hpp"
#include "tests/xonulty/null_row_types.hpp"

namespace xo::test {
namespace {

static_assert(NullElementHashConstant == 0xFEFE7575);

template <class Row>
class NullHashes : public RandomTest {
 protected:
  using Number = typename Row::Plain;
  static constexpr char kId = Row::kId;
  static constexpr char kPlain = Row::kPlain;

  /// Places of an element in a form.
  struct Layout {
    unsigned width;
    unsigned numberAt;
    unsigned nullAt;
  };
  static Layout LayoutOf(unsigned char format) {
    if (format == FormMemory) return {sizeof(typename Row::Element), 0, sizeof(Number)};
    return {sizeof(Number) + 1, 1, 0};
  }

  unsigned Hash(void* data, unsigned count, unsigned char format, unsigned length,
                int expectedError) {
    int error = 4711;
    unsigned const hash = manager.Hash(kId, length, data, count, format, error);
    EXPECT_EQ(error, expectedError);
    return hash;
  }

  /// The hash of `count` elements, one by one: the constant for each null, and the hash that the
  /// plain row has for each number.
  unsigned SlowHash(unsigned char const* data, unsigned count, unsigned char format) {
    Layout const layout = LayoutOf(format);
    unsigned hash = 0;
    for (unsigned index = 0; index < count; ++index) {
      unsigned char const* const element = data + std::size_t{index} * layout.width;
      Number number;
      std::memcpy(&number, element + layout.numberAt, sizeof number);
      int error = 0;
      hash ^= element[layout.nullAt] == 1 ? 0xFEFE7575u
                                          : manager.Hash(kPlain, 0, &number, 1, format, error);
    }
    return hash;
  }

  /// Random bytes whose null bytes are mostly 0, at times 1 and at times another.
  std::vector<unsigned char> Elements(unsigned count, unsigned char format, unsigned oneNullIn) {
    Layout const layout = LayoutOf(format);
    std::vector<unsigned char> data = Bytes(std::size_t{count} * layout.width);
    for (unsigned index = 0; index < count; ++index) {
      unsigned char& null = data[std::size_t{index} * layout.width + layout.nullAt];
      null = OneIn(oneNullIn) ? (OneIn(4) ? Byte() : 1) : 0;
    }
    return data;
  }

  XoTypeMgr manager;
};
TYPED_TEST_SUITE(NullHashes, NullRowTypes, RowName);

// Each array ends with its memory, so that a sanitizer sees a read past it.
TYPED_TEST(NullHashes, ElementsHashAsTheirNumbersAndNullsAsAConstantInArraysOfEveryLength) {
  for (unsigned char const format : {FormLittle, FormBig, FormMemory}) {
    for (unsigned count = 0; count < 150; ++count) {
      // From no null at all to one in every group of a few.
      for (unsigned const oneNullIn : {1000000u, 60u, 10u, 2u}) {
        auto data = this->Elements(count, format, oneNullIn);
        ASSERT_EQ(this->Hash(data.data(), count, format, 0, 0),
                  this->SlowHash(data.data(), count, format))
            << "format " << int{format} << ", count " << count;
      }
    }
  }
}

TYPED_TEST(NullHashes, ANullCountsWhereverItStands) {
  for (unsigned char const format : {FormLittle, FormBig, FormMemory}) {
    constexpr unsigned kCount = 70;
    auto const layout = this->LayoutOf(format);
    auto const plain = this->Elements(kCount, format, 1000000);
    for (unsigned place = 0; place < kCount; ++place) {
      for (unsigned const null : {0u, 1u, 2u, 128u, 255u}) {
        auto data = plain;
        data[place * layout.width + layout.nullAt] = static_cast<unsigned char>(null);
        ASSERT_EQ(this->Hash(data.data(), kCount, format, 0, 0),
                  this->SlowHash(data.data(), kCount, format))
            << "format " << int{format} << ", null byte " << null << " at " << place;
      }
    }
  }
}

TYPED_TEST(NullHashes, ElementsThatBeginBehindTheLengthDoNotCount) {
  for (unsigned char const format : {FormLittle, FormBig, FormMemory}) {
    unsigned const width = this->LayoutOf(format).width;
    for (int round = 0; round < 500; ++round) {
      unsigned const count = 1 + this->Below(100);
      auto data = this->Elements(count, format, 20);
      unsigned const reachable = 1 + this->Below(count);
      unsigned const length = (reachable - 1) * width + 1 + this->Below(width);
      ASSERT_EQ(this->Hash(data.data(), count, format, length,
                           reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0),
                this->SlowHash(data.data(), reachable, format))
          << "format " << int{format} << ", " << reachable << " of " << count;
    }
  }
}

TYPED_TEST(NullHashes, StoredElementsHashAsThoseInMemory) {
  for (int round = 0; round < 200; ++round) {
    unsigned const count = this->Below(100);
    auto values = this->Elements(count, FormMemory, 5);
    // As any byte but 1 stands for a number, so the store writes it as 0, of which 0 is left here.
    auto const layout = this->LayoutOf(FormMemory);
    for (unsigned index = 0; index < count; ++index) {
      unsigned char& null = values[index * layout.width + layout.nullAt];
      if (null != 1) null = 0;
    }
    unsigned const expected = this->Hash(values.data(), count, FormMemory, 0, 0);
    // A nibble of neither order stands for the machine's own.
    for (unsigned char const format : {FormLittle, FormBig, static_cast<unsigned char>(3)}) {
      std::vector<unsigned char> stored(std::size_t{count} * this->LayoutOf(format).width);
      this->manager.Store(this->kId, stored.data(), values.data(), format, count);
      ASSERT_EQ(this->Hash(stored.data(), count, format, 0, 0), expected) << int{format};
    }
  }
}

}  // namespace
}  // namespace xo::test

#include <gtest/gtest.h>

#include "tests/base/random_test.hpp"
#include "tests/xoblob/blob_bytes.hpp"

namespace xo::test {
namespace {

int Sign(int number) { return (number > 0) - (number < 0); }

int Memory(std::vector<BlobText> const& a, std::vector<BlobText> const& b) {
  Blobs first(a), second(b);
  int status = 9;
  int const result = BlobCompare(8, 1, first.Get(), 1, second.Get(), 0, first.Count(), status);
  EXPECT_EQ(status, 0);
  return result;
}

/// The order of two records with their lengths given, and no byte behind them.
int Stored(ByteList const& a, ByteList const& b, unsigned count,
           unsigned char format = FormLittle) {
  int status = 9;
  int const result = BlobCompare(format, static_cast<unsigned>(a.size()), Exact(a),
                                 static_cast<unsigned>(b.size()), Exact(b), 0, count, status);
  EXPECT_EQ(status, 0);
  return result;
}

TEST(BlobCompareInMemory, EndsAtTheFirstPairThatDiffers) {
  EXPECT_EQ(Memory({{}, {}, ""}, {{}, {}, ""}), 0);
  EXPECT_EQ(Memory({{}, ""}, {{}, {}}), 2);
  EXPECT_EQ(Memory({{}, {}}, {{}, ""}), -2);
  EXPECT_EQ(Memory({"ab", "z"}, {"abc", "a"}), -1);
  EXPECT_EQ(Memory({"abc"}, {"ab"}), 1);
  EXPECT_LT(Memory({"abc", "z"}, {"abd", "a"}), 0);
  EXPECT_EQ(Memory({}, {}), 0);
}

TEST(BlobCompareStored, KnowsNullFromEmpty) {
  EXPECT_EQ(Stored(StoredBlobs({{}}), StoredBlobs({{}}), 1), 0);
  EXPECT_EQ(Stored(StoredBlobs({{}}), StoredBlobs({""}), 1), -2);
  EXPECT_EQ(Stored(StoredBlobs({""}), StoredBlobs({{}}), 1), 2);
  // Two null elements let the walk go on, to the words right behind them.
  EXPECT_EQ(Stored(StoredBlobs({{}, {}, ""}), StoredBlobs({{}, {}, {}}), 3), 2);
  EXPECT_LT(Stored(StoredBlobs({{}, "abc"}), StoredBlobs({{}, "abd"}), 2), 0);
}

TEST(BlobCompareStored, ReadsLengthsInTheOrderOfTheFormat) {
  for (bool isBig : {false, true}) {
    unsigned char const format = isBig ? FormBig : FormLittle;
    EXPECT_LT(Stored(StoredBlobs({"abc"}, isBig), StoredBlobs({"abcd"}, isBig), 1, format), 0);
    EXPECT_GT(Stored(StoredBlobs({"abd"}, isBig), StoredBlobs({"abcd"}, isBig), 1, format), 0);
    EXPECT_EQ(Stored(StoredBlobs({"abc"}, isBig), StoredBlobs({"abc"}, isBig), 1, format), 0);
  }
}

TEST(BlobCompareStored, CountsAWordOfWhatFollowsIntoAnElement) {
  // The word behind the only element is compared too where both lengths reach it.
  ByteList a = StoredBlobs({"abc"}), b = a;
  a.push_back(1);
  b.push_back(2);
  EXPECT_LT(Stored(a, b, 1), 0);
  EXPECT_EQ(Stored(StoredBlobs({"abc"}), StoredBlobs({"abc"}), 1), 0);
  // So the longer of two is compared with the word behind the shorter one: here with 2.
  a = StoredBlobs({"abc"});
  a.insert(a.end(), {2, 0, 0, 0});
  EXPECT_LT(Stored(a, StoredBlobs({"abc\3xyz"}), 1), 0);
  EXPECT_GT(Stored(a, StoredBlobs({"abc\1xyz"}), 1), 0);
}

TEST(BlobCompareStored, GoesOnAWordTooFarInArrays) {
  // The second elements differ in their lengths alone, 1 and 2: that word is compared as a part of
  // the first elements.
  EXPECT_LT(Stored(StoredBlobs({"abc", "x"}), StoredBlobs({"abc", "xy"}), 2), 0);
  // Equal up to there, the next length is read four bytes behind the place where it stands. There
  // lies the content of the second element, of 4 bytes: the length of a null on one side.
  ByteList const a = StoredBlobs({"abc", std::string("\xFF\xFF\xFF\xFF", 4), "x"});
  ByteList const b = StoredBlobs({"abc", std::string("\1\0\0\0", 4), "x"});
  EXPECT_EQ(Stored(a, b, 2), -2);
  EXPECT_EQ(Stored(b, a, 2), 2);
}

TEST(BlobCompareStored, EndsWhereALengthIsUsedUp) {
  // Of the second pair nothing is left to be told.
  EXPECT_EQ(Stored(StoredBlobs({"abc", "x"}), StoredBlobs({"abc", "x"}), 9), 0);
  ByteList const record = StoredBlobs({"abc"});
  for (std::size_t there : {1u, 3u, 4u, 5u, 7u}) {
    ByteList const cut(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(there));
    EXPECT_EQ(Stored(cut, StoredBlobs({"zzz"}), 1), 0) << there;
    EXPECT_EQ(Stored(StoredBlobs({"zzz"}), cut, 1), 0) << there;
  }
  // Cut behind the length, the lengths decide.
  ByteList const cut(record.begin(), record.begin() + 8);
  EXPECT_EQ(Stored(cut, StoredBlobs({"zzzz"}), 1), -1);
  EXPECT_EQ(Stored(cut, StoredBlobs({"zzz"}), 1), 0);
  ByteList const one(record.begin(), record.begin() + 9);
  EXPECT_LT(Stored(one, StoredBlobs({"zzz"}), 1), 0);
}

TEST(BlobCompareStored, WithoutLengthsReachesOneWordBehindTheRecord) {
  ByteList a = StoredBlobs({"abc"}), b = a;
  a.insert(a.end(), {1, 2, 3, 4});
  b.insert(b.end(), {1, 2, 3, 5});
  int status = 9;
  EXPECT_LT(BlobCompare(FormLittle, 0, Exact(a), 0, Exact(b), 0, 1, status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(BlobCompare(FormLittle, 0, Exact(a), 0, Exact(a), 0, 1, status), 0);
  // No total is a total of nothing.
  ByteList const none = {0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0};
  EXPECT_EQ(BlobCompare(FormLittle, 0, Exact(none), 0, Exact(none), 0, 1, status), 0);
}

TEST(BlobCompareStored, IsAnyFormatButTheWholeByteOfMemory) {
  EXPECT_LT(Stored(StoredBlobs({"abc"}), StoredBlobs({"abd"}), 1, 0x88), 0);
  ByteList a = StoredBlobs({"abc"}), b = StoredBlobs({"abd"});
  a.insert(a.end(), 4, 0);
  b.insert(b.end(), 4, 0);
  int status = 9;
  EXPECT_LT(BlobCompare(0x88, 0, Exact(a), 0, Exact(b), 0, 1, status), 0);
}

TEST(BlobCompareStored, OfNoElementsReadsNothing) {
  int status = 9;
  EXPECT_EQ(BlobCompare(FormLittle, 0, nullptr, 0, nullptr, 0, 0, status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(BlobCompare(FormMemory, 0, nullptr, 0, nullptr, 0, 0, status), 0);
}

class BlobCompareLaws : public RandomTest {
 protected:
  BlobText AnyContent() {
    if (OneIn(5)) return {};
    std::string content;
    for (unsigned i = Below(6); i != 0; --i) content += static_cast<char>('a' + Below(2));
    return content;
  }
};

TEST_F(BlobCompareLaws, SingleStoredBlobsOrderAsThoseInMemory) {
  for (int turn = 0; turn < 20000; ++turn) {
    BlobText const a = AnyContent(), b = AnyContent();
    // Behind a record nothing is there, so lengths end what is compared.
    int const inMemory = Memory({a}, {b}), stored = Stored(StoredBlobs({a}), StoredBlobs({b}), 1);
    ASSERT_EQ(Sign(stored), Sign(inMemory));
    if (!a || !b) {
      ASSERT_EQ(stored, inMemory);
    }
  }
}

/// The walk as a slow loop over lists, with the same oddity: lengths count a word too much.
int SlowOrder(ByteList const& a, ByteList const& b, unsigned count) {
  struct Side {
    ByteList const& bytes;
    std::size_t at = 4;
    std::int64_t limit = static_cast<std::int64_t>(bytes.size()) - 4;
    std::int64_t length = 0;
    bool isNull = false;
    bool Read() {
      if (limit < 4) return false;
      std::uint32_t word = 0;
      for (std::size_t i = 0; i < 4; ++i) word |= std::uint32_t{bytes[at + i]} << 8 * i;
      at += 4;
      limit -= 4;
      isNull = word == 0xFFFFFFFF;
      length = isNull ? 0 : static_cast<std::int32_t>(word + 4);
      return true;
    }
  } first{a}, second{b};
  for (; count != 0; --count) {
    if (!first.Read() || !second.Read()) return 0;
    if (first.isNull || second.isNull) {
      if (first.isNull != second.isNull) return first.isNull ? -2 : 2;
      continue;
    }
    std::int64_t const lesser = std::min(first.length, second.length);
    for (std::int64_t i = 0; i < std::min({lesser, first.limit, second.limit}); ++i) {
      auto const offset = static_cast<std::size_t>(i);
      int const order = a[first.at + offset] - b[second.at + offset];
      if (order != 0) return Sign(order);
    }
    if (first.length != second.length) return first.length < second.length ? -1 : 1;
    if (first.length < 0) return 0;
    for (Side* side : {&first, &second}) {
      side->at += static_cast<std::size_t>(std::min(side->limit, side->length));
      side->limit -= std::min(side->limit, side->length);
    }
  }
  return 0;
}

TEST_F(BlobCompareLaws, DamagedAndCutRecordsCompareAsTheSlowWalkDoes) {
  for (int turn = 0; turn < 40000; ++turn) {
    auto const count = Below(4);
    std::vector<BlobText> contentsA(count), contentsB(count);
    for (auto& content : contentsA) content = AnyContent();
    for (std::size_t i = 0; i < count; ++i) {
      contentsB[i] = OneIn(3) ? AnyContent() : contentsA[i];
    }
    ByteList records[] = {StoredBlobs(contentsA), StoredBlobs(contentsB)};
    for (ByteList& record : records) {
      if (OneIn(3)) record.resize(1 + Below(static_cast<unsigned>(record.size())));
      if (OneIn(3)) record[Below(static_cast<unsigned>(record.size()))] = Byte();
    }
    // A negative length goes on anywhere; what is compared then is not told.
    ASSERT_EQ(Sign(Stored(records[0], records[1], count)),
              Sign(SlowOrder(records[0], records[1], count)));
  }
}

}  // namespace
}  // namespace xo::test

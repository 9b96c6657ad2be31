#include <gtest/gtest.h>

#include "tests/xoidentifiers/identifier_bytes.hpp"

namespace xo::test {
namespace {

/// Stored order by a loop over the numbers that the record holds: high before low, of references
/// the database ahead of both.
int ExpectedOrder(std::uint64_t a, std::uint64_t b) { return (a > b) - (a < b); }
int Sign(int number) { return (number > 0) - (number < 0); }

TEST_F(IdentifierRows, StoredObjectsAndReferencesOrderAsNumbers) {
  for (int turn = 0; turn < 20000; ++turn) {
    XoRef const a = AnyReference(), b = AnyReference();
    auto const key = [](XoRef const& v, bool withDatabase) {
      return (withDatabase ? std::uint64_t{v.database} << 48 : 0) | std::uint64_t{v.high} << 32 |
             v.low;
    };
    int status = 1;
    Odd const refA(Stored(a)), refB(Stored(b));
    ASSERT_EQ(Sign(XoRef::Compare(1, 0, refA, 0, refB, 0, 1, status)),
              ExpectedOrder(key(a, true), key(b, true)));
    XoObjId const idA{a.block, a.low, a.high}, idB{b.block, b.low, b.high};
    Odd const objA(Stored(idA)), objB(Stored(idB));
    ASSERT_EQ(Sign(XoObjId::Compare(0x81, 0, objA, 0, objB, 0, 1, status)),
              ExpectedOrder(key(a, false), key(b, false)));
    ASSERT_EQ(status, 0);
    Odd const memA(InMemory(a)), memB(InMemory(b));
    ASSERT_EQ(XoRef::Compare(8, 1, memA, 1, memB, 0, 1, status), a != b);
    XoClassId const classA = AnyClass(), classB = AnyClass();
    Odd const clsA(Stored(classA)), clsB(Stored(classB));
    ASSERT_EQ(Sign(XoClassId::Compare(1, 0, clsA, 0, clsB, 0, 1, status)), classA != classB);
    ASSERT_EQ(status, 0);
  }
}

TEST(IdentifierCompare, GivesTheDifferenceOfTheFirstBytesThatDiffer) {
  int status = 5;
  XoRef a{0, 0, 0x0100, 0x00FF, 0, 0}, b{0, 0, 0x0000, 0x0100, 0, 0};
  EXPECT_EQ(XoRef::Compare(1, 0, Stored(a).data(), 0, Stored(b).data(), 0, 1, status), -1);
  EXPECT_EQ(XoRef::Compare(8, 0, &a, 0, &b, 0, 1, status), 0x100);
  EXPECT_EQ(XoClassId::Compare(1, 0, Stored(XoClassId{7, 9}).data(), 0,
                               Stored(XoClassId{7, 0x0209}).data(), 0, 1, status),
            -2);
}

TEST(IdentifierCompare, LeavesOutBlockAndClass) {
  int status = 5;
  XoRef a{1, 2, 3, 4, 5, 6}, b{9, 2, 3, 4, 9, 9};
  EXPECT_EQ(XoRef::Compare(1, 0, Stored(a).data(), 0, Stored(b).data(), 0, 1, status), 0);
  EXPECT_EQ(XoObjId::Compare(1, 0, Stored(XoObjId{1, 2, 3}).data(), 0,
                             Stored(XoObjId{9, 2, 3}).data(), 0, 1, status),
            0);
}

TEST(IdentifierCompare, AsksForTheNullClassAtTheStartOfTheArrays) {
  XoClassId const null{65535, 65535};
  auto const compare = [](std::vector<XoClassId> const& a, std::vector<XoClassId> const& b) {
    ByteList bytesA, bytesB;
    for (auto const& id : a) bytesA = bytesA + Stored(id);
    for (auto const& id : b) bytesB = bytesB + Stored(id);
    int status = 0;
    return XoClassId::Compare(1, 0, bytesA.data(), 0, bytesB.data(), 0,
                              static_cast<unsigned>(a.size()), status);
  };
  EXPECT_EQ(compare({null}, {{1, 2}}), -1);
  EXPECT_EQ(compare({{1, 2}}, {null}), 1);
  EXPECT_EQ(compare({null}, {null}), 0);
  // The second elements differ by 3, and the first ones decide how.
  EXPECT_EQ(compare({{1, 1}, {5, 0}}, {{1, 1}, {2, 0}}), 3);
  EXPECT_EQ(compare({null, {5, 0}}, {null, {2, 0}}), -1);
  // And a null that is not the first is a large number.
  EXPECT_EQ(compare({{1, 1}, null}, {{1, 1}, {2, 0}}), 255);
}

TEST(IdentifierCompare, TellsWhereALengthEnds) {
  for (auto const& row : kWidths) {
    ByteList a(3 * row.disk, 1), b(3 * row.disk, 1);
    auto const compare = [&](unsigned len1, unsigned len2, int& status) {
      return Row(row.id).Compare(1, len1, a.data(), len2, b.data(), 0, 3, status);
    };
    int status = 7;
    EXPECT_EQ(compare(0, 0, status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(compare(2 * row.disk + 1, 3 * row.disk, status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(compare(2 * row.disk, 0, status), 0);
    EXPECT_EQ(status, ERR_TM_LENGTH_EXCEEDED);
    EXPECT_EQ(compare(0, 1, status), 0);
    EXPECT_EQ(status, ERR_TM_LENGTH_EXCEEDED);
    b[row.disk == 4 ? 1 : 9] = 3;
    EXPECT_EQ(compare(0, 0, status), -2);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(compare(row.disk, 0, status), -2);
    EXPECT_EQ(status, ERR_TM_LENGTH_EXCEEDED);
    EXPECT_EQ(Row(row.id).Compare(1, 5, nullptr, 5, nullptr, 0, 0, status), 0);
    EXPECT_EQ(status, 0);
  }
}

/// The places of a record's bytes in the order in which they decide.
std::vector<unsigned> PlacesOf(int id) {
  if (id == XoCLID_T) return {1, 0, 3, 2};
  std::vector<unsigned> places;
  for (unsigned place = id == XoREF_T ? 11 : 9; place >= 4; --place) places.push_back(place);
  return places;
}

TEST_F(IdentifierRows, OneElementComparesByItsBytesWhateverTheLengths) {
  for (auto const& row : kWidths) {
    for (int turn = 0; turn < 20000; ++turn) {
      ByteList a = Bytes(row.disk), b = a;
      for (unsigned changes = Below(3); changes != 0; --changes) b[Below(row.disk)] = Byte();
      // Null classes have an order of their own.
      if (row.id == XoCLID_T) a[0] = b[0] = 1;
      int expected = 0;
      for (unsigned const place : PlacesOf(row.id)) {
        if (expected == 0) expected = int{a[place]} - int{b[place]};
      }
      Odd const first(a), second(b);
      int status = 7;
      unsigned const length1 = Below(row.disk + 2), length2 = Below(row.disk + 2);
      ASSERT_EQ(
          Row(row.id).Compare(OneIn(2) ? 1 : 2, length1, first, length2, second, 0, 1, status),
          expected)
          << row.id;
      ASSERT_EQ(status, 0);
      // A second element changes nothing but what the lengths tell.
      Odd const firstOfTwo(a + a), secondOfTwo(b + a);
      ASSERT_EQ(Row(row.id).Compare(1, 0, firstOfTwo, 0, secondOfTwo, 0, 2, status), expected);
      ASSERT_EQ(status, 0);
    }
  }
}

TEST(IdentifierCompare, MemoryIsTheWholeFormatByte) {
  XoObjId a{1, 0, 0}, b{1, 0, 0};
  a.low = 0x0100;
  b.low = 0x00FF;
  int status = 0;
  EXPECT_EQ(XoObjId::Compare(8, 0, &a, 0, &b, 0, 1, status), 1);
  // As a record the bytes of `low` lie at the same place.
  EXPECT_EQ(XoObjId::Compare(0x88, 0, &a, 0, &b, 0, 1, status), 1);
  XoRef first{0, 1, 2, 1, 0, 0}, second{0, 1, 2, 0, 0, 0};
  EXPECT_EQ(XoRef::Compare(8, 3, &first, 3, &second, 0, 1, status), 1);
  EXPECT_EQ(status, 0);
}

TEST_F(IdentifierRows, HashIsTheXorOfTheIdentity) {
  for (int turn = 0; turn < 500; ++turn) {
    XoRef const a = AnyReference(), b = AnyReference();
    int error = 9;
    unsigned const objects = (a.low ^ a.high ^ b.low ^ b.high) * 1103515245u;
    unsigned const references =
        (a.low ^ a.high ^ a.database ^ b.low ^ b.high ^ b.database) * 1103515245u;
    unsigned const classes =
        (unsigned{a.classNumber} ^ a.version ^ b.classNumber ^ b.version) * 1103515245u;
    XoObjId const idA{a.block, a.low, a.high}, idB{b.block, b.low, b.high};
    XoClassId const classA{a.classNumber, a.version}, classB{b.classNumber, b.version};
    ASSERT_EQ(XoRef::Hash(8, 0, Odd(InMemory(a) + InMemory(b)), 2, error), references);
    ASSERT_EQ(XoObjId::Hash(8, 0, Odd(InMemory(idA) + InMemory(idB)), 2, error), objects);
    ASSERT_EQ(XoClassId::Hash(8, 0, Odd(InMemory(classA) + InMemory(classB)), 2, error), classes);
    for (bool isBig : {false, true}) {
      unsigned char const format = isBig ? FormBig : FormLittle;
      ASSERT_EQ(XoRef::Hash(format, 0, Odd(Stored(a, isBig) + Stored(b, isBig)), 2, error),
                references);
      ASSERT_EQ(XoObjId::Hash(format, 0, Odd(Stored(idA, isBig) + Stored(idB, isBig)), 2, error),
                objects);
      ASSERT_EQ(
          XoClassId::Hash(format, 0, Odd(Stored(classA, isBig) + Stored(classB, isBig)), 2, error),
          classes);
    }
    ASSERT_EQ(error, 0);
    ASSERT_EQ(XoObjId::Hash(1, 10, Odd(Stored(idA)), 2, error), (a.low ^ a.high) * 1103515245u);
    ASSERT_EQ(error, ERR_TM_LENGTH_EXCEEDED);
    ASSERT_EQ(XoObjId::Hash(1, 10, nullptr, 0, error), 0u);
    ASSERT_EQ(error, 0);
  }
}

}  // namespace
}  // namespace xo::test

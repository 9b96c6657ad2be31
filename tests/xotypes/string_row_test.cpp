#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "tests/xostring/string_text.hpp"
#include "tests/xotypcmp/stored_records.hpp"

namespace xo::test {
namespace {

constexpr unsigned kNullHash = 0xFEFE7575;
constexpr unsigned kMultiplier = 1103515245;

/// Raw memory for strings.
class StringMemory {
 public:
  explicit StringMemory(std::size_t count)
      : strings(static_cast<XoString*>(::operator new(count * sizeof(XoString)))) {
    std::memset(static_cast<void*>(strings), 0xA5, count * sizeof(XoString));
  }
  StringMemory(StringMemory const&) = delete;
  StringMemory& operator=(StringMemory const&) = delete;
  ~StringMemory() { ::operator delete(strings); }

  XoString* const strings;
};

/// The string row of the current table and that of the older one.
class StringRow : public testing::TestWithParam<unsigned> {
 protected:
  XoTypeMgr const manager{GetParam()};
  TypeDescriptor const& row =
      *(GetParam() < 4 ? OlderTypeTable : CurrentTypeTable)[std::size_t{XoSTRING_T}];

  static XoString* Strings(void* values) { return static_cast<XoString*>(values); }
};

INSTANTIATE_TEST_SUITE_P(Tables, StringRow, testing::Values(3u, 5u));

// Lifecycle.

TEST_P(StringRow, CreateGivesEmptyStringsOfTheDefaultCodeSetAndLanguage) {
  for (unsigned const count : {0u, 1u, 2u, 7u, 1000u}) {
    XoString* const strings = Strings(manager.Create(XoSTRING_T, count));
    ASSERT_NE(strings, nullptr);
    for (unsigned index = 0; index < std::max(count, 1u); ++index) {
      EXPECT_EQ(strings[index].text, nullptr);
      EXPECT_EQ(strings[index].size, 0);
      EXPECT_EQ(strings[index].codeSet, XoString::GetDefaultCodeSet());
      EXPECT_EQ(strings[index].language, XoString::GetDefaultLanguage());
      strings[index] = "text that the deletion frees";
    }
    EXPECT_EQ(manager.Delete(XoSTRING_T, strings, count), nullptr);
  }
}

TEST_P(StringRow, MoreThanOneStringHasItsCountAheadOfIt) {
  for (unsigned const count : {2u, 3u, 1000u}) {
    void* const values = row.Create(count);
    std::uint64_t word = 0;
    std::memcpy(&word, static_cast<unsigned char*>(values) - sizeof word, sizeof word);
    EXPECT_EQ(word, count);
    row.Delete(values, count);
  }
}

TEST_P(StringRow, DeleteTakesTheCountFromTheWordAndNotFromItsArgument) {
  // What is not freed, or freed twice, is the address sanitizer's to see.
  for (unsigned const told : {2u, 5u, 9u, 0xFFFFFFFFu}) {
    XoString* const strings = Strings(row.Create(5));
    for (unsigned index = 0; index < 5; ++index) strings[index] = "abc";
    EXPECT_EQ(row.Delete(strings, told), nullptr);
  }
  for (unsigned const told : {0u, 1u}) {
    XoString* const single = Strings(row.Create(1 - told));
    *single = "abc";
    EXPECT_EQ(row.Delete(single, told), nullptr);
  }
}

TEST_P(StringRow, DeleteIgnoresNull) {
  for (unsigned const count : {0u, 1u, 2u}) EXPECT_EQ(row.Delete(nullptr, count), nullptr);
}

TEST_P(StringRow, ConstructorMakesItsStringsAndNoOthers) {
  StringMemory const memory(4);
  row.Constructor(memory.strings, 3, 0);
  for (unsigned index = 0; index < 3; ++index) {
    EXPECT_EQ(memory.strings[index].text, nullptr);
    EXPECT_EQ(memory.strings[index].codeSet, XoString::GetDefaultCodeSet());
  }
  EXPECT_EQ(memory.strings[3].size, 0xA5A5);
  row.Destructor(memory.strings, 3, 0);
  row.Constructor(memory.strings + 3, 0, 0);
  EXPECT_EQ(memory.strings[3].size, 0xA5A5);
}

TEST_P(StringRow, AssignmentTakesEachOrFillsWithTheFirst) {
  XoString const source[] = {Narrow("one", 1, 2), Wide(u"two"), Narrow("three")};
  XoString target[] = {Narrow("x"), Narrow("y"), Narrow("z"), Narrow("kept")};
  auto* const from = const_cast<XoString*>(source);
  row.Assignment(target, from, 3, 0);
  EXPECT_EQ(TextOf(target[0]), "one");
  EXPECT_EQ(target[0].language, 2);
  EXPECT_EQ(WideTextOf(target[1]), u"two");
  EXPECT_EQ(TextOf(target[2]), "three");
  row.Assignment(target, from, 3, 1);
  for (unsigned index = 0; index < 3; ++index) EXPECT_EQ(TextOf(target[index]), "one");
  EXPECT_EQ(TextOf(target[3]), "kept");
  row.Assignment(target, from + 2, 0, 1);
  EXPECT_EQ(TextOf(target[0]), "one");
}

TEST_P(StringRow, FillingFromWithinTheTargetKeepsItsFirst) {
  XoString strings[] = {Narrow("one"), Narrow("two"), Narrow("three")};
  row.Assignment(strings, strings, 3, 1);
  for (XoString const& string : strings) EXPECT_EQ(TextOf(string), "one");
}

TEST_P(StringRow, CopyMakesStringsOfRawMemory) {
  XoString source[] = {Narrow("one"), Wide(u"two"), XoString()};
  source[2].SetNullValue();
  for (int const fill : {0, 1}) {
    StringMemory const memory(3);
    row.Copy(memory.strings, source, 3, fill);
    EXPECT_EQ(TextOf(memory.strings[0]), "one");
    EXPECT_NE(memory.strings[0].text, source[0].text);
    if (fill == 0) {
      EXPECT_EQ(WideTextOf(memory.strings[1]), u"two");
      EXPECT_TRUE(memory.strings[2].IsNullValue());
    } else {
      EXPECT_EQ(TextOf(memory.strings[1]), "one");
      EXPECT_EQ(TextOf(memory.strings[2]), "one");
    }
    row.Destructor(memory.strings, 3, 0);
  }
}

TEST_P(StringRow, DefaultValueGivesEmptyStringsOrNullOnes) {
  for (unsigned const count : {0u, 1u, 2u, 5u}) {
    for (int const asNull : {0, 1, 7}) {
      XoString* const strings = Strings(manager.DefaultValue(XoSTRING_T, count, asNull));
      for (unsigned index = 0; index < std::max(count, 1u); ++index) {
        EXPECT_EQ(strings[index].Len(), 0);
        EXPECT_EQ(strings[index].IsNullValue() != 0, asNull != 0);
      }
      manager.Delete(XoSTRING_T, strings, count);
    }
  }
}

TEST(StringRowOfNow, KnowsNull) {
  XoTypeMgr const manager;
  XoString string = Narrow("abc");
  EXPECT_EQ(manager.IsNullValue(XoSTRING_T, &string), 0);
  EXPECT_EQ(manager.SetNullPtrGet(XoSTRING_T)(&string), 0);
  EXPECT_NE(manager.IsNullValue(XoSTRING_T, &string), 0);
  EXPECT_EQ(string.text, nullptr);
  XoString const marked(kOrders, 0);
  EXPECT_NE(manager.IsNullValue(XoSTRING_T, const_cast<XoString*>(&marked)), 0);
  XoString empty;
  EXPECT_EQ(manager.IsNullValue(XoSTRING_T, &empty), 0);
  EXPECT_EQ(manager.SupportsNullValue(XoSTRING_T), 1);
}

TEST(StringRowOfThen, KnowsNoNull) {
  XoTypeMgr const manager(3);
  XoString string(1, kNullLanguage);
  EXPECT_EQ(manager.IsNullValue(XoSTRING_T, &string), 0);
  EXPECT_EQ(manager.SetNullPtrGet(XoSTRING_T), nullptr);
  EXPECT_EQ(manager.SupportsNullValue(XoSTRING_T), 0);
}

// Hashes.

class StringRowHash : public StringRow {
 protected:
  /// Hash of bytes that end where their buffer does; a length of -1 is that of the buffer.
  unsigned Hash(StoredBytes const& bytes, unsigned char format, unsigned count = 1,
                int expectedError = 0, int length = -1) const {
    PlacedBytes const placed(bytes, 1);
    int error = 77;
    unsigned const hash = manager.Hash(
        XoSTRING_T,
        length >= 0 ? static_cast<unsigned>(length) : static_cast<unsigned>(bytes.size()),
        placed.Data(), count, format, error);
    EXPECT_EQ(error, expectedError);
    return hash;
  }
  unsigned HashInMemory(XoString* strings, unsigned count = 1, unsigned length = 0,
                        int expectedError = 0) const {
    int error = 77;
    unsigned const hash = manager.Hash(XoSTRING_T, length, strings, count, FormMemory, error);
    EXPECT_EQ(error, expectedError);
    return hash;
  }
  /// The key of an order in group 2, as its fields are laid out.
  static unsigned OrderKeyOf(unsigned order) {
    if (order < 16384) return 2u << 24 | order << 8;
    return 2u << 24 | (order & 0x407F) << 8 | (order >> 7 & 0x7F);
  }
  static unsigned KeyHash(std::vector<unsigned> const& orders) {
    unsigned hash = 0;
    for (unsigned const order : orders) hash = hash * 9 + OrderKeyOf(order);
    return hash;
  }
};

INSTANTIATE_TEST_SUITE_P(Tables, StringRowHash, testing::Values(3u, 5u));

TEST_P(StringRowHash, CountZeroGivesNothing) {
  int error = 77;
  EXPECT_EQ(manager.Hash(XoSTRING_T, 0, nullptr, 0, kLittle, error), 0u);
  EXPECT_EQ(error, 0);
}

TEST_P(StringRowHash, OfAKeyIsThatOfItsOrdersTimesTheMultiplier) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    EXPECT_EQ(Hash(Key(Orders("Ab-c 1"), format), format), KeyHash(Orders("Ab-c 1")) * kMultiplier);
    EXPECT_EQ(Hash(Key({}, format), format), 0u);
    // Case and accents count.
    EXPECT_NE(Hash(Key({Lower('a')}, format), format), Hash(Key({Upper('A')}, format), format));
  }
}

TEST_P(StringRowHash, OfAKeyCutAtItsGroupIsThatOfTheGroup) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    EXPECT_EQ(Hash(Key(Orders("ab"), format, 0x82), format), KeyHash(Orders("ab")) * kMultiplier);
  }
}

TEST_P(StringRowHash, IsOneInMemoryInARecordAndInAKey) {
  XoString narrow = Narrow("Gro\xDF 7-", kLatin1, 1);
  XoString wide = Wide(u"Gro\u00DF 7-", 253, 1);
  unsigned const expected = HashString(kLatin1, 1, narrow.StrGet()) * kMultiplier;
  EXPECT_EQ(HashInMemory(&narrow), expected);
  EXPECT_EQ(HashInMemory(&wide), expected);
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    EXPECT_EQ(Hash(Record("Gro\xDF 7-", format), format), expected);
    EXPECT_EQ(Hash(WideRecord({'G', 'r', 'o', 0xDF, ' ', '7', '-'}, format), format), expected);
    EXPECT_EQ(Hash(Record("Gro\xDF 7-", format), format, 1, 0, 0), expected);
  }
  StoredBytes key(200);
  XoTypeMgr const current;
  key.resize(current.Translate(XoSTRING_T, key.data(), kKeyLittle, 200, &narrow, FormMemory,
                               sizeof narrow, 1));
  EXPECT_EQ(Hash(key, kKeyLittle), expected);
}

TEST_P(StringRowHash, WithoutCodeSetIsThatOfTheBytes) {
  // 97 * 9 + 255
  constexpr unsigned kExpected = 1128 * kMultiplier;
  XoString string = Narrow("a\xFF", kNative);
  EXPECT_EQ(HashInMemory(&string), kExpected);
  for (unsigned char const format : {kLittle, kBig}) {
    EXPECT_EQ(Hash(Record("a\xFF", format, 0), format), kExpected);
    EXPECT_EQ(Hash(OlderRecord({"a\xFF"}, format), format), kExpected);
  }
}

TEST_P(StringRowHash, OfNullIsItsOwnAndOfEmptyTextNothing) {
  constexpr unsigned kExpected = kNullHash * kMultiplier;
  XoString nulls[] = {XoString(1, kNullLanguage), XoString(kOrders, 0),
                      XoString(kOrders, kNullLanguage), XoString(kNative, kNullLanguage)};
  for (XoString& null : nulls) {
    ASSERT_TRUE(null.IsNullValue());
    EXPECT_EQ(HashInMemory(&null), kExpected);
  }
  XoString empty;
  EXPECT_EQ(HashInMemory(&empty), 0u);
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    EXPECT_EQ(Hash(Record("", format, 1, kNullLanguage), format), kExpected);
    EXPECT_EQ(Hash(Record("", format, 254, 0), format), kExpected);
    EXPECT_EQ(Hash(Record("", format, 254, kNullLanguage), format), kExpected);
    EXPECT_EQ(Hash(Record("", format), format), 0u);
  }
}

TEST_P(StringRowHash, OfAnArrayIsTheExclusiveOrOfItsElements) {
  // 'a' is 97, 'b' 98 and "ab" 97 * 9 + 98.
  constexpr unsigned kExpected = (97u ^ 98u ^ 971u) * kMultiplier;
  XoString strings[] = {Narrow("a", 0), Narrow("b", 0), Narrow("ab", 0)};
  EXPECT_EQ(HashInMemory(strings, 3), kExpected);
  for (unsigned char const format : {kLittle, kBig}) {
    EXPECT_EQ(
        Hash(Record("a", format, 0) + Record("b", format, 0) + Record("ab", format, 0), format, 3),
        kExpected);
    EXPECT_EQ(Hash(OlderRecord({"a", "b", "ab"}, format), format, 3), kExpected);
    EXPECT_EQ(Hash(OlderRecord({"a", "b", "ab"}, format), format, 3, 0, 0), kExpected);
  }
}

TEST_P(StringRowHash, ThatRunsPastTheDataTellsItAndCoversWhatWasThere) {
  XoString strings[] = {Narrow("a", 0), Narrow("b", 0), Narrow("c", 0)};
  constexpr unsigned kTwo = (97u ^ 98u) * kMultiplier;
  EXPECT_EQ(HashInMemory(strings, 3, 32, kExceeded), kTwo);
  EXPECT_EQ(HashInMemory(strings, 2, 32), kTwo);
  for (unsigned char const format : {kLittle, kBig}) {
    StoredBytes const two = Record("a", format, 0) + Record("b", format, 0);
    EXPECT_EQ(Hash(two, format, 3, kExceeded), kTwo);
    EXPECT_EQ(Hash(two, format, 2), kTwo);
    // Unlike in a comparison a length does not shrink faster than the data.
    EXPECT_EQ(Hash(two + Record("c", format, 0), format, 3), (97u ^ 98u ^ 99u) * kMultiplier);
    EXPECT_EQ(Hash(OlderRecord({"a", "b"}, format), format, 3, kExceeded), kTwo);
  }
}

TEST_P(StringRowHash, OfATextThatIsCutTellsItAndCoversWhatIsThere) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    StoredBytes const key = Key(Orders("abcd"), format);
    if (format >= 0x80 || GetParam() > 3) {
      EXPECT_EQ(Hash(CutTo(key, 8), format, 1, kExceeded), KeyHash(Orders("ab")) * kMultiplier);
    }
    // The end mark alone is nothing of the text.
    if (format >= 0x80 || GetParam() > 3) {
      EXPECT_EQ(Hash(CutTo(key, key.size() - 1), format), KeyHash(Orders("abcd")) * kMultiplier);
    }
  }
}

TEST_P(StringRowHash, ReadsNothingBehindItsLength) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    for (StoredBytes const& array :
         {Record("abc", format) + WideRecord({'x', 0x416}, format) + Key(Orders("ab"), format),
          OlderRecord({"ab", "", "cdef"}, format), Record(std::string(300, 'a'), format),
          UnitBytes(0, format) + UnitBytes(65535, format) + StoredBytes{253, 1, 'a'}}) {
      for (std::size_t size = 1; size <= array.size(); ++size) {
        for (unsigned const count : {1u, 3u}) {
          PlacedBytes const placed(CutTo(array, size), 1);
          int error = 77;
          manager.Hash(XoSTRING_T, static_cast<unsigned>(size), placed.Data(), count, format,
                       error);
          EXPECT_TRUE(error == 0 || error == kExceeded);
        }
      }
    }
  }
}

}  // namespace
}  // namespace xo::test

// The bounds that a predicate on a string gets. Keys are put together order by order.
#include <array>

#include "tests/xotypevl/string_predicate.hpp"

namespace xo::test {
namespace {

constexpr unsigned kHighest = 0xFFFE;
constexpr std::array<unsigned char, 4> kFormats{kLittle, kBig, kKeyLittle, kKeyBig};

/// Notes failed assertions while it lives.
class Assertions {
 public:
  Assertions() : before(XoExchangePlatform({})) {
    noted.clear();
    XoPlatform hooks = before;
    hooks.assertFailed = [](char const* expression, char const* file, int line) {
      noted.push_back(std::string(file) + " " + std::to_string(line) + " " + expression);
      return 0;
    };
    XoExchangePlatform(hooks);
  }
  ~Assertions() { XoExchangePlatform(before); }
  static std::vector<std::string> const& Noted() { return noted; }

 private:
  XoPlatform before;
  static inline std::vector<std::string> noted;
};

// Which bounds there are.

TEST(StringBounds, TheRelationSaysWhichBoundsThereAre) {
  struct Case {
    unsigned short op;
    bool low, high;
  };
  for (Case const c :
       {Case{1, true, true}, Case{2, false, true}, Case{4, true, false}, Case{3, false, true},
        Case{5, true, false}, Case{6, false, false}, Case{7, false, false}, Case{0, true, true}}) {
    for (StoredBytes const& value : {Record("abc"), WideText("abc"), Record("abc", kLittle, 0),
                                     Record("abc*"), Key(TextOrders("abc"))}) {
      Evaluation const result = Evaluate({value, c.op});
      EXPECT_EQ(result.low.has_value(), c.low) << c.op;
      EXPECT_EQ(result.high.has_value(), c.high) << c.op;
    }
    Evaluation const older = Evaluate({.value = OlderRecord({"abc"}), .op = c.op, .older = true});
    EXPECT_EQ(older.low.has_value(), c.low) << c.op;
    EXPECT_EQ(older.high.has_value(), c.high) << c.op;
  }
}

TEST(StringBounds, TheRelationComesBackWithoutTheOptions) {
  EXPECT_EQ(Evaluate({Record("abc"), 0xFFF1}).op, 0x8001);
  EXPECT_EQ(Evaluate({Record("abc"), 0x7FF4}).op, 4);
  EXPECT_EQ(Evaluate({Record("abc"), kEqual | kIsPattern}).op, kEqual | kIsPattern);
  EXPECT_EQ(Evaluate({Record("a*"), 0x8002}).op, 0x8002 | kIsPattern);
}

TEST(StringBounds, BoundsThatExistAreKept) {
  for (unsigned char const format : kFormats) {
    StoredBytes const low = Key(TextOrders("k"), format);
    StoredBytes const high = CutTo(Key(TextOrders("klm"), format), 8);
    Predicate const predicate{WideText("abc", format), kEqual, format};
    Evaluation const both = Evaluate(predicate, &low, &high);
    Evaluation const lower = Evaluate(predicate, &low);
    Evaluation const upper = Evaluate(predicate, nullptr, &high);
    EXPECT_EQ(lower.high, Key(TextOrders("abc"), format));
    EXPECT_EQ(upper.low, Key(TextOrders("abc"), format));
    EXPECT_EQ(both.share, 0);
    // What begins with a wildcard keeps them too.
    Assertions const assertions;
    Evaluate({WideText("*", format), kEqual, format}, &low, &high);
  }
}

TEST(StringBounds, AreNoRangeOfTheCallThatFillsThem) {
  for (bool const older : {false, true}) {
    StoredBytes const text = older ? OlderRecord({"abc"}) : Record("abc");
    PlacedBytes const value(text, 1);
    XoIdxBounds both;
    both.keyLimit = 100;
    unsigned short op = kEqual;
    EXPECT_EQ(XoTypeMgr(older ? 3 : 5)
                  .EvalAndBound(XoSTRING_T, &both, op, value.Data(), kLittle, 1, &both, nullptr),
              0);
    EXPECT_NE(both.low, nullptr);
    EXPECT_NE(both.high, nullptr);
    ReleaseBounds(both);
  }
}

TEST(StringBounds, WithoutARecordForThemThePatternIsStillMarked) {
  XoTypeMgr const manager;
  for (auto const& [text, op] : {std::pair{"abc", 1}, {"a*", 9}, {"*", 9}, {"?a", 9}}) {
    StoredBytes value = Record(text);
    StoredBytes key = Key(TextOrders("a"));
    XoIdxBounds range{key.data(), key.data(), 8, 8};
    unsigned short inAndOut = 1;
    EXPECT_EQ(manager.EvalAndBound(XoSTRING_T, &range, inAndOut, value.data(), kLittle, 1, nullptr,
                                   nullptr),
              0);
    EXPECT_EQ(inAndOut, op) << text;
  }
}

TEST(StringBounds, ABufferHasTheBytesOfTheLongestKey) {
  for (unsigned char const limit : Formats{1, 9, 10, 200, 255}) {
    Predicate const predicate{.value = Record("abc*"), .keyLimit = limit};
    Evaluation const result = Evaluate(predicate);
    EXPECT_EQ(result.low->size(), 9u);
    EXPECT_EQ(result.high->size(), 10u);
  }
}

// Values.

TEST(StringBounds, AValueIsBoundedByItsKeyOnBothSides) {
  for (unsigned char const format : kFormats) {
    StoredBytes const key = Key(TextOrders("aB c-1"), format);
    for (StoredBytes const& value : {WideText("aB c-1", format), key}) {
      Evaluation const result = Evaluate({value, kEqual, format});
      EXPECT_EQ(result.op, kEqual);
      EXPECT_EQ(result.low, key);
      EXPECT_EQ(result.high, key);
    }
  }
}

TEST(StringBounds, OfAFormatInMemoryTheBytesAreReadAsStored) {
  EXPECT_EQ(Evaluate({WideText("ab"), kEqual, 8}).low, Key(TextOrders("ab")));
  EXPECT_EQ(Evaluate({WideText("ab", kBig), kEqual, 0x8A}).low, Key(TextOrders("ab"), kBig));
}

TEST(StringBounds, CharactersOfOneByteHaveRoomForHalfOfTheirOrders) {
  for (unsigned char const format : kFormats) {
    // Nine bytes: a header, two orders, and one of the two bytes that close them.
    Evaluation const odd = Evaluate({Record("abc", format), kEqual, format});
    EXPECT_EQ(odd.low, CutTo(Key(TextOrders("ab"), format), 9));
    Evaluation const even = Evaluate({Record("abcd", format), kEqual, format});
    EXPECT_EQ(even.low, Key(TextOrders("ab"), format));
    // The upper one is cut and says so; it takes what room there is.
    EXPECT_EQ(odd.high, CutTo(Key(TextOrders("abc"), format), 9));
    EXPECT_EQ(even.high, CutTo(Key(TextOrders("abc"), format), 10));
    // Nothing that equals the value, or that begins with it, stands behind that.
    EXPECT_EQ(Compare(Key(TextOrders("abcd"), format), *even.high, {format}).status, kExceeded);
    EXPECT_EQ(Compare(Key(TextOrders("abcd"), format), *odd.high, {format}).status, kExceeded);
    EXPECT_EQ(Compare(Key(TextOrders("abd"), format), *even.high, {format}).sign, 1);
    EXPECT_EQ(Evaluate({Record("a", format), kEqual, format}).high,
              CutTo(Key(TextOrders("a"), format), 7));
  }
}

TEST(StringBounds, AKeyThatEndsEarlyIsClosedThere) {
  for (unsigned char const format : kFormats) {
    // The Greek letter opens another group.
    StoredBytes const value = WideRecord({'a', 0x3B1, 'b'}, format);
    StoredBytes key = Key(TextOrders("a"), format, 2 | 0x80);
    key.resize(12);
    Evaluation const result = Evaluate({value, kEqual, format});
    EXPECT_EQ(result.low, key);
    EXPECT_EQ(result.high, key);
  }
}

TEST(StringBounds, AnEmptyTextHasItsEmptyKey) {
  for (unsigned char const format : kFormats) {
    for (StoredBytes const& value : {Record("", format), WideText("", format)}) {
      Evaluation const result = Evaluate({value, kEqual, format});
      EXPECT_EQ(result.low, Key({}, format));
      EXPECT_EQ(result.high, Key({}, format));
    }
    EXPECT_EQ(Evaluate({Record("", format, 0), kEqual, format}).high, Record("", format, 0));
  }
}

TEST(StringBounds, WithoutACodeSetTheRecordIsTheKey) {
  for (unsigned char const format : kFormats) {
    for (char const* const text : {"", "a", "ab", "abc\xE9"}) {
      StoredBytes const record = Record(text, format, 0, 3);
      Evaluation const result = Evaluate({record, kEqual | kNoCase | kNoAccents, format});
      EXPECT_EQ(result.low, record);
      EXPECT_EQ(result.high, record);
    }
  }
}

TEST(StringBounds, CodeSetsAreTakenAndDroppedAsInKeys) {
  Evaluation const dropped = Evaluate({Record("Ab"), kEqual | kNoCase, kLittle | 0x20});
  EXPECT_EQ(dropped.low, Record("Ab", kLittle, 0));
  EXPECT_EQ(dropped.high, Record("Ab", kLittle, 0));
  Evaluation const native = Evaluate({Record("Ab*", kLittle, 0), kEqual | kNoCase, kLittle | 0x40});
  EXPECT_EQ(native.low, Key({OrderOf('a') | 0x3000}));
}

// Patterns.

TEST(StringBounds, APatternIsBoundedByWhatStandsBeforeItsWildcard) {
  for (unsigned char const format : kFormats) {
    for (char const* const text : {"abc*", "abc?", "abc*de", "abc?*"}) {
      Evaluation const wide = Evaluate({WideText(text, format), kEqual, format});
      EXPECT_EQ(wide.op, kEqual | kIsPattern);
      EXPECT_EQ(wide.low, Key(TextOrders("abc"), format));
      EXPECT_EQ(wide.high, Key(TextOrders("abc", {kHighest}), format));
      Evaluation const narrow = Evaluate({Record(text, format), kEqual, format});
      EXPECT_EQ(narrow.op, kEqual | kIsPattern);
      EXPECT_EQ(narrow.low, CutTo(Key(TextOrders("ab"), format), 9));
      EXPECT_EQ(narrow.high, Key(TextOrders("a", {kHighest}), format));
      Evaluation const bytes = Evaluate({Record(text, format, 0), kEqual, format});
      EXPECT_EQ(bytes.low, Record("abc", format, 0));
      EXPECT_EQ(bytes.high, Record("abc\xFF", format, 0));
    }
    unsigned const asterisk = AsteriskOrder();
    Evaluation const key =
        Evaluate({Key(TextOrders("abc", {asterisk, OrderOf('d')}), format), kEqual, format});
    EXPECT_EQ(key.low, Key(TextOrders("abc"), format));
    EXPECT_EQ(key.high, Key(TextOrders("abc", {kHighest}), format));
  }
}

TEST(StringBounds, ALeadingWildcardHasNoBoundsAndIsReported) {
  for (unsigned char const format : kFormats) {
    KeyRange const range{Key(TextOrders("a"), format), Key(TextOrders("c"), format)};
    for (char const* const text : {"*", "*abc", "?abc"}) {
      for (StoredBytes const& value :
           {Record(text, format), WideText(text, format), Record(text, format, 0)}) {
        Assertions const assertions;
        Evaluation const result = Evaluate({value, kEqual, format, false, range});
        EXPECT_EQ(result.op, kEqual | kIsPattern);
        EXPECT_FALSE(result.low || result.high);
        EXPECT_EQ(assertions.Noted(),
                  std::vector<std::string>{"src\\xotypevl 1128 "
                                           "charWildPos != 0 || valueRange >= valueTotalArea"});
      }
    }
  }
}

TEST(StringBounds, ALeadingWildcardThatSelectsAllIsNotReported) {
  Assertions const assertions;
  KeyRange const range{Key(TextOrders("a")), Key(TextOrders("c"))};
  EXPECT_GE(Evaluate({WideText("*"), 7, kLittle, false, range}).share, 1);
  EXPECT_TRUE(assertions.Noted().empty());
}

TEST(StringBounds, WithoutWildcardsTheAsteriskIsACharacter) {
  unsigned const asterisk = AsteriskOrder();
  Evaluation const wide = Evaluate({WideText("ab*"), kEqual | kLiteral});
  EXPECT_EQ(wide.op, kEqual);
  EXPECT_EQ(wide.low, Key(TextOrders("ab", {asterisk})));
  EXPECT_EQ(wide.high, Key(TextOrders("ab", {asterisk})));
  EXPECT_EQ(Evaluate({Record("*", kLittle, 0), kEqual | kLiteral}).low, Record("*", kLittle, 0));
}

TEST(StringBounds, AKeyCutAtItsGroupIsAPattern) {
  for (unsigned char const format : kFormats) {
    StoredBytes const key = Key(TextOrders("abc"), format, 0x82);
    Evaluation const result = Evaluate({key, kEqual, format});
    EXPECT_EQ(result.op, kEqual | kIsPattern);
    EXPECT_EQ(result.low, key);
    EXPECT_EQ(result.high, Key(TextOrders("abc", {kHighest}), format, 0x82));
    // Also where asterisks are characters.
    EXPECT_EQ(Evaluate({key, kEqual | kLiteral, format}).op, kEqual | kIsPattern);
    StoredBytes const literal = Key(TextOrders("a", {AsteriskOrder()}), format, 0x82);
    EXPECT_EQ(Evaluate({literal, kEqual | kLiteral, format}).low, literal);
    EXPECT_EQ(Evaluate({literal, kEqual | kLiteral, format}).high,
              Key(TextOrders("a", {AsteriskOrder(), kHighest}), format, 0x82));
    // But not of the first group.
    EXPECT_EQ(Evaluate({Key(TextOrders("abc"), format, 0x81), kEqual, format}).op, kEqual);
    // A wildcard comes first.
    StoredBytes const pattern = Key(TextOrders("a", {AsteriskOrder(), OrderOf('c')}), format, 0x82);
    EXPECT_EQ(Evaluate({pattern, kEqual, format}).low, Key(TextOrders("a"), format, 0x82));
  }
}

TEST(StringBounds, APatternEndsAtItsWildcardWhereLettersContract) {
  // In Czech "ch" is one letter, so that there is room for the wildcard.
  constexpr unsigned char kCzech = 22;
  StoredBytes value = WideText("chleb*");
  value[3] = kCzech;
  XoStringIterator letter("ch", 1, kCzech);
  std::vector<unsigned> orders{letter.GetNextOrder()};
  ASSERT_EQ(letter.GetNextOrder(), 0);
  for (char const character : {'l', 'e', 'b'}) orders.push_back(OrderOf(character));
  Evaluation const result = Evaluate({value});
  StoredBytes low = Key(orders);
  low.resize(16);
  EXPECT_EQ(result.low, low);
  orders.push_back(kHighest);
  StoredBytes high = Key(orders);
  high.resize(18);
  EXPECT_EQ(result.high, high);
}

// Spellings.

TEST(StringBounds, LettersAreSpelledLowestAndHighest) {
  constexpr unsigned kAcute = 7, kAllAccents = 31;
  for (unsigned char const format : kFormats) {
    StoredBytes const value = Key({OrderOf('a', kAcute), Digit(1), kHyphen, OrderOf('B')}, format);
    auto const bounds = [&](unsigned short options) {
      return Evaluate({value, static_cast<unsigned short>(kEqual | options), format});
    };
    auto const key = [&](unsigned first, unsigned last) {
      return Key({first, Digit(1), kHyphen, last}, format);
    };
    // Small letters come first, and have more of the case bits.
    constexpr unsigned kCase = 0x3000;
    EXPECT_EQ(bounds(kNoCase).low, key(OrderOf('A', kAcute) | kCase, OrderOf('B') | kCase));
    EXPECT_EQ(bounds(kNoCase).high, key(OrderOf('A', kAcute), OrderOf('B')));
    EXPECT_EQ(bounds(kNoAccents).low, key(OrderOf('a'), OrderOf('B')));
    EXPECT_EQ(bounds(kNoAccents).high, key(OrderOf('a', kAllAccents), OrderOf('B', kAllAccents)));
    EXPECT_EQ(bounds(kNoCase | kNoAccents).low, key(OrderOf('A') | kCase, OrderOf('B') | kCase));
    EXPECT_EQ(bounds(kNoCase | kNoAccents).high,
              key(OrderOf('A', kAllAccents), OrderOf('B', kAllAccents)));
    EXPECT_EQ(bounds(0).low, value);
  }
}

TEST(StringBounds, ALetterOfOneByteIsSpelledToo) {
  for (unsigned char const format : kFormats) {
    Evaluation const result = Evaluate({Record("a", format), kEqual | kNoCase, format});
    EXPECT_EQ(result.low, CutTo(Key({OrderOf('a') | 0x3000}, format), 7));
    EXPECT_EQ(result.high, CutTo(Key({OrderOf('A')}, format), 7));
    // All orders of a key that is cut are, the last one too.
    EXPECT_EQ(Evaluate({Record("abcd", format), kEqual | kNoCase, format}).high,
              CutTo(Key(TextOrders("ABC"), format), 10));
  }
}

TEST(StringBounds, WhatTheTablesLackIsNotRespelled) {
  for (unsigned char const group : Formats{20, 21, 127}) {
    StoredBytes const key = Key({OrderOf('a'), 0x4E00}, kLittle, group);
    EXPECT_EQ(Evaluate({key, kEqual | kNoCase | kNoAccents}).low, key);
    EXPECT_EQ(Evaluate({key, kEqual | kNoCase | kNoAccents}).high, key);
  }
  // Neither are orders of ideographs among letters.
  EXPECT_EQ(Evaluate({Key({0x8101, 0xFFF1}), kEqual | kNoCase | kNoAccents}).high,
            Key({0x8101, 0xFFF1}));
  // The mark of a cut does not count as a group.
  EXPECT_EQ(Evaluate({Key({OrderOf('a')}, kLittle, 0x93), kEqual | kNoCase}).low,
            Key({OrderOf('a') | 0x3000}, kLittle, 0x93));
}

// Spaces and symbols that do not count.

TEST(StringBounds, WhereOrdersAreSkippedTheUpperBoundEndsInTheHighest) {
  for (unsigned char const format : kFormats) {
    for (unsigned short const skip : {kSkipSpaces, kSkipSymbols}) {
      auto const op = static_cast<unsigned short>(kEqual | skip);
      Evaluation const result = Evaluate({WideText("abc", format), op, format});
      EXPECT_EQ(result.op, kEqual);
      EXPECT_EQ(result.low, Key(TextOrders("abc"), format));
      EXPECT_EQ(result.high, Key(TextOrders("ab", {kHighest}), format));
      EXPECT_EQ(Evaluate({Record("abcd", format), op, format}).high,
                Key(TextOrders("a", {kHighest}), format));
      EXPECT_EQ(Evaluate({Record("abc", format, 0), op, format}).high, Record("ab\xFF", format, 0));
    }
  }
}

TEST(StringBounds, AnEmptyTextHasRoomForTheHighest) {
  for (unsigned char const format : kFormats) {
    for (unsigned short const skip : {kSkipSpaces, kSkipSymbols}) {
      auto const op = static_cast<unsigned short>(kEqual | skip);
      for (StoredBytes const& value : {Record("", format), WideText("", format)}) {
        EXPECT_EQ(Evaluate({value, op, format}).high, Key({kHighest}, format));
        EXPECT_EQ(Evaluate({value, op, format}).low, Key({}, format));
      }
      EXPECT_EQ(Evaluate({Record("", format, 0), op, format}).high,
                Record("\xFF", format, 0) + StoredBytes{0});
    }
  }
}

TEST(StringBounds, AScanThatSkipsHasNoLowerBound) {
  for (unsigned short const skip : {kSkipSpaces, kSkipSymbols}) {
    for (StoredBytes const& value : {WideText("a b"), Record("a b"), WideText("a*")}) {
      auto const op = static_cast<unsigned short>(kEqual | skip | kSkipScan);
      EXPECT_FALSE(Evaluate({value, op}).low);
      EXPECT_TRUE(Evaluate({value, op}).high);
    }
  }
  EXPECT_TRUE(Evaluate({WideText("a b"), kEqual | kSkipScan}).low);
  // It is needed: a key that matches may stand before the value.
  Evaluation const result = Evaluate({WideText("a b"), kEqual | kSkipSpaces});
  EXPECT_EQ(Compare(Key(TextOrders("ab")), WideText("a b"), {kKeyLittle, kSkipSpaces}).sign, 0);
  EXPECT_EQ(Compare(Key(TextOrders("ab")), *result.low, {kKeyLittle}), (Answer{-1, 0}));
}

// Long values.

TEST(StringBounds, OfALongValueTheBoundIsCut) {
  for (unsigned char const format : kFormats) {
    std::string const text(200, 'a');
    // Full of orders, with a length by which the closing bytes are missing.
    StoredBytes const cut = CutTo(Key(TextOrders(std::string(125, 'a')), format), 254);
    EXPECT_EQ(StoredBytes(cut.begin(), cut.begin() + 2), UnitBytes(254, format));
    for (StoredBytes const& value : {WideText(text, format), Record(text + text, format)}) {
      Evaluation const result = Evaluate({value, kEqual, format});
      EXPECT_EQ(result.low, cut);
      EXPECT_EQ(result.high, cut);
    }
    StoredBytes const bytes = Record(std::string(249, 'a'), format, 0);
    EXPECT_EQ(Evaluate({bytes, kEqual, format}).low, CutTo(bytes, 254));
    EXPECT_EQ(Evaluate({bytes, kEqual, format}).high, CutTo(bytes, 254));
    // The longest ones that are closed.
    EXPECT_EQ(Evaluate({Record(std::string(248, 'a'), format), kEqual, format}).low,
              Key(TextOrders(std::string(124, 'a')), format));
    StoredBytes const whole = Record(std::string(248, 'a'), format, 0);
    EXPECT_EQ(Evaluate({whole, kEqual, format}).low, whole);
  }
}

TEST(StringBounds, OfALongPatternTheCutBoundEndsInTheHighest) {
  for (unsigned char const format : kFormats) {
    std::string const text(124, 'a');
    StoredBytes const closed = Key(TextOrders(text), format);
    StoredBytes high = Key(TextOrders(text, {kHighest}), format);
    Evaluation const result = Evaluate({WideText(text + "*", format), kEqual, format});
    EXPECT_EQ(result.low, closed);
    // The length is that of the orders alone.
    EXPECT_EQ(result.high, CutTo(high, 254));
    Evaluation const bytes =
        Evaluate({Record(std::string(300, 'a') + "*", format, 0), kEqual, format});
    EXPECT_EQ(bytes.high->size(), 254u);
    EXPECT_EQ(bytes.high->back(), 0xFF);
    EXPECT_EQ((*bytes.high)[252], 'a');
  }
}

TEST(StringBounds, ALongValueWithAShortKeyIsClosed) {
  std::vector<unsigned> units(200, 'b');
  units[0] = 'a';
  units[1] = 0x3B1;
  Evaluation const result = Evaluate({WideRecord(units, kLittle), kEqual | kSkipSpaces});
  StoredBytes low = Key(TextOrders("a"), kLittle, 0x82);
  low.resize(254);
  EXPECT_EQ(result.low, low);
  StoredBytes high = Key(TextOrders("a", {kHighest}), kLittle, 0x82);
  high.resize(254);
  EXPECT_EQ(result.high, high);
}

// The older generation.

TEST(OlderStringBounds, AreOlderRecords) {
  for (unsigned char const format : kFormats) {
    StoredBytes const record = OlderRecord({"abc"}, format);
    Evaluation const exact = Evaluate({record, kEqual | kNoCase, format, true});
    EXPECT_EQ(exact.op, kEqual);
    EXPECT_EQ(exact.low, record);
    EXPECT_EQ(exact.high, record);
    // Of a pattern the length stays what it was.
    Evaluation const pattern = Evaluate({OlderRecord({"ab*cd"}, format), kEqual, format, true});
    EXPECT_EQ(pattern.op, kEqual | kIsPattern);
    EXPECT_EQ(pattern.low, (UnitBytes(6, format) + StoredBytes{'a', 'b', 0}));
    EXPECT_EQ(pattern.high, (UnitBytes(6, format) + StoredBytes{'a', 'b', 0xFF, 0}));
    EXPECT_FALSE(Evaluate({OlderRecord({"abc"}, format), kEqual, format, true}).op & kIsPattern);
  }
}

TEST(OlderStringBounds, EndInTheHighestByteWhereSpacesAreSkipped) {
  for (unsigned char const format : kFormats) {
    auto const high = [&](char const* text) {
      return Evaluate({OlderRecord({text}, format), kEqual | kSkipSpaces, format, true}).high;
    };
    EXPECT_EQ(high("ab"), (UnitBytes(3, format) + StoredBytes{'a', 0xFF, 0}));
    EXPECT_EQ(high(""), (UnitBytes(1, format) + StoredBytes{0xFF, 0}));
    // Six bytes are those of an empty text in records with a header only.
    EXPECT_EQ(high("abc"), (UnitBytes(4, format) + StoredBytes{'a', 'b', 0xFF, 0}));
  }
}

TEST(OlderStringBounds, AreCutLikeOthers) {
  StoredBytes const record = OlderRecord({std::string(252, 'a')});
  EXPECT_EQ(record.size(), 255u);
  EXPECT_EQ(Evaluate({record, kEqual, kLittle, true}).high, CutTo(record, 254));
  StoredBytes const whole = OlderRecord({std::string(251, 'a')});
  EXPECT_EQ(Evaluate({whole, kEqual, kLittle, true}).high, whole);
}

TEST(OlderStringBounds, OfAnOlderRecordInTheCurrentRowGetAHeader) {
  Evaluation const exact = Evaluate({OlderRecord({"abc"}), kEqual});
  EXPECT_EQ(exact.low, Record("abc", kLittle, 0, 0));
  EXPECT_EQ(exact.high, Record("abc", kLittle, 0, 0));
  Evaluation const pattern = Evaluate({OlderRecord({"ab*c"}), kEqual});
  EXPECT_EQ(pattern.low, Record("ab", kLittle, 0, 0));
  EXPECT_EQ(pattern.high, Record("ab\xFF", kLittle, 0, 0));
}

// Records that lie.

TEST(StringBounds, ARecordShorterThanItsHeaderIsAnEmptyText) {
  for (bool const older : {false, true}) {
    for (unsigned char const length : Formats{0, 1, 2, 3}) {
      StoredBytes value{length, 0, 0xFF, 0xFF, 0xFF};
      value.resize(2u + length);
      for (unsigned short const op : {kEqual, static_cast<unsigned short>(kEqual | kSkipSpaces)}) {
        Assertions const assertions;
        Evaluation const result = Evaluate({value, op, kLittle, older});
        if (!result.low) continue;
        EXPECT_EQ(result.low->size(), older ? 2u + std::max<unsigned>(length, 1) : 6u);
      }
    }
  }
}

TEST(StringBounds, OfHalfAnOrderTheHighestTakesThePlace) {
  for (unsigned char const format : kFormats) {
    StoredBytes const half = RecordOf({0x70}, 254, 2, format);
    Evaluation const result = Evaluate({half, kEqual | kSkipSpaces, format});
    EXPECT_EQ(result.high, CutTo(Key({kHighest}, format), 7));
  }
}

TEST(StringBounds, NullIsAPatternOfEverything) {
  Assertions const assertions;
  Evaluation const marked = Evaluate({RecordOf({}, 0, 254, kLittle), kEqual});
  EXPECT_EQ(marked.op, kEqual | kIsPattern);
  EXPECT_FALSE(marked.low || marked.high);
  // A null key has bounds, as it is not cut.
  EXPECT_EQ(Evaluate({Key({}, kLittle, 0), kEqual}).low, Key({}, kLittle, 0));
}

}  // namespace
}  // namespace xo::test

// Between its bounds a scan finds every key that a predicate selects, and an estimate is a share.
#include <cmath>

#include "tests/xostring/near_pairs.hpp"
#include "tests/xotypevl/string_predicate.hpp"

namespace xo::test {
namespace {

/// Words in use, in Latin-1, with what makes orders differ: case, accents, spaces and symbols.
constexpr char const* kWords[] = {
    "",
    "a",
    "A",
    "ab",
    "abbey",
    "Abend",
    "Abendbrot",
    "abendlich",
    "aber",
    "\xC4hre",
    "\xE4hnlich",
    "all",
    "alle",
    "allein",
    "Apfel",
    "\xC4pfel",
    "Art",
    "art",
    "auf",
    "Aufgabe",
    "b",
    "Bad",
    "Bahn",
    "bald",
    "Ball",
    "Band",
    "band",
    "Bank",
    "b\xE4nder",
    "Bett",
    "blau",
    "blue-eyed",
    "cafe",
    "caf\xE9",
    "Caf\xE9",
    "co-op",
    "coop",
    "co op",
    "cote",
    "cot\xE9",
    "c\xF4te",
    "c\xF4t\xE9",
    "data",
    "data base",
    "database",
    "Data-Base",
    "dein",
    "deutsch",
    "Deutschland",
    "eins",
    "elf",
    "element",
    "\xC9l\xE9ment",
    "ende",
    "Ende",
    "Engel",
    "fahren",
    "falsch",
    "Fest",
    "fest",
    "fl\xFCssig",
    "Fluss",
    "Flu\xDF",
    "Fu\xDF",
    "Fuss",
    "Fussball",
    "Gast",
    "geben",
    "gehen",
    "gelb",
    "gro\xDF",
    "gross",
    "gut",
    "Haus",
    "Hausbau",
    "haus",
    "heute",
    "h\xF6ren",
    "ich",
    "in",
    "In",
    "it's",
    "its",
    "jung",
    "Jungfrau",
    "kalt",
    "Kind",
    "Kinder",
    "klein",
    "Kopf",
    "lang",
    "langsam",
    "leicht",
    "Licht",
    "Mann",
    "M\xE4nner",
    "mutter",
    "Nacht",
    "n\xE4"
    "chst",
    "naive",
    "na\xEFve",
    "ober",
    "\xF6"
    "ffnen",
    "Oper",
    "Papier",
    "quer",
    "rot",
    "r\xF6tlich",
    "sagen",
    "schnell",
    "sch\xF6n",
    "schon",
    "stra\xDF"
    "e",
    "strasse",
    "Stra\xDF"
    "e",
    "Strasse",
    "Strassenbahn",
    "Strandbad",
    "strange",
    "stra",
    "str",
    "Tag",
    "tag",
    "T\xFCr",
    "Turm",
    "\xDC"
    "ber",
    "\xFC"
    "berall",
    "uhr",
    "Uhr",
    "vier",
    "Vogel",
    "wald",
    "Wasser",
    "x-ray",
    "xray",
    "yacht",
    "Zahl",
    "zahlen",
    "z\xE4hlen",
    "Zug",
    "1",
    "10",
    "11",
    "2 x 4",
    "100%",
    "-",
    " ",
};

constexpr unsigned short kPlainOrders = 0x100;

class StringBoundsLaws : public NearPairs {
 protected:
  std::string Word() {
    std::string word = kWords[Below(std::size(kWords))];
    if (!OneIn(3)) return word;
    // Or what is near it.
    constexpr char kChanges[] = "abcAeE\xE9sS\xDF\xE4 -1z";
    for (unsigned changes = Below(3); changes != 0; --changes) {
      std::size_t const place = Below(static_cast<unsigned>(word.size()) + 1);
      char const letter = kChanges[Below(sizeof kChanges - 1)];
      if (OneIn(2) || place == word.size()) {
        word.insert(word.begin() + static_cast<std::ptrdiff_t>(place), letter);
      } else {
        word[place] = letter;
      }
    }
    return word;
  }

  /// A word, with wildcards in every second one.
  std::string WordOrPattern() {
    std::string word = Word();
    if (OneIn(2)) return word;
    for (unsigned wildcards = 1 + Below(2); wildcards != 0; --wildcards) {
      std::size_t const place =
          OneIn(2) ? word.size() : Below(static_cast<unsigned>(word.size()) + 1);
      word.insert(word.begin() + static_cast<std::ptrdiff_t>(place), OneIn(3) ? '?' : '*');
    }
    return word;
  }
};

/// How a value is stored, and its keys.
enum class Form { kNarrow, kWide, kKey, kBytes, kOlder };

StoredBytes ValueOf(std::string const& text, Form form, unsigned char format) {
  std::vector<unsigned> units;
  for (char const character : text) units.push_back(static_cast<unsigned char>(character));
  switch (form) {
    case Form::kNarrow:
      return Record(text, format, 1, 3);
    case Form::kWide:
      return WideRecord(units, format, 253, 3);
    case Form::kBytes:
      return Record(text, format, 0, 0);
    case Form::kOlder:
      return OlderRecord({text}, format);
    case Form::kKey:
      break;
  }
  StoredBytes source = Record(text, format, 1, 3);
  StoredBytes key(4 * text.size() + 12);
  key.resize(XoTypeMgr().Translate(XoSTRING_T, key.data(),
                                   static_cast<unsigned char>(format | 0x80),
                                   static_cast<unsigned>(key.size()), source.data(), format,
                                   static_cast<unsigned>(source.size()), 1));
  return key;
}
StoredBytes KeyOfWord(std::string const& text, Form form, unsigned char format) {
  bool const isItself = form == Form::kBytes || form == Form::kOlder;
  return ValueOf(text, isItself ? form : Form::kKey, format);
}

/// Whether a key satisfies a relation to a value.
bool Selects(unsigned short op, Answer const& answer) {
  unsigned const bit = answer.sign == 0 ? kEqual : answer.sign < 0 ? kBelow : kAbove;
  return (op & bit) != 0;
}

/// The keys of some words in the order of an index.
std::vector<StoredBytes> IndexOf(std::vector<std::string> const& words, Form form,
                                 Question const& question) {
  std::vector<StoredBytes> keys;
  for (std::string const& word : words) keys.push_back(KeyOfWord(word, form, question.format));
  std::sort(keys.begin(), keys.end(), [&](StoredBytes const& one, StoredBytes const& other) {
    return Compare(one, other, question).sign < 0;
  });
  return keys;
}

constexpr Form kForms[] = {Form::kNarrow, Form::kWide, Form::kKey, Form::kBytes, Form::kOlder};

// Where orders do not count, keys stand elsewhere than the texts that they equal: of the options
// that skip them only those of a scan without a lower bound are kept by the law, and of those only
// equality. By plain orders, case and accents count before the letters that follow, and an index is
// not in that order.
constexpr unsigned short kOptions[] = {
    0, kLiteral, kNoCase, kNoAccents, kNoCase | kNoAccents, kLiteral | kNoCase | kNoAccents};
constexpr unsigned short kSkipOptions[] = {
    kSkipSpaces | kSkipScan, kSkipSymbols | kSkipScan, kSkipSpaces | kSkipSymbols | kSkipScan,
    kSkipSpaces | kSkipSymbols | kSkipScan | kNoCase | kNoAccents};

/// Whether a key has spaces or symbols.
bool HasSymbols(StoredBytes const& key, unsigned char format) {
  std::size_t const length = DecodeAt<unsigned short>(key.data(), format);
  for (std::size_t place = 4; place + 2 <= std::min(length, key.size()); place += 2) {
    if (DecodeAt<unsigned short>(key.data() + place, format) < 16128) return true;
  }
  return false;
}

/// Whether a comparison with a bound may be wrong that counts as settled: a whole key with fewer
/// orders than a cut one is settled, though the cut one may have fewer letters there, and go on
/// with letters that are not there. Who wants to do without this evaluates a whole key as the
/// value.
bool IsUnsettled(StoredBytes const& key, StoredBytes const& bound, Question const& question) {
  if (question.older || key[2] != 254) return false;
  bool const isCut = DecodeAt<unsigned short>(bound.data(), question.format) + 1u > bound.size();
  return isCut && (HasSymbols(key, question.format) || HasSymbols(bound, question.format));
}

/// Keys found by the laws.
unsigned found = 0;

/// Expects that all keys that a predicate selects are between its bounds.
void ExpectBracketed(std::vector<StoredBytes> const& keys, std::string const& text, Form form,
                     unsigned short op, Question const& inOrder) {
  auto const options = static_cast<unsigned short>(op & 0x7FF0);
  Predicate const predicate{.value = ValueOf(text, form, inOrder.format),
                            .op = op,
                            .format = inOrder.format,
                            .older = inOrder.older,
                            .range = KeyRange{keys.front(), keys.back()}};
  Evaluation const result = Evaluate(predicate);
  EXPECT_TRUE(std::isfinite(result.share));
  EXPECT_GE(result.share, 0);
  EXPECT_LE(result.share, 3);
  for (StoredBytes const& key : keys) {
    Question question = inOrder;
    question.cmpOp = static_cast<unsigned short>(options & ~kSkipScan);
    if (!Selects(op, Compare(key, predicate.value, question))) continue;
    auto const isPast = [&](std::optional<StoredBytes> const& bound, int side) {
      if (!bound || IsUnsettled(key, *bound, inOrder)) return false;
      Answer const answer = Compare(key, *bound, inOrder);
      return answer.status != kExceeded && answer.sign == side;
    };
    ++found;
    ASSERT_FALSE(isPast(result.low, -1) || isPast(result.high, 1))
        << "'" << text << "' op " << op << " form " << static_cast<int>(form) << " key "
        << testing::PrintToString(key) << " low " << testing::PrintToString(result.low) << " high "
        << testing::PrintToString(result.high);
  }
}

class QuietAssertions {
 public:
  QuietAssertions() : before(XoExchangePlatform({})) {
    XoPlatform hooks = before;
    hooks.assertFailed = [](char const*, char const*, int) { return 0; };
    XoExchangePlatform(hooks);
  }
  ~QuietAssertions() { XoExchangePlatform(before); }

 private:
  XoPlatform before;
};

TEST_F(StringBoundsLaws, AScanBetweenTheBoundsFindsWhatAFullScanFinds) {
  QuietAssertions const quiet;
  for (Form const form : kForms) {
    for (unsigned char const format : Formats{kLittle, kBig}) {
      auto const keyFormat =
          static_cast<unsigned char>(form == Form::kOlder ? format : format | 0x80);
      Question const inOrder{keyFormat, kLiteral, 1, form == Form::kOlder};
      std::vector<std::string> words;
      for (unsigned count = 0; count < 60; ++count) words.push_back(Word());
      std::vector<StoredBytes> const keys = IndexOf(words, form, inOrder);
      for (unsigned round = 0; round < 100; ++round) {
        std::string const text = WordOrPattern();
        for (unsigned short const options : kOptions) {
          auto const relation = static_cast<unsigned short>(1 + Below(7));
          ExpectBracketed(keys, text, form, relation | options, inOrder);
        }
        for (unsigned short const options : kSkipOptions) {
          ExpectBracketed(keys, text, form, kEqual | options, inOrder);
        }
        ExpectBracketed(keys, text, form, kEqual | kPlainOrders, inOrder);
        if (HasFatalFailure()) return;
      }
    }
  }
  std::cout << found << " keys found\n";
  EXPECT_GT(found, 40000u);
}

/// The key of a text of 16-bit characters.
StoredBytes KeyOfUnicode(StoredBytes source) {
  StoredBytes key(8 * source.size() + 12);
  key.resize(XoTypeMgr().Translate(XoSTRING_T, key.data(), kKeyLittle,
                                   static_cast<unsigned>(key.size()), source.data(), kLittle,
                                   static_cast<unsigned>(source.size()), 1));
  return key;
}

TEST_F(StringBoundsLaws, TextsOfAllScriptsAreFoundBetweenTheBounds) {
  QuietAssertions const quiet;
  constexpr Question kInOrder{kKeyLittle, kLiteral};
  // The two units that are no characters and stand last close bounds.
  specials = false;
  constexpr unsigned char kLanguages[] = {1, 3, 7, 22};
  unsigned inside = 0;
  for (unsigned round = 0; round < 8000; ++round) {
    unsigned char const language = kLanguages[Below(4)];
    auto const record = [&](std::u16string const& text) {
      return WideRecord(std::vector<unsigned>(text.begin(), text.end()), kLittle, kUnicode,
                        language);
    };
    std::u16string const text = Text(kUnicode, 8);
    StoredBytes const key = KeyOfUnicode(record(Changed(text, kUnicode)));
    // What is cut where its script changes can be told for sure by no comparison.
    if ((key[3] & 0x80) != 0) continue;
    unsigned short const options = kOptions[Below(std::size(kOptions))];
    bool const isPattern = OneIn(2);
    StoredBytes value = record(isPattern ? text.substr(0, Below(9)) + u'*' : text);
    if (OneIn(3)) value = KeyOfUnicode(value);
    // A text that a pattern does not match comes before or after it as neither of them stands in
    // an index.
    unsigned const relation = isPattern ? kEqual : 1 + Below(7);
    auto const op = static_cast<unsigned short>(relation | options);
    Question question = kInOrder;
    question.cmpOp = options;
    Answer const answer = Compare(key, value, question);
    if (answer.status != 0 || !Selects(op, answer)) continue;
    ++inside;
    Evaluation const result = Evaluate({.value = value, .op = op, .range = KeyRange{key, key}});
    auto const isPast = [&](std::optional<StoredBytes> const& bound, int side) {
      if (!bound || IsUnsettled(key, *bound, kInOrder)) return false;
      // A bound that is cut where its script changes settles nothing either.
      Answer const place = Compare(key, *bound, kInOrder);
      return place.status == 0 && place.sign == side;
    };
    ASSERT_FALSE(isPast(result.low, -1) || isPast(result.high, 1))
        << "op " << op << " key " << testing::PrintToString(key) << " value "
        << testing::PrintToString(value) << " low " << testing::PrintToString(result.low)
        << " high " << testing::PrintToString(result.high);
    EXPECT_TRUE(std::isfinite(result.share));
  }
  EXPECT_GT(inside, 800u);
}

TEST(StringBounds, AKeyCutBehindSymbolsMayBeSelectedAndStandBelowTheBound) {
  // Four orders are left of the key. The bound is whole and has three, which counts as settled.
  StoredBytes const text = Key(TextOrders("a---bcd"));
  StoredBytes const cut = CutTo(text, 12);
  Evaluation const result = Evaluate({Key(TextOrders("abc")), kAbove});
  Question const inOrder{kKeyLittle, kLiteral};
  EXPECT_EQ(Compare(text, *result.low, inOrder), (Answer{1, 0}));
  EXPECT_EQ(Compare(cut, *result.low, inOrder), (Answer{-1, 0}));
}

TEST(StringBounds, KeysThatAreNotSettledAreNoStretchOfTheOrder) {
  // What is cut at its script is open to any bound, wherever it stands.
  StoredBytes first = Key(TextOrders("a"));
  StoredBytes last = Key(TextOrders("x"));
  first[3] |= 0x80;
  last[3] |= 0x80;
  Evaluation const result = Evaluate({Key(TextOrders("m")), kEqual});
  Question const inOrder{kKeyLittle, kLiteral};
  EXPECT_EQ(Compare(first, *result.low, inOrder), (Answer{-1, kFirstCut}));
  EXPECT_EQ(Compare(Key(TextOrders("b")), *result.low, inOrder), (Answer{-1, 0}));
  EXPECT_EQ(Compare(last, *result.high, inOrder), (Answer{1, kFirstCut}));
}

TEST_F(StringBoundsLaws, AnyRecordsGiveANumberAndBoundsOfTheirLengths) {
  QuietAssertions const quiet;
  constexpr unsigned char kOften[] = {0, '@', 'p', '*', 255};
  constexpr unsigned char kCodeSets[] = {0, 1, 5, 224, 225, 253, 254, 255};
  for (unsigned round = 0; round < 30000; ++round) {
    auto const format = static_cast<unsigned char>(1 + Below(2) + 16 * Below(16));
    auto const record = [&](unsigned longest) {
      // Often of a code set that there is, and with zeros and orders of letters in it.
      StoredBytes bytes = Bytes(Below(longest));
      for (unsigned char& byte : bytes) byte = OneIn(3) ? kOften[Below(5)] : byte;
      auto const length = static_cast<unsigned>(bytes.size());
      bytes = UnitBytes(length, format) + bytes;
      if (length > 1 && !OneIn(3)) bytes[2] = kCodeSets[Below(8)];
      if (length > 1 && !OneIn(3)) bytes[3] = static_cast<unsigned char>(Below(3) + 128 * Below(2));
      return bytes;
    };
    auto const end = [&] {
      StoredBytes const bytes = record(40);
      return CutTo(bytes, OneIn(2) ? 255 : Below(static_cast<unsigned>(bytes.size()) + 1));
    };
    Predicate predicate{.value = record(OneIn(20) ? 700 : 30),
                        .op = static_cast<unsigned short>(Bits()),
                        .format = format,
                        .older = OneIn(2),
                        .keyLimit = Byte()};
    if (!OneIn(5)) predicate.range = KeyRange{end(), end()};
    StoredBytes const low = end(), high = end();
    Evaluation const result =
        Evaluate(predicate, OneIn(3) ? &low : nullptr, OneIn(3) ? &high : nullptr);
    ASSERT_TRUE(std::isfinite(result.share)) << testing::PrintToString(predicate.value);
    ASSERT_EQ(result.op & ~kIsPattern, predicate.op & 0x8007);
  }
}

}  // namespace
}  // namespace xo::test

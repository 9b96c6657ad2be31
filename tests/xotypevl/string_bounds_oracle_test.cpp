// Evaluations of predicates on strings against a plain walk through their steps: one unit at a
// time, with iterators of the library and nothing cached, merged or translated.
#include <array>

#include "tests/xostring/near_pairs.hpp"
#include "tests/xotypevl/string_predicate.hpp"

namespace xo::test {
namespace {

constexpr unsigned kAll = 65535;
constexpr std::size_t kLongest = 254;

/// A record taken apart by hand.
struct Parts {
  unsigned char codeSet = 0, language = 0;
  StoredBytes text{};       ///< what is there of it
  unsigned characters = 0;  ///< that the bytes behind the header have room for
  StoredBytes ended{};      ///< with a terminator

  unsigned Width() const { return codeSet > 224 ? 2 : 1; }
  char const* Start() const {
    return static_cast<char const*>(static_cast<void const*>(ended.data()));
  }
};

Parts TakeApart(StoredBytes const& record, bool older, unsigned char format) {
  Parts parts;
  std::size_t const head = older ? 2 : 4;
  unsigned const length = DecodeAt<unsigned short>(record.data(), format);
  if (!older) parts.codeSet = record[2], parts.language = record[3];
  std::size_t const end = std::min<std::size_t>(record.size(), older ? length + 1 : length);
  if (head < end)
    parts.text.assign(record.begin() + static_cast<std::ptrdiff_t>(head),
                      record.begin() + static_cast<std::ptrdiff_t>(end));
  parts.characters = static_cast<unsigned>(record.size() - head) / parts.Width();
  parts.ended = parts.text + StoredBytes{0, 0, 0, 0};
  return parts;
}

/// What a predicate gives.
struct Expected {
  float share = 0;
  unsigned short op = 0;
  bool asserts = false;
  std::optional<StoredBytes> low{}, high{};
};

class StepByStep {
 public:
  StepByStep(Predicate const& predicate_, unsigned short op)
      : predicate(predicate_),
        format(predicate_.format),
        nibble(format % 16),
        options(op & 0x7FF0),
        value(TakeApart(predicate_.value, predicate_.older, format)) {
    expected.op = op & 0x800F;
    FindPattern();
    if (bytesBefore >= 0) expected.op |= kIsPattern;
    hasCodeSet = value.codeSet != 0;
    if (Option(kNoCase) && hasCodeSet) caseMask = 0x3000;
    if (Option(kNoAccents) && hasCodeSet) accentMask = 0x0F80;
  }

  /// The bounds of a value whose key is its own text, or one order for each of its units.
  void BuildBounds(std::vector<unsigned> const& units, unsigned char codeSet, unsigned char group) {
    if (bytesBefore == 0) return;
    bool const skips = Option(kSkipSpaces | kSkipSymbols);
    bool const isOlder = predicate.older;
    std::size_t const frame = isOlder ? 3 : 6;
    std::size_t const lowSize = frame + (IsPattern() ? Before() : value.text.size());
    if (!Relation(kBelow) && !(Option(kSkipScan) && skips)) {
      expected.low = Build(units, codeSet, group, lowSize, false);
    }
    std::size_t size = lowSize + (IsPattern() ? value.Width() : 0);
    if (size == frame && skips) size += isOlder ? 1 : 2;
    if (!Relation(kAbove)) expected.high = Build(units, codeSet, group, size, true);
  }

  /// The share, with the bounds that there are then. `built` says which were not there before.
  void Measure(std::optional<StoredBytes> const& low, bool lowIsBuilt,
               std::optional<StoredBytes> const& high, bool highIsBuilt) {
    if (!predicate.range) return;
    Parts a = value, b = value;
    unsigned valueLow = static_cast<unsigned short>(charactersBefore), valueHigh = valueLow;
    if (low && bytesBefore != 0) {
      a = TakeApart(*low, predicate.older, format);
      if (!lowIsBuilt) valueLow = a.characters;
    }
    if (high && bytesBefore != 0) {
      b = TakeApart(*high, predicate.older, format);
      if (!highIsBuilt) valueHigh = b.characters;
      if (highIsBuilt && IsPattern()) valueHigh = static_cast<unsigned short>(charactersBefore + 1);
      // Of a key that has no end only what is there takes part.
      if (highIsBuilt && IsOpen(*high)) valueHigh = b.characters;
    }
    Parts const c = TakeApart(predicate.range->low, predicate.older, format);
    Parts const d = TakeApart(predicate.range->high, predicate.older, format);
    Estimate(a, b, c, d, valueLow, valueHigh);
  }

  bool IsPattern() const { return bytesBefore >= 0; }
  Expected const& Result() const { return expected; }

 private:
  bool Option(unsigned bits) const { return (options & bits) != 0; }
  bool Relation(unsigned bits) const { return (expected.op & bits) != 0; }
  std::size_t Before() const { return static_cast<std::size_t>(bytesBefore); }

  XoStringIterator Open(Parts const& parts) const {
    return XoStringIterator(parts.Start(), parts.codeSet, parts.language, nibble);
  }

  void FindPattern() {
    if (!Option(kLiteral)) {
      XoStringIterator place = Open(value);
      for (;;) {
        auto const offset = static_cast<int>(place.cursor - value.Start());
        unsigned unit = 0;
        if (value.codeSet == 0) {
          unit = static_cast<unsigned char>(*place.cursor++);
          if (unit == 0) break;
          if (unit != '*' && unit != '?') continue;
        } else {
          unit = place.GetNextOrder(1);
          if (unit == 0) break;
          if (unit != AsteriskOrder() && unit != QuestionOrder()) continue;
        }
        charactersBefore = offset / static_cast<int>(value.Width());
        bytesBefore = offset;
        return;
      }
    }
    if ((value.language & 0x80) == 0 || value.language == 0x81) return;
    bytesBefore = static_cast<int>(value.text.size());
    charactersBefore = static_cast<int>(value.text.size() / value.Width());
  }

  /// Whether more than the end mark is missing of a bound.
  bool IsOpen(StoredBytes const& bound) const {
    if (predicate.older) return bound.size() == kLongest && bound.back() != 0;
    return DecodeAt<unsigned short>(bound.data(), format) + 1u > bound.size();
  }

  unsigned Respelled(unsigned order, unsigned char group, bool highest) const {
    if ((group & 0x7F) >= 20 || (order & 0xC000) != 0x4000) return order;
    unsigned const taken = highest ? caseMask : accentMask;
    unsigned const given = highest ? accentMask : caseMask;
    return (order & ~taken) | given;
  }

  StoredBytes Build(std::vector<unsigned> const& units, unsigned char codeSet, unsigned char group,
                    std::size_t wanted, bool isHigh) const {
    bool const isOlder = predicate.older, isCut = wanted > kLongest;
    std::size_t const width = codeSet > 224 ? 2 : 1, head = isOlder ? 2 : 4;
    std::size_t const size = std::min(wanted, kLongest);
    std::size_t const room = size - head - (isCut ? 0 : isOlder ? 1 : 2);
    StoredBytes text;
    for (unsigned unit : units) {
      if (codeSet == 254) unit = Respelled(unit, group, isHigh);
      text = text +
             (width == 2 ? UnitBytes(unit, format) : StoredBytes{static_cast<unsigned char>(unit)});
    }
    if (isHigh && (IsPattern() || Option(kSkipSpaces | kSkipSymbols))) {
      // Behind a prefix or in an empty text where there is room, or else in place of the last.
      std::size_t place = std::min(text.size(), room);
      if (IsPattern() && Before() + width <= room) {
        place = Before();
      } else if (place != 0) {
        place -= width;
      }
      text.resize(place);
      text = text + (width == 2 ? UnitBytes(0xFFFE, format) : StoredBytes{0xFF});
    }
    text.resize(std::min(text.size(), room));
    StoredBytes record;
    if (isOlder) {
      record = CutTo(predicate.value, 2) + text;
    } else {
      std::size_t length = 4 + text.size();
      if (isCut) length = value.codeSet == codeSet ? 4 + value.text.size() : kLongest;
      record =
          UnitBytes(static_cast<unsigned>(length), format) + StoredBytes{codeSet, group} + text;
      if (!isCut) record = record + StoredBytes{0, 0xFF};
    }
    record.resize(size);
    return record;
  }

  unsigned Unit(XoStringIterator& place, Parts const& of) const {
    if (of.codeSet == 0) {
      unsigned char const byte = static_cast<unsigned char>(*place.cursor);
      if (byte != 0) ++place.cursor;
      return byte;
    }
    unsigned const order = place.GetNextOrder(1);
    return order >= 0x4000 && order <= 0x7FFF ? order & ~(accentMask | caseMask) : order;
  }

  void Estimate(Parts const& a, Parts const& b, Parts const& c, Parts const& d, unsigned valueLow,
                unsigned valueHigh) {
    unsigned const rangeLow = c.characters, rangeHigh = d.characters;
    unsigned n = kAll;
    for (unsigned const length : {valueLow, valueHigh, rangeLow, rangeHigh})
      n = std::min(n, length);
    unsigned const first = n;
    std::array<Parts const*, 4> const texts{&a, &b, &c, &d};
    std::array<XoStringIterator, 4> places{Open(a), Open(b), Open(c), Open(d)};
    std::array<XoStringIterator, 4> remembered = places;
    for (bool atStart = true; n != 0; atStart = false) {
      remembered = places;
      std::array<unsigned, 4> units{};
      bool differ = false;
      for (unsigned side = 0; side < 4; ++side) units[side] = Unit(places[side], *texts[side]);
      for (unsigned side = 1; side < 4; ++side) {
        if (atStart && places[side].orderGroup != places[0].orderGroup) differ = true;
        if (units[side] != units[0]) differ = true;
      }
      if (differ) {
        places = remembered;
        break;
      }
      if (n != kAll) --n;
      if (units[0] == 0) break;
    }
    int const consumed = static_cast<int>(first) - static_cast<int>(n);
    auto const number = [&](unsigned side, unsigned length, bool isRange) {
      bool const isAll = isRange && (n == kAll || length == kAll);
      int const count = isAll ? int{kAll} : std::max(static_cast<int>(length) - consumed, 0);
      return Digits(places[side], *texts[side], count);
    };
    double const high = number(3, rangeHigh, true), low = number(2, rangeLow, true);
    double const from = number(0, std::min(valueLow, rangeLow), false);
    double const to = number(1, std::min(valueHigh, rangeHigh), false);
    double const unit = hasCodeSet ? 1048576.0 : 128.0;
    double const total = high - low + unit;
    double area = Area(from, to, low, high, unit);
    auto const compare = [&](Parts const& one, Parts const& other, unsigned count) {
      return XoStrCmp(one.codeSet, one.language, one.Start(), other.codeSet, other.language,
                      other.Start(), static_cast<unsigned short>(expected.op | options),
                      static_cast<short>(count), nibble);
    };
    if (area == 0 && ((Relation(kBelow) && low == to) || (Relation(kAbove) && high == from))) {
      if (Relation(kBelow) && compare(b, c, valueLow) >= 0) area += unit;
      if (Relation(kAbove) &&
          compare(a, d, rangeHigh == kAll ? valueHigh : std::min(rangeHigh, valueHigh)) <= 0) {
        area += unit;
      }
    }
    if (area == 0 && Relation(kEqual) && high < to && rangeHigh < valueHigh &&
        compare(b, d, rangeHigh) == 0) {
      area += unit;
    }
    if (area == 0 && Relation(kEqual) && value.codeSet == 0 && d.codeSet == 0 &&
        b.ended[0] > 0x7F && d.ended[0] > 0x7F) {
      area += unit;
    }
    expected.asserts = charactersBefore == 0 && area < total;
    // No keys at all are no part of anything.
    expected.share = total == 0 ? 0.0F : static_cast<float>(area / total);
  }

  /// The number of the units at a place, `count` at most.
  static double Digits(XoStringIterator place, Parts const& of, int count) {
    if (of.codeSet == 0) {
      double sum = 0;
      bool ended = false;
      for (int digit = 0; digit < 4; ++digit) {
        unsigned char const byte = digit < count && !ended
                                       ? static_cast<unsigned char>(*place.cursor++)
                                       : static_cast<unsigned char>(0);
        if (byte == 0) ended = true;
        sum = sum * 128 + std::min<unsigned>(byte, 127);
      }
      return sum;
    }
    unsigned const group = place.orderGroup & 127u;
    std::array<unsigned, 3> kept{};
    for (std::size_t found = 0; found < 3 && count > 0; --count) {
      unsigned const order = place.GetNextOrder(1);
      if (order == 0) break;
      if (order < 16128) continue;
      // Letters lose accent and case to the byte that is shifted away.
      bool const isLetter = order < 0x8000 && order >= 0x4000 && place.orderGroup != 20;
      kept[found++] = isLetter ? order & 0x407F : order;
    }
    return (kept[0] | group << 16) * 4294967296.0 + kept[1] * 65536.0 + kept[2];
  }

  double Area(double from, double to, double low, double high, double unit) const {
    double area = 0;
    if (Relation(kAbove)) area += std::max(high - (low > to ? low - unit : to), 0.0);
    if (Relation(kBelow)) area += std::max((from > high ? high + unit : from) - low, 0.0);
    if (Relation(kEqual)) area += std::max(std::min(to, high) - std::max(from, low) + unit, 0.0);
    return area;
  }

  Predicate const& predicate;
  unsigned char const format, nibble;
  unsigned short const options;
  Parts const value;
  bool hasCodeSet = false;
  int charactersBefore = -1, bytesBefore = -1;
  unsigned caseMask = 0, accentMask = 0;
  Expected expected;
};

class Assertions {
 public:
  Assertions() : before(XoExchangePlatform({})) {
    noted.clear();
    XoPlatform hooks = before;
    hooks.assertFailed = [](char const*, char const*, int line) {
      noted.push_back(line);
      return 0;
    };
    XoExchangePlatform(hooks);
  }
  ~Assertions() { XoExchangePlatform(before); }
  static inline std::vector<int> noted;

 private:
  XoPlatform before;
};

enum class Form { kNarrow, kWide, kKey, kBytes, kOlder };

class StringBoundsOracle : public NearPairs {
 protected:
  /// Few characters, so that texts have much in common. A wide one has one order.
  std::string Letters(unsigned longest) {
    constexpr char kCharacters[] = "aaaabAB\xE1k01 -zx\xC0\xFF";
    std::string text = OneIn(2) ? std::string(Below(6), 'k') : "";
    for (unsigned more = Below(longest + 1); more != 0; --more) {
      text += kCharacters[Below(sizeof kCharacters - 1)];
    }
    return text;
  }
  std::string Pattern(std::string text) {
    if (OneIn(2)) return text;
    for (unsigned more = 1 + Below(2); more != 0; --more) {
      text.insert(OneIn(2) ? text.size() : Below(static_cast<unsigned>(text.size()) + 1), 1,
                  "*?"[Below(2)]);
    }
    return text;
  }
  std::string Near(std::string text) {
    if (OneIn(3)) return text;
    std::size_t const place = Below(static_cast<unsigned>(text.size()) + 1);
    text.resize(OneIn(2) ? text.size() : place);
    if (OneIn(2) && place < text.size()) text[place] = Letters(1).append("a")[0];
    return OneIn(2) ? text : text + Letters(3);
  }

  static std::vector<unsigned> Characters(std::string const& text) {
    std::vector<unsigned> units;
    for (char const character : text) units.push_back(static_cast<unsigned char>(character));
    return units;
  }
  static std::vector<unsigned> Units(std::string const& text, Form form) {
    if (form == Form::kBytes || form == Form::kOlder) return Characters(text);
    return TextOrders(text);
  }
  unsigned char Group() {
    constexpr unsigned char kGroups[] = {3, 20, 0x81, 0x93, 0x94};
    return OneIn(8) ? kGroups[Below(5)] : static_cast<unsigned char>(2);
  }

  StoredBytes Stored(std::string const& text, Form form, unsigned char format,
                     unsigned char group) {
    switch (form) {
      case Form::kNarrow:
        return Record(text, format);
      case Form::kWide:
        return WideRecord(Characters(text), format);
      case Form::kKey:
        return Key(TextOrders(text), format, group);
      case Form::kBytes:
        return Record(text, format, 0, 0);
      case Form::kOlder:
        return OlderRecord({text}, format);
    }
    return {};
  }

  StoredBytes End(std::string const& text, Form form, unsigned char format) {
    bool const isItself = form == Form::kBytes || form == Form::kOlder || OneIn(10);
    StoredBytes key = Stored(Near(text), isItself ? form : Form::kKey, format, Group());
    if (key.size() > 255) key.resize(255);
    if (OneIn(4)) {
      std::size_t const least = form == Form::kOlder ? 2 : 4;
      key.resize(least + Below(static_cast<unsigned>(key.size() - least) + 1));
    }
    return key;
  }

  void Check(Form form) {
    auto const format = static_cast<unsigned char>(1 + Below(2) + (OneIn(2) ? 0x80 : 0));
    bool const isLong = OneIn(60);
    std::string text = Letters(5);
    if (isLong) text.insert(0, 110 + Below(160), 'k');
    std::string const pattern = Pattern(text);
    unsigned char const group = Group();
    Predicate predicate{.value = Stored(pattern, form, format, group),
                        .op = Operator(),
                        .format = format,
                        .older = form == Form::kOlder,
                        .keyLimit = Byte()};
    if (!OneIn(10)) {
      predicate.range = KeyRange{End(text, form, format), End(text, form, format)};
    }
    std::optional<StoredBytes> const low =
        OneIn(5) ? std::optional(End(text, form, format)) : std::nullopt;
    std::optional<StoredBytes> const high =
        OneIn(5) ? std::optional(End(text, form, format)) : std::nullopt;

    Assertions const assertions;
    Evaluation const result = Evaluate(predicate, low ? &*low : nullptr, high ? &*high : nullptr);
    StepByStep steps(predicate, predicate.op);
    bool const isKey = form == Form::kWide || form == Form::kKey;
    // Of these a cut bound has room for one unit that is none of the prefix or text.
    bool const isOdd = form == Form::kBytes
                           ? pattern.find_first_of("*?") == 248 || pattern.size() == 249
                           : pattern.size() == 124;
    if (form != Form::kNarrow && !isOdd) {
      auto const codeSet = static_cast<unsigned char>(isKey ? 254 : 0);
      unsigned char const language = form == Form::kKey ? group : isKey ? 2 : 0;
      steps.BuildBounds(Units(pattern, form), codeSet, language);
      std::string const what = "'" + pattern + "' op " + std::to_string(predicate.op) + " format " +
                               std::to_string(format) + " form " +
                               std::to_string(static_cast<int>(form));
      ASSERT_EQ(result.low, low ? low : steps.Result().low) << what;
      ASSERT_EQ(result.high, high ? high : steps.Result().high) << what;
    }
    CheckShare(predicate, steps, result, !low, !high);
    if (result.share != 0) ++shares[static_cast<std::size_t>(form)];
  }

  static void CheckShare(Predicate const& predicate, StepByStep& steps, Evaluation const& result,
                         bool lowIsBuilt, bool highIsBuilt) {
    steps.Measure(result.low, lowIsBuilt, result.high, highIsBuilt);
    Expected const& expected = steps.Result();
    ASSERT_EQ(result.op, expected.op);
    ASSERT_EQ(result.share, expected.share)
        << "op " << predicate.op << " format " << int{predicate.format} << " value "
        << testing::PrintToString(predicate.value) << " range "
        << testing::PrintToString(predicate.range->low) << ' '
        << testing::PrintToString(predicate.range->high) << " bounds "
        << testing::PrintToString(result.low) << ' ' << testing::PrintToString(result.high);
    ASSERT_EQ(Assertions::noted, expected.asserts ? std::vector<int>{1128} : std::vector<int>{});
  }

  unsigned short Operator() {
    auto op = static_cast<unsigned short>(Bits() & (OneIn(2) ? 0x1 : 0x8007));
    for (unsigned const option : {0x10u, 0x20u, 0x40u, 0x80u, 0x100u, 0x200u, 0x1000u, 0x6C08u}) {
      if (OneIn(4)) op = static_cast<unsigned short>(op | option);
    }
    return op;
  }

  std::array<unsigned, 5> shares{};
};

TEST_F(StringBoundsOracle, EvaluationsAreThoseOfTheStepsOneByOne) {
  constexpr unsigned kRounds = 10000;
  for (unsigned round = 0; round < kRounds; ++round) {
    for (Form const form : {Form::kNarrow, Form::kWide, Form::kKey, Form::kBytes, Form::kOlder}) {
      Check(form);
      if (HasFatalFailure()) return;
    }
  }
  for (unsigned const some : shares) EXPECT_GT(some, kRounds / 10);
}

TEST_F(StringBoundsOracle, SharesOfAllScriptsAreThoseOfTheStepsOneByOne) {
  constexpr unsigned char kLanguages[] = {1, 3, 7, 22};
  std::vector<unsigned char> const sets = CodeSetsWithTables();
  unsigned some = 0;
  for (unsigned round = 0; round < 30000; ++round) {
    auto const format = static_cast<unsigned char>(1 + Below(2) + (OneIn(2) ? 0x80 : 0));
    unsigned char const codeSet =
        OneIn(2) ? kUnicode : sets[Below(static_cast<unsigned>(sets.size()))];
    unsigned char const language = kLanguages[Below(4)];
    std::u16string const text = Text(codeSet, 6);
    auto const record = [&](std::u16string const& of) {
      StoredBytes bytes;
      for (char16_t const unit : of) {
        bytes = bytes + (codeSet > 224 ? UnitBytes(unit, format)
                                       : StoredBytes{static_cast<unsigned char>(unit)});
      }
      return RecordOf(bytes, codeSet, language, format);
    };
    auto const keyOf = [&](StoredBytes source) {
      StoredBytes key(8 * source.size() + 12);
      auto const keyFormat = static_cast<unsigned char>(format | 0x80);
      key.resize(XoTypeMgr().Translate(XoSTRING_T, key.data(), keyFormat,
                                       static_cast<unsigned>(key.size()), source.data(), format,
                                       static_cast<unsigned>(source.size()), 1));
      if (OneIn(8)) key.resize(4 + Below(static_cast<unsigned>(key.size()) - 3));
      return CutTo(key, 255);
    };
    auto const end = [&] { return keyOf(record(Changed(text, codeSet))); };
    Predicate predicate{.value = record(OneIn(3) ? text + u'*' : text),
                        .op = Operator(),
                        .format = format,
                        .range = KeyRange{end(), end()}};
    if (OneIn(5)) predicate.range->high = record(Changed(text, codeSet));
    Assertions const assertions;
    Evaluation const result = Evaluate(predicate);
    StepByStep steps(predicate, predicate.op);
    CheckShare(predicate, steps, result, true, true);
    if (HasFatalFailure()) return;
    if (result.share != 0) ++some;
  }
  EXPECT_GT(some, 3000u);
}

}  // namespace
}  // namespace xo::test

// The comparison gives what its steps give when they are taken one by one, on lists of orders read
// beforehand: patterns above all, under counts of every kind.
#include <deque>

#include "tests/intl/order_walk.hpp"
#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kOrders = 254;

/// What one side of a comparison reads.
struct Side {
  std::vector<WalkedOrder> orders;
  /// The group before anything is read.
  unsigned char group;
};

/// A place in a side, and what was read last.
struct Cursor {
  Side const* side;
  unsigned char group;
  unsigned seen = 0;
  std::size_t next = 0;
  unsigned short order = 0;
  unsigned key = 0;
  /// The space or symbol that it stopped on, or 0.
  int ignorable = 0;

  explicit Cursor(Side const& of) : side(&of), group(of.group) {}
};

/// A star's other place to go on from.
struct Branch {
  Cursor cursor;
  int caseDifference;
  int accentDifference;
};

/// Of keys or parts of keys.
int Minus(unsigned one, unsigned other) { return static_cast<int>(one - other); }

class SlowComparison {
 public:
  SlowComparison(Side const& text, Side const& pattern, unsigned short cmpOp_, short count_,
                 bool keepsFirstGroup_)
      : first(text),
        second(pattern),
        star(pattern),
        cmpOp(cmpOp_),
        count(count_),
        keepsFirstGroup(keepsFirstGroup_) {}

  int Run(int* positional) {
    if (count == 0) return 0;
    bool goesOn = true;
    while (goesOn) goesOn = Step(positional);
    if (letters != 0) return letters;
    if (accents != 0 && !Has(kCmpIgnoreAccents)) return accents;
    if (cases != 0 && !Has(kCmpIgnoreCase)) return cases;
    return ignorables;
  }

 private:
  bool Has(unsigned short bit) const { return (cmpOp & bit) != 0; }
  bool Wildcards() const { return !Has(kCmpNoWildcards); }

  unsigned Mask() const {
    if (Has(kCmpIgnoreAccents)) return Has(kCmpIgnoreCase) ? 0xFFFFFF80 : 0xFFFFFFE0;
    return Has(kCmpIgnoreCase) ? 0xFFFFFF9F : 0xFFFFFFFF;
  }

  void Advance(Cursor& cursor, bool isPattern) const {
    cursor.ignorable = 0;
    for (;;) {
      ++cursor.seen;
      cursor.order = 0;
      bool const counts = cursor.seen <= static_cast<unsigned short>(count);
      if (counts && cursor.next < cursor.side->orders.size()) {
        WalkedOrder const read = cursor.side->orders[cursor.next++];
        cursor.order = read.order;
        if (updatesGroup) cursor.group = read.group;
      }
      WalkedOrder const read{cursor.order, cursor.group};
      cursor.key = cursor.order != 0 ? OrderKeyOf(read) : 0;
      if (cursor.order == 0) return;
      if (isPattern && Wildcards() && IsWildcard(cursor.order)) return;
      if (IsSignificant(read)) return;
      if (Has(cursor.order < 80 ? kCmpSkipSpaces : kCmpSkipSymbols)) continue;
      cursor.ignorable = cursor.order;
      return;
    }
  }

  static bool IsWildcard(unsigned short order) {
    return order == AsteriskOrder() || order == QuestionOrder();
  }

  /// Returns the difference of the spaces and symbols passed.
  int Align() {
    int difference = 0;
    bool reads1 = true, reads2 = true;
    for (;;) {
      first.ignorable = second.ignorable = 0;
      if (reads1) Advance(first, false);
      if (reads2) Advance(second, true);
      if (target != 0 || (Wildcards() && IsWildcard(second.order))) return difference;
      reads1 = first.ignorable != 0;
      reads2 = second.ignorable != 0;
      if (!reads1 && !reads2) return difference;
      if (first.ignorable != second.ignorable) difference = first.ignorable - second.ignorable;
    }
  }

  /// Whether the comparison goes on.
  bool Step(int* positional) {
    int const passed = Align();
    if (keepsFirstGroup) updatesGroup = false;
    if (Wildcards()) {
      bool const mayBegin =
          (first.key & Mask()) == target || (first.order != 0 && targetIsQuestion);
      if (first.key != 0 && mayBegin) branches.push_back({star, cases, accents});
      if (second.order == AsteriskOrder()) {
        branches.clear();
        casesAtStar = cases;
        accentsAtStar = accents;
        while (second.order == AsteriskOrder()) {
          star = second;
          Advance(second, true);
        }
        if (second.order == 0) {
          if (passed != 0) ignorables = passed;
          return false;
        }
        target = second.key & Mask();
        targetIsQuestion = second.order == QuestionOrder();
      }
    }
    std::erase_if(branches, [this](Branch& branch) {
      Advance(branch.cursor, true);
      return (branch.cursor.key & Mask()) != (first.key & Mask()) &&
             (first.order == 0 || branch.cursor.order != QuestionOrder());
    });
    if (Wildcards() && second.order == QuestionOrder()) {
      letters = first.order != 0 ? 0 : -1;
    } else {
      letters = Minus(first.key & ~0x7Fu, second.key & ~0x7Fu);
      if (cases == 0) cases = Minus(second.key & ~0x1Fu, first.key & ~0x1Fu);
      int const newest = Minus(first.key & ~0x60u, second.key & ~0x60u);
      if (newest != 0) accents = newest;
    }
    if (passed != 0) ignorables = passed;
    if (target != 0 && Wildcards() && first.order != 0 && IsBroken()) BackOut();
    bool const isWithin =
        static_cast<int>(first.seen) <= count && static_cast<int>(second.seen) <= count;
    if (positional != nullptr && Has(kCmpSkipSpaces) && isWithin) *positional = letters;
    if (letters != 0 || first.order == 0) return false;
    return second.order != 0 || target != 0;
  }

  bool IsBroken() const {
    if (Has(kCmpIgnoreAccents)) return (Has(kCmpIgnoreCase) ? letters : cases) != 0;
    return accents != 0 || (cases != 0 && !Has(kCmpIgnoreCase));
  }

  void BackOut() {
    if (branches.empty()) {
      GoOnFrom(star);
      cases = casesAtStar;
      accents = accentsAtStar;
    } else {
      GoOnFrom(branches.front().cursor);
      cases = branches.front().caseDifference;
      accents = branches.front().accentDifference;
      branches.pop_front();
    }
    letters = 0;
  }

  /// Takes over the place, not what was read there.
  void GoOnFrom(Cursor const& other) {
    second.next = other.next;
    second.group = other.group;
    second.seen = other.seen;
  }

  Cursor first, second, star;
  unsigned short const cmpOp;
  short const count;
  bool const keepsFirstGroup;
  bool updatesGroup = true;
  int letters = 0, accents = 0, cases = 0, ignorables = 0;
  int accentsAtStar = 0, casesAtStar = 0;
  /// The masked key behind the last star; not 0 behind one.
  unsigned target = 0;
  bool targetIsQuestion = false;
  std::deque<Branch> branches;
};

class CompareOracle : public RandomTest {
 protected:
  std::u16string Some(std::u16string const& characters, unsigned longest) {
    std::u16string text;
    for (unsigned more = Below(longest + 1); more != 0; --more) {
      text += characters[Below(static_cast<unsigned>(characters.size()))];
    }
    return text;
  }

  /// Any pattern, or one that the text is likely to match.
  std::u16string PatternFor(std::u16string text, std::u16string const& characters) {
    if (OneIn(4)) return Some(characters + u"*?*?", 8);
    for (unsigned changes = Below(5); changes != 0; --changes) {
      std::size_t const place = Below(static_cast<unsigned>(text.size()) + 1);
      switch (Below(5)) {
        case 0:
          text.replace(place, Below(4), u"*");
          break;
        case 1:
          text.replace(place, 1, u"?");
          break;
        case 2:
          text.insert(place, OneIn(2) ? u"*" : u"*?");
          break;
        case 3:
          text.insert(place, Some(characters, 2));
          break;
        default:
          text.erase(place, 1 + Below(2));
          break;
      }
    }
    return text;
  }

  short AnyCount() {
    if (OneIn(4)) return -1;
    if (OneIn(12)) return static_cast<short>(OneIn(2) ? -2 : -32768);
    return static_cast<short>(Below(11));
  }

  static Side SideOf(std::u16string const& text, unsigned char codeSet, unsigned char language) {
    if (codeSet != kOrders) {
      unsigned char const group = XoLanguageContext::QueryCodeSet(codeSet)->CodeSetGroup(language);
      return {WalkOrders(text, language, codeSet), group};
    }
    auto const group = static_cast<unsigned char>(language & 127);
    Side side{{}, group};
    for (char16_t const order : text) side.orders.push_back({order, group});
    return side;
  }

  static std::string Shown(std::u16string const& text) {
    std::string shown;
    for (char16_t const unit : text) shown += " " + std::to_string(unsigned{unit});
    return shown;
  }

  struct Operand {
    std::u16string text;
    unsigned char codeSet;
    unsigned char language;
  };

  void CompareBothWays(Operand const& text, Operand const& pattern) {
    auto const cmpOp = static_cast<unsigned short>(Below(64) << 4 & ~unsigned{kCmpPlainOrders});
    short const count = AnyCount();
    Side const side1 = SideOf(text.text, text.codeSet, text.language);
    Side const side2 = SideOf(pattern.text, pattern.codeSet, pattern.language);
    bool const keepsFirstGroup = text.codeSet == kOrders || pattern.codeSet == kOrders;
    constexpr int kUntouched = 77;
    int expectedPlace = kUntouched, place = kUntouched;
    int const expected =
        SlowComparison(side1, side2, cmpOp, count, keepsFirstGroup).Run(&expectedPlace);
    auto const bytes1 = TextBytes(text.text, text.codeSet);
    auto const bytes2 = TextBytes(pattern.text, pattern.codeSet);
    int const outcome = XoStrCmp(text.codeSet, text.language, bytes1.data(), pattern.codeSet,
                                 pattern.language, bytes2.data(), cmpOp, count, 1, &place);
    // Without anyone to ask for the place, another way may be taken.
    int const alone = XoStrCmp(text.codeSet, text.language, bytes1.data(), pattern.codeSet,
                               pattern.language, bytes2.data(), cmpOp, count);
    ASSERT_EQ(Sign(outcome), Sign(expected))
        << Shown(text.text) << " /" << Shown(pattern.text) << " operator " << cmpOp << " count "
        << count << " code sets " << int{text.codeSet} << ' ' << int{pattern.codeSet}
        << " languages " << int{text.language} << ' ' << int{pattern.language};
    ASSERT_EQ(Sign(alone), Sign(expected)) << Shown(text.text) << " /" << Shown(pattern.text);
    ASSERT_EQ(place == kUntouched, expectedPlace == kUntouched);
    ASSERT_EQ(Sign(place), Sign(expectedPlace)) << Shown(text.text) << " /" << Shown(pattern.text)
                                                << " operator " << cmpOp << " count " << count;
    equal += expected == 0;
  }

  unsigned char AnyLanguage() {
    static constexpr unsigned char kSome[] = {0, 1, 2, 13, 14, 22, 24};
    return kSome[Below(std::size(kSome))];
  }

  static bool IsLatin1(std::u16string const& text) {
    for (char16_t const unit : text) {
      if (unit > 255) return false;
    }
    return true;
  }

  unsigned equal = 0;
};

TEST_F(CompareOracle, PatternsAndTextsCompareAsTheStepsSay) {
  constexpr unsigned kRounds = 40000;
  for (std::u16string const characters :
       {u"ab", u"aA\u00E1\u00C1b", u"a -+b", u"cChHdzsDZ", u"a\u00DF\u00E6\u00BD \u4E00",
        u"e\u00E9\u0301E-\u0327 ", u"a\u4E00\uFFF5\u0436-1 \u200D"}) {
    equal = 0;
    for (unsigned round = 0; round < kRounds; ++round) {
      std::u16string const text = Some(characters, 9);
      std::u16string const pattern = PatternFor(text, characters);
      unsigned char const language = AnyLanguage();
      Operand const one{text, IsLatin1(text) && OneIn(2) ? kLatin1 : kUnicode, language};
      Operand const other{pattern, IsLatin1(pattern) && OneIn(2) ? kLatin1 : kUnicode,
                          OneIn(2) ? language : AnyLanguage()};
      CompareBothWays(one, other);
      if (HasFatalFailure()) return;
    }
    EXPECT_GT(equal, kRounds / 20);
    EXPECT_LT(equal, kRounds - kRounds / 20);
  }
}

TEST_F(CompareOracle, StreamsOfOrdersCompareAsTheStepsSay) {
  // Letters in two cases and with an accent, a digit, a space, a symbol, the wildcards and an
  // ideograph.
  std::u16string orders;
  for (char16_t const character : u"aAb\u00E11 -*?") {
    if (character == 0) continue;
    orders +=
        static_cast<char16_t>(XoChar(static_cast<unsigned short>(character), kUnicode).CharOrder());
  }
  orders += u'\u9000';
  for (unsigned round = 0; round < 100000; ++round) {
    std::u16string const stream = Some(orders, 8);
    std::u16string const text = Some(u"aAb\u00E11 -*?\u4E00\u0436", 8);
    // Groups of the tables, that of what the tables lack, and one above.
    static constexpr unsigned char kGroups[] = {2, 4, 20, 25, 130};
    unsigned char const group = kGroups[Below(std::size(kGroups))];
    unsigned char const otherGroup = OneIn(2) ? group : kGroups[Below(std::size(kGroups))];
    Operand const one{stream, kOrders, group};
    switch (Below(3)) {
      case 0:
        CompareBothWays(one, {PatternFor(stream, orders), kOrders, otherGroup});
        break;
      case 1:
        CompareBothWays(one, {text, kUnicode, AnyLanguage()});
        break;
      default:
        CompareBothWays({text, kUnicode, AnyLanguage()}, one);
        break;
    }
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace xo::test

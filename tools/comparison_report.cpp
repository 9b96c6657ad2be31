#include "tools/comparison_report.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "tools/printable.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_options.hpp"

namespace xo::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr unsigned char kUnicode = 253;
constexpr unsigned char kFirstWideSet = 225;
constexpr unsigned short kFirstSymbol = 80;
constexpr unsigned short kFirstSignificant = 16128;
constexpr unsigned char kIdeographGroup = 20;

constexpr unsigned Bit(Level level) { return static_cast<unsigned>(level); }

struct LevelName {
  Level level;
  char const* name;
};
constexpr LevelName kLevels[] = {
    {Level::OrderKeys, "order keys"},
    {Level::Letters, "letters"},
    {Level::Accents, "accents"},
    {Level::Case, "case"},
    {Level::SpacesAndSymbols, "spaces and symbols"},
};

char const* NameOf(Level level) {
  for (LevelName const& each : kLevels) {
    if (each.level == level) return each.name;
  }
  return "equal";
}

/// The characters from where `place` stands up to the byte `end`, in Unicode.
std::vector<unsigned short> CharactersUpTo(char const* end, XoStringIterator place) {
  std::vector<unsigned short> characters;
  for (; place.cursor < end; ++place) characters.push_back((*place).MapTo(kUnicode).Code());
  return characters;
}

std::vector<TextOrder> OrdersOf(XoString const& text) {
  std::ptrdiff_t const width = text.codeSet < kFirstWideSet ? 1 : 2;
  std::vector<TextOrder> orders;
  XoStringIterator place(text);
  for (;;) {
    bool const isFurther = place.overflow != nullptr;
    XoStringIterator const before(place);
    unsigned short const order = place.GetNextOrder();
    if (order == 0) return orders;
    orders.push_back({{}, order, place.orderGroup});
    if (isFurther) continue;
    // While further orders follow, the iterator stands on the last character that they are of.
    char const* const end = place.overflow != nullptr ? place.cursor + width : place.cursor;
    orders.back().characters = CharactersUpTo(end, before);
  }
}

bool IsSignificant(TextOrder const& each) {
  return each.order >= kFirstSignificant || each.group >= kIdeographGroup;
}

unsigned KeyOf(TextOrder const& each) { return OrderKey(each.order, each.group); }

// The levels of an order key: its bits without those of the levels below.
unsigned LetterLevel(unsigned key) { return key & ~0x7Fu; }
unsigned CaseLevel(unsigned key) { return key & ~0x1Fu; }
unsigned AccentLevel(unsigned key) { return key & ~0x60u; }

/// Columns of the terminal that a line may take.
constexpr std::size_t kLineWidth = 80;

/// Columns that UTF-8 text takes: none for combining marks, two for East Asian characters.
std::size_t WidthOf(std::string const& text) {
  std::size_t width = 0;
  for (std::size_t place = 0; place < text.size();) {
    unsigned short code = 0;
    int const length = XoMultiByte2WChar(&code, text.data() + place, text.size() - place);
    place += static_cast<std::size_t>(std::max(length, 1));
    bool const isMark = code >= 0x0300 && code < 0x0370;
    bool const isWide = (code >= 0x1100 && code < 0x1160) || (code >= 0x2E80 && code < 0xA4D0) ||
                        (code >= 0xAC00 && code < 0xD7A4) || (code >= 0xF900 && code < 0xFB00) ||
                        (code >= 0xFF01 && code < 0xFF61);
    width += isMark ? 0 : isWide ? 2 : 1;
  }
  return width;
}

std::string TextOf(TextOrder const& each) {
  if (each.characters.empty()) return "+";
  std::string const shown = Shown(each.characters.data(), each.characters.size());
  if (shown == " " || shown.empty() || WidthOf(shown) == 0) {
    return fmt::format("U+{:04X}", each.characters.front());
  }
  return shown;
}

std::string DescriptionOf(TextOrder const& each) {
  XoString text;
  XoConvertOrderToString(each.order, each.group, text);
  std::string description = Encoded(text);
  while (description.ends_with('\n') || description.ends_with(' ')) description.pop_back();
  return description;
}

// Colours of the terminal (ECMA-48, select graphic rendition).
constexpr char const* kDeciding = "\x1b[1;31m";
constexpr char const* kOverruled = "\x1b[33m";
constexpr char const* kFaint = "\x1b[2m";
constexpr char const* kUsual = "\x1b[0m";

/// The cells of one column of the report, from top to bottom, and its colour, null for none.
struct ReportColumn {
  static constexpr std::size_t kRows = 5;
  std::array<std::string, kRows> cells;
  char const* colour = nullptr;

  std::size_t Width() const {
    std::size_t width = 0;
    for (std::string const& cell : cells) width = std::max(width, WidthOf(cell));
    return width;
  }
};

constexpr std::size_t kDiffersRow = 4;

/// Columns side by side, in as many blocks of rows as the width of a line asks for.
std::string Blocks(ReportColumn const& headings, std::vector<ReportColumn> const& columns) {
  std::string text;
  std::size_t const headingWidth = headings.Width();
  for (std::size_t first = 0; first < columns.size();) {
    std::size_t width = headingWidth;
    std::size_t last = first;
    do {
      width += 2 + columns[last++].Width();
    } while (last < columns.size() && width + 2 + columns[last].Width() <= kLineWidth);
    text += '\n';
    for (std::size_t row = 0; row < ReportColumn::kRows; ++row) {
      auto const isBlank = [row](ReportColumn const& column) { return column.cells[row].empty(); };
      auto const begin = columns.begin();
      bool const isAllBlank = std::all_of(begin + static_cast<std::ptrdiff_t>(first),
                                          begin + static_cast<std::ptrdiff_t>(last), isBlank);
      if (row == kDiffersRow && isAllBlank) break;
      std::string line = headings.cells[row];
      std::size_t missing = headingWidth - line.size();
      for (std::size_t place = first; place < last; ++place) {
        ReportColumn const& column = columns[place];
        std::string const& cell = column.cells[row];
        if (!cell.empty()) {
          line.append(missing + 2, ' ');
          line += column.colour != nullptr ? column.colour + cell + kUsual : cell;
          missing = column.Width() - WidthOf(cell);
        } else {
          missing += 2 + column.Width();
        }
      }
      text += line + '\n';
    }
    first = last;
  }
  return text;
}

}  // namespace

ComparisonReport::ComparisonReport(XoString const& first, XoString const& second, unsigned short op)
    : text1(first),
      text2(second),
      cmpOp(op),
      usualGroup(XoStringIterator(first).orderGroup),
      orders1(OrdersOf(first)),
      orders2(OrdersOf(second)),
      result(first.Compare(second, -1, op)) {
  FindLevel();
  if ((cmpOp & kCmpPlainOrders) != 0) {
    PairKeys();
  } else if (HasPattern(cmpOp)) {
    PairPattern();
  } else {
    PairOrders();
  }
  FindDecider();
}

/// The strongest level at which the comparison comes out other than equal: it is asked again with
/// all weaker levels ignored.
void ComparisonReport::FindLevel() {
  if (result == 0) return;
  if ((cmpOp & kCmpPlainOrders) != 0) {
    level = Level::OrderKeys;
    return;
  }
  constexpr unsigned kWithoutLast = kCmpSkipSpaces | kCmpSkipSymbols;
  constexpr struct {
    Level level;
    unsigned ignored;
  } kSteps[] = {{Level::Letters, kWithoutLast | kCmpIgnoreAccents | kCmpIgnoreCase},
                {Level::Accents, kWithoutLast | kCmpIgnoreCase},
                {Level::Case, kWithoutLast}};
  level = Level::SpacesAndSymbols;
  for (auto const& step : kSteps) {
    auto const asked = static_cast<unsigned short>(cmpOp | step.ignored);
    if (text1.Compare(text2, -1, asked) != 0) {
      level = step.level;
      return;
    }
  }
}

bool ComparisonReport::IsSkipped(TextOrder const& order) const {
  if (IsSignificant(order)) return false;
  return (cmpOp & (order.order < kFirstSymbol ? kCmpSkipSpaces : kCmpSkipSymbols)) != 0;
}

bool ComparisonReport::IsStar(TextOrder const& order) const {
  return HasPattern(cmpOp) && order.order == AsteriskOrder();
}

bool ComparisonReport::IsQuestion(TextOrder const& order) const {
  return HasPattern(cmpOp) && order.order == QuestionOrder();
}

/// The levels at which two orders differ, as far as the operator reads them.
unsigned ComparisonReport::LevelsOf(int first, int second) const {
  static const TextOrder kEnd;
  TextOrder const& a = first != kNone ? orders1[static_cast<std::size_t>(first)] : kEnd;
  TextOrder const& b = second != kNone ? orders2[static_cast<std::size_t>(second)] : kEnd;
  unsigned const key1 = KeyOf(a);
  unsigned const key2 = KeyOf(b);
  if ((cmpOp & kCmpPlainOrders) != 0) return key1 != key2 ? Bit(Level::OrderKeys) : 0;
  if ((second != kNone && IsQuestion(b)) || (first == kNone && IsSkipped(b)) ||
      (second == kNone && IsSkipped(a)) || (IsSkipped(a) && IsSkipped(b) && first != kNone)) {
    return 0;
  }
  if (!IsSignificant(a) && !IsSignificant(b)) {
    return a.order != b.order ? Bit(Level::SpacesAndSymbols) : 0;
  }
  if (LetterLevel(key1) != LetterLevel(key2)) return Bit(Level::Letters);
  unsigned levels = 0;
  if ((cmpOp & kCmpIgnoreAccents) == 0 && AccentLevel(key1) != AccentLevel(key2)) {
    levels |= Bit(Level::Accents);
  }
  if ((cmpOp & kCmpIgnoreCase) == 0 && CaseLevel(key1) != CaseLevel(key2)) {
    levels |= Bit(Level::Case);
  }
  return levels;
}

void ComparisonReport::AddPair(int first, int second) {
  unsigned const levels = isSettled ? 0 : LevelsOf(first, second);
  columns.push_back({first, second, levels});
  if ((levels & (Bit(Level::Letters) | Bit(Level::OrderKeys))) != 0) isSettled = true;
}

void ComparisonReport::PairKeys() {
  int const size1 = static_cast<int>(orders1.size());
  int const size2 = static_cast<int>(orders2.size());
  for (int place = 0; place < std::max(size1, size2); ++place) {
    AddPair(place < size1 ? place : kNone, place < size2 ? place : kNone);
  }
}

/// Holds letters against letters in turn, and what is not significant between two of them against
/// what is not on the other side, as far as there is any.
void ComparisonReport::PairOrders() {
  int const size1 = static_cast<int>(orders1.size());
  int const size2 = static_cast<int>(orders2.size());
  int first = 0;
  int second = 0;
  auto const is = [](auto const& orders, int place, auto test) {
    return place < static_cast<int>(orders.size()) && test(orders[static_cast<std::size_t>(place)]);
  };
  auto const skipped = [this](TextOrder const& each) { return IsSkipped(each); };
  auto const minor = [](TextOrder const& each) { return !IsSignificant(each); };
  while (first < size1 || second < size2) {
    bool skips1 = is(orders1, first, skipped);
    bool skips2 = is(orders2, second, skipped);
    if (!skips1 && !skips2) {
      skips1 = is(orders1, first, minor);
      skips2 = is(orders2, second, minor);
    }
    if (!skips1 && !skips2) {
      skips1 = first < size1;
      skips2 = second < size2;
    }
    AddPair(skips1 ? first : kNone, skips2 ? second : kNone);
    first += skips1 ? 1 : 0;
    second += skips2 ? 1 : 0;
  }
}

bool ComparisonReport::MayStandFor(int first, int second) const {
  TextOrder const& a = orders1[static_cast<std::size_t>(first)];
  TextOrder const& b = orders2[static_cast<std::size_t>(second)];
  if (IsQuestion(b)) return true;
  if (IsSignificant(a) != IsSignificant(b)) return false;
  return !IsSignificant(a) || LetterLevel(KeyOf(a)) == LetterLevel(KeyOf(b));
}

/// Holds the text against the pattern: an asterisk stands for as little as lets the letters behind
/// it go with the pattern.
void ComparisonReport::PairPattern() {
  int const size1 = static_cast<int>(orders1.size());
  int const size2 = static_cast<int>(orders2.size());
  int first = 0;
  int second = 0;
  // The last asterisk, where it stands among the columns, and what it stands for so far.
  int star = kNone;
  std::size_t starColumn = 0;
  int starBegin = 0;
  int starEnd = 0;
  auto const pairAlone = [&](int& place, bool isFirst) {
    isFirst ? AddPair(place, kNone) : AddPair(kNone, place);
    ++place;
  };
  while (first < size1 || second < size2) {
    bool const inPattern = second < size2;
    bool const inText = first < size1;
    TextOrder const* const b = inPattern ? &orders2[static_cast<std::size_t>(second)] : nullptr;
    TextOrder const* const a = inText ? &orders1[static_cast<std::size_t>(first)] : nullptr;
    if (b != nullptr && IsStar(*b) && !isSettled) {
      star = second++;
      starColumn = columns.size();
      starBegin = starEnd = first;
      columns.push_back({kNone, star, 0, true});
    } else if (a != nullptr && IsSkipped(*a)) {
      pairAlone(first, true);
    } else if (b != nullptr && IsSkipped(*b) && !IsStar(*b) && !IsQuestion(*b)) {
      pairAlone(second, false);
    } else if (a != nullptr && b != nullptr && MayStandFor(first, second)) {
      AddPair(first++, second++);
    } else if (star != kNone && a != nullptr && starEnd < size1) {
      // One more for the asterisk, and on from behind it.
      columns.resize(starColumn);
      ++starEnd;
      for (int place = starBegin; place < starEnd; ++place) {
        columns.push_back({place, star, 0, true});
      }
      starColumn = columns.size();
      starBegin = starEnd;
      first = starEnd;
      second = star + 1;
    } else if (a != nullptr && !IsSignificant(*a)) {
      pairAlone(first, true);
    } else if (b != nullptr && !IsSignificant(*b) && !IsQuestion(*b) && !IsStar(*b)) {
      pairAlone(second, false);
    } else {
      AddPair(inText ? first++ : kNone, inPattern ? second++ : kNone);
    }
  }
}

/// The column that decides: the first one that differs at the level, of accents, spaces and symbols
/// the last one.
void ComparisonReport::FindDecider() {
  bool const lastDecides = level == Level::Accents || level == Level::SpacesAndSymbols;
  for (std::size_t place = 0; place < columns.size(); ++place) {
    if ((columns[place].levels & Bit(level)) == 0) continue;
    decider = static_cast<int>(place);
    if (!lastDecides) return;
  }
}

std::string ComparisonReport::Headline() const {
  std::string const a = PrintableName(Encoded(text1));
  std::string const b = PrintableName(Encoded(text2));
  if (HasPattern(cmpOp)) {
    if (result == 0) return fmt::format("{} matches {}\n", a, b);
    return fmt::format("{} does not match {}: {}\n", a, b, NameOf(level));
  }
  if (result == 0) return fmt::format("{} = {}\n", a, b);
  return fmt::format("{} {} {}, decided by {}\n", a, result < 0 ? "<" : ">", b, NameOf(level));
}

/// The names of the levels at which a column differs; those that do not decide in brackets.
std::string ComparisonReport::LevelsText(std::size_t column) const {
  std::string text;
  for (LevelName const& each : kLevels) {
    if ((columns[column].levels & Bit(each.level)) == 0) continue;
    bool const decides = static_cast<int>(column) == decider && each.level == level;
    if (!text.empty()) text += ' ';
    text += decides ? each.name : fmt::format("({})", each.name);
  }
  return text;
}

std::string ComparisonReport::AsText(bool colour) const {
  auto const cell = [this](TextOrder const& each) {
    return each.group == usualGroup ? fmt::format("{}", each.order)
                                    : fmt::format("{}:{}", each.group, each.order);
  };
  std::vector<ReportColumn> shown;
  int lastStar = kNone;
  for (std::size_t place = 0; place < columns.size(); ++place) {
    Column const& column = columns[place];
    ReportColumn one;
    bool isFaint = column.isStar;
    if (column.first != kNone) {
      TextOrder const& each = orders1[static_cast<std::size_t>(column.first)];
      one.cells[0] = TextOf(each);
      one.cells[1] = cell(each);
      isFaint = isFaint || IsSkipped(each);
    }
    if (column.second != kNone && !(column.isStar && lastStar == column.second)) {
      TextOrder const& each = orders2[static_cast<std::size_t>(column.second)];
      one.cells[2] = TextOf(each);
      one.cells[3] = cell(each);
      isFaint = isFaint || IsSkipped(each);
    }
    if (column.isStar) lastStar = column.second;
    one.cells[kDiffersRow] = LevelsText(place);
    if (colour) {
      bool const decides = static_cast<int>(place) == decider;
      one.colour = decides              ? kDeciding
                   : column.levels != 0 ? kOverruled
                   : isFaint            ? kFaint
                                        : nullptr;
    }
    shown.push_back(one);
  }
  ReportColumn const headings{{"A", "order", "B", "order", "differs"}};
  return Headline() +
         fmt::format("operator 0x{:04x} ({}), language {}, code set {}\n", cmpOp,
                     OperatorText(cmpOp), XoLanguageContext::QueryLanguage(text1.language)->name,
                     XoLanguageContext::QueryCodeSet(text1.codeSet)->name) +
         Blocks(headings, shown);
}

std::string ComparisonReport::AsJson() const {
  auto const list = [](std::vector<TextOrder> const& orders) {
    Json all = Json::array();
    for (TextOrder const& each : orders) {
      all.push_back({{"text", Shown(each.characters.data(), each.characters.size())},
                     {"order", each.order},
                     {"group", each.group},
                     {"name", DescriptionOf(each)}});
    }
    return all;
  };
  auto const placeOf = [](int place) { return place == kNone ? Json() : Json(place); };
  Json pairs = Json::array();
  for (Column const& column : columns) {
    Json levels = Json::array();
    for (LevelName const& each : kLevels) {
      if ((column.levels & Bit(each.level)) != 0) levels.push_back(each.name);
    }
    pairs.push_back({{"first", placeOf(column.first)},
                     {"second", placeOf(column.second)},
                     {"differs", levels}});
  }
  Json const report = {{"result", result < 0   ? -1
                                  : result > 0 ? 1
                                               : 0},
                       {"level", NameOf(level)},
                       {"operator", cmpOp},
                       {"language", text1.language},
                       {"codeSet", text1.codeSet},
                       {"first", list(orders1)},
                       {"second", list(orders2)},
                       {"pairs", pairs},
                       {"decider", placeOf(decider)}};
  return report.dump(2) + '\n';
}

}  // namespace xo::tool

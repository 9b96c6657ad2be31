#include "src/xostring/plain_lane.hpp"
#include "xochar.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"
#include "xostringiterator.hpp"

using namespace xo;

namespace {

// Orders of the wildcards; 0 until first asked. Threads that ask first at the same time write the
// same value; they are set during set-up only.
constinit unsigned short asteriskOrder = 0;
constinit unsigned short questionOrder = 0;
constinit unsigned short escapeOrder = 0;

unsigned short Cached(unsigned short& cache, unsigned short character) {
  if (cache == 0) {
    OrderTable const* const table = XoLanguageContext::QueryCodeSet(1)->orderTable;
    cache = table->GetEntry(character)->order;
  }
  return cache;
}

int SetWildcardOrder(unsigned short& cache, XoChar const& character) {
  cache = XoStringIterator(character).GetNextOrder(0);
  return 0;
}

/// The place behind the characters that a text begins with, `limit` at most, that are one order
/// each and neither of two wildcards. `text` is of a code set with a table and, if wide, in the
/// machine's order.
template <class Units>
char const* SkipPlainOrders(char const* text, std::size_t limit, XoCodeSet const& codeSet,
                            unsigned char language, unsigned short asterisk,
                            unsigned short question) {
  PlainReader<Units> const reader(codeSet, language);
  for (; limit != 0; --limit, text += Units::kSize) {
    unsigned short const code = Units::Get(text);
    if (code == 0) break;
    CharOrderEntry const* const entry = reader.Plain(code, text + Units::kSize);
    if (entry == nullptr || entry->order == 0) break;
    if (entry->order == asterisk || entry->order == question) break;
  }
  return text;
}

}  // namespace

unsigned short AsteriskOrder() { return Cached(asteriskOrder, '*'); }
unsigned short QuestionOrder() { return Cached(questionOrder, '?'); }
unsigned short EscapeOrder() { return Cached(escapeOrder, '\\'); }

int XoString::SetAsterisk(XoChar const& character) {
  return SetWildcardOrder(asteriskOrder, character);
}
int XoString::SetQuestion(XoChar const& character) {
  return SetWildcardOrder(questionOrder, character);
}
int XoString::SetEscape(XoChar const& character) {
  return SetWildcardOrder(escapeOrder, character);
}

int FindWildcard(unsigned char codeSet, unsigned char language, char const* text, int asteriskOnly,
                 unsigned short maxCount, unsigned short* byteOffset, unsigned char byteOrder) {
  if (byteOffset != nullptr) *byteOffset = 65535;
  if (text == nullptr) return -1;
  auto const found = [byteOffset](int position, std::size_t offset) {
    if (byteOffset != nullptr) *byteOffset = AsCount(offset);
    return position;
  };
  if (codeSet == kNoCodeSet) {
    for (int place = 0; place < int{maxCount} && text[place] != 0; ++place) {
      if (text[place] == '*' || (text[place] == '?' && asteriskOnly == 0)) {
        return found(place, static_cast<std::size_t>(place));
      }
    }
    return -1;
  }
  if (codeSet == kSortOrderSet) {
    // Orders stand one behind the other.
    unsigned short const asterisk = AsteriskOrder();
    unsigned short const question = QuestionOrder();
    for (std::size_t place = 0; place < maxCount; ++place) {
      unsigned short const order = LoadWide(text + 2 * place, OrderOrDefault(byteOrder));
      if (order == 0) break;
      if (order == asterisk || (order == question && asteriskOnly == 0)) {
        return found(static_cast<int>(place), 2 * place);
      }
    }
    return -1;
  }
  codeSet = CodeSetOr8(codeSet);
  language = LanguageOrDefault(language);
  bool const isWide = IsWide(codeSet);
  unsigned short const asterisk = AsteriskOrder();
  unsigned short const question = asteriskOnly == 0 ? QuestionOrder() : asterisk;
  char const* place = text;
  XoCodeSet const* const record = intl::FindCodeSet(codeSet);
  if (record != nullptr && record->orderTable != nullptr && !(isWide && byteOrder == FormBig)) {
    auto const skip = isWide ? SkipPlainOrders<WideUnits> : SkipPlainOrders<NarrowUnits>;
    place = skip(text, maxCount, *record, language, asterisk, question);
  }
  auto const offsetOf = [text](char const* at) { return static_cast<std::size_t>(at - text); };
  auto const charactersBefore = [&](char const* at) { return offsetOf(at) >> (isWide ? 1 : 0); };
  if (charactersBefore(place) >= maxCount || LoadUnit(place, codeSet, byteOrder) == 0) return -1;
  XoStringIterator iterator(place, codeSet, language, byteOrder);
  for (;;) {
    char const* const at = iterator.cursor;
    if (charactersBefore(at) >= maxCount || iterator.IsEOS() != 0) break;
    unsigned short const order = iterator.GetNextOrder(1);
    if (order == 0) break;
    if (order == asterisk || order == question) {
      return found(static_cast<int>(charactersBefore(at)), offsetOf(at));
    }
  }
  return -1;
}

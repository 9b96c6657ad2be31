#include "src/xostring/order_keys.hpp"
#include "src/xostring/text_units.hpp"
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
  XoStringIterator iterator(text, codeSet, language, byteOrder);
  unsigned const unit = UnitSize(iterator.codeSet);
  for (;;) {
    std::size_t const offset = static_cast<std::size_t>(iterator.cursor - text);
    if (offset / unit >= maxCount || iterator.IsEOS() != 0) break;
    unsigned short const order = iterator.GetNextOrder(1);
    if (order == 0) break;
    if (order == AsteriskOrder() || (order == QuestionOrder() && asteriskOnly == 0)) {
      return found(static_cast<int>(offset / unit), offset);
    }
  }
  return -1;
}

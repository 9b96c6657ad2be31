#include <algorithm>

#include "src/xostring/order_keys.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"

using namespace xo;

namespace {

constexpr int kNotFound = -1;

/// What `Find` gave, with positions above 32767 as they are meant.
int PositionOf(short found) { return found == -1 ? kNotFound : static_cast<unsigned short>(found); }

/// One character without code set and language, as a pattern.
XoString ByteView(char character) {
  XoString view(kNoCodeSet, 0);
  AssignText(view, &character, kNoCodeSet, character != 0 ? 1 : 0);
  return view;
}

}  // namespace

short XoString::Find(XoString const& pattern, unsigned short start, unsigned short cmpOp) const {
  unsigned const patternLength = pattern.Len();
  XoString prefix(kNoCodeSet, 0);
  XoString const* sought = &pattern;
  short count = static_cast<short>(patternLength);
  if ((cmpOp & kNoPattern) == 0) {
    // The rest of the text does not matter.
    prefix = pattern;
    SpliceText(prefix, "*", kNoCodeSet, prefix.Len(), 0, 1, 1, SpliceMode::kTruncate);
    sought = &prefix;
    count = -1;
  }
  unsigned const length = Len();
  if (length == 0 || patternLength == 0 || start > length) return -1;
  unsigned short const op = OperatorOrDefault(cmpOp);
  unsigned const unit = UnitSize(codeSet);
  for (unsigned position = start; length - position >= patternLength; ++position) {
    if (XoStrCmp(codeSet, language, text + position * unit, sought->codeSet, sought->language,
                 sought->text, op, count) == 0) {
      return static_cast<short>(position);
    }
  }
  return -1;
}

short XoString::Find(char character, unsigned short start, unsigned short cmpOp) const {
  return Find(ByteView(character), start, cmpOp);
}

short XoString::Find(unsigned short character, unsigned short start, unsigned short cmpOp) const {
  return Find(XoString(character), start, cmpOp);
}

short XoString::SubStringPos(XoString const& pattern, unsigned short cmpOp) const {
  return Find(pattern, 0, cmpOp);
}

XoString& XoString::ReplaceAll(XoString const& from, XoString const& to, unsigned short start) {
  // The text changes under a `from` or `to` that is this string.
  if (&from == this || &to == this) return ReplaceAll(XoString(from), XoString(to), start);
  unsigned const fromLength = from.Len();
  unsigned const toLength = to.Len();
  int found = PositionOf(Find(from, start));
  while (found != kNotFound) {
    unsigned short const position = static_cast<unsigned short>(found);
    // As `Cut`, for a `from` of any length.
    CutPart(*this, position, std::min(fromLength, Len() - unsigned{position}));
    if (position <= Len()) Insert(to, position);
    unsigned const next = position + toLength;
    if (next > Len()) break;
    found = PositionOf(Find(from, static_cast<unsigned short>(next)));
  }
  return *this;
}

XoString& XoString::ReplaceAll(char from, char to, unsigned short start) {
  return ReplaceAll(ByteView(from), XoString(to), start);
}

XoString& XoString::ReplaceAll(unsigned short from, unsigned short to, unsigned short start) {
  return ReplaceAll(XoString(from), XoString(to), start);
}

int XoSplitList(XoString& list, XoString& item, XoString const& delimiter,
                unsigned short& position) {
  int end = PositionOf(list.Find(delimiter, position));
  if (end == 0) {
    ++position;
    end = PositionOf(list.Find(delimiter, position));
  }
  unsigned const length = list.Len();
  if (end == kNotFound) {
    if (position >= length) return kEndOfList;
    end = static_cast<int>(length);
  }
  XoString element = CopyPart(list, position, static_cast<unsigned>(end) - position);
  element.Trim();
  item = element;
  position = static_cast<unsigned short>(end + 1);
  return 0;
}

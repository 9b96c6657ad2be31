#include <algorithm>
#include <memory>
#include <utility>

#include "base/allocation.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xostring.hpp"
#include "xostringiterator.hpp"

using namespace xo;

namespace {

constexpr short kToTheEnd = -1;

/// Puts `repeat` times `fill` behind the first `position` characters.
void FillFrom(XoString& target, unsigned short position, unsigned short repeat,
              XoChar const& fill) {
  char units[4] = {};
  StoreUnit(units, fill.codeSet, fill.Code());
  SpliceText(target, units, fill.codeSet, position, 0, 1, repeat, SpliceMode::kTruncate);
}

XoString& ExpandTo(XoString& target, unsigned short length, XoChar const& fill) {
  unsigned short const present = target.Len();
  if (present < length) {
    FillFrom(target, present, static_cast<unsigned short>(length - present), fill);
  }
  return target;
}

/// A text that grows while it is written, up to what a string holds.
class GrowingText {
 public:
  GrowingText(unsigned char codeSet_, unsigned roomAtFirst)
      : codeSet(codeSet_), unit(UnitSize(codeSet_)) {
    Grow(std::min<unsigned>(roomAtFirst, XoString::kMaxSize));
  }

  /// Room for one character more besides the terminator; null when a string holds no more.
  char* Next() {
    if (used + 2 * unit > room) {
      if (room == XoString::kMaxSize) return nullptr;
      Grow(std::min<unsigned>(2 * room, XoString::kMaxSize));
    }
    used += unit;
    return buffer.get() + used - unit;
  }

  unsigned short Size() const { return static_cast<unsigned short>(used + unit); }

  char* Take() {
    StoreUnit(buffer.get() + used, codeSet, 0);
    return buffer.release();
  }

 private:
  struct Release {
    void operator()(char* text) const { ReleaseArray(text); }
  };

  void Grow(unsigned newRoom) {
    std::unique_ptr<char, Release> larger(static_cast<char*>(AllocateArray(newRoom)));
    std::copy_n(buffer.get(), used, larger.get());
    buffer = std::move(larger);
    room = newRoom;
  }

  unsigned char const codeSet;
  unsigned const unit;
  std::unique_ptr<char, Release> buffer;
  unsigned room = 0;
  unsigned used = 0;
};

}  // namespace

// Parts.

XoString XoString::Copy(unsigned short start, short count) const {
  unsigned const length = Len();
  if (start >= length) return EmptyString();
  unsigned const rest = length - start;
  bool const isWhole = count < 0 || static_cast<unsigned>(count) > rest;
  return CopyPart(*this, start, isWhole ? rest : static_cast<unsigned>(count));
}

XoString XoString::Left(unsigned short count) const {
  unsigned const length = Len();
  return length == 0 ? EmptyString() : CopyPart(*this, 0, std::min<unsigned>(length, count));
}

XoString XoString::Right(unsigned short count) const {
  unsigned const length = Len();
  unsigned const taken = std::min<unsigned>(length, count);
  return taken == 0 ? EmptyString() : CopyPart(*this, length - taken, taken);
}

// Editing.

XoString& XoString::Cut(unsigned short start, short count) {
  int const rest = int{Len()} - int{start};
  int const cut = count == kToTheEnd || count > rest ? rest : count;
  if (cut >= 1) CutPart(*this, start, static_cast<unsigned>(cut));
  return *this;
}

XoString& XoString::Insert(XoString const& other, unsigned short position) {
  if (position <= Len()) {
    SpliceText(*this, other.text, other.codeSet, position, 0, other.Len(), 1, SpliceMode::kInsert);
  }
  return *this;
}

XoString& XoString::Replace(XoString const& other, unsigned short position) {
  int const count = std::min(int{other.Len()}, int{Len()} - int{position});
  if (count >= 1) {
    SpliceText(*this, other.text, other.codeSet, position, 0, static_cast<unsigned short>(count), 1,
               SpliceMode::kOverwrite);
  }
  return *this;
}

XoString& XoString::Expand(unsigned short length, char fill) {
  return ExpandTo(*this, length, XoChar(fill));
}

XoString& XoString::Expand(unsigned short length, unsigned short fill) {
  return ExpandTo(*this, length, XoChar(fill));
}

XoString& XoString::Fill(unsigned short length, char fill) {
  FillFrom(*this, 0, length, XoChar(fill));
  return *this;
}

XoString& XoString::Fill(unsigned short length, unsigned short fill) {
  FillFrom(*this, 0, length, XoChar(fill));
  return *this;
}

XoString& XoString::LeftTrim() {
  unsigned spaces = 0;
  for (XoStringIterator at(*this); at.IsEOS() == 0 && (*at).IsSpace() != 0; ++at) ++spaces;
  if (spaces != 0) CutPart(*this, 0, spaces);
  return *this;
}

XoString& XoString::RightTrim() {
  unsigned const length = Len();
  unsigned keep = length;
  // The first character is never looked at, so it stays whatever it is.
  while (keep > 1 &&
         XoChar(*this, static_cast<int>((keep - 1) * UnitSize(codeSet))).IsSpace() != 0) {
    --keep;
  }
  if (length > keep) {
    SpliceText(*this, nullptr, codeSet, static_cast<unsigned short>(keep), 0, 0, 1,
               SpliceMode::kTruncate);
  }
  return *this;
}

XoString& XoString::Trim() {
  LeftTrim();
  return RightTrim();
}

XoString& XoString::ToLower() {
  XoCharToLower operation;
  return Transform(operation);
}

XoString& XoString::ToUpper() {
  XoCharToUpper operation;
  return Transform(operation);
}

XoString& XoString::Transform(XoCharOperation& operation) {
  if (size == 0) return *this;
  // Twice the room is enough for most operations that lengthen the text.
  GrowingText result(codeSet, 2u * size);
  XoStringIterator source(*this);
  while (source.HasMore()) {
    char* const place = result.Next();
    if (place == nullptr) {
      ReportStringOverflow();
      break;
    }
    XoStringIterator destination(place, codeSet);
    source.TransformOne(destination, operation);
  }
  size = result.Size();
  ReleaseArray(std::exchange(text, result.Take()));
  return *this;
}

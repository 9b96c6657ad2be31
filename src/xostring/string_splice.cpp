#include "src/xostring/string_splice.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>

#include "base/allocation.hpp"
#include "base/config.hpp"
#include "base/platform.hpp"
#include "src/xostring/text_units.hpp"

namespace xo {
namespace {

char* AllocateZeroed(unsigned bytes) {
  char* const buffer = static_cast<char*>(AllocateArray(bytes));
  std::memset(buffer, 0, bytes);
  return buffer;
}

struct ReleaseText {
  void operator()(char* text) const { ReleaseArray(text); }
};

/// Copies text of units of `unit` bytes that are in `byteOrder`.
void CopyTextUnits(char* destination, char const* source, unsigned unit, unsigned char byteOrder,
                   std::size_t bytes) {
  if (unit == 2 && byteOrder == FormBig) {
    for (std::size_t place = 0; place + 2 <= bytes; place += 2) {
      StoreBytes(destination + place, LoadWide(source + place, FormBig));
    }
  } else if (bytes != 0) {
    std::memcpy(destination, source, bytes);
  }
}

/// Writes up to `length` characters of a source in `byteOrder`, and returns their number.
unsigned MapCharacters(unsigned char fromSet, unsigned char toSet, char const* source,
                       unsigned length, char* buffer, unsigned char byteOrder = FormLittle) {
  unsigned char const from = CodeSetOrNative(fromSet);
  unsigned char const to = CodeSetOrNative(toSet);
  unsigned const fromUnit = UnitSize(from);
  unsigned const toUnit = UnitSize(to);
  unsigned written = 0;
  for (; written < length; ++written) {
    unsigned short const code = LoadUnit(source + written * fromUnit, from, byteOrder);
    if (code == 0) break;
    StoreUnit(buffer + written * toUnit, to, MapCode(code, from, to));
  }
  return written;
}

/// What a text of `length` characters takes in `codeSet`; one that is too long is reported and cut.
unsigned BytesFor(unsigned& length, unsigned char codeSet) {
  unsigned const unit = UnitSize(codeSet);
  unsigned const bytes = (length + 1) * unit;
  if (bytes <= XoString::kMaxSize) return bytes;
  ReportStringOverflow();
  length = XoString::kMaxSize / unit - 1;
  return XoString::kMaxSize;
}

}  // namespace

unsigned short MapCode(unsigned short code, unsigned char fromSet, unsigned char toSet) {
  unsigned char const from = CodeSetOrNative(fromSet);
  unsigned char const to = CodeSetOrNative(toSet);
  // The end of a text is that in every code set, also in one that does not exist.
  if (from == to || code == 0) return code;
  if (XoCodeSet const* const record = XoLanguageContext::QueryCodeSet(to)) {
    return record->MapCharacter(code, from);
  }
  constexpr unsigned short kQuestionMark = 0x3F;
  return IsWide(to) || code < 256 ? code : kQuestionMark;
}

void ReportStringOverflow() {
  // The pointer value of all ones asks for the configuration without changing it.
  XoConfig* const config = DefaultConfig(std::bit_cast<XoConfig*>(~std::uintptr_t{0}));
  if (config == nullptr) return;
  unsigned short wanted = 0;
  XoConfigSection const section{"debug", nullptr};
  config->Lookup("stringOverflow", &wanted, &section);
  if (wanted != 0) XOLA_assert("String overflow", "src\\xostring", 1110);
}

unsigned MapTextToNewBuffer(unsigned char fromSet, unsigned char toSet, char const* source,
                            char*& out, unsigned short limit, unsigned char byteOrder) {
  std::size_t const most = limit == 65535 ? static_cast<std::size_t>(-1) : limit;
  unsigned length = AsCount(TextLength(fromSet, source, most));
  unsigned const bytes = BytesFor(length, toSet);
  out = AllocateZeroed(bytes);
  MapCharacters(fromSet, toSet, OrEmptyText(source), length, out, byteOrder);
  return bytes;
}

unsigned MapTextIntoBuffer(unsigned char fromSet, unsigned char toSet, char const* source,
                           unsigned short length, char*& buffer, unsigned short& bufferSize) {
  // A buffer has room for the length that is asked for, also where the source ends before it.
  unsigned room = length == 65535 ? AsCount(TextLength(fromSet, source)) : length;
  unsigned const bytes = BytesFor(room, toSet);
  if (buffer == nullptr || bufferSize < bytes) {
    char* const larger = AllocateZeroed(bytes);
    ReleaseArray(buffer);
    buffer = larger;
    bufferSize = static_cast<unsigned short>(bytes);
  }
  unsigned const written = MapCharacters(fromSet, toSet, OrEmptyText(source), room, buffer);
  StoreUnit(buffer + written * UnitSize(toSet), toSet, 0);
  return written;
}

void SpliceText(XoString& target, char const* source, unsigned char sourceCodeSet,
                unsigned short position, unsigned short sourceStart, unsigned short count,
                unsigned short repeat, SpliceMode mode, unsigned char byteOrder) {
  if (mode != SpliceMode::kTruncate && IsTextEmpty(sourceCodeSet, source)) return;

  unsigned const unit = UnitSize(target.codeSet);
  unsigned const sourceEnd = unsigned{sourceStart} + count;
  std::unique_ptr<char, ReleaseText> converted;
  if (source != nullptr && ((sourceCodeSet != kNoCodeSet && sourceCodeSet != target.codeSet) ||
                            UnitSize(sourceCodeSet) != unit)) {
    unsigned const limit = repeat == 1 ? sourceEnd : 1;
    char* temporary = nullptr;
    MapTextToNewBuffer(sourceCodeSet, target.codeSet, source, temporary, AsCount(limit), byteOrder);
    converted.reset(temporary);
    source = temporary;
    byteOrder = FormLittle;
  }

  // All in bytes, and in a width that no sum or product of the arguments passes.
  using Bytes = unsigned long long;
  // A buffer that was kept for wider characters may have a byte to spare.
  Bytes const old = target.size - target.size % unit;
  // Of a text that is shorter than the caller thinks, nothing is left behind its end.
  Bytes const head = std::min<Bytes>(Bytes{position} * unit, old >= unit ? old - unit : 0);
  Bytes const tailFrom = std::min<Bytes>((Bytes{position} + count) * unit, old);
  Bytes const span = Bytes{count} * unit;
  Bytes const inserted = span * repeat;
  Bytes newSize = 0;
  switch (mode) {
    case SpliceMode::kOverwrite:
      newSize = head + inserted + std::max<Bytes>(old - tailFrom, unit);
      break;
    case SpliceMode::kInsert:
      newSize = inserted + (old != 0 ? old : unit);
      break;
    case SpliceMode::kTruncate:
      newSize = head + inserted + unit;
      break;
  }
  bool const overflowed = newSize > XoString::kMaxSize;
  if (overflowed) {
    ReportStringOverflow();
    newSize = XoString::kMaxSize;
  }

  char* const buffer = AllocateZeroed(static_cast<unsigned>(newSize));
  // Copies as much of the old text from `from` on as the buffer has room for at `to`.
  auto const copyOld = [&](Bytes to, Bytes from, Bytes bytes) {
    if (target.text == nullptr || to >= newSize) return;
    CopyTextUnits(buffer + to, target.text + from, unit, FormLittle, std::min(bytes, newSize - to));
  };
  copyOld(0, 0, head);
  if (mode == SpliceMode::kOverwrite) copyOld(head + inserted, tailFrom, old - tailFrom);
  // Behind one copy of the source, whatever `repeat` says.
  if (mode == SpliceMode::kInsert) copyOld(head + span, head, old - head);

  if (source != nullptr && head < newSize) {
    Bytes const room = newSize - head;
    if (repeat == 1) {
      Bytes const there = TextLength(target.codeSet, source, sourceEnd);
      Bytes const wanted = there > sourceStart ? (there - sourceStart) * unit : 0;
      CopyTextUnits(buffer + head, source + Bytes{sourceStart} * unit, unit, byteOrder,
                    std::min(wanted, room));
    } else if (unit == 2) {
      WideFill(buffer + head, LoadWide(source, byteOrder), std::min<Bytes>(repeat, room / 2 - 1));
    } else {
      std::memset(buffer + head, LoadNarrow(source), std::min<Bytes>(repeat, room - 1));
    }
  }
  if (mode == SpliceMode::kTruncate || overflowed) {
    StoreUnit(buffer + newSize - unit, target.codeSet, 0);
  }

  ReleaseArray(target.text);
  target.text = buffer;
  target.size = static_cast<unsigned short>(newSize);
}

void AssignText(XoString& target, char const* source, unsigned char codeSet, unsigned short count,
                unsigned char byteOrder) {
  if (source == nullptr || count == 0) {
    target.text = nullptr;
    target.size = 0;
    return;
  }
  unsigned short const length = count == 65535 ? AsCount(TextLength(codeSet, source)) : count;
  target.text = nullptr;
  target.size = 0;
  SpliceText(target, source, codeSet, 0, 0, length, 1, SpliceMode::kTruncate, byteOrder);
}

XoString CopyPart(XoString const& source, unsigned start, unsigned count) {
  XoString part;
  part.codeSet = source.codeSet;
  part.language = source.language;
  AssignText(part, source.StrGet() + start * UnitSize(source.codeSet), source.codeSet,
             static_cast<unsigned short>(count));
  return part;
}

void CutPart(XoString& target, unsigned start, unsigned count) {
  unsigned const rest = target.Len() - start - count;
  SpliceText(target, target.text, target.codeSet, static_cast<unsigned short>(start),
             static_cast<unsigned short>(start + count), static_cast<unsigned short>(rest), 1,
             SpliceMode::kTruncate);
}

}  // namespace xo

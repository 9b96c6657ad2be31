#include "tools/text_decoder.hpp"

#include <fmt/core.h>

#include <array>

#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

constexpr unsigned char kUnicode = 253;
/// Characters that a string of 16-bit characters holds.
constexpr std::size_t kMostCharacters = XoString::kMaxSize / 2 - 1;
/// Bytes that are decoded at once, below the limit of `XoMBS2XoString`.
constexpr std::size_t kPiece = 32000;

/// The sequence of four bytes at `bytes` as a whole: in a string only its low 16 bits are left.
char32_t FourByteCode(char const* bytes) {
  char32_t code = static_cast<unsigned char>(bytes[0]) & 0x07u;
  for (int place = 1; place < 4; ++place) {
    code = code << 6 | (static_cast<unsigned char>(bytes[place]) & 0x3Fu);
  }
  return code;
}

/// Halves of surrogate pairs and sequences above U+10FFFF belonged to UTF-8 once; the library reads
/// them still, but a file that holds them is more likely to be something else.
bool IsOutdated(unsigned short code, int length, char const* bytes) {
  if (length == 3) return code >= 0xD800 && code < 0xE000;
  return length > 4 || (length == 4 && FourByteCode(bytes) > 0x10FFFF);
}

}  // namespace

TextDecoder::TextDecoder(XoCodeSet const& codeSet, unsigned char ownLanguage)
    : set(&codeSet), language(ownLanguage) {}

std::string TextDecoder::Decode(std::string_view bytes, XoString& text) {
  lost = 0;
  text.Destroy();
  text.language = language;
  text.SetCodeSet(kUnicode);
  std::size_t pieceStart = 0;
  std::size_t characters = 0;
  auto const append = [&](std::size_t end) {
    XoString& target = pieceStart == 0 ? text : piece;
    XoMBS2XoString(bytes.data() + pieceStart, target, static_cast<int>(end - pieceStart));
    if (pieceStart != 0) text += piece;
    pieceStart = end;
  };
  for (std::size_t place = 0; place < bytes.size(); ++characters) {
    unsigned short code = 0;
    char const* const sequence = bytes.data() + place;
    int const length = XoMultiByte2WChar(&code, sequence, bytes.size() - place);
    if (length < 0 || IsOutdated(code, length, sequence)) {
      return fmt::format("is not UTF-8: byte {} cannot be read", place);
    }
    if (*sequence == 0) {
      return fmt::format("holds a zero at byte {}, which would end the text", place);
    }
    if (characters == kMostCharacters) {
      return fmt::format("is longer than a string can be, {} characters", kMostCharacters);
    }
    if (lost == 0) {
      if (length == 4) {
        lost = FourByteCode(sequence);
      } else if (set->number != kUnicode && set->HasCharacter(code) == 0) {
        lost = code;
      }
    }
    place += static_cast<std::size_t>(length);
    if (place - pieceStart > kPiece) append(place);
  }
  if (pieceStart < bytes.size()) append(bytes.size());
  if (set->number != kUnicode) text.MapToCodeSet(set->number);
  return {};
}

std::string TextDecoder::Loss() const {
  if (lost == 0) return {};
  auto const code = static_cast<unsigned>(lost);
  return lost > 0xFFFF ? fmt::format("a string has no room for U+{:X}", code)
                       : fmt::format("{} lacks U+{:04X}", set->name, code);
}

std::string TextDecoder::Substitute() const {
  bool const isCut = lost > 0xFFFF && set->number == kUnicode;
  return isCut ? fmt::format("U+{:04X}", static_cast<unsigned>(lost) & 0xFFFF) : "a question mark";
}

XoString DecodeArgument(std::string const& bytes, XoCodeSet const& set, unsigned char language) {
  TextDecoder decoder(set, language);
  XoString text;
  std::string const complaint = decoder.Decode(bytes, text);
  if (!complaint.empty()) throw Trouble(fmt::format("{} {}", QuotedText(bytes), complaint));
  std::string const loss = decoder.Loss();
  if (!loss.empty()) throw Trouble(fmt::format("{}: {}", QuotedText(bytes), loss));
  return text;
}

std::string Encoded(XoString const& text) {
  char* bytes = nullptr;
  int size = 0;
  int const length = XoString2MultiByteString(text, bytes, size);
  std::string encoded = length > 0 ? std::string(bytes, static_cast<std::size_t>(length)) : "";
  delete[] bytes;
  return encoded;
}

std::string Shown(unsigned short const* characters, std::size_t count) {
  std::string text;
  for (std::size_t place = 0; place < count; ++place) {
    unsigned short const each = characters[place];
    bool const control = each < 0x20 || (each >= 0x7F && each < 0xA0);
    bool const half = each >= 0xD800 && each < 0xE000;
    if (control || half) continue;
    std::array<char, 6> bytes{};
    int const length = XoWChar2MultiByte(bytes.data(), static_cast<wchar_t>(each));
    text.append(bytes.data(), static_cast<std::size_t>(length));
  }
  return text;
}

}  // namespace xo::tool

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kCyrillic = 5, kEbcdic = 32, kUnicode = 253;
constexpr unsigned char kNeutral = 0, kGerman = 2;

using Units = std::vector<unsigned short>;
using namespace std::string_literals;
using namespace std::string_view_literals;

XoString TextOf(Units units) {
  units.push_back(0);
  return XoString(units.data());
}

Units UnitsOf(XoString const& text) {
  Units units;
  XoStringIterator iterator(text);
  for (; iterator.IsEOS() == 0; ++iterator) units.push_back((*iterator).Code());
  return units;
}

int Decode(std::string_view bytes, unsigned short* code = nullptr) {
  unsigned short scratch = 0;
  // A copy of exactly that size, so that a read behind it is found.
  std::unique_ptr<char[]> const exact(new char[bytes.size()]);
  bytes.copy(exact.get(), bytes.size());
  return XoMultiByte2WChar(code != nullptr ? code : &scratch, exact.get(), bytes.size());
}

/// The encoding of a code worked out from its bits, of up to 31.
std::string Encoded(std::uint32_t code) {
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  std::string tail;
  unsigned room = 0x3F;
  while (code > room) {
    tail.insert(tail.begin(), static_cast<char>(0x80 + code % 64));
    code /= 64;
    room /= 2;
    if (room == 0x1F) continue;
  }
  // As many top bits as there are bytes, then a zero.
  unsigned const length = static_cast<unsigned>(tail.size()) + 1;
  unsigned const lead = (0xFF00u >> length & 0xFF) | code;
  return std::string(1, static_cast<char>(lead)) + tail;
}

std::string Encoded(Units const& units) {
  std::string bytes;
  for (unsigned short const unit : units) bytes += Encoded(std::uint32_t{unit});
  return bytes;
}

// One character in.

TEST(MultiByteDecode, FirstAndLastCodeOfEachLength) {
  struct Case {
    std::string_view bytes;
    std::uint32_t code;
  } const cases[] = {
      {"\x00"sv, 0},
      {"\x7F"sv, 0x7F},
      {"\xC2\x80"sv, 0x80},
      {"\xDF\xBF"sv, 0x7FF},
      {"\xE0\xA0\x80"sv, 0x800},
      {"\xEF\xBF\xBF"sv, 0xFFFF},
      {"\xF0\x90\x80\x80"sv, 0x10000},
      {"\xF7\xBF\xBF\xBF"sv, 0x1FFFFF},
      {"\xF8\x88\x80\x80\x80"sv, 0x200000},
      {"\xFB\xBF\xBF\xBF\xBF"sv, 0x3FFFFFF},
      {"\xFC\x84\x80\x80\x80\x80"sv, 0x4000000},
      {"\xFD\xBF\xBF\xBF\xBF\xBF"sv, 0x7FFFFFFF},
      {"\xED\xA0\x80"sv, 0xD800},
      {"\xF0\x9F\x98\x80"sv, 0x1F600},
  };
  for (Case const& each : cases) {
    unsigned short code = 0x5555;
    EXPECT_EQ(Decode(each.bytes, &code), static_cast<int>(each.bytes.size())) << each.code;
    EXPECT_EQ(code, each.code % 65536);
    // The helper of the other tests agrees.
    EXPECT_EQ(Encoded(each.code), each.bytes);
  }
}

TEST(MultiByteDecode, OverLongFormsAreRejected) {
  for (std::string_view const bytes :
       {"\xC0\x80"sv, "\xC1\xBF"sv, "\xE0\x80\x80"sv, "\xE0\x9F\xBF"sv, "\xF0\x80\x80\x80"sv,
        "\xF0\x8F\xBF\xBF"sv, "\xF8\x87\xBF\xBF\xBF"sv, "\xFC\x83\xBF\xBF\xBF\xBF"sv,
        "\xFC\x80\x80\x80\x80\x80"sv}) {
    EXPECT_EQ(Decode(bytes), -1) << testing::PrintToString(bytes);
  }
}

TEST(MultiByteDecode, WrongBytesAreRejected) {
  for (std::string_view const bytes :
       {"\x80"sv, "\xBF"sv, "\x80\x80\x80\x80\x80\x80\x80\x80"sv, "\xFE\x80\x80\x80\x80\x80\x80"sv,
        "\xFF\xBF\xBF\xBF\xBF\xBF\xBF"sv, "\xC3\x41"sv, "\xC3\xC3"sv, "\xE2\x82\x41"sv,
        "\xE2\x41\xAC"sv, "\xF0\x9F\x98\xC0"sv}) {
    EXPECT_EQ(Decode(bytes), -1) << testing::PrintToString(bytes);
  }
}

TEST(MultiByteDecode, SequenceThatTheLimitCutsIsRejected) {
  for (std::uint32_t const code : {0x80u, 0x800u, 0x10000u, 0x200000u, 0x4000000u}) {
    std::string const whole = Encoded(code);
    for (std::size_t cut = 1; cut < whole.size(); ++cut) {
      EXPECT_EQ(Decode(std::string_view(whole).substr(0, cut)), -1) << code << ' ' << cut;
    }
    // What stands behind the limit does not help.
    unsigned short wide = 0;
    EXPECT_EQ(XoMultiByte2WChar(&wide, whole.data(), whole.size() - 1), -1);
    EXPECT_EQ(XoMultiByte2WChar(&wide, whole.data(), ULLONG_MAX), static_cast<int>(whole.size()));
  }
}

TEST(MultiByteDecode, OfNothing) {
  unsigned short code = 0x5555;
  EXPECT_EQ(XoMultiByte2WChar(&code, nullptr, 10), 0);
  EXPECT_EQ(XoMultiByte2WChar(&code, nullptr, 0), 0);
  char bytes[] = "a";
  EXPECT_EQ(XoMultiByte2WChar(&code, bytes, 0), -1);
  EXPECT_EQ(code, 0x5555);
  EXPECT_EQ(XoMultiByte2WChar(nullptr, bytes, 1), 1);
}

// One character out.

TEST(MultiByteEncode, EveryCodeOf16BitsComesBack) {
  for (unsigned code = 0; code < 65536; ++code) {
    char bytes[8] = {'#', '#', '#', '#', '#', '#', '#', '#'};
    std::string const expected = Encoded(std::uint32_t{code});
    int const length = XoWChar2MultiByte(bytes, static_cast<wchar_t>(code));
    ASSERT_EQ(length, static_cast<int>(expected.size())) << code;
    ASSERT_EQ(std::string(bytes, expected.size()), expected) << code;
    ASSERT_EQ(bytes[length], '#');
    unsigned short back = 0;
    ASSERT_EQ(XoMultiByte2WChar(&back, bytes, expected.size()), length);
    ASSERT_EQ(back, code);
  }
}

TEST(MultiByteEncode, CodesAbove16Bits) {
  if (sizeof(wchar_t) < 4) GTEST_SKIP() << "wchar_t has 16 bits";
  for (std::uint32_t const code :
       {0x10000u, 0x1F600u, 0x1FFFFFu, 0x200000u, 0x3FFFFFFu, 0x4000000u, 0x7FFFFFFFu}) {
    char bytes[8] = {};
    std::string const expected = Encoded(code);
    EXPECT_EQ(XoWChar2MultiByte(bytes, static_cast<wchar_t>(code)),
              static_cast<int>(expected.size()));
    EXPECT_EQ(bytes, expected);
  }
  char bytes[8] = "#";
  EXPECT_EQ(XoWChar2MultiByte(bytes, static_cast<wchar_t>(0x80000000u)), -1);
  EXPECT_EQ(XoWChar2MultiByte(bytes, static_cast<wchar_t>(0xFFFFFFFFu)), -1);
  EXPECT_EQ(bytes[0], '#');
}

TEST(MultiByteEncode, ToNowhere) { EXPECT_EQ(XoWChar2MultiByte(nullptr, L'a'), 0); }

// Arrays.

TEST(MultiByteArray, DecodesAndCounts) {
  char bytes[] = "a\xC3\xA9\xE2\x82\xAC";
  unsigned short wide[5] = {9, 9, 9, 9, 9};
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 5, bytes, 6), 3);
  EXPECT_EQ(Units(wide, wide + 5), (Units{'a', 0xE9, 0x20AC, 9, 9}));
}

TEST(MultiByteArray, CountsBeyondTheCapacity) {
  char bytes[] = "abcd";
  unsigned short wide[3] = {9, 9, 9};
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 2, bytes, 4), 4);
  EXPECT_EQ(Units(wide, wide + 3), (Units{'a', 'b', 9}));
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 0, bytes, 4), 4);
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, -1, bytes, 4), 4);
  EXPECT_EQ(XoMultiByteStr2WCharStr(nullptr, 10, bytes, 4), 4);
  EXPECT_EQ(wide[0], 'a');
}

TEST(MultiByteArray, DecodesZerosAsCharacters) {
  unsigned short wide[3] = {9, 9, 9};
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, "a\0b", 3), 3);
  EXPECT_EQ(Units(wide, wide + 3), (Units{'a', 0, 'b'}));
}

TEST(MultiByteArray, OfNothingOrSomethingWrong) {
  unsigned short wide[3] = {};
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, "abc", 0), 0);
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, "abc", -5), 0);
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, nullptr, 3), 0);
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, "ab\xC3", 3), -1);
  EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, "\xC0\x80", 2), -1);
}

// Strings in.

int ToString(std::string_view bytes, XoString& text) {
  std::unique_ptr<char[]> const exact(new char[bytes.size()]);
  bytes.copy(exact.get(), bytes.size());
  return XoMBS2XoString(exact.get(), text, static_cast<int>(bytes.size()));
}

TEST(MultiByteToString, MakesUnicodeTextAndKeepsTheLanguage) {
  XoString text("before");
  text.language = kGerman;
  EXPECT_EQ(ToString("a\xC3\xA9\xE2\x82\xAC", text), 6);
  EXPECT_EQ(text.codeSet, kUnicode);
  EXPECT_EQ(text.language, kGerman);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 0xE9, 0x20AC}));
}

TEST(MultiByteToString, LeavesANullTextNull) {
  XoString text;
  text.SetNullValue();
  EXPECT_EQ(ToString("a\xC3\xA9", text), 3);
  EXPECT_EQ(text.IsNullValue(), 1);
  EXPECT_EQ(text.codeSet, kUnicode);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 0xE9}));
}

TEST(MultiByteToString, OfNothingEmptiesTheText) {
  for (int const length : std::initializer_list<int>{0, -1, INT_MIN}) {
    XoString text("before");
    text.language = kGerman;
    EXPECT_EQ(XoMBS2XoString("abc", text, length), 0);
    EXPECT_EQ(text.IsEmpty(), 1);
    EXPECT_EQ(text.codeSet, kUnicode);
    EXPECT_EQ(text.language, kGerman);
  }
  XoString text("before");
  EXPECT_EQ(XoMBS2XoString(nullptr, text, 5), 0);
  EXPECT_EQ(text.IsEmpty(), 1);
}

TEST(MultiByteToString, EndsAtAZero) {
  XoString text;
  EXPECT_EQ(ToString("ab\0cd"sv, text), 2);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 'b'}));
  EXPECT_EQ(ToString("\0ab"sv, text), 0);
  EXPECT_EQ(text.IsEmpty(), 1);
}

TEST(MultiByteToString, EndsAtACodeThatIsCutToZero) {
  // 0x10000, 0x200000, 0x4000000 and 0x7FFF0000: their low 16 bits are 0.
  for (std::string_view const zero : {"\xF0\x90\x80\x80"sv, "\xF8\x88\x80\x80\x80"sv,
                                      "\xFC\x84\x80\x80\x80\x80"sv, "\xFD\xBF\xBF\xB0\x80\x80"sv}) {
    // Neither it nor what stands behind is counted, looked at or kept, not even what is wrong.
    for (std::string_view const behind : {""sv, "cd"sv, "\xFF"sv}) {
      std::string const bytes = "ab" + std::string(zero) + std::string(behind);
      XoString text("before");
      EXPECT_EQ(ToString(bytes, text), 2);
      EXPECT_EQ(UnitsOf(text), (Units{'a', 'b'}));
      EXPECT_EQ(text.size, 6);
      EXPECT_EQ(XoMultiByteString2XoString(bytes.data(), text, static_cast<int>(bytes.size())), 2);
      EXPECT_EQ(text.size, 6);
      EXPECT_EQ(XoMultiByteString2XoString(XoString(bytes.c_str()), text), 2);
      EXPECT_EQ(UnitsOf(text), (Units{'a', 'b'}));
      EXPECT_EQ(text.size, 6);
    }
    XoString text("before");
    EXPECT_EQ(ToString(std::string(zero) + "ab", text), 0);
    EXPECT_EQ(text.text, nullptr);
    EXPECT_EQ(text.size, 0);
    // An array holds it as a character.
    unsigned short wide[3] = {9, 9, 9};
    std::string const bytes = "a" + std::string(zero) + "b";
    EXPECT_EQ(XoMultiByteStr2WCharStr(wide, 3, bytes.data(), static_cast<int>(bytes.size())), 3);
    EXPECT_EQ(Units(wide, wide + 3), (Units{'a', 0, 'b'}));
  }
}

TEST(MultiByteToString, CutsCodesTo16Bits) {
  XoString text;
  EXPECT_EQ(ToString("\xF0\x9F\x98\x80", text), 4);
  EXPECT_EQ(UnitsOf(text), (Units{0xF600}));
}

TEST(MultiByteToString, WrongSequenceKeepsWhatStandsBefore) {
  XoString text;
  EXPECT_EQ(ToString("ab\xC3(cd", text), -1);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 'b'}));
  EXPECT_EQ(ToString("ab\xE2\x82", text), -1);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 'b'}));
  EXPECT_EQ(ToString("\xC0\x80", text), -1);
  EXPECT_EQ(text.IsEmpty(), 1);
  // Far behind the start as well.
  std::string const many(1000, 'x');
  EXPECT_EQ(ToString(many + "\xFF", text), -1);
  EXPECT_EQ(text.Len(), 1000);
}

TEST(MultiByteToString, ReadsAtMost32767Bytes) {
  XoString text;
  EXPECT_EQ(ToString(std::string(32767, 'x'), text), 32767);
  // A wide string holds two characters less.
  EXPECT_EQ(text.Len(), 32765);
  EXPECT_EQ(ToString(std::string(32768, 'x'), text), -2);
  EXPECT_EQ(text.Len(), 32765);
  EXPECT_EQ(ToString(std::string(40000, 'x'), text), -2);
  EXPECT_EQ(text.Len(), 32765);
  EXPECT_EQ(ToString(std::string(70000, 'x'), text), -2);
  EXPECT_EQ(text.Len(), 32765);
}

TEST(MultiByteToString, LimitIsOnTheBytesNotTheCharacters) {
  auto const repeated = [](std::string const& bytes, int times) {
    std::string all;
    for (int time = 0; time < times; ++time) all += bytes;
    return all;
  };
  XoString text;
  // 13,333 characters of three bytes: read up to the one that reaches the limit, the 10,923rd.
  EXPECT_EQ(ToString(repeated("\xE2\x82\xAC", 13333), text), -2);
  EXPECT_EQ(text.Len(), 10923);
  EXPECT_EQ(ToString(repeated("\xE2\x82\xAC", 10922), text), 32766);
  EXPECT_EQ(text.Len(), 10922);
  EXPECT_EQ(ToString(repeated("\xC3\xA9", 20000), text), -2);
  EXPECT_EQ(text.Len(), 16384);
  // A wrong sequence behind the limit is not seen.
  EXPECT_EQ(ToString(std::string(32768, 'x') + "\xFF", text), -2);
  // A text of exactly the limit is too long already.
  EXPECT_EQ(ToString(repeated("\xC3\xA9", 16384), text), -2);
  EXPECT_EQ(text.Len(), 16384);
}

TEST(MultiByteToString, SecondNameIsTheSame) {
  XoString text;
  EXPECT_EQ(XoMultiByteString2XoString("a\xC3\xA9", text, 3), 3);
  EXPECT_EQ(UnitsOf(text), (Units{'a', 0xE9}));
  XoString const bytes("\xE2\x82\xAC");
  EXPECT_EQ(XoMultiByteString2XoString(bytes, text), 3);
  EXPECT_EQ(UnitsOf(text), (Units{0x20AC}));
  EXPECT_EQ(XoMultiByteString2XoString(XoString(""), text), 0);
  EXPECT_EQ(text.IsEmpty(), 1);
}

TEST(MultiByteToString, BytesMayBeTheTextItself) {
  XoString text("x\xE2\x82\xAC");
  EXPECT_EQ(XoMultiByteString2XoString(text, text), 4);
  EXPECT_EQ(UnitsOf(text), (Units{'x', 0x20AC}));
  XoString other("x\xE2\x82\xAC");
  EXPECT_EQ(XoMBS2XoString(other.StrGet() + 1, other, 3), 3);
  EXPECT_EQ(UnitsOf(other), (Units{0x20AC}));
}

// Lengths.

TEST(MultiByteLength, AsciiOfTheFirstSetsIsMeasuredWhole) {
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 5}) {
    XoString text("abcdef");
    text.codeSet = set;
    EXPECT_EQ(XoMBSLength(text, 1), 6) << int{set};
    EXPECT_EQ(XoMBSLength(text, 65535), 6) << int{set};
    EXPECT_EQ(XoMBSLength(text, 0), 0) << int{set};
  }
  for (unsigned char const set : std::initializer_list<unsigned char>{6, 15, 26, 27}) {
    XoString text("abcdef");
    text.codeSet = set;
    EXPECT_EQ(XoMBSLength(text, 1), 1) << int{set};
    EXPECT_EQ(XoMBSLength(text, 65535), 6) << int{set};
  }
}

TEST(MultiByteLength, CountsTheBytesOfEachCharacter) {
  XoString const latin(
      "a\xE9"
      "b");
  EXPECT_EQ(XoMBSLength(latin, 65535), 4);
  EXPECT_EQ(XoMBSLength(latin, 2), 3);
  EXPECT_EQ(XoMBSLength(latin, 1), 1);
  EXPECT_EQ(XoMBSLength(latin, 0), 0);
  XoString const wide = TextOf({0x7F, 0x80, 0x7FF, 0x800, 0xFFFF});
  EXPECT_EQ(XoMBSLength(wide, 65535), 1 + 2 + 2 + 3 + 3);
  EXPECT_EQ(XoMBSLength(wide, 3), 1 + 2 + 2);
  EXPECT_EQ(XoMBSLength(wide, 0), 0);
  // In Unicode, ASCII does not make a difference.
  EXPECT_EQ(XoMBSLength(TextOf({'a', 'b'}), 1), 1);
  EXPECT_EQ(XoMBSLength(XoString(""), 10), 0);
  EXPECT_EQ(XoMBSLength(XoString(kUnicode, kNeutral), 10), 0);
}

// Strings out.

struct Out {
  int result;
  std::string bytes;
};

/// Encodes into `size` bytes that hold '#' before.
Out Encode(XoString const& text, int size) {
  std::size_t const room = size > 0 ? static_cast<std::size_t>(size) : 0;
  std::unique_ptr<char[]> const exact(new char[room]);
  std::fill_n(exact.get(), room, '#');
  int const result = XoString2XoMBS(text, exact.get(), size);
  return {result, std::string(exact.get(), room)};
}

TEST(StringToMultiByte, AsciiFillsTheRestWithZeros) {
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 6, 26}) {
    XoString text("abc");
    text.codeSet = set;
    Out const out = Encode(text, 6);
    EXPECT_EQ(out.result, 3) << int{set};
    EXPECT_EQ(out.bytes, "abc\0\0\0"s) << int{set};
  }
}

TEST(StringToMultiByte, OtherTextEndsWithOneTerminator) {
  XoString cp866("abc");
  cp866.codeSet = 27;
  Out const out = Encode(cp866, 6);
  EXPECT_EQ(out.result, 3);
  EXPECT_EQ(out.bytes, "abc\0##"s);
  Out const latin = Encode(XoString("a\xE9"), 6);
  EXPECT_EQ(latin.result, 3);
  EXPECT_EQ(latin.bytes, "a\xC3\xA9\0##"s);
  Out const wide = Encode(TextOf({'a', 0x7F, 0x20AC}), 8);
  EXPECT_EQ(wide.result, 5);
  EXPECT_EQ(wide.bytes, "a\x7F\xE2\x82\xAC\0##"s);
}

TEST(StringToMultiByte, ExactSizeHasNoTerminator) {
  Out const ascii = Encode(XoString("abc"), 3);
  EXPECT_EQ(ascii.result, 3);
  EXPECT_EQ(ascii.bytes, "abc");
  Out const wide = Encode(TextOf({'a', 0x20AC}), 4);
  EXPECT_EQ(wide.result, 4);
  EXPECT_EQ(wide.bytes, "a\xE2\x82\xAC");
}

TEST(StringToMultiByte, AsciiThatDoesNotFitGivesTheTotal) {
  for (int const size : std::initializer_list<int>{0, 1, 2}) {
    Out const out = Encode(XoString("abc"), size);
    EXPECT_EQ(out.result, -3) << size;
    EXPECT_EQ(out.bytes, "abc"s.substr(0, static_cast<std::size_t>(size))) << size;
  }
}

TEST(StringToMultiByte, OtherTextThatDoesNotFitGivesWhatDid) {
  XoString const text = TextOf({'a', 0x20AC, 0xE9});
  int const fitted[] = {0, -1, -1, -1, -4, -4, 6, 6};
  for (int size = 0; size < 8; ++size) EXPECT_EQ(Encode(text, size).result, fitted[size]) << size;
  // Nothing is written of a sequence that does not fit.
  EXPECT_EQ(Encode(text, 3).bytes, "a##");
  EXPECT_EQ(Encode(text, 5).bytes, "a\xE2\x82\xAC#");
}

TEST(StringToMultiByte, LateAccentTakesTheGeneralWay) {
  // The bytes before do not fit either.
  EXPECT_EQ(Encode(XoString("abc\xE9"), 2).result, -2);
  EXPECT_EQ(Encode(XoString("abc\xE9"), 4).result, -3);
  EXPECT_EQ(Encode(XoString("abc\xE9"), 5).result, 5);
}

TEST(StringToMultiByte, OfAnEmptyText) {
  Out const narrow = Encode(XoString(""), 3);
  EXPECT_EQ(narrow.result, 0);
  EXPECT_EQ(narrow.bytes, "\0\0\0"s);
  Out const wide = Encode(XoString(kUnicode, kNeutral), 3);
  EXPECT_EQ(wide.result, 0);
  EXPECT_EQ(wide.bytes, "\0##"s);
  EXPECT_EQ(Encode(XoString(""), 0).result, 0);
  EXPECT_EQ(Encode(XoString(kUnicode, kNeutral), 0).result, 0);
}

TEST(StringToMultiByte, ToNowhere) {
  EXPECT_EQ(XoString2XoMBS(XoString("abc"), nullptr, 10), -3);
  EXPECT_EQ(XoString2XoMBS(XoString(""), nullptr, 10), 0);
  EXPECT_EQ(XoString2XoMBS(TextOf({0x20AC}), nullptr, 10), 0);
  char byte = '#';
  EXPECT_EQ(XoString2XoMBS(XoString("abc"), &byte, -1), -3);
  EXPECT_EQ(XoString2XoMBS(XoString("abc"), &byte, INT_MIN), -3);
  EXPECT_EQ(byte, '#');
}

TEST(StringToMultiByte, ComesFromEveryCodeSet) {
  XoString ebcdic("\xC1\x82");
  ebcdic.codeSet = kEbcdic;
  EXPECT_EQ(Encode(ebcdic, 3).bytes, "Ab\0"s);
  XoString cyrillic("\xB6");
  cyrillic.codeSet = kCyrillic;
  EXPECT_EQ(Encode(cyrillic, 3).bytes, "\xD0\x96\0"s);
}

// Buffers.

TEST(StringToMultiByteString, UsesTheBufferGiven) {
  char buffer[16];
  char* bytes = buffer;
  int size = 16;
  EXPECT_EQ(XoString2MultiByteString(TextOf({'a', 0x20AC}), bytes, size), 4);
  EXPECT_EQ(bytes, buffer);
  EXPECT_EQ(size, 16);
  EXPECT_STREQ(buffer, "a\xE2\x82\xAC");
  size = 4;
  EXPECT_EQ(XoString2MultiByteString(TextOf({'a', 0x20AC}), bytes, size), 4);
  EXPECT_EQ(size, 4);
  EXPECT_EQ(XoString2MultiByteString(XoString(""), bytes, size), 0);
  EXPECT_EQ(bytes, buffer);
}

TEST(StringToMultiByteString, BufferTooSmallTellsTheLength) {
  for (XoString const& text : {XoString("abcdef"), TextOf({0x20AC, 0x20AC})}) {
    char buffer[8] = {};
    char* bytes = buffer;
    for (int given = 1; given < 6; ++given) {
      int size = given;
      EXPECT_EQ(XoString2MultiByteString(text, bytes, size), -1) << given;
      EXPECT_EQ(size, 6) << given;
      EXPECT_EQ(bytes, buffer);
      EXPECT_EQ(buffer[given], 0);
    }
  }
}

TEST(StringToMultiByteString, AllocatesWithoutABuffer) {
  // Texts below and above 2048 bytes, ASCII and not.
  for (std::size_t const characters : {0u, 1u, 682u, 683u, 2047u, 2048u, 2049u, 30000u}) {
    for (unsigned short const unit : std::initializer_list<unsigned short>{
             static_cast<unsigned short>('x'), static_cast<unsigned short>(0x20AC)}) {
      Units const units(characters, unit);
      for (bool const narrow : {false, true}) {
        if (narrow && unit != 'x') continue;
        XoString text = TextOf(units);
        if (narrow) text.MapToCodeSet(kLatin1);
        std::string const expected = Encoded(units);
        char* bytes = nullptr;
        int size = 77;
        int const length = XoString2MultiByteString(text, bytes, size);
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(length, static_cast<int>(expected.size()));
        EXPECT_EQ(size, length + 1);
        EXPECT_EQ(bytes, expected);
        delete[] bytes;
      }
    }
  }
}

TEST(StringToMultiByteString, BufferWithoutSizeIsNone) {
  char buffer[4] = "abc";
  for (int const given : std::initializer_list<int>{0, -1}) {
    char* bytes = buffer;
    int size = given;
    EXPECT_EQ(XoString2MultiByteString(XoString("xyz"), bytes, size), 3);
    EXPECT_NE(bytes, buffer);
    EXPECT_EQ(size, 4);
    EXPECT_STREQ(bytes, "xyz");
    EXPECT_STREQ(buffer, "abc");
    delete[] bytes;
  }
}

// Laws.

class MultiByteLaw : public RandomTest {
 protected:
  Units AnyUnits(unsigned most) {
    Units units;
    for (unsigned left = Below(most); left != 0; --left) {
      unsigned const limit = OneIn(2) ? 127 : OneIn(2) ? 0x7FF : 65535;
      units.push_back(static_cast<unsigned short>(1 + Below(limit)));
    }
    return units;
  }
};

TEST_F(MultiByteLaw, TextGoesOutAndComesBack) {
  for (int run = 0; run < 3000; ++run) {
    Units const units = AnyUnits(OneIn(20) ? 1500 : 30);
    XoString const text = TextOf(units);
    std::string const expected = Encoded(units);
    Out const out = Encode(text, static_cast<int>(expected.size()));
    ASSERT_EQ(out.result, static_cast<int>(expected.size()));
    ASSERT_EQ(out.bytes, expected);
    ASSERT_EQ(XoMBSLength(text, 65535), out.result);
    XoString back;
    ASSERT_EQ(ToString(expected, back), out.result);
    ASSERT_EQ(UnitsOf(back), units);
    Units wide(units.size() + 1);
    ASSERT_EQ(XoMultiByteStr2WCharStr(wide.data(), static_cast<int>(wide.size()), expected.data(),
                                      static_cast<int>(expected.size())),
              static_cast<int>(units.size()));
    wide.pop_back();
    ASSERT_EQ(wide, units);
  }
}

/// One sequence read as the forms of the table say.
int DecodeByForms(std::vector<unsigned char> const& bytes, unsigned short& code) {
  unsigned const lead = bytes[0];
  std::uint32_t const smallest[] = {0, 0x80, 0x800, 0x10000, 0x200000, 0x4000000};
  unsigned length = 1;
  if (lead >= 0x80) {
    length = 0;
    while (length < 8 && (lead & (0x80u >> length)) != 0) ++length;
    if (length < 2 || length > 6) return -1;
  }
  if (length > bytes.size()) return -1;
  std::uint32_t whole = length == 1 ? lead : lead & (0x7Fu >> length);
  for (unsigned place = 1; place < length; ++place) {
    if (bytes[place] < 0x80 || bytes[place] > 0xBF) return -1;
    whole = whole * 64 + (bytes[place] - 0x80u);
  }
  if (whole < smallest[length - 1]) return -1;
  code = static_cast<unsigned short>(whole);
  return static_cast<int>(length);
}

TEST_F(MultiByteLaw, AnyBytesAreReadOrRejectedByTheForms) {
  for (int run = 0; run < 300000; ++run) {
    std::vector<unsigned char> bytes = Bytes(1 + Below(8));
    // Mostly followers behind a lead.
    for (std::size_t place = 1; place < bytes.size(); ++place) {
      if (!OneIn(8)) bytes[place] = static_cast<unsigned char>(0x80 | (bytes[place] & 0x3F));
    }
    unsigned short expected = 0, code = 0;
    int const length = DecodeByForms(bytes, expected);
    std::string const text(bytes.begin(), bytes.end());
    ASSERT_EQ(Decode(text, &code), length) << testing::PrintToString(bytes);
    ASSERT_EQ(code, expected);
  }
}

TEST_F(MultiByteLaw, AnyBytesMakeAText) {
  for (int run = 0; run < 20000; ++run) {
    std::vector<unsigned char> const bytes = Bytes(1 + Below(20));
    Units expected;
    int result = 0;
    for (std::size_t place = 0; place < bytes.size();) {
      unsigned short code = 0;
      int const length =
          DecodeByForms({bytes.begin() + static_cast<std::ptrdiff_t>(place), bytes.end()}, code);
      if (length < 0) result = -1;
      if (length < 0 || code == 0) break;
      expected.push_back(code);
      place += static_cast<std::size_t>(length);
      result = static_cast<int>(place);
    }
    XoString text;
    ASSERT_EQ(ToString(std::string(bytes.begin(), bytes.end()), text), result);
    ASSERT_EQ(UnitsOf(text), expected);
  }
}

}  // namespace
}  // namespace xo::test

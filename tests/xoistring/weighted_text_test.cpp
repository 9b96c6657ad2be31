#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include "tests/base/random_test.hpp"
#include "tests/xoistring/weight_oracle.hpp"

namespace xo::test {
namespace {

template <class Text>
class WeightedText : public RandomTest {
 protected:
  std::string AnyText(unsigned longest) {
    std::string text;
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text += OneIn(3) ? static_cast<char>(1 + Below(255)) : "ab 0"[Below(4)];
    }
    return text;
  }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(WeightedText, BothClasses);

template <class Text>
std::string Show(Text const& text) {
  EXPECT_EQ(text.Len(), std::string(text.StrGet()).size());
  EXPECT_EQ(text.Len() == 0, text.text == nullptr) << "an empty text keeps no buffer";
  return text.StrGet();
}

TYPED_TEST(WeightedText, TakesSixteenBytes) {
  EXPECT_EQ(sizeof(TypeParam), 16u);
  TypeParam value;
  EXPECT_EQ(static_cast<void*>(&value), static_cast<void*>(&value.text));
  EXPECT_EQ(static_cast<void*>(&value.weighted),
            static_cast<void*>(static_cast<char*>(static_cast<void*>(&value)) + sizeof(void*)));
}

TYPED_TEST(WeightedText, EmptySourcesKeepNoBuffer) {
  for (TypeParam const& empty :
       {TypeParam(), TypeParam(""), TypeParam('\0'), TypeParam(static_cast<char const*>(nullptr)),
        TypeParam("abc", 0), TypeParam(static_cast<char const*>(nullptr), 5), TypeParam("", 5),
        TypeParam(TypeParam())}) {
    EXPECT_EQ(empty.text, nullptr);
    EXPECT_EQ(empty.weighted, 0);
    EXPECT_TRUE(!empty);
    EXPECT_EQ(empty.Len(), 0u);
    EXPECT_STREQ(empty.StrGet(), "");
  }
}

TYPED_TEST(WeightedText, AnObjectOfZerosIsAnEmptyText) {
  // As of a caller that clears memory and knows the fields alone.
  TypeParam zeros;
  std::memset(static_cast<void*>(&zeros), 0, sizeof zeros);
  EXPECT_TRUE(zeros == TypeParam());
  EXPECT_TRUE(TypeParam() == zeros);
  EXPECT_TRUE(zeros < TypeParam("a"));
  EXPECT_TRUE(TypeParam("a") > zeros);
  TypeParam value("abcdefghi");
  char* const taken = std::exchange(value.text, nullptr);
  EXPECT_TRUE(value == zeros);
  EXPECT_TRUE(value < TypeParam("a"));
  value.text = taken;
  EXPECT_TRUE(value == TypeParam("abcdefghi"));
}

TYPED_TEST(WeightedText, ConstructorsTakeTextAndNumbers) {
  EXPECT_EQ(Show(TypeParam("abc")), "abc");
  EXPECT_EQ(Show(TypeParam("abc", 2)), "ab");
  EXPECT_EQ(Show(TypeParam("abc", 65535)), "abc");
  EXPECT_EQ(Show(TypeParam('x')), "x");
  EXPECT_EQ(Show(TypeParam('\xDF')), "\xDF");
  EXPECT_EQ(Show(TypeParam(static_cast<short>(-32768))), "-32768");
  EXPECT_EQ(Show(TypeParam(INT_MIN)), "-2147483648");
  EXPECT_EQ(Show(TypeParam(4294967295u)), "4294967295");
  EXPECT_EQ(Show(TypeParam(LLONG_MIN)), "-9223372036854775808");
  EXPECT_EQ(Show(TypeParam(ULLONG_MAX)), "18446744073709551615");
  EXPECT_EQ(Show(TypeParam(0)), "0");
}

TYPED_TEST(WeightedText, FloatingPointNumbersHaveSixDecimals) {
  EXPECT_EQ(Show(TypeParam(1.0)), "1.000000");
  EXPECT_EQ(Show(TypeParam(-2.5)), "-2.500000");
  EXPECT_EQ(Show(TypeParam(0.0000005)), "0.000000");
  EXPECT_EQ(Show(TypeParam(0.0000015)), "0.000002");
  EXPECT_EQ(Show(TypeParam(-0.0)), "-0.000000");
  EXPECT_EQ(Show(TypeParam(1e15)), "1000000000000000.000000");
  EXPECT_EQ(Show(TypeParam(std::numeric_limits<double>::infinity())), "inf");
  EXPECT_EQ(Show(TypeParam(std::nan(""))), "nan");
  std::string const longest = Show(TypeParam(-std::numeric_limits<double>::max()));
  EXPECT_EQ(longest.size(), 317u);
  EXPECT_EQ(longest.substr(0, 10), "-179769313");
}

TYPED_TEST(WeightedText, OnlyAssignmentCarriesTheWeightedMark) {
  TypeParam source("ab");
  source.weighted = 0x80;
  TypeParam const copy(source);
  EXPECT_EQ(Show(copy), "ab");
  EXPECT_EQ(copy.weighted, 0);
  EXPECT_NE(copy.text, source.text);
  TypeParam target("held before");
  target = source;
  EXPECT_EQ(Show(target), "ab");
  EXPECT_EQ(target.weighted, 0x80);
  target = TypeParam();
  EXPECT_EQ(Show(target), "");
  EXPECT_EQ(target.weighted, 0);
}

TYPED_TEST(WeightedText, SelfAssignmentDoesNothing) {
  TypeParam value("ab");
  value.weighted = 0x80;
  char const* const before = value.text;
  TypeParam& same = value;
  value = same;
  EXPECT_EQ(value.text, before);
  EXPECT_EQ(value.weighted, 0x80);
}

TYPED_TEST(WeightedText, EmptyTextsAreEqualAndComeFirst) {
  EXPECT_TRUE(TypeParam() == TypeParam());
  EXPECT_TRUE(TypeParam() < TypeParam("a"));
  EXPECT_TRUE(TypeParam("a") > TypeParam());
  EXPECT_TRUE(TypeParam() != TypeParam("a"));
}

TYPED_TEST(WeightedText, ComparisonReadsTheMarksOfBoth) {
  TypeParam letter("A"), weight("\x54");
  EXPECT_TRUE(letter != weight);
  weight.weighted = 0x80;
  EXPECT_TRUE(letter == weight);
  EXPECT_TRUE(weight == letter);
  EXPECT_TRUE(weight <= letter);
}

TYPED_TEST(WeightedText, BytesAreReachedByIndex) {
  TypeParam text("abc");
  text[1] = 'X';
  EXPECT_EQ(Show(text), "aXc");
  EXPECT_EQ(text[3], '\0');
  EXPECT_EQ(std::as_const(text)[0], 'a');
  TypeParam empty;
  empty[0] = 'x';
  EXPECT_EQ(empty[0], '\0');
  EXPECT_EQ(std::as_const(empty)[0], '\0');
}

TYPED_TEST(WeightedText, NumbersReadAsDecimal) {
  EXPECT_EQ(static_cast<int>(TypeParam(" -12x")), -12);
  EXPECT_EQ(static_cast<int>(TypeParam("010")), 10);
  EXPECT_EQ(static_cast<int>(TypeParam("0x10")), 0);
  EXPECT_EQ(static_cast<int>(TypeParam("99999999999")), INT_MAX);
  EXPECT_EQ(static_cast<short>(TypeParam("65537")), 1);
  EXPECT_EQ(static_cast<short>(TypeParam("-5")), -5);
  EXPECT_EQ(static_cast<long long>(TypeParam("-9223372036854775808")), LLONG_MIN);
  EXPECT_EQ(static_cast<long>(TypeParam("-5 ")), -5);
  EXPECT_EQ(static_cast<long>(TypeParam("99999999999999999999")), LONG_MAX);
  EXPECT_EQ(static_cast<double>(TypeParam("2.5e2 ")), 250.0);
  EXPECT_EQ(static_cast<int>(TypeParam()), 0);
  EXPECT_EQ(static_cast<double>(TypeParam("abc")), 0.0);
}

TYPED_TEST(WeightedText, ConcatenatesBytes) {
  TypeParam text("ab");
  EXPECT_EQ(Show(text + TypeParam("cd")), "abcd");
  EXPECT_EQ(Show(text + TypeParam()), "ab");
  EXPECT_EQ(Show(TypeParam() + text), "ab");
  EXPECT_EQ(Show(TypeParam() + TypeParam()), "");
  EXPECT_EQ(Show(text + "cd"), "abcd");
  EXPECT_EQ(Show(text + 'c'), "abc");
  EXPECT_EQ(Show("cd" + text), "cdab");
  EXPECT_EQ(Show(text + static_cast<char const*>(nullptr)), "ab");
  EXPECT_EQ(&(text += text), &text);
  EXPECT_EQ(Show(text), "abab");
  char const* const before = text.text;
  text += TypeParam();
  EXPECT_EQ(text.text, before);
}

TYPED_TEST(WeightedText, GrowsBeyondTheLengthOfStrings) {
  TypeParam text(std::string(40000, 'a').c_str());
  text += text;
  EXPECT_EQ(text.Len(), 80000u);
  text.Insert(TypeParam("b"), 65535);
  EXPECT_EQ(text.text[65535], 'b');
  EXPECT_EQ(text.Len(), 80001u);
  // The greatest count means to the end.
  EXPECT_EQ(text.Copy(1).Len(), 80000u);
  text.Cut(1);
  EXPECT_EQ(Show(text), "a");
}

TYPED_TEST(WeightedText, CopiesParts) {
  TypeParam text("abc");
  text.weighted = 0x80;
  EXPECT_EQ(Show(text.Copy(0)), "abc");
  EXPECT_EQ(Show(text.Copy(1, 1)), "b");
  EXPECT_EQ(Show(text.Copy(1, 9)), "bc");
  EXPECT_EQ(Show(text.Copy(1, 0)), "");
  EXPECT_EQ(Show(text.Copy(3)), "");
  EXPECT_EQ(Show(text.Copy(65535)), "");
  EXPECT_EQ(Show(TypeParam().Copy(0)), "");
  EXPECT_EQ(text.Copy(0).weighted, 0);
}

TYPED_TEST(WeightedText, CutsParts) {
  auto const cut = [](unsigned short start, unsigned short count) {
    return Show(TypeParam("abc").Cut(start, count));
  };
  EXPECT_EQ(cut(1, 65535), "a");
  EXPECT_EQ(cut(0, 1), "bc");
  EXPECT_EQ(cut(1, 1), "ac");
  EXPECT_EQ(cut(2, 9), "ab");
  EXPECT_EQ(cut(0, 65535), "");
  EXPECT_EQ(cut(5, 1), "abc");
  EXPECT_EQ(cut(1, 0), "abc");
  EXPECT_EQ(Show(TypeParam().Cut(0)), "");
}

TYPED_TEST(WeightedText, InsertsUpToTheEnd) {
  auto const insert = [](char const* text, char const* other, unsigned short position) {
    return Show(TypeParam(text).Insert(TypeParam(other), position));
  };
  EXPECT_EQ(insert("abc", "xy", 0), "xyabc");
  EXPECT_EQ(insert("abc", "xy", 2), "abxyc");
  EXPECT_EQ(insert("abc", "xy", 3), "abcxy");
  EXPECT_EQ(insert("abc", "xy", 4), "abc");
  EXPECT_EQ(insert("abc", "", 1), "abc");
  EXPECT_EQ(insert("", "xy", 0), "xy");
  EXPECT_EQ(insert("", "xy", 1), "");
  TypeParam text("ab");
  text.Insert(text, 1);
  EXPECT_EQ(Show(text), "aabb");
}

TYPED_TEST(WeightedText, ReplacesWithoutGrowing) {
  auto const replace = [](char const* text, char const* other, unsigned short position) {
    return Show(TypeParam(text).Replace(TypeParam(other), position));
  };
  EXPECT_EQ(replace("ab", "xyz", 1), "ax");
  EXPECT_EQ(replace("abcd", "xy", 1), "axyd");
  EXPECT_EQ(replace("ab", "xy", 2), "ab");
  EXPECT_EQ(replace("ab", "", 0), "ab");
  EXPECT_EQ(replace("", "xy", 0), "");
  TypeParam text("abc");
  text.Replace(text, 1);
  EXPECT_EQ(Show(text), "aab");
}

TYPED_TEST(WeightedText, ExpandsAndFills) {
  EXPECT_EQ(Show(TypeParam("ab").Expand(4)), "ab  ");
  EXPECT_EQ(Show(TypeParam("ab").Expand(3, 'x')), "abx");
  EXPECT_EQ(Show(TypeParam("ab").Expand(2, 'x')), "ab");
  EXPECT_EQ(Show(TypeParam("ab").Expand(4, '\0')), "ab");
  EXPECT_EQ(Show(TypeParam().Expand(2, 'x')), "xx");
  EXPECT_EQ(TypeParam().Expand(65535).Len(), 65535u);
  EXPECT_EQ(Show(TypeParam("ab").Fill(3)), "   ");
  EXPECT_EQ(Show(TypeParam("ab").Fill(1, 'x')), "x");
  EXPECT_EQ(Show(TypeParam("ab").Fill(0, 'x')), "");
  EXPECT_EQ(Show(TypeParam("ab").Fill(3, '\0')), "");
}

TYPED_TEST(WeightedText, BlanksAndZerosChangePlaces) {
  EXPECT_EQ(Show(TypeParam(" 1 0\t").SpaceToZero()), "0100\t");
  EXPECT_EQ(Show(TypeParam("0100 ").ZeroToSpace()), " 1   ");
  EXPECT_EQ(Show(TypeParam().SpaceToZero().ZeroToSpace()), "");
}

/// Lower case by the list of ranges; `upper` asks for the other direction.
int OtherCase(int byte, bool upper) {
  if (!upper) {
    if (byte == 140) return 156;
    if (byte == 255) return 159;
    bool const changes = (byte >= 65 && byte <= 90) || (byte >= 192 && byte <= 222 && byte != 215);
    return changes ? byte + 32 : byte;
  }
  if (byte == 156) return 140;
  if (byte == 159) return 255;
  bool const changes = (byte >= 97 && byte <= 122) || (byte >= 224 && byte <= 254 && byte != 247);
  return changes ? byte - 32 : byte;
}

TYPED_TEST(WeightedText, CaseChangesByteByByte) {
  for (int byte = 1; byte < 256; ++byte) {
    TypeParam text(static_cast<char>(byte));
    EXPECT_EQ(Ordinal(TypeParam(text).ToLower()[0]), OtherCase(byte, false)) << byte;
    EXPECT_EQ(Ordinal(TypeParam(text).ToUpper()[0]), OtherCase(byte, true)) << byte;
  }
  EXPECT_EQ(Show(TypeParam("\xFF").ToLower()), "\x9F");
  EXPECT_EQ(Show(TypeParam("\x9F").ToUpper()), "\xFF");
  EXPECT_EQ(Show(TypeParam("\xDF").ToUpper()), "\xDF");
  EXPECT_EQ(Show(TypeParam().ToLower().ToUpper()), "");
}

TYPED_TEST(WeightedText, CaseChangesTheValueItself) {
  TypeParam text("aB");
  EXPECT_EQ(&text.ToLower(), &text);
  EXPECT_EQ(Show(text), "ab");
  EXPECT_EQ(&text.ToUpper(), &text);
  EXPECT_EQ(Show(text), "AB");
}

TYPED_TEST(WeightedText, SearchIsByBytes) {
  TypeParam const text("abcabc");
  EXPECT_EQ(text.SubStringPos(TypeParam("abc")), 0);
  EXPECT_EQ(text.SubStringPos(TypeParam("ca")), 2);
  EXPECT_EQ(text.SubStringPos(TypeParam("abcabcd")), -1);
  EXPECT_EQ(TypeParam("a").SubStringPos(TypeParam("A")), -1);
  EXPECT_EQ(TypeParam("\xE9").SubStringPos(TypeParam("e")), -1);
  EXPECT_EQ(text.SubStringPos(TypeParam()), -1);
  EXPECT_EQ(TypeParam().SubStringPos(text), -1);
  EXPECT_EQ(TypeParam().SubStringPos(TypeParam()), -1);
}

TYPED_TEST(WeightedText, EditsLikeAStringOfBytes) {
  for (int round = 0; round < 5000; ++round) {
    std::string model = this->AnyText(9);
    std::string const other = this->AnyText(4);
    TypeParam text(model.c_str());
    TypeParam const piece(other.c_str());
    auto const at = static_cast<unsigned short>(this->Below(11));
    auto const count = static_cast<unsigned short>(this->Below(11));
    switch (this->Below(5)) {
      case 0:
        text.Cut(at, count);
        if (at < model.size()) model.erase(at, count);
        break;
      case 1:
        text.Insert(piece, at);
        if (at <= model.size()) model.insert(at, other);
        break;
      case 2:
        text.Replace(piece, at);
        for (std::size_t place = 0; place < other.size() && at + place < model.size(); ++place) {
          model[at + place] = other[place];
        }
        break;
      case 3:
        text += piece;
        model += other;
        break;
      default:
        text = text.Copy(at, count);
        model = at < model.size() ? model.substr(at, count) : std::string();
        break;
    }
    ASSERT_EQ(Show(text), model);
  }
}

}  // namespace
}  // namespace xo::test

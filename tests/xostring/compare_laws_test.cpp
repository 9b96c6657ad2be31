// Laws of comparison, on random texts.
#include <algorithm>

#include "tests/intl/order_walk.hpp"
#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kOperators[] = {0x10,  0x30,  0x50,  0x70,  0x90,  0xB0,  0xD0,  0xF0,
                                         0x210, 0x230, 0x250, 0x270, 0x290, 0x2F0, 0x100, 0x110};

class CompareLaws : public NearPairs {
 protected:
  CompareLaws() { specials = false; }

  unsigned char Language() { return static_cast<unsigned char>(Below(48)); }

  static int Compare(std::u16string const& one, std::u16string const& two, unsigned char language,
                     unsigned short cmpOp, unsigned char codeSet = kUnicode, short count = -1) {
    auto const text1 = TextBytes(one, codeSet), text2 = TextBytes(two, codeSet);
    return Sign(
        XoStrCmp(codeSet, language, text1.data(), codeSet, language, text2.data(), cmpOp, count));
  }

  static std::string Shown(std::u16string const& text) {
    std::string shown;
    for (char16_t const unit : text) shown += " " + std::to_string(unsigned{unit});
    return shown;
  }

  static unsigned Hash(std::u16string const& text, unsigned char language) {
    return HashString(kUnicode, language, TextBytes(text, kUnicode).data());
  }
};

TEST_F(CompareLaws, TurningTheTextsRoundTurnsTheSign) {
  for (unsigned round = 0; round < 300000; ++round) {
    std::u16string const one = Text(kUnicode, 10), two = Changed(one, kUnicode);
    unsigned short const cmpOp = kOperators[Below(std::size(kOperators))];
    unsigned char const language = Language();
    ASSERT_EQ(Compare(one, two, language, cmpOp), -Compare(two, one, language, cmpOp))
        << Shown(one) << " / " << Shown(two) << " operator " << cmpOp << " language "
        << int{language};
  }
}

TEST_F(CompareLaws, WhatComesBeforeTheSmallerComesBeforeTheGreater) {
  for (unsigned round = 0; round < 200000; ++round) {
    std::u16string texts[3] = {Text(kUnicode, 7)};
    texts[1] = Changed(texts[0], kUnicode);
    texts[2] = Changed(texts[1], kUnicode);
    unsigned short const cmpOp = kOperators[Below(std::size(kOperators))];
    unsigned char const language = Language();
    std::sort(std::begin(texts), std::end(texts), [=](auto const& one, auto const& two) {
      return Compare(one, two, language, cmpOp) < 0;
    });
    int const first = Compare(texts[0], texts[1], language, cmpOp);
    int const second = Compare(texts[1], texts[2], language, cmpOp);
    ASSERT_LE(first, 0);
    ASSERT_LE(second, 0);
    ASSERT_EQ(Compare(texts[0], texts[2], language, cmpOp), std::min(first, second))
        << Shown(texts[0]) << " / " << Shown(texts[1]) << " / " << Shown(texts[2]) << " operator "
        << cmpOp << " language " << int{language};
  }
}

TEST_F(CompareLaws, TextsThatAreEqualAtEveryLevelHashAlike) {
  unsigned equal = 0;
  for (unsigned round = 0; round < 400000; ++round) {
    std::u16string const one = Text(kUnicode, 4), two = Changed(one, kUnicode);
    unsigned char const language = Language();
    if (one == two || Compare(one, two, language, kCmpNoWildcards) != 0) continue;
    ++equal;
    ASSERT_EQ(Hash(one, language), Hash(two, language))
        << Shown(one) << " / " << Shown(two) << " language " << int{language};
  }
  EXPECT_GT(equal, 0u);
}

/// Composed letters, and the letter and marks that each is made of, by the character database.
struct Composition {
  char16_t const* composed;
  char16_t const* decomposed;
};
constexpr Composition kCompositions[] = {
    {u"\u00E9", u"e\u0301"},
    {u"\u00C0", u"A\u0300"},
    {u"\u00F4", u"o\u0302"},
    {u"\u00F1", u"n\u0303"},
    {u"\u00DC", u"U\u0308"},
    {u"\u00E5", u"a\u030A"},
    {u"\u00E7", u"c\u0327"},
    {u"\u010D", u"c\u030C"},
    {u"\u017D", u"Z\u030C"},
    {u"\u0105", u"a\u0328"},
    {u"\u017C", u"z\u0307"},
    {u"\u0151", u"o\u030B"},
    {u"\u0130", u"I\u0307"},
    {u"\u0101", u"a\u0304"},
    {u"\u011F", u"g\u0306"},
    {u"\u03AC", u"\u03B1\u0301"},
    {u"\u0451", u"\u0435\u0308"},
    {u"\u0457", u"\u0456\u0308"},
    {u"\u0439", u"\u0438\u0306"},
    {u"\u1EA5", u"a\u0302\u0301"},
    {u"\u1EA5", u"\u00E2\u0301"},
    {u"\u1EB5", u"a\u0306\u0303"},
    {u"\u01D8", u"u\u0308\u0301"},
    {u"\u1E9B", u"\u017F\u0307"},
    // Letters that stand in contractions themselves.
    {u"\u015B", u"s\u0301"},
    {u"\u0161", u"s\u030C"},
    {u"\u017A", u"z\u0301"},
    {u"\u0107", u"c\u0301"},
    {u"\u0148", u"n\u030C"},
    {u"\u0144", u"n\u0301"},
    {u"\u00FD", u"y\u0301"},
    {u"\u0125", u"h\u0302"},
    {u"\u013E", u"l\u030C"},
    {u"\u013A", u"l\u0301"},
    {u"\u01F5", u"g\u0301"},
    {u"\u00E1", u"a\u0301"},
    {u"\u00C1", u"A\u0301"},
    {u"\u00C5", u"A\u030A"},
    {u"\u00C5", u"\u212B"},
    {u"\u00F6", u"o\u0308"},
    {u"\u00D6", u"O\u0308"},
    {u"\u00E0", u"a\u0340"},
    // Two marks of different classes, in every way to write them.
    {u"\u1E69", u"s\u0323\u0307"},
    {u"\u1E69", u"s\u0307\u0323"},
    {u"\u1E69", u"\u1E63\u0307"},
    {u"\u1E69", u"\u1E61\u0323"},
    {u"\u1EAD", u"a\u0323\u0302"},
    {u"\u1EAD", u"a\u0302\u0323"},
    {u"\u1EAD", u"\u1EA1\u0302"},
    {u"\u1EAD", u"\u00E2\u0323"},
};

TEST_F(CompareLaws, ComposedAndDecomposedTextsAreEqual) {
  for (unsigned round = 0; round < 60000; ++round) {
    std::u16string composed, decomposed;
    for (unsigned more = Below(6); more != 0; --more) {
      // Letters that contract with what follows, or with what stands before, among them: in Danish
      // an a takes the a of a decomposed letter behind it.
      if (OneIn(2)) {
        Composition const& each = kCompositions[Below(std::size(kCompositions))];
        composed += each.composed;
        decomposed += OneIn(3) ? each.composed : each.decomposed;
      } else {
        char16_t const plain =
            OneIn(3) ? u"bB -1"[Below(5)] : kContracting[Below(std::size(kContracting) - 1)];
        composed += plain;
        decomposed += plain;
      }
    }
    unsigned char const language = Language();
    for (unsigned short const cmpOp : kOperators) {
      ASSERT_EQ(Compare(composed, decomposed, language, cmpOp), 0)
          << Shown(composed) << " / " << Shown(decomposed) << " operator " << cmpOp << " language "
          << int{language};
    }
    ASSERT_EQ(Hash(composed, language), Hash(decomposed, language)) << Shown(composed);
  }
}

TEST_F(CompareLaws, CodeSetsThatHoldTheSameCharactersGiveTheSameOrder) {
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
  for (unsigned number = 1; number < 253; ++number) {
    auto const set = static_cast<unsigned char>(number);
    XoCodeSet const* const record = XoLanguageContext::QueryCodeSet(set);
    if (record == nullptr || set > 224) continue;
    std::vector<char16_t> codes;
    for (unsigned code = 1; code < 256; ++code) {
      if (record->ToUnicode(static_cast<unsigned short>(code)) != 0xFFFD) {
        codes.push_back(static_cast<char16_t>(code));
      }
    }
    for (unsigned round = 0; round < 3000; ++round) {
      std::u16string texts[2], wide[2];
      for (unsigned more = Below(8); more != 0; --more) {
        texts[0] += codes[Below(static_cast<unsigned>(codes.size()))];
      }
      texts[1] = texts[0];
      for (unsigned more = 1 + Below(2); more != 0; --more) {
        texts[1].insert(Below(static_cast<unsigned>(texts[1].size()) + 1), 1,
                        codes[Below(static_cast<unsigned>(codes.size()))]);
      }
      if (OneIn(2)) std::swap(texts[0], texts[1]);
      for (unsigned text = 0; text < 2; ++text) {
        for (char16_t const code : texts[text]) {
          wide[text] += static_cast<char16_t>(unicode.MapCharacter(code, set));
        }
      }
      unsigned short const cmpOp = kOperators[Below(std::size(kOperators))];
      unsigned char const language = Language();
      int const expected = Compare(wide[0], wide[1], language, cmpOp);
      ASSERT_EQ(Compare(texts[0], texts[1], language, cmpOp, set), expected)
          << Shown(wide[0]) << " / " << Shown(wide[1]) << " code set " << number << " operator "
          << cmpOp << " language " << int{language};
      auto const narrow = TextBytes(texts[0], set), other = TextBytes(wide[1], kUnicode);
      ASSERT_EQ(
          Sign(XoStrCmp(set, language, narrow.data(), kUnicode, language, other.data(), cmpOp)),
          expected)
          << Shown(wide[0]) << " / " << Shown(wide[1]) << " code set " << number;
    }
  }
}

/// The outcome from two lists of orders: cut to the count, without what is skipped, by levels.
int CompareLists(std::vector<WalkedOrder> one, std::vector<WalkedOrder> two, unsigned short cmpOp,
                 short count) {
  auto const prepare = [cmpOp, count](std::vector<WalkedOrder>& orders) {
    if (count != -1 && orders.size() > static_cast<unsigned short>(count)) {
      orders.resize(static_cast<unsigned short>(count));
    }
    std::erase_if(orders, [cmpOp](WalkedOrder each) {
      return !IsSignificant(each) &&
             (cmpOp & (each.order < 80 ? kCmpSkipSpaces : kCmpSkipSymbols)) != 0;
    });
    for (WalkedOrder& each : orders) {
      if (each.order < 16384 || each.order > 32767 || each.group == 20) continue;
      if ((cmpOp & kCmpIgnoreAccents) != 0) each.order &= 0xF07F;
      if ((cmpOp & kCmpIgnoreCase) != 0) each.order &= 0xCFFF;
    }
  };
  prepare(one);
  prepare(two);
  return CompareByLevels(one, two).sign;
}

TEST_F(CompareLaws, TheOutcomeIsThatOfTheListsOfOrders) {
  for (unsigned round = 0; round < 200000; ++round) {
    std::u16string const one = Text(kUnicode, 9), two = Changed(one, kUnicode);
    auto const cmpOp = static_cast<unsigned short>(kOperators[Below(14)]);
    unsigned char const language = Language();
    short const count = OneIn(2) ? short{-1} : static_cast<short>(1 + Below(9));
    ASSERT_EQ(Compare(one, two, language, cmpOp, kUnicode, count),
              CompareLists(WalkOrders(one, language), WalkOrders(two, language), cmpOp, count))
        << Shown(one) << " / " << Shown(two) << " operator " << cmpOp << " language "
        << int{language} << " count " << count;
  }
}

}  // namespace
}  // namespace xo::test

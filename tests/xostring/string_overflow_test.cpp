#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

XoConfig* OnlyAsk() {
  std::uintptr_t const allOnes = ~std::uintptr_t{0};
  XoConfig* config = nullptr;
  std::memcpy(&config, &allOnes, sizeof config);
  return config;
}

/// Answers with `answer` and notes what it was asked.
class AskedConfig final : public XoConfig {
 public:
  int Lookup(char const* key, void* result, XoConfigSection const* section) override {
    ++asked;
    askedKey = key;
    askedSection = section != nullptr ? section->text : "";
    askedAtTop = section != nullptr && section->parent == nullptr;
    std::memcpy(result, &answer, sizeof answer);
    return 1;
  }

  unsigned short answer = 0;
  int asked = 0;
  std::string askedKey;
  std::string askedSection;
  bool askedAtTop = false;
};

int assertions = 0;
std::string assertedText;
std::string assertedFile;
int assertedLine = 0;

int NoteAssertion(char const* expression, char const* file, int line) {
  ++assertions;
  assertedText = expression;
  assertedFile = file;
  assertedLine = line;
  return 0;
}

class StringOverflow : public RandomTest {
 protected:
  void SetUp() override {
    assertions = 0;
    XoPlatform platform = {};
    platform.assertFailed = NoteAssertion;
    platformBefore = XoExchangePlatform(platform);
    configBefore = DefaultConfig(&config);
  }
  void TearDown() override {
    DefaultConfig(configBefore);
    XoExchangePlatform(platformBefore);
  }

  AskedConfig config;

 private:
  XoConfig* configBefore = nullptr;
  XoPlatform platformBefore = {};
};

/// A text in which every place differs from its neighbours.
std::string Long(std::size_t length) {
  std::string text(length, 'a');
  for (std::size_t place = 0; place < length; ++place) {
    text[place] = static_cast<char>('!' + place % 89);
  }
  return text;
}

std::u16string LongWide(std::size_t length) {
  std::u16string text(length, u'a');
  for (std::size_t place = 0; place < length; ++place) {
    text[place] = static_cast<char16_t>(0x100 + place % 97);
  }
  return text;
}

TEST_F(StringOverflow, SeventyThousandBytesAppendedAreCut) {
  std::string const all = Long(70000);
  XoString string;
  for (std::size_t place = 0; place < all.size(); place += 1000) {
    string << all.substr(place, 1000).c_str();
  }
  EXPECT_EQ(string.Len(), kMostNarrow);
  EXPECT_EQ(string.size, 65532);
  EXPECT_EQ(TextOf(string), all.substr(0, kMostNarrow));
}

TEST_F(StringOverflow, LongTextsAreCutAndNotWrapped) {
  for (std::size_t const length :
       {65531u, 65532u, 65534u, 65535u, 65536u, 65540u, 70000u, 140000u}) {
    std::string const all = Long(length);
    XoString const string(all.c_str());
    EXPECT_EQ(TextOf(string), all.substr(0, kMostNarrow)) << length;
    EXPECT_EQ(string.size, 65532);
    XoString assigned;
    assigned = all.c_str();
    EXPECT_EQ(TextOf(assigned), all.substr(0, kMostNarrow)) << length;
    EXPECT_EQ(XoString(all.c_str(), 65535).Len(), kMostNarrow);
    EXPECT_EQ(XoString(all.c_str(), 65534).Len(), kMostNarrow);
    EXPECT_EQ(XoString(all.c_str(), 40000).Len(), 40000);
  }
}

TEST_F(StringOverflow, WideTextsHoldHalfAsMuchAndEndInAZeroUnit) {
  for (std::size_t const length : {32765u, 32766u, 32767u, 32768u, 65535u, 65536u, 70000u}) {
    std::u16string const all = LongWide(length);
    XoString const string(Units(all).data());
    EXPECT_EQ(string.Len(), kMostWide);
    EXPECT_EQ(string.size, 65532);
    EXPECT_EQ(WideTextOf(string), all.substr(0, kMostWide)) << length;
    EXPECT_EQ(string.text[65530], 0);
    EXPECT_EQ(string.text[65531], 0);
  }
  XoString appended = Wide(LongWide(20000));
  appended += appended;
  EXPECT_EQ(WideTextOf(appended), (LongWide(20000) + LongWide(20000)).substr(0, kMostWide));
}

TEST_F(StringOverflow, TheLimitItselfIsNoOverflow) {
  XoString const narrow(Long(kMostNarrow).c_str());
  XoString const wide(Units(LongWide(kMostWide)).data());
  EXPECT_EQ(config.asked, 0);
  EXPECT_EQ(narrow.Len(), kMostNarrow);
  EXPECT_EQ(wide.Len(), kMostWide);
  XoString const over(Long(kMostNarrow + 1).c_str());
  EXPECT_EQ(config.asked, 1);
}

TEST_F(StringOverflow, TheConfigurationIsAskedEveryTime) {
  XoString string(Long(kMostNarrow).c_str());
  for (int time = 1; time <= 3; ++time) {
    string << 'x';
    EXPECT_EQ(config.asked, time);
  }
  EXPECT_EQ(config.askedKey, "stringOverflow");
  EXPECT_EQ(config.askedSection, "debug");
  EXPECT_TRUE(config.askedAtTop);
  EXPECT_EQ(assertions, 0);
  EXPECT_EQ(TextOf(string), Long(kMostNarrow));
}

TEST_F(StringOverflow, IsAnAssertionWhereTheConfigurationAsksForIt) {
  config.answer = 1;
  XoString string(Long(kMostNarrow).c_str());
  EXPECT_EQ(assertions, 0);
  string << 'x';
  EXPECT_EQ(assertions, 1);
  EXPECT_EQ(assertedText, "String overflow");
  EXPECT_EQ(assertedFile, "src\\xostring");
  EXPECT_EQ(assertedLine, 1110);
  // It goes on all the same.
  EXPECT_EQ(TextOf(string), Long(kMostNarrow));
  config.answer = 256;
  string << 'x';
  EXPECT_EQ(assertions, 2);
  config.answer = 0;
  string << 'x';
  EXPECT_EQ(assertions, 2);
}

TEST_F(StringOverflow, IsSilentWithoutAConfiguration) {
  DefaultConfig(nullptr);
  ASSERT_EQ(DefaultConfig(OnlyAsk()), nullptr);
  XoString string(Long(70000).c_str());
  EXPECT_EQ(string.Len(), kMostNarrow);
  EXPECT_EQ(assertions, 0);
}

TEST_F(StringOverflow, WideningCutsAndReports) {
  config.answer = 1;
  std::string const bytes = Long(40000);
  std::u16string const expected(bytes.begin(), bytes.begin() + kMostWide);
  XoString mapped(bytes.c_str());
  EXPECT_EQ(assertions, 0);
  EXPECT_EQ(mapped.MapToCodeSet(kUnicode), 0);
  EXPECT_EQ(assertions, 1);
  EXPECT_EQ(WideTextOf(mapped), expected);
  EXPECT_EQ(mapped.size, 65532);
  XoString copied;
  EXPECT_EQ(copied.CopyMapped(XoString(bytes.c_str()), kUnicode), static_cast<int>(kMostWide));
  EXPECT_EQ(assertions, 2);
  EXPECT_EQ(WideTextOf(copied), expected);
  XoString appended = Wide(u"");
  appended += XoString(bytes.c_str());
  EXPECT_GE(assertions, 3);
  EXPECT_EQ(WideTextOf(appended), expected);
}

TEST_F(StringOverflow, WideningToTheLimitIsNone) {
  XoString string(Long(kMostWide).c_str());
  string.MapToCodeSet(kUnicode);
  EXPECT_EQ(string.Len(), kMostWide);
  XoString copied;
  EXPECT_EQ(copied.CopyMapped(XoString(Long(kMostWide).c_str()), kUnicode),
            static_cast<int>(kMostWide));
  EXPECT_EQ(copied.CopyMapped(XoString(Long(kMostNarrow).c_str()), kLatin1),
            static_cast<int>(kMostNarrow));
  EXPECT_EQ(config.asked, 0);
}

TEST_F(StringOverflow, OfALengthThatIsAskedForCutsIt) {
  config.answer = 1;
  std::string const bytes = Long(40000);
  XoString const source(bytes.c_str());
  std::u16string const most(bytes.begin(), bytes.begin() + kMostWide);
  // With a terminator, 32765 wide characters take all that a string can hold.
  XoString fitting;
  EXPECT_EQ(fitting.CopyMapped(source, kUnicode, 32765), 32765);
  EXPECT_EQ(WideTextOf(fitting), most);
  EXPECT_EQ(config.asked, 0);
  int reports = 0;
  for (short const length : {short{32766}, short{32767}}) {
    XoString cut;
    EXPECT_EQ(cut.CopyMapped(source, kUnicode, length), 32765) << length;
    EXPECT_EQ(WideTextOf(cut), most) << length;
    EXPECT_EQ(cut.size, 65532) << length;
    EXPECT_EQ(assertions, ++reports) << length;
    // Room is made for what is asked, however short the source.
    XoString roomy;
    EXPECT_EQ(roomy.CopyMapped(XoString("abc"), kUnicode, length), 3) << length;
    EXPECT_EQ(WideTextOf(roomy), u"abc") << length;
    EXPECT_EQ(roomy.size, 65532) << length;
    EXPECT_EQ(assertions, ++reports) << length;
  }
  // Narrow characters have room for every length that can be asked for.
  XoString narrow;
  EXPECT_EQ(narrow.CopyMapped(source, kLatin1, 32767), 32767);
  EXPECT_EQ(narrow.size, 32768);
  EXPECT_EQ(assertions, reports);
}

TEST_F(StringOverflow, OfAnInsertionCutsTheEnd) {
  std::string const old = Long(60000);
  std::string const inserted(10000, 'x');
  for (unsigned short const position :
       std::initializer_list<unsigned short>{0, 1, 30000, 55530, 55531, 55532, 60000}) {
    XoString string(old.c_str());
    string.Insert(XoString(inserted.c_str()), position);
    std::string expected = old;
    expected.insert(position, inserted);
    ASSERT_EQ(TextOf(string), expected.substr(0, kMostNarrow)) << position;
    ASSERT_EQ(string.size, 65532);
  }
  std::u16string const oldWide = LongWide(30000);
  std::u16string const insertedWide(10000, u'x');
  for (unsigned short const position :
       std::initializer_list<unsigned short>{0, 1, 22764, 22765, 22766, 30000}) {
    XoString string = Wide(oldWide);
    string.Insert(Wide(insertedWide), position);
    std::u16string expected = oldWide;
    expected.insert(position, insertedWide);
    ASSERT_EQ(WideTextOf(string), expected.substr(0, kMostWide)) << position;
  }
}

TEST_F(StringOverflow, OfAFillStopsAtTheEndOfTheBuffer) {
  XoString narrow;
  narrow.Fill(65535, 'x');
  EXPECT_EQ(TextOf(narrow), std::string(kMostNarrow, 'x'));
  EXPECT_EQ(narrow.size, 65532);
  EXPECT_EQ(config.asked, 1);
  XoString wide(kUnicode, 0);
  wide.Fill(65535, static_cast<unsigned short>(0x4E00));
  EXPECT_EQ(WideTextOf(wide), std::u16string(kMostWide, u'\u4E00'));
  EXPECT_EQ(wide.text[65530], 0);
  EXPECT_EQ(wide.text[65531], 0);
  wide.Fill(kMostWide, static_cast<unsigned short>(0x4E00));
  EXPECT_EQ(config.asked, 2);
  XoString expanded("abc");
  expanded.Expand(65535, 'x');
  EXPECT_EQ(TextOf(expanded), "abc" + std::string(kMostNarrow - 3, 'x'));
  XoString expandedWide = Wide(u"abc");
  expandedWide.Expand(40000, 'x');
  EXPECT_EQ(WideTextOf(expandedWide), u"abc" + std::u16string(kMostWide - 3, u'x'));
}

TEST_F(StringOverflow, OfASumIsCut) {
  XoString const half(Long(40000).c_str());
  XoString const sum = half + half;
  EXPECT_EQ(TextOf(sum), (Long(40000) + Long(40000)).substr(0, kMostNarrow));
}

TEST_F(StringOverflow, OfATransformIsCut) {
  // A sharp s becomes two letters.
  XoString narrow;
  narrow.Fill(40000, static_cast<char>(0xDF));
  narrow.ToUpper();
  EXPECT_EQ(TextOf(narrow), std::string(kMostNarrow, 'S'));
  EXPECT_EQ(config.asked, 1);
  XoString wide(kUnicode, 0);
  wide.Fill(20000, static_cast<unsigned short>(0xDF));
  wide.ToUpper();
  EXPECT_EQ(WideTextOf(wide), std::u16string(kMostWide, u'S'));
  EXPECT_EQ(wide.size, 65532);
}

TEST_F(StringOverflow, ATransformOfALongTextHasRoom) {
  for (unsigned const length : {32766u, 32767u, 32768u, 40000u, kMostNarrow}) {
    XoString string;
    string.Fill(static_cast<unsigned short>(length), 'a');
    string.ToUpper();
    EXPECT_EQ(TextOf(string), std::string(length, 'A'));
    EXPECT_EQ(string.size, length + 1);
  }
  EXPECT_EQ(config.asked, 0);
}

TEST_F(StringOverflow, RandomEditsAreThoseOfALongTextCut) {
  for (int round = 0; round < 60; ++round) {
    std::string expected = Long(50000 + Below(16000)).substr(0, kMostNarrow);
    XoString string(expected.c_str());
    std::string const added(1 + Below(30000), static_cast<char>('A' + Below(26)));
    unsigned const position = Below(static_cast<unsigned>(expected.size()) + 1);
    string.Insert(XoString(added.c_str()), static_cast<unsigned short>(position));
    expected.insert(position, added);
    ASSERT_EQ(TextOf(string), expected.substr(0, kMostNarrow));
    ASSERT_TRUE(IsSound(string));
  }
}

}  // namespace
}  // namespace xo::test

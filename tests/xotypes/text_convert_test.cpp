#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/xostring/string_text.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

constexpr int kStringRow = 11, kWeightedRow = 20, kCaselessRow = 21;

/// Converts strings through both tables, whose string rows share the conversion.
class StringConversion : public testing::TestWithParam<unsigned> {
 protected:
  XoTypeMgr manager{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Tables, StringConversion, testing::Values(3u, 5u));

TEST_P(StringConversion, GivesCopies) {
  XoString values[3] = {Narrow("\xD0", kCyrillic, 7), Wide(u"\u0430"), NullString()};
  XoTypeConvertData* const strings = manager.ConvertTo(kStringRow, values, 3);
  ASSERT_NE(strings, nullptr);
  EXPECT_EQ(strings->manager, &manager);
  EXPECT_EQ(strings->count, 3u);
  EXPECT_EQ(strings->type, XoSTRING_T);
  XoString const& first = *strings->GetString(0);
  EXPECT_EQ(TextOf(first), "\xD0");
  EXPECT_EQ(first.codeSet, kCyrillic);
  EXPECT_EQ(first.language, 7);
  EXPECT_NE(first.text, values[0].text);
  EXPECT_EQ(WideTextOf(*strings->GetString(1)), u"\u0430");
  EXPECT_NE(strings->GetString(2)->IsNullValue(), 0);
  EXPECT_EQ(strings->GetString(3), nullptr);

  auto* const back = static_cast<XoString*>(manager.ConvertFrom(kStringRow, strings, 5));
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(TextOf(back[0]), "\xD0");
  EXPECT_EQ(back[0].codeSet, kCyrillic);
  EXPECT_EQ(back[0].language, 7);
  EXPECT_EQ(WideTextOf(back[1]), u"\u0430");
  // Null, and missing.
  for (int index = 2; index < 5; ++index) EXPECT_NE(back[index].IsNullValue(), 0) << index;
  manager.Delete(kStringRow, back, 5);
  delete strings;
}

TEST_P(StringConversion, WithoutStringsGivesNull) {
  auto* const value = static_cast<XoString*>(manager.ConvertFrom(kStringRow, nullptr, 1));
  ASSERT_NE(value, nullptr);
  EXPECT_NE(value->IsNullValue(), 0);
  manager.Delete(kStringRow, value, 1);
}

TEST_P(StringConversion, AnEmptyStringStaysEmpty) {
  OwnStrings strings({XoString()});
  auto* const value = static_cast<XoString*>(manager.ConvertFrom(kStringRow, strings.Get(), 1));
  EXPECT_EQ(value->IsNullValue(), 0);
  EXPECT_EQ(value->Len(), 0);
  manager.Delete(kStringRow, value, 1);
}

template <class Text>
void ExpectWeightedConversion(int row) {
  SCOPED_TRACE(row);
  XoTypeMgr manager;
  char const id = static_cast<char>(row);
  Text values[3] = {"a\xE9", "", "c%s"};
  values[2].weighted = 0x80;
  EXPECT_EQ(ToTexts(row, values, 3), (std::vector<std::string>{"a\xE9", "", "c%s"}));

  OwnStrings strings(
      {Narrow("a\xE9"), NullString(), Wide(u"b\u0430"), XoString(), Narrow("{NULL}")});
  auto* const back = static_cast<Text*>(manager.ConvertFrom(id, strings.Get(), 6));
  ASSERT_NE(back, nullptr);
  char const* const expected[] = {"a\xE9", "", "b?", "", "{NULL}", ""};
  for (int index = 0; index < 6; ++index) {
    EXPECT_STREQ(back[index].StrGet(), expected[index]);
    EXPECT_EQ(back[index].weighted, 0);
    EXPECT_EQ(back[index].text == nullptr, *expected[index] == 0);
  }
  manager.Delete(id, back, 6);

  void* const none = manager.ConvertFrom(id, nullptr, 0);
  ASSERT_NE(none, nullptr);
  EXPECT_EQ(static_cast<Text*>(none)->text, nullptr);
  manager.Delete(id, none, 0);
}

TEST(WeightedConversion, IsTheTextItself) {
  ExpectWeightedConversion<XoIString>(kWeightedRow);
  ExpectWeightedConversion<XoCaseIString>(kCaselessRow);
}

TEST(WeightedConversion, NullBecomesEmpty) {
  XoTypeMgr manager;
  XoIString telling("text");
  EXPECT_EQ(manager.SetNullValue(kWeightedRow, &telling), 0);
  EXPECT_EQ(telling.text, nullptr);
  EXPECT_EQ(manager.IsNullValue(kWeightedRow, &telling), 0);
  XoCaseIString ignoring("text");
  EXPECT_EQ(manager.SetNullValue(kCaselessRow, &ignoring), 0);
  EXPECT_EQ(ignoring.text, nullptr);
}

TEST(WeightedConversion, OlderStringsBecomeNullByTheirConversion) {
  XoTypeMgr manager(3);
  XoString value("text");
  EXPECT_EQ(manager.SetNullValue(kStringRow, &value), 0);
  EXPECT_EQ(value.Len(), 0);
}

}  // namespace
}  // namespace xo::test

// The first wildcard of a text is where reading order by order comes upon it.
#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

struct Found {
  int position = -1;
  unsigned short offset = 65535;
  bool operator==(Found const&) const = default;
};

/// Reads order by order what `FindWildcard` may read otherwise.
Found FirstWildcardInOrders(unsigned char codeSet, unsigned char language, char const* text,
                            bool asteriskOnly, unsigned short maxCount, unsigned char byteOrder) {
  unsigned const unit = codeSet > 224 ? 2 : 1;
  XoStringIterator iterator(text, codeSet, language, byteOrder);
  while (iterator.IsEOS() == 0) {
    auto const offset = static_cast<unsigned>(iterator.cursor - text);
    if (offset / unit >= maxCount) break;
    unsigned short const order = iterator.GetNextOrder();
    if (order == 0) break;
    if (order == AsteriskOrder() || (!asteriskOnly && order == QuestionOrder())) {
      return {static_cast<int>(offset / unit), static_cast<unsigned short>(offset)};
    }
  }
  return {};
}

class WildcardPlaces : public NearPairs {};

TEST_F(WildcardPlaces, AreThoseOfReadingOrderByOrder) {
  auto const sets = CodeSetsWithTables();
  // Of those added some have no table of their own, and one is none.
  std::vector<unsigned char> codeSets(sets);
  codeSets.insert(codeSets.end(), {225, 226, 227, 200});
  unsigned found = 0;
  for (unsigned round = 0; round < 60000; ++round) {
    unsigned char const codeSet = OneIn(2) ? codeSets[Below(static_cast<unsigned>(codeSets.size()))]
                                           : (OneIn(2) ? kUnicode : sets.front());
    auto const language = static_cast<unsigned char>(OneIn(20) ? 254 : Below(60));
    std::u16string text = Text(codeSet, 8);
    for (unsigned wildcards = Below(3); wildcards != 0; --wildcards) {
      text.insert(Below(static_cast<unsigned>(text.size()) + 1), 1, OneIn(2) ? u'*' : u'?');
    }
    auto bytes = TextBytes(text, codeSet);
    unsigned char const byteOrder = codeSet > 224 && OneIn(3) ? FormBig : FormLittle;
    if (byteOrder == FormBig) {
      for (std::size_t place = 0; place < bytes.size(); place += 2) {
        std::swap(bytes[place], bytes[place + 1]);
      }
    }
    bool const asteriskOnly = OneIn(2);
    auto const maxCount = static_cast<unsigned short>(OneIn(2) ? 65535 : Below(8));
    Found const expected =
        FirstWildcardInOrders(codeSet, language, bytes.data(), asteriskOnly, maxCount, byteOrder);
    Found actual;
    actual.position = FindWildcard(codeSet, language, bytes.data(), asteriskOnly ? 1 : 0, maxCount,
                                   &actual.offset, byteOrder);
    ASSERT_EQ(actual, expected) << "code set " << int{codeSet} << " language " << int{language}
                                << " count " << maxCount << " order " << int{byteOrder} << " text "
                                << testing::PrintToString(bytes);
    if (expected.position >= 0) ++found;
  }
  EXPECT_GT(found, 10000u);
}

}  // namespace
}  // namespace xo::test

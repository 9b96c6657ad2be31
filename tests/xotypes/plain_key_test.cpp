// Keys of plain texts that are built on a way of their own are those of the general one.
#include "src/xotypes/string_rows.hpp"
#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

class PlainKeys : public NearPairs {
 protected:
  /// A text of one byte a character, plain ones mostly.
  std::string NarrowText() {
    std::string text;
    for (unsigned more = Below(12); more != 0; --more) {
      text += OneIn(8) ? static_cast<char>(1 + Below(255)) : static_cast<char>('a' + Below(26));
    }
    if (OneIn(6)) text.insert(Below(static_cast<unsigned>(text.size()) + 1), OneIn(2) ? "*" : "?");
    return text;
  }
};

TEST_F(PlainKeys, AreThoseOfTheGeneralWay) {
  std::vector<unsigned char> narrow;
  for (unsigned char const set : CodeSetsWithTables()) {
    if (set <= 224) narrow.push_back(set);
  }
  unsigned built = 0;
  for (unsigned round = 0; round < 60000; ++round) {
    unsigned char const codeSet =
        OneIn(2) ? narrow.front() : narrow[Below(static_cast<unsigned>(narrow.size()))];
    auto const language = static_cast<unsigned char>(OneIn(20) ? 240 + Below(16) : Below(60));
    unsigned char const nibble = OneIn(2) ? FormLittle : FormBig;
    std::string const text = NarrowText();
    auto const length = static_cast<unsigned char>(text.size() + 4);
    std::vector<unsigned char> record{nibble == FormBig ? static_cast<unsigned char>(0) : length,
                                      nibble == FormBig ? length : static_cast<unsigned char>(0),
                                      codeSet, language};
    record.insert(record.end(), text.begin(), text.end());
    record.insert(record.end(), {0, 0xFF});
    std::size_t const room = 6 + 2 * Below(14);
    std::vector<unsigned char> plain(room);
    plain.resize(
        BuildPlainKey(plain.data(), room, nibble, codeSet, language, text.c_str(), text.size()));
    bool const hasWildcard =
        FindWildcard(codeSet, language, text.c_str(), 0, 65535, nullptr, 1) >= 0;
    ASSERT_FALSE(hasWildcard && !plain.empty()) << text;
    if (plain.empty()) continue;
    std::vector<unsigned char> general(room);
    general.resize(StringTranslate(general.data(), nibble | FormatIndexKey,
                                   static_cast<unsigned>(room), record.data(), nibble,
                                   static_cast<unsigned>(record.size()), 1));
    ASSERT_EQ(plain, general) << testing::PrintToString(record) << " room " << room;
    ++built;
  }
  EXPECT_GT(built, 10000u);
}

}  // namespace
}  // namespace xo::test

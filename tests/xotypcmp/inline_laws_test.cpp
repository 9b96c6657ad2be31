#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/inline_compare.hpp"

namespace xo::test {
namespace {

template <class Text>
class InlineLaws : public RandomTest {
 protected:
  std::string AnyText(unsigned longest) {
    std::string text;
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text += OneIn(6) ? static_cast<char>(1 + Below(255)) : "aAbsS\xDF\x8C\xE9"[Below(8)];
    }
    return text;
  }
  unsigned char AnyOrder() { return OneIn(2) ? kLittle : kBig; }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(InlineLaws, BothClasses);

/// Order of two texts by weights, an empty one by its first byte.
template <class Text>
int OrderOf(std::string const& a, std::string const& b) {
  if (a.empty() || b.empty()) return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
  return SlowOrder<Text>(a, b, 65535);
}

TYPED_TEST(InlineLaws, TextsAndKeysOrderAsTheirWeights) {
  for (int round = 0; round < 3000; ++round) {
    std::string const a = this->AnyText(6), b = this->OneIn(3) ? a : this->AnyText(6);
    unsigned char const format = this->AnyOrder();
    Answer const expected = {OrderOf<TypeParam>(a, b), 0};
    ASSERT_EQ(Compared<TypeParam>(Plain(a, format), Plain(b, format), kLiteral, format), expected)
        << a << '|' << b;
    ASSERT_EQ(
        (ComparedInMemory<TypeParam>({TypeParam(a.c_str())}, {TypeParam(b.c_str())}, kLiteral)),
        expected);
    ASSERT_EQ(
        Compared<TypeParam>(Plain(a, format), KeyOf<TypeParam>(b, format), kLiteral, format).sign,
        expected.sign)
        << a << '|' << b;
    ASSERT_EQ(Compared<TypeParam>(KeyOf<TypeParam>(a, format), KeyOf<TypeParam>(b, format),
                                  kLiteral, format),
              expected)
        << a << '|' << b;
  }
}

TYPED_TEST(InlineLaws, WholeKeysCompareAsTheirBytes) {
  for (int round = 0; round < 100000; ++round) {
    std::string const shared = this->AnyText(20);
    std::string a = shared + this->AnyText(10), b = shared + this->AnyText(10);
    // A key ends at its first zero byte, wherever that is; one without ends with its record.
    if (this->OneIn(8)) a.insert(this->Below(static_cast<unsigned>(a.size()) + 1), 1, '\0');
    if (!this->OneIn(8)) a += '\0';
    if (!this->OneIn(8)) b += '\0';
    unsigned char const format = this->AnyOrder();
    Answer const expected = {SignOf(BinaryCompare(a.c_str(), b.c_str(), 0)), 0};
    ByteList one = Inline(0xC0, BytesOf(a), format), two = Inline(0xC0, BytesOf(b), format);
    ASSERT_EQ(ComparedWithoutLengths<TypeParam>(one, two, kLiteral, format), expected)
        << ::testing::PrintToString(a) << ' ' << ::testing::PrintToString(b);
    // What stands behind a record within its length does not count.
    if (this->OneIn(4)) one.insert(one.end(), 1 + this->Below(9), this->Byte());
    if (this->OneIn(4)) two.insert(two.end(), 1 + this->Below(9), this->Byte());
    ASSERT_EQ(Compared<TypeParam>(one, two, kLiteral, format), expected)
        << ::testing::PrintToString(a) << ' ' << ::testing::PrintToString(b);
  }
}

TYPED_TEST(InlineLaws, CutTextNeverContradictsTheWholeOne) {
  for (int round = 0; round < 3000; ++round) {
    std::string const a = this->AnyText(6), b = this->AnyText(6);
    ByteList const whole = this->OneIn(2) ? Plain(a) : KeyOf<TypeParam>(a);
    bool const isKey = whole[0] != 0x40;
    ByteList const other = isKey ? KeyOf<TypeParam>(b) : Plain(b);
    ByteList const cut = CutTo(whole, 1 + this->Below(static_cast<unsigned>(whole.size())));
    int const order = OrderOf<TypeParam>(a, b);
    Answer const answer = Compared<TypeParam>(cut, other, kLiteral);
    if (answer.status == 0 || answer.sign != 0) {
      ASSERT_EQ(answer.sign, order) << a << '|' << b << ' ' << cut.size() << ' ' << isKey;
    }
  }
}

/// A pattern taken apart.
struct Item {
  enum { kStar, kQuestion, kLiteral } kind;
  std::string literal;
};

/// Whether the weights of a text from `at` on match the items from `item` on, by trying everything.
/// `ends` tells where the character ends that a weight belongs to.
template <class Text>
bool SlowMatch(std::vector<int> const& weights, std::vector<std::size_t> const& ends,
               std::size_t at, std::vector<Item> const& items, std::size_t item) {
  if (item == items.size()) return at == weights.size();
  switch (items[item].kind) {
    case Item::kStar:
      for (std::size_t next = at; next <= weights.size(); ++next) {
        if (SlowMatch<Text>(weights, ends, next, items, item + 1)) return true;
      }
      return false;
    case Item::kQuestion:
      return at < weights.size() && SlowMatch<Text>(weights, ends, ends[at], items, item + 1);
    case Item::kLiteral:
      break;
  }
  for (int const weight : SequenceOf<Text>(items[item].literal)) {
    if (at == weights.size() || weights[at++] != weight) return false;
  }
  return SlowMatch<Text>(weights, ends, at, items, item + 1);
}

TYPED_TEST(InlineLaws, MatchAgreesWithTryingEverything) {
  unsigned char const flag = kIgnoresCase<TypeParam> ? 0x20 : 0;
  for (int round = 0; round < 5000; ++round) {
    std::string const text = this->AnyText(6);
    std::vector<int> weights;
    std::vector<std::size_t> ends;
    for (char const character : text) {
      auto const own = SequenceOf<TypeParam>(std::string(1, character), flag);
      weights.insert(weights.end(), own.begin(), own.end());
      ends.resize(weights.size(), weights.size());
    }
    // A wildcard first, so that a pattern that does not match answers 1.
    std::vector<Item> items = {{this->OneIn(2) ? Item::kStar : Item::kQuestion, {}}};
    std::string pattern = items[0].kind == Item::kStar ? "*" : "?";
    for (unsigned left = this->Below(5); left != 0; --left) {
      unsigned const kind = this->Below(5);
      if (kind == 0) {
        items.push_back({Item::kStar, {}});
        pattern += '*';
      } else if (kind == 1) {
        items.push_back({Item::kQuestion, {}});
        pattern += '?';
      } else {
        char const literal = "aAs\xDF\xE9*"[this->Below(6)];
        items.push_back({Item::kLiteral, std::string(1, literal)});
        if (literal == '*' || this->OneIn(5)) pattern += '\\';
        pattern += literal;
      }
    }
    bool const matches = SlowMatch<TypeParam>(weights, ends, 0, items, 0);
    ASSERT_EQ(Compared<TypeParam>(Plain(text), Plain(pattern), kPattern),
              (Answer{matches ? 0 : 1, 0}))
        << ::testing::PrintToString(text) << ' ' << pattern;
  }
}

TYPED_TEST(InlineLaws, AnyBytesGetAnAnswerFromWhatIsThere) {
  std::set<int> const statuses = {0, kExceeded, kUnsupported};
  for (int round = 0; round < 20000; ++round) {
    auto const any = [&] {
      ByteList bytes = this->Bytes(1 + this->Below(this->OneIn(20) ? 400 : 12));
      if (this->OneIn(2)) bytes[0] = this->OneIn(2) ? 0x40 : 0xC0;
      if (bytes.size() > 2 && this->OneIn(2)) {
        bytes[1] = static_cast<unsigned char>(this->Below(12));
        bytes[2] = 0;
      }
      for (unsigned char& byte : bytes) {
        if (this->OneIn(8)) byte = static_cast<unsigned char>("\0*?\\"[this->Below(4)]);
      }
      return bytes;
    };
    ByteList const one = any(), two = any();
    auto const op = static_cast<unsigned short>(this->OneIn(2) ? 0 : this->Bits());
    unsigned char format = this->Byte();
    if (format == kMemory) format = kLittle;
    unsigned const count = this->OneIn(2) ? 1 : this->Below(1000);
    Answer const answer = Compared<TypeParam>(one, two, op, format, count);
    ASSERT_TRUE(statuses.contains(answer.status));
    ASSERT_EQ(Compared<TypeParam>(one, two, op, format, count), answer);
  }
}

TYPED_TEST(InlineLaws, RecordsOfAnyBytesLoadAndTranslateInside) {
  XoTypeMgr const manager;
  char const id = kId<TypeParam>;
  for (int round = 0; round < 5000; ++round) {
    ByteList bytes = this->Bytes(1 + this->Below(20));
    if (this->OneIn(2)) bytes[0] = this->OneIn(2) ? 0x40 : 0xC0;
    PlacedBytes const source(bytes, this->Below(2));
    auto const size = static_cast<unsigned>(bytes.size());
    unsigned const count = this->Below(4);
    unsigned char const from = this->AnyOrder();
    std::vector<TypeParam> texts(count, TypeParam("held before"));
    unsigned const read =
        manager.Translate(id, texts.data(), kMemory, 0, source.Data(), from, size, count);
    ASSERT_LE(read, std::max(size, 3u));
    unsigned const room = this->Below(24);
    for (unsigned char const to : Formats{kLittle, kBig, kLittleKey, kBigKey, 0x88}) {
      // The room ends with the buffer.
      PlacedBytes const target(ByteList(room, kUntouched), 1);
      manager.Translate(id, target.Data(), to, room, source.Data(), from, size, count);
      manager.Translate(id, target.Data(), to, room, texts.data(), kMemory, 0, count);
    }
  }
}

}  // namespace
}  // namespace xo::test

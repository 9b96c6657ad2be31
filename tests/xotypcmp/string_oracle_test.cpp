// The comparison of stored strings against a slow restatement of its rules.
#include <cstdint>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/stored_records.hpp"

namespace xo::test {
namespace {

/// An operand as the rules walk it. What lies behind its length reads as 0.
struct Operand {
  StoredBytes const& bytes;
  std::int64_t length;  ///< bytes available from `at` on, 0 for all
  std::int64_t at = 0;
  bool hasNoHeader = false;
  std::int64_t runEnd = 0;

  std::int64_t Available() const { return length != 0 ? length : std::numeric_limits<int>::max(); }
  unsigned Byte(std::int64_t offset) const {
    return offset < Available() ? bytes.at(static_cast<std::size_t>(at + offset)) : 0u;
  }
};

struct Element {
  unsigned char codeSet = 0;
  unsigned char language = 0;
  std::string text{};  ///< of what is there, with zeros behind it
  int chars = 0;
  bool isCut = false;
  bool hasNoAnswer = false;
  std::int64_t next = 0;
};

Element ReadElement(Operand& operand, unsigned char format, bool older) {
  std::int64_t lead = 0;
  std::int64_t const low = operand.Byte(IsBig(format) ? 1 : 0);
  std::int64_t const high = operand.Byte(IsBig(format) ? 0 : 1);
  std::int64_t const length = low + 256 * high;
  bool const isWhole = operand.Available() >= length + 2;
  if (!operand.hasNoHeader && (format & 0x80) == 0 &&
      (isWhole ? operand.Byte(length + 1) == 0 : older)) {
    operand.hasNoHeader = true;
    operand.runEnd = operand.at + 2 + length;
    lead = 2;
  }
  Element element;
  if (operand.hasNoHeader) {
    std::int64_t const whole = operand.runEnd - operand.at;
    std::int64_t const there = std::min(whole, operand.Available());
    std::int64_t offset = lead;
    while (offset < there && operand.Byte(offset) != 0) {
      element.text += static_cast<char>(operand.Byte(offset++));
    }
    element.isCut = offset >= there && there < whole;
    std::int64_t const missing = whole - lead - 1 - static_cast<std::int64_t>(element.text.size());
    element.hasNoAnswer = element.isCut && missing > 0 && element.text.size() >= 254;
    element.next = std::min(operand.at + offset + 1, operand.runEnd);
  } else {
    element.codeSet = length > 0 ? static_cast<unsigned char>(operand.Byte(2)) : 0;
    element.language = length > 1 ? static_cast<unsigned char>(operand.Byte(3)) : 0;
    std::int64_t const whole = std::max<std::int64_t>(length - 4, 0);
    std::int64_t const there = std::min(whole, std::max<std::int64_t>(operand.Available() - 4, 0));
    for (std::int64_t place = 0; place < there; ++place) {
      element.text += static_cast<char>(operand.Byte(4 + place));
    }
    // Without the end mark alone it counts as whole.
    element.isCut = !isWhole && operand.Available() != length + 1;
    element.hasNoAnswer = there < whole && there >= 254;
    element.next = operand.at + length + 2;
  }
  element.chars = static_cast<int>(element.text.size()) / (element.codeSet > 224 ? 2 : 1);
  element.text += std::string(4, '\0');
  return element;
}

int CompareElements(Element one, Element two, unsigned short cmpOp, unsigned char nibble,
                    int& status) {
  if (one.codeSet == 254 && one.language >= 128) {
    status = kFirstCut;
    one.language = static_cast<unsigned char>(one.language - 128);
  }
  if (two.codeSet == 254 && two.language >= 128) {
    status = status > 0 ? kFirstCut : kSecondCut;
    two.language = static_cast<unsigned char>(two.language - 128);
    if ((cmpOp & 0x110) == 0) two.isCut = true;
  }
  auto const compare = [&](int count, int* positional) {
    return XoStrCmp(one.codeSet, one.language, one.text.c_str(), two.codeSet, two.language,
                    two.text.c_str(), cmpOp, static_cast<short>(count), nibble, positional);
  };
  int const cut = (one.isCut ? 1 : 0) + (two.isCut ? 2 : 0);
  if (cut == 0) return compare(-1, nullptr);
  bool const prefix = (cmpOp & 0x80) != 0;
  auto const exceed = [&status] {
    if (status == 0) status = kExceeded;
  };
  int const star = (cmpOp & 0x110) == 0
                       ? FindWildcard(two.codeSet, two.language, two.text.c_str(), 1,
                                      static_cast<unsigned short>(two.chars), nullptr, nibble)
                       : -1;
  int most = 0;
  if (star >= 0) {
    most = std::min(star, one.chars);
    if (!(cut == 1 && !prefix && star + 1 == two.chars && one.chars >= star)) exceed();
  } else if (cut == 3) {
    most = std::min(one.chars, two.chars);
    exceed();
  } else {
    most = cut == 1 ? one.chars : two.chars;
    bool const wholeIsShorter = cut == 1 ? two.chars < one.chars : one.chars < two.chars;
    if (!wholeIsShorter || prefix) exceed();
  }
  int positional = 0;
  int result = compare(most, &positional);
  if (result == 0 && one.chars != two.chars && cut != 3) {
    if (star < 0) result = one.chars < two.chars ? -1 : 1;
    if (star >= 0 && cut == 1 && most == two.chars) result = 1;
    if (star >= 0 && cut == 2 && most == one.chars) result = -1;
  }
  return prefix ? positional : result;
}

Answer CompareSlowly(StoredBytes const& one, StoredBytes const& two, Question question,
                     unsigned length1, unsigned length2) {
  Operand first{one, length1};
  Operand second{two, length2};
  int status = 0;
  int result = 0;
  for (unsigned left = question.count; left != 0 && result == 0 && status == 0;) {
    Element const element1 = ReadElement(first, question.format, question.older);
    Element const element2 = ReadElement(second, question.format, question.older);
    if (element1.hasNoAnswer || element2.hasNoAnswer) return {-1, kUnsupported};
    result = CompareElements(element1, element2, question.cmpOp, question.format % 16, status);
    if (--left == 0) break;
    auto const advance = [&status](Operand& operand, Element const& element) {
      operand.at = element.next;
      if (operand.length == 0) return;
      // Less the way from the very first byte, not that of the last element.
      operand.length -= operand.at;
      if (operand.length < 5) status = kExceeded;
    };
    advance(first, element1);
    advance(second, element2);
  }
  return {SignOf(result), status};
}

class StringOracle : public RandomTest {
 protected:
  unsigned Unit() {
    switch (Below(8)) {
      case 0:
        return kSpace;
      case 1:
        return OneIn(3) ? 159 : kHyphen;  // 159 is the order of the asterisk
      case 2:
        return Upper('A', Below(3));
      case 3:
        return OneIn(9) ? static_cast<unsigned>(Bits() & 0xFFFF) : Digit(Below(3));
      default:
        return Lower(static_cast<char>('a' + Below(3)), OneIn(4) ? Below(3) : 0);
    }
  }

  StoredBytes RandomElement(unsigned char format) {
    std::string text;
    for (unsigned more = OneIn(40) ? 240 + Below(30) : Below(7); more != 0; --more) {
      text += "aabAB -\xE9\xDF*?c"[Below(12)];
    }
    constexpr unsigned char kLanguages[] = {0, 1, 2, 5, 20, 0x82, 0x80, 254, 255};
    unsigned char const language = OneIn(3) ? kLanguages[Below(9)] : 1;
    if (OneIn(2)) {
      std::vector<unsigned> orders;
      for (std::size_t more = text.size() / 2; more != 0; --more) orders.push_back(Unit());
      return Key(orders, format, OneIn(3) ? language : 2);
    }
    if (OneIn(3)) {
      return WideRecord(std::vector<unsigned>(text.begin(), text.end()), format,
                        OneIn(4) ? 225 : 253, language);
    }
    constexpr unsigned char kSets[] = {0, 1, 1, 2, 15, 77, 255};
    return Record(text, format, kSets[Below(7)], language);
  }

  StoredBytes RandomArray(unsigned char format) {
    if (OneIn(4)) {
      return OneIn(2) ? OlderRecord({"ab", "", "b*", "c"}, format)
                      : OlderRecord({OneIn(9) ? std::string(260, 'a') : "abc", "ab"}, format);
    }
    StoredBytes array;
    for (unsigned more = 1 + Below(4); more != 0; --more) array = array + RandomElement(format);
    return array;
  }

  /// Another array, or the same but for a byte.
  StoredBytes Near(StoredBytes array, unsigned char format) {
    if (OneIn(2)) return RandomArray(format);
    if (OneIn(4)) return array;
    array[Below(static_cast<unsigned>(array.size()))] = Byte();
    return array;
  }
};

TEST_F(StringOracle, AgreesOnArraysThatAreCutAnywhereAndLie) {
  constexpr unsigned char kFormats[] = {kLittle, kBig, kKeyLittle, kKeyBig};
  unsigned decided = 0, undecided = 0;
  for (unsigned round = 0; round < 80000; ++round) {
    Question question;
    question.format = kFormats[Below(4)];
    constexpr unsigned short kBits[] = {0x10, 0x20, 0x40, 0x80, 0x100, 0x200};
    question.cmpOp = OneIn(2) ? kLiteral : static_cast<unsigned short>(0);
    for (unsigned short const bit : kBits) {
      if (OneIn(6)) question.cmpOp = static_cast<unsigned short>(question.cmpOp ^ bit);
    }
    question.count = 1 + (OneIn(2) ? 0 : Below(4));
    question.older = OneIn(4);
    StoredBytes one = RandomArray(question.format);
    StoredBytes two = Near(one, question.format);
    auto const cut = [this](StoredBytes& bytes) {
      if (!OneIn(3)) bytes.resize(1 + Below(static_cast<unsigned>(bytes.size())));
    };
    cut(one);
    cut(two);
    auto const length1 = static_cast<unsigned>(one.size());
    auto const length2 = static_cast<unsigned>(two.size());
    Answer const expected = CompareSlowly(one, two, question, length1, length2);
    ASSERT_EQ(Compare(one, two, question), expected)
        << testing::PrintToString(one) << " against " << testing::PrintToString(two) << " format "
        << int{question.format} << " operator " << question.cmpOp << " count " << question.count
        << " older " << question.older;
    (expected.status == 0 ? decided : undecided) += 1;
  }
  EXPECT_GT(decided, 10000u);
  EXPECT_GT(undecided, 10000u);
}

TEST_F(StringOracle, AgreesOnWholeArraysWithoutADeclaredLength) {
  for (unsigned round = 0; round < 30000; ++round) {
    constexpr unsigned char kFormats[] = {kLittle, kBig, kKeyLittle, kKeyBig};
    Question question;
    question.format = kFormats[Below(4)];
    question.cmpOp =
        static_cast<unsigned short>(Below(2) * 0x10 + Below(2) * 0x20 + Below(2) * 0x80);
    question.older = OneIn(4);
    question.count = 1 + Below(3);
    StoredBytes one, two;
    for (unsigned more = question.count; more != 0; --more) {
      StoredBytes const element = RandomElement(question.format);
      one = one + element;
      two = two + (OneIn(3) ? RandomElement(question.format) : element);
    }
    ASSERT_EQ(Compare(one, two, question, 0, 0), CompareSlowly(one, two, question, 0, 0))
        << testing::PrintToString(one) << " against " << testing::PrintToString(two) << " format "
        << int{question.format} << " operator " << question.cmpOp << " count " << question.count;
  }
}

}  // namespace
}  // namespace xo::test

// What is compared where it lies compares as the general comparison does.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "src/xostring/level_comparison.hpp"
#include "tests/base/random_test.hpp"
#include "xotypemgr.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kTextFormat = FormLittle;
constexpr unsigned char kKeyFormat = FormatIndexKey | FormLittle;
constexpr unsigned char kKeySet = 254;
constexpr std::array<unsigned short, 6> kOperators = {0x10, 0x10, 0x30, 0x50, 0x90, 0x2F0};

/// A stored string at the end of an allocation of its size, so that a read behind it is seen.
class StoredString {
 public:
  /// `text` are the bytes of the text, which lack the terminator; `closing` are the two bytes of
  /// that and the end mark.
  StoredString(std::string const& text, unsigned char codeSet, unsigned char language,
               char16_t closing)
      : bytes(text.size() + 6), memory(new unsigned char[bytes]) {
    std::size_t const length = bytes - 2;
    memory[0] = static_cast<unsigned char>(length & 0xFF);
    memory[1] = static_cast<unsigned char>(length >> 8);
    memory[2] = codeSet;
    memory[3] = language;
    std::copy(text.begin(), text.end(), memory.get() + 4);
    memory[bytes - 2] = static_cast<unsigned char>(closing & 0xFF);
    memory[bytes - 1] = static_cast<unsigned char>(closing >> 8);
  }
  unsigned char* Data() const { return memory.get(); }
  unsigned Size() const { return static_cast<unsigned>(bytes); }

 private:
  std::size_t bytes;
  std::unique_ptr<unsigned char[]> memory;
};

class InPlace : public RandomTest {
 protected:
  /// An order like those of words, mostly of few letters, with accent and case.
  char16_t Order() {
    unsigned const more = OneIn(4) ? Below(128) << 7 : OneIn(2) ? 32u << 7 : 0;
    switch (Below(24)) {
      case 0:
        return static_cast<char16_t>(16128 + Below(100));
      case 1:
        return static_cast<char16_t>(1 + Below(OneIn(2) ? 200 : 16127));
      case 2:
        return static_cast<char16_t>(32768 + Below(OneIn(2) ? 300 : 32768));
      case 3:
        return static_cast<char16_t>(16384 + Below(16384));
      default:
        return static_cast<char16_t>(16384 + more + 4 * (3 + Below(3)));
    }
  }

  char Character() {
    switch (Below(16)) {
      case 0:
        return static_cast<char>(1 + Below(255));
      case 1:
        return "-' .\xE9\xC9\xDF\xE4\xE6"[Below(9)];
      case 2:
      case 3:
        return "ABCDHLS"[Below(7)];
      default:
        return "abcdhls"[Below(7)];
    }
  }

  /// Two words that begin alike, and differ in little behind that.
  template <class Unit, class Next>
  std::array<std::basic_string<Unit>, 2> Pair(unsigned longest, Next next) {
    std::array<std::basic_string<Unit>, 2> words;
    for (unsigned more = Below(longest + 1); more != 0; --more) words[0] += next();
    words[1] = words[0];
    for (unsigned changes = Below(4); changes != 0; --changes) {
      auto& word = words[Below(2)];
      std::size_t const place = Below(static_cast<unsigned>(word.size()) + 1);
      switch (Below(4)) {
        case 0:
          word.insert(place, 1, next());
          break;
        case 1:
          if (place < word.size()) word.erase(place, 1);
          break;
        case 2:
          word.resize(place);
          break;
        default:
          if (place < word.size()) word[place] = next();
      }
    }
    return words;
  }

  /// What the comparison in levels gives of two terminated texts.
  static int Generally(std::string const& one, std::string const& two, unsigned char codeSet,
                       unsigned char language, unsigned short cmpOp) {
    XoStringIterator first(one.c_str(), codeSet, language, FormLittle);
    XoStringIterator second(two.c_str(), codeSet, language, FormLittle);
    return LevelComparison(first, second, cmpOp, -1).Run(nullptr);
  }

  /// Compares both ways, with their lengths declared and without.
  void Check(std::string const& one, std::string const& two, unsigned char codeSet,
             unsigned char language, unsigned char format) {
    // A key ends by its length alone, so that those bytes may as well look like more letters.
    constexpr char16_t kClosings[] = {u'\xFF00', u'\xFF00', u'\x5000', u'\x400C', u'\x0000'};
    auto const closing = [&] { return kClosings[codeSet == kKeySet ? Below(5) : 0]; };
    StoredString const first(one, codeSet, language, closing());
    StoredString const second(two, codeSet, language, closing());
    unsigned short const cmpOp = kOperators[Below(kOperators.size())];
    // Orders end in a unit of two bytes, and half an order lacks its upper one.
    std::string const zeros(2, '\0');
    std::string const text1 = one + zeros, text2 = two + zeros;
    int const general = Generally(text1, text2, codeSet, language, cmpOp);
    int const expected =
        XoStrCmp(codeSet, language, text1.c_str(), codeSet, language, text2.c_str(), cmpOp);
    unsigned const declared = Below(2);
    int status = 7;
    int const result =
        manager.Cmp(XoSTRING_T, declared * first.Size(), first.Data(), declared * second.Size(),
                    second.Data(), cmpOp, 1, format, status);
    auto const shown = [&] {
      return Shown(one) + " / " + Shown(two) + " kind " + std::to_string(codeSet) + ' ' +
             std::to_string(language) + " operator " + std::to_string(cmpOp);
    };
    ASSERT_EQ(result, expected) << shown();
    // Of texts, the comparison of letters gives no more than the sign.
    ASSERT_EQ(codeSet == kKeySet ? result : SignOf(result),
              codeSet == kKeySet ? general : SignOf(general))
        << shown();
    ASSERT_EQ(status, 0);
  }

  static int SignOf(int value) { return (value > 0) - (value < 0); }

  static std::string Shown(std::string const& bytes) {
    std::string shown;
    for (char const byte : bytes) shown += ' ' + std::to_string(static_cast<unsigned char>(byte));
    return shown;
  }

  static std::string BytesOf(std::u16string const& units) {
    std::string bytes;
    for (char16_t const unit : units) {
      bytes += static_cast<char>(unit & 0xFF);
      bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
  }

  XoTypeMgr const manager;
};

TEST_F(InPlace, KeysCompareAsTheirOrdersDo) {
  for (unsigned round = 0; round < 500000; ++round) {
    auto const words = Pair<char16_t>(OneIn(8) ? 30 : 12, [this] { return Order(); });
    unsigned char const group = static_cast<unsigned char>(OneIn(8) ? 1 + Below(19) : 2);
    Check(BytesOf(words[0]), BytesOf(words[1]), kKeySet, group, kKeyFormat);
    if (HasFatalFailure()) return;
  }
}

/// Keys are taken by blocks of four orders: the first difference stands at every place of them, in
/// keys of every length, and is one of each kind.
TEST_F(InPlace, KeysCompareAsTheirOrdersDoWhereverTheyDiffer) {
  constexpr char16_t kOthers[] = {u'\0',     u'\x14',   u'\x74',   u'\x3F0A', u'\x400C',
                                  u'\x500C', u'\x410C', u'\x4010', u'\x8000', u'\xC00C'};
  for (std::size_t length1 = 0; length1 <= 18; ++length1) {
    for (std::size_t length2 = 0; length2 <= 18; ++length2) {
      for (std::size_t place = 0; place < std::max(length1, length2); ++place) {
        for (char16_t const one : kOthers) {
          for (char16_t const two : kOthers) {
            std::u16string words[2] = {std::u16string(length1, u'\x500C'),
                                       std::u16string(length2, u'\x500C')};
            if (place < length1) words[0][place] = one;
            if (place < length2) words[1][place] = two;
            Check(BytesOf(words[0]), BytesOf(words[1]), kKeySet, 2, kKeyFormat);
            if (HasFatalFailure()) return;
          }
        }
      }
    }
  }
}

/// Half an order may stand behind the last one, whatever the length, and wherever they differ.
TEST_F(InPlace, KeysThatEndInHalfAnOrderCompareAsTheirOrdersDo) {
  constexpr unsigned char kHalves[] = {0x00, 0x0C, 0x14, 0x74, 0xFF};
  for (unsigned round = 0; round < 200000; ++round) {
    auto const words = Pair<char16_t>(OneIn(8) ? 30 : 12, [this] { return Order(); });
    std::string keys[2] = {BytesOf(words[0]), BytesOf(words[1])};
    unsigned const which = 1 + Below(3);
    for (unsigned side = 0; side < 2; ++side) {
      if ((which >> side & 1) != 0) keys[side] += static_cast<char>(kHalves[Below(5)]);
    }
    Check(keys[0], keys[1], kKeySet, 2, kKeyFormat);
    if (HasFatalFailure()) return;
  }
}

TEST_F(InPlace, TextsCompareAsTheirCharactersDo) {
  constexpr unsigned char kLanguages[] = {1, 1, 2, 6, 7, 8, 14, 20, 22, 24, 26, 30, 0, 200};
  constexpr unsigned char kSets[] = {1, 1, 1, 2, 13, 15};
  for (unsigned round = 0; round < 500000; ++round) {
    auto const words = Pair<char>(OneIn(8) ? 40 : 12, [this] { return Character(); });
    Check(words[0], words[1], kSets[Below(std::size(kSets))],
          kLanguages[Below(std::size(kLanguages))], kTextFormat);
    if (HasFatalFailure()) return;
  }
}

/// A zero within a text ends it, wherever it stands, whatever the record says of its length.
TEST_F(InPlace, TextsEndAtTheirFirstZero) {
  for (unsigned round = 0; round < 100000; ++round) {
    auto words = Pair<char>(20, [this] { return Character(); });
    for (auto& word : words) {
      if (!word.empty() && OneIn(2)) word[Below(static_cast<unsigned>(word.size()))] = '\0';
    }
    Check(words[0], words[1], 1, 1, kTextFormat);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace xo::test

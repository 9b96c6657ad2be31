#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string_view>
#include <vector>

#include "tests/base/stored_bytes.hpp"
#include "xotypemgr.hpp"

/// Stored strings put together byte by byte, and their comparison through the manager.
namespace xo::test {

using StoredBytes = std::vector<unsigned char>;

inline constexpr unsigned char kLittle = 1, kBig = 2, kInMemory = 8, kKeyLittle = 0x81,
                               kKeyBig = 0x82;
/// For loops over a few operators.
using Operators = std::initializer_list<unsigned short>;

inline constexpr unsigned short kLiteral = 0x0010;

inline bool IsBig(unsigned char format) { return format % 16 == 2; }

/// A unit of 16 bits as it is stored.
inline StoredBytes UnitBytes(unsigned unit, unsigned char format) {
  auto const low = static_cast<unsigned char>(unit & 255);
  auto const high = static_cast<unsigned char>(unit >> 8);
  return IsBig(format) ? StoredBytes{high, low} : StoredBytes{low, high};
}

inline StoredBytes operator+(StoredBytes one, StoredBytes const& other) {
  one.insert(one.end(), other.begin(), other.end());
  return one;
}

/// length | code set | language | text | 0x00 | 0xFF
inline StoredBytes RecordOf(StoredBytes const& text, unsigned char codeSet, unsigned char language,
                            unsigned char format) {
  return UnitBytes(static_cast<unsigned>(text.size()) + 4, format) +
         StoredBytes{codeSet, language} + text + StoredBytes{0x00, 0xFF};
}

/// A record of one byte a character.
inline StoredBytes Record(std::string_view text, unsigned char format = kLittle,
                          unsigned char codeSet = 1, unsigned char language = 1) {
  return RecordOf(StoredBytes(text.begin(), text.end()), codeSet, language, format);
}

/// A record of units of 16 bits.
inline StoredBytes WideRecord(std::vector<unsigned> const& units, unsigned char format,
                              unsigned char codeSet = 253, unsigned char language = 1) {
  StoredBytes text;
  for (unsigned const unit : units) {
    StoredBytes const bytes = UnitBytes(unit, format);
    text.insert(text.end(), bytes.begin(), bytes.end());
  }
  return RecordOf(text, codeSet, language, format);
}

/// An index key: orders, with their group in the place of the language.
inline StoredBytes Key(std::vector<unsigned> const& orders, unsigned char format = kKeyLittle,
                       unsigned char group = 2) {
  return WideRecord(orders, format, 254, group);
}

/// One length, and texts of one byte a character, each ended by a zero.
inline StoredBytes OlderRecord(std::initializer_list<std::string_view> texts,
                               unsigned char format = kLittle) {
  StoredBytes run;
  for (std::string_view const text : texts) {
    run.insert(run.end(), text.begin(), text.end());
    run.push_back(0);
  }
  return UnitBytes(static_cast<unsigned>(run.size()), format) + run;
}

/// Orders by their layout: letters count from 3 in bits 2 to 6, small ones have bit 12 set, and the
/// accent stands in bits 7 to 11.
constexpr unsigned Upper(char letter, unsigned accent = 0) {
  return 16384u + accent * 128u + static_cast<unsigned>(letter - 'A' + 3) * 4u;
}
constexpr unsigned Lower(char letter, unsigned accent = 0) {
  return Upper(static_cast<char>(letter - 'a' + 'A'), accent) + 4096u;
}
constexpr unsigned kSpace = 20, kHyphen = 116, kComma = 117;
constexpr unsigned Digit(unsigned digit) { return 16128 + 10 * digit; }

/// The orders of a text of English letters, spaces, hyphens and digits.
inline std::vector<unsigned> Orders(std::string_view text) {
  std::vector<unsigned> orders;
  for (char const c : text) {
    if (c == ' ') {
      orders.push_back(kSpace);
    } else if (c == '-') {
      orders.push_back(kHyphen);
    } else if (c >= '0' && c <= '9') {
      orders.push_back(Digit(static_cast<unsigned>(c - '0')));
    } else {
      orders.push_back(c >= 'a' ? Lower(c) : Upper(c));
    }
  }
  return orders;
}

/// Sign of the result, and the status.
struct Answer {
  int sign;
  int status;
  bool operator==(Answer const&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, Answer const& answer) {
  return out << "sign " << answer.sign << " status " << answer.status;
}

inline int SignOf(int value) { return (value > 0) - (value < 0); }

inline constexpr int kExceeded = 2101, kFirstCut = 2114, kSecondCut = 2115, kUnsupported = -2999;

/// What the manager's comparison of strings is asked.
struct Question {
  unsigned char format = kLittle;
  unsigned short cmpOp = kLiteral;
  unsigned count = 1;
  bool older = false;
};

/// Compares operands that end where their buffers do. `declared` lengths of -1 are those of the
/// buffers, 0 none.
inline Answer Compare(StoredBytes const& one, StoredBytes const& two, Question question,
                      int declared1 = -1, int declared2 = -1) {
  // Odd addresses, since stored bytes may lie anywhere.
  PlacedBytes const first(one, 1);
  PlacedBytes const second(two, 1);
  auto const length = [](int declared, StoredBytes const& bytes) {
    return declared >= 0 ? static_cast<unsigned>(declared) : static_cast<unsigned>(bytes.size());
  };
  int status = 12345;
  int const result =
      XoTypeMgr(question.older ? 3 : 5)
          .Cmp(XoSTRING_T, length(declared1, one), first.Data(), length(declared2, two),
               second.Data(), question.cmpOp, question.count, question.format, status);
  return {SignOf(result), status};
}

/// The first `bytes` bytes.
inline StoredBytes CutTo(StoredBytes bytes, std::size_t size) {
  bytes.resize(std::min(size, bytes.size()));
  return bytes;
}

}  // namespace xo::test

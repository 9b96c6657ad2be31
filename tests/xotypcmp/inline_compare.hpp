#pragma once

#include <ostream>
#include <vector>

#include "tests/xotypes/inline_bytes.hpp"

/// Comparison of stored weighted texts through the manager.
namespace xo::test {

inline constexpr unsigned short kLiteral = 0x10, kPattern = 0;
inline constexpr int kExceeded = 2101, kUnsupported = -2999;

/// Sign of the result, and the status.
struct Answer {
  int sign;
  int status;
  bool operator==(Answer const&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, Answer const& answer) {
  return out << "sign " << answer.sign << " status " << answer.status;
}

/// A record of plain text, and a key.
inline ByteList Plain(std::string_view text, unsigned char format = kLittle) {
  return Inline(0x40, Ended(text), format);
}
template <class Text>
ByteList KeyOf(std::string_view text, unsigned char format = kLittle) {
  return Inline(0xC0, WeightsOf<Text>(text), format);
}

/// Compares records that end where their buffers do, which are their declared lengths as well.
template <class Text>
Answer Compared(ByteList const& one, ByteList const& two, unsigned short cmpOp,
                unsigned char format = kLittle, unsigned count = 1) {
  PlacedBytes const first(one, 1), second(two, 1);
  int status = 12345;
  int const result = XoTypeMgr().Cmp(kId<Text>, static_cast<unsigned>(one.size()), first.Data(),
                                     static_cast<unsigned>(two.size()), second.Data(), cmpOp, count,
                                     format, status);
  return {SignOf(result), status};
}

/// The same with no length declared.
template <class Text>
Answer ComparedWithoutLengths(ByteList const& one, ByteList const& two, unsigned short cmpOp,
                              unsigned char format = kLittle) {
  PlacedBytes const first(one, 1), second(two, 1);
  int status = 12345;
  int const result =
      XoTypeMgr().Cmp(kId<Text>, 0, first.Data(), 0, second.Data(), cmpOp, 1, format, status);
  return {SignOf(result), status};
}

/// The same of values in memory.
template <class Text>
Answer ComparedInMemory(std::vector<Text> one, std::vector<Text> two, unsigned short cmpOp) {
  int status = 12345;
  int const result = XoTypeMgr().Cmp(kId<Text>, 0, one.data(), 0, two.data(), cmpOp,
                                     static_cast<unsigned>(one.size()), kMemory, status);
  return {SignOf(result), status};
}

/// The first bytes.
inline ByteList CutTo(ByteList bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

}  // namespace xo::test

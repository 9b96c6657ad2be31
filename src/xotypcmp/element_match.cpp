#include "src/xotypcmp/element_match.hpp"

#include <cstring>

#include "base/bytes.hpp"

namespace xo {

// The C library compares long runs faster than any loop written here, but does not say where they
// differ. So it is given block by block, and the block that differs is halved until few words are
// left to look at one by one.
std::size_t MatchingPrefix(unsigned char const* a, unsigned char const* b, std::size_t size,
                           std::size_t width) {
  constexpr std::size_t kBlock = 1024;
  constexpr std::size_t kFewWords = 64;
  std::size_t matched = 0;
  while (size - matched >= kBlock && std::memcmp(a + matched, b + matched, kBlock) == 0) {
    matched += kBlock;
  }
  for (std::size_t half = kBlock / 2; half >= kFewWords; half /= 2) {
    if (size - matched >= half && std::memcmp(a + matched, b + matched, half) == 0) matched += half;
  }
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  while (size - matched >= kWord &&
         LoadBytes<std::uint64_t>(a + matched) == LoadBytes<std::uint64_t>(b + matched)) {
    matched += kWord;
  }
  while (matched < size && a[matched] == b[matched]) ++matched;
  return matched - matched % width;
}

}  // namespace xo

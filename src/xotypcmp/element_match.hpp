#pragma once

#include <cstddef>

namespace xo {

/// How many bytes at the start of `a` and `b` are the same, rounded down to a multiple of `width`,
/// out of `size` bytes, itself such a multiple.
std::size_t MatchingPrefix(unsigned char const* a, unsigned char const* b, std::size_t size,
                           std::size_t width);

}  // namespace xo

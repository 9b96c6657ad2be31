#pragma once

#include <cstdint>
#include <type_traits>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {

/// Keeps a row as it is and puts it back at the end of a scope, so that a test can put functions of
/// its own into the slots.
class RowKeeper {
 public:
  explicit RowKeeper(TypeDescriptor* kept) : row(kept), saved(*kept) {}
  ~RowKeeper() { *row = saved; }
  RowKeeper(RowKeeper const&) = delete;
  RowKeeper& operator=(RowKeeper const&) = delete;

  TypeDescriptor* operator->() const { return row; }

 private:
  TypeDescriptor* row;
  TypeDescriptor saved;
};

using Words = std::vector<std::uint64_t>;

template <class T>
std::uint64_t WordOf(T argument) {
  if constexpr (std::is_pointer_v<T>)
    return reinterpret_cast<std::uintptr_t>(argument);
  else if constexpr (std::is_null_pointer_v<T>)
    return 0;
  else
    return static_cast<std::uint64_t>(argument);
}

/// The arguments of a call as numbers, to be compared as one list.
template <class... T>
Words WordsOf(T... arguments) {
  return {WordOf(arguments)...};
}

}  // namespace xo::test

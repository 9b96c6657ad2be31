#pragma once

#include "xoidentifiers.hpp"

/// What the identifiers share where they share fields.
namespace xo {

/// Order of two 48-bit numbers.
template <class A, class B>
int OrderOfNumbers(A const& a, B const& b) {
  if (a.high != b.high) return int{a.high} - int{b.high};
  return (a.low > b.low) - (a.low < b.low);
}

template <class A, class B>
void TakeNumber(A& a, B const& b) {
  a.block = b.block;
  a.low = b.low;
  a.high = b.high;
}

template <class A, class B>
void TakeClass(A& a, B const& b) {
  a.classNumber = b.classNumber;
  a.version = b.version;
}

}  // namespace xo

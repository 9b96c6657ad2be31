#pragma once

#include <cstddef>

#include "_xonulty.hpp"
#include "src/xotypes/scalar_family.hpp"

/// The stored form of numbers that can be null.
namespace xo {

/// An element is the number in the stored form of its own family `Plain`, and a byte that is 1 for
/// null and 0 otherwise: ahead of the number on disk, behind it under a format with the memory bit.
/// There too elements are packed, while arrays in memory stand at the size of `Element`.
template <class Element, class Plain>
struct NullElements {
  using Number = typename Element::Plain;

  static unsigned Store(void* target, void const* source, unsigned char format, unsigned count) {
    unsigned char const nibble = FormNibble(format);
    auto* to = static_cast<unsigned char*>(target);
    for (std::size_t index = 0; index < count; ++index) {
      void const* const number = Advance(source, index * sizeof(Element));
      unsigned char const null = NullByteOf(number) != 0 ? 1 : 0;
      if (!HasMemoryBit(nibble)) *to++ = null;
      to += Plain::kStore(to, number, nibble, 1);
      if (HasMemoryBit(nibble)) *to++ = null;
    }
    return static_cast<unsigned>(to - static_cast<unsigned char*>(target));
  }

  static unsigned Load(void* target, void const* source, unsigned char format, unsigned count) {
    unsigned char const nibble = FormNibble(format);
    auto const* from = static_cast<unsigned char const*>(source);
    for (std::size_t index = 0; index < count; ++index) {
      unsigned char null = 0;
      Number number;
      if (!HasMemoryBit(nibble)) null = *from++;
      from += Plain::kLoad(&number, from, nibble, 1);
      if (HasMemoryBit(nibble)) null = *from++;
      StoreBytes(Advance(target, index * sizeof(Element)), MakeElement(number, null));
    }
    return static_cast<unsigned>(from - static_cast<unsigned char const*>(source));
  }

  static unsigned NullSizeGet(unsigned count) {
    return Plain::kSizeGet(nullptr, 0, 0, count) + count;
  }
  static unsigned SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
    return NullSizeGet(count);
  }

  /// Loads one element.
  static void Decode(void* target, void const* source, unsigned char format) {
    unsigned char const nibble = FormNibble(format);
    // Numbers of the machine's own form need no call.
    if (nibble == FormLittle) {
      StoreBytes(target, Read<true>(source));
    } else if (nibble == FormMemory) {
      StoreBytes(target, Read<false>(source));
    } else {
      Load(target, source, nibble, 1);
    }
  }

  // An element at `source` whose number is in the machine's own form, with its null byte ahead of
  // that or behind it.
  template <bool kNullAhead>
  static Number NumberAt(void const* source) {
    return LoadBytes<Number>(Advance(source, kNullAhead ? 1 : 0));
  }
  template <bool kNullAhead>
  static unsigned char NullAt(void const* source) {
    return *Advance(source, kNullAhead ? 0 : sizeof(Number));
  }
  template <bool kNullAhead>
  static Element Read(void const* source) {
    return MakeElement(NumberAt<kNullAhead>(source), NullAt<kNullAhead>(source));
  }

  /// The null byte of an element in memory.
  static unsigned char NullByteOf(void const* element) { return NullAt<false>(element); }

 private:
  /// What a stored number and null byte stand for: no byte but 1 is null.
  static Element MakeElement(Number number, unsigned char null) {
    return null == 1 ? Element() : Element(number);
  }
};

template <class Element, class Plain>
struct NullFamily {
  using Elements = NullElements<Element, Plain>;
  static constexpr unsigned kWidth = sizeof(Element);
  static constexpr bool kIsPlain = false;
  static constexpr TypeDescriptor::StoreFunction* kStore = Elements::Store;
  static constexpr TypeDescriptor::LoadFunction* kLoad = Elements::Load;
  static constexpr TypeDescriptor::SizeGetFunction* kSizeGet = Elements::SizeGet;
  static constexpr TypeDescriptor::NullSizeGetFunction* kNullSizeGet = Elements::NullSizeGet;

  static unsigned FileSize(unsigned char, unsigned count) { return Elements::NullSizeGet(count); }

  static void Decode(void* target, void const* source, unsigned char format) {
    Elements::Decode(target, source, format);
  }
};

}  // namespace xo

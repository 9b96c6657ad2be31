#pragma once

#include <type_traits>

#include "base/bytes.hpp"
#include "base/scalar_disk.hpp"
#include "xotypes.hpp"

/// The disk families of the plain scalars: for each, the base-services helpers that fill a row's
/// slots 4 to 7, its size in a file, and how a single stored element is decoded. All rows of a
/// family share their memory operations.
namespace xo {

/// A family whose disk width is its width in memory. `DecodeRoutine` converts one element, or any
/// number of them.
template <unsigned Width, auto* StoreRoutine, auto* LoadRoutine, auto* DecodeRoutine,
          auto* SizeRoutine, auto* NullSizeRoutine>
struct ScalarFamily {
  static constexpr unsigned kWidth = Width;
  static constexpr bool kCreateZeroes = false;
  /// Whether an element is a number of the machine and nothing else.
  static constexpr bool kIsPlain = true;
  static constexpr TypeDescriptor::StoreFunction* kStore = StoreRoutine;
  static constexpr TypeDescriptor::LoadFunction* kLoad = LoadRoutine;
  static constexpr TypeDescriptor::SizeGetFunction* kSizeGet = SizeRoutine;
  static constexpr TypeDescriptor::NullSizeGetFunction* kNullSizeGet = NullSizeRoutine;

  static unsigned FileSize(unsigned char, unsigned count) { return count * Width; }

  static void Decode(void* target, void const* source, unsigned char format) {
    if constexpr (std::is_invocable_v<decltype(DecodeRoutine), void*, void*, unsigned char>) {
      DecodeRoutine(target, source, format);
    } else {
      DecodeRoutine(target, source, format, 1);
    }
  }
};

/// A family whose sizes are the base services' to know.
template <class Family>
struct SizedByHelper : Family {
  static unsigned FileSize(unsigned char format, unsigned count) {
    return Family::kSizeGet(nullptr, FormMemory, format, count);
  }
};

using ShortFamily =
    ScalarFamily<2, ShortStore, ShortStore, ShortStoreOne, ShortSizeGet, ShortNullSizeGet>;
using LongFamily =
    ScalarFamily<4, LongStore, LongStore, LongStoreOne, LongSizeGet, LongNullSizeGet>;
using LongLongFamily =
    ScalarFamily<8, O_8BStore, O_8BStore, O_8BStoreOne, O_8BSizeGet, O_8BNullSizeGet>;
using FloatFamily = SizedByHelper<
    ScalarFamily<4, FloatStore, FloatStore, FloatStore, FloatSizeGet, FloatNullSizeGet>>;
using DoubleFamily = SizedByHelper<
    ScalarFamily<8, DoubleStore, DoubleStore, DoubleStore, DoubleSizeGet, DoubleNullSizeGet>>;
using IntFamily =
    SizedByHelper<ScalarFamily<4, IntStore, IntLoad, IntLoad, IntSizeGet, IntNullSizeGet>>;
// Single elements of `unsigned` decode as those of `int` do.
using UnsignedFamily = SizedByHelper<
    ScalarFamily<4, UnsignedStore, UnsignedLoad, IntLoad, IntSizeGet, IntNullSizeGet>>;

/// The bytes, whose elements are the same in every form.
struct CharFamily : ScalarFamily<1, CharStore, CharStore, CharStore, CharSizeGet, CharNullSizeGet> {
  // Only the byte-sized rows clear what they create; the others are to stay as they are.
  static constexpr bool kCreateZeroes = true;
  static void Decode(void* target, void const* source, unsigned char) {
    StoreBytes(target, LoadBytes<o_u1b>(source));
  }
};

/// Width of one stored element.
template <class Family>
unsigned DiskWidth(unsigned char format) {
  return Family::FileSize(format, 1);
}

/// Width of an element at hand: in memory form the machine's, on disk the family's.
template <class Family>
unsigned ElementWidth(unsigned char format) {
  return FormNibble(format) == FormMemory ? Family::kWidth : DiskWidth<Family>(format);
}

/// The stored element at `source`, as the family's helper decodes it.
template <class Value, class Family>
Value DecodeElement(void const* source, unsigned char format) {
  Value value;
  Family::Decode(&value, source, format);
  return value;
}

}  // namespace xo

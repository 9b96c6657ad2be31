#include "base/scalar_disk.hpp"

#include "base/bytes.hpp"
#include "base/format.hpp"

namespace xo {
namespace {

/// Copies `count` elements of `Width` bytes, reversing the bytes of each under `FormBig`.
template <unsigned Width>
unsigned StoreElements(void* target, void const* source, unsigned char format, unsigned count) {
  if (count == 0) return 0;
  if (Width == 1 || FormNibble(format) != FormBig) {
    std::memmove(target, source, std::size_t{count} * Width);
  } else {
    for (std::size_t offset = 0; offset < std::size_t{count} * Width; offset += Width) {
      auto const element = LoadBytes<UnsignedOf<Width>>(Advance(source, offset));
      StoreBytes(Advance(target, offset), ReverseBytes(element));
    }
  }
  return count * Width;
}

}  // namespace
}  // namespace xo

unsigned CharStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<1>(target, source, format, count);
}

unsigned CharSizeGet(void const*, unsigned char, unsigned char, unsigned count) { return count; }

unsigned CharNullSizeGet(unsigned count) { return count; }

unsigned ShortStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<2>(target, source, format, count);
}

unsigned ShortStoreOne(void* target, void const* source, unsigned char format) {
  return xo::StoreElements<2>(target, source, format, 1);
}

unsigned ShortSizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return count * 2;
}

unsigned ShortNullSizeGet(unsigned count) { return count * 2; }

unsigned LongStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned LongStoreOne(void* target, void const* source, unsigned char format) {
  return xo::StoreElements<4>(target, source, format, 1);
}

unsigned LongSizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return count * 4;
}

unsigned LongNullSizeGet(unsigned count) { return count * 4; }

unsigned IntStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned IntLoad(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned IntSizeGet(void const*, unsigned char, unsigned char, unsigned count) { return count * 4; }

unsigned IntNullSizeGet(unsigned count) { return count * 4; }

unsigned UnsignedStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned UnsignedLoad(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned FloatStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<4>(target, source, format, count);
}

unsigned FloatSizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return count * 4;
}

unsigned FloatNullSizeGet(unsigned count) { return count * 4; }

unsigned DoubleStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<8>(target, source, format, count);
}

unsigned DoubleSizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return count * 8;
}

unsigned DoubleNullSizeGet(unsigned count) { return count * 8; }

unsigned O_8BStore(void* target, void const* source, unsigned char format, unsigned count) {
  return xo::StoreElements<8>(target, source, format, count);
}

unsigned O_8BStoreOne(void* target, void const* source, unsigned char format) {
  return xo::StoreElements<8>(target, source, format, 1);
}

unsigned O_8BSizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return count * 8;
}

unsigned O_8BNullSizeGet(unsigned count) { return count * 8; }

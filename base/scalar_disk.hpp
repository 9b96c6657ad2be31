#pragma once

#include "export.hpp"

/// Disk form of the plain scalars, one family for each width and kind.
///
/// Every `XxxStore` converts `count` elements from `source` to `target` and returns the number of
/// disk bytes processed. Under a format whose low nibble is `FormBig` the bytes of each element are
/// reversed, under every other format they are copied; the upper nibble is not looked at. The
/// conversion is its own inverse, so one routine serves for storing and for loading. Neither
/// pointer needs alignment, `target` may be `source`, and with a `count` of 0 both may be null. The
/// caller provides `count` whole elements on both sides.
///
/// `XxxSizeGet` answers from `count` alone: `data` is never read and may be null. Sizes are
/// computed in 32 bits and wrap.
///
/// An embedding system may link its own library in place of this one. It keeps this header, and
/// what the type manager builds on: little-endian disk form is the machine's own, so that such an
/// element is read in place at its width in memory; equal stored bytes are equal values; and no
/// width is 0.

XO_EXPORT unsigned CharStore(void* target, void const* source, unsigned char format,
                             unsigned count);
XO_EXPORT unsigned CharSizeGet(void const* data, unsigned char dataFormat, unsigned char diskFormat,
                               unsigned count);
XO_EXPORT unsigned CharNullSizeGet(unsigned count);

XO_EXPORT unsigned ShortStore(void* target, void const* source, unsigned char format,
                              unsigned count);
XO_EXPORT unsigned ShortStoreOne(void* target, void const* source, unsigned char format);
XO_EXPORT unsigned ShortSizeGet(void const* data, unsigned char dataFormat,
                                unsigned char diskFormat, unsigned count);
XO_EXPORT unsigned ShortNullSizeGet(unsigned count);

XO_EXPORT unsigned LongStore(void* target, void const* source, unsigned char format,
                             unsigned count);
XO_EXPORT unsigned LongStoreOne(void* target, void const* source, unsigned char format);
XO_EXPORT unsigned LongSizeGet(void const* data, unsigned char dataFormat, unsigned char diskFormat,
                               unsigned count);
XO_EXPORT unsigned LongNullSizeGet(unsigned count);

/// The family `Int` may have a disk width of its own, so it loads by a routine of its own and its
/// users ask `IntSizeGet` for the width. Here an `int` takes 4 bytes on disk in every format.
XO_EXPORT unsigned IntStore(void* target, void const* source, unsigned char format, unsigned count);
XO_EXPORT unsigned IntLoad(void* target, void const* source, unsigned char format, unsigned count);
XO_EXPORT unsigned IntSizeGet(void const* data, unsigned char dataFormat, unsigned char diskFormat,
                              unsigned count);
XO_EXPORT unsigned IntNullSizeGet(unsigned count);

/// The family `Unsigned` takes its sizes from `IntSizeGet` and `IntNullSizeGet`.
XO_EXPORT unsigned UnsignedStore(void* target, void const* source, unsigned char format,
                                 unsigned count);
XO_EXPORT unsigned UnsignedLoad(void* target, void const* source, unsigned char format,
                                unsigned count);

XO_EXPORT unsigned FloatStore(void* target, void const* source, unsigned char format,
                              unsigned count);
XO_EXPORT unsigned FloatSizeGet(void const* data, unsigned char dataFormat,
                                unsigned char diskFormat, unsigned count);
XO_EXPORT unsigned FloatNullSizeGet(unsigned count);

XO_EXPORT unsigned DoubleStore(void* target, void const* source, unsigned char format,
                               unsigned count);
XO_EXPORT unsigned DoubleSizeGet(void const* data, unsigned char dataFormat,
                                 unsigned char diskFormat, unsigned count);
XO_EXPORT unsigned DoubleNullSizeGet(unsigned count);

XO_EXPORT unsigned O_8BStore(void* target, void const* source, unsigned char format,
                             unsigned count);
XO_EXPORT unsigned O_8BStoreOne(void* target, void const* source, unsigned char format);
XO_EXPORT unsigned O_8BSizeGet(void const* data, unsigned char dataFormat, unsigned char diskFormat,
                               unsigned count);
XO_EXPORT unsigned O_8BNullSizeGet(unsigned count);

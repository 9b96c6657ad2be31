#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <xotypemgr.hpp>

/// What the fuzz targets share: a choice of row and format, and buffers of an exact size.
namespace fuzz {

/// Elements at most where nothing but the count limits, so that a run stays fast.
inline constexpr unsigned kMostElements = 300;

/// Whether a count asks for elements that only a length bounds.
enum class Counts { kSmall, kAny };

/// An operation on any id, also one without a row, of either table; but not on text and blobs,
/// which own storage and cannot be made of any bytes.
struct Request {
  explicit Request(FuzzedDataProvider& input, Counts counts = Counts::kSmall)
      : manager(input.ConsumeBool() ? 3 : 5),
        type(AnyType(input)),
        format(input.ConsumeIntegral<unsigned char>()),
        count(counts == Counts::kAny && input.ConsumeBool()
                  ? input.ConsumeIntegral<unsigned>()
                  : input.ConsumeIntegralInRange<unsigned>(0, kMostElements)) {
    // These may look at no length.
    if (IsIdentifier()) count = std::min(count, kMostElements);
  }

  /// A length for an operand: not 0, which means no limit, where the count is a large one.
  unsigned LengthFrom(FuzzedDataProvider& input) const {
    auto const length = input.ConsumeIntegral<std::uint16_t>();
    return length == 0 && count > kMostElements ? 1 : length;
  }

  XoTypeMgr manager;
  char type;
  unsigned char format;
  unsigned count;

  /// Size of an element in memory, which no stored form of those rows that read their elements
  /// exceeds.
  std::size_t Width() const { return manager.MemLenGet(type, 1); }

  /// Size of an element in the request's own format, as a walk over an array steps.
  std::size_t StepWidth() const {
    // Identifiers are in memory under no format but the one.
    if (IsIdentifier() ? format == FormMemory : (format & 15) == FormMemory) return Width();
    return manager.DiskLenGet(type, nullptr, format, 1, format);
  }

  bool IsIdentifier() const {
    return type == XoOBJID_T || type == XoCLID_T || type == XoREF_T || type == XoSEAL_T;
  }

  /// Bytes that an operation on `count` elements may touch when told that `length` are there:
  /// whole elements, as a partial last one is touched whole.
  std::size_t Reach(unsigned length) const {
    std::size_t const width = StepWidth();
    std::size_t const whole = count * width;
    if (length == 0 || width == 0 || IsIdentifier()) return whole;
    return std::min(whole, (length + width - 1) / width * width);
  }

 private:
  static char AnyType(FuzzedDataProvider& input) {
    auto const id = static_cast<char>(input.ConsumeIntegral<std::int8_t>());
    constexpr char kNoRow = 99;
    switch (id) {
      case XoSTRING_T:
      case XoISTRING_T:
      case XoCASEISTRING_T:
      case XoBLOB_T:
        return kNoRow;
      default:
        return id;
    }
  }
};

/// A buffer on the heap of exactly `size` bytes, so that the sanitizer sees a byte too far; filled
/// from the input as far as that goes. It starts at an odd address where `skew` is set.
class Buffer {
 public:
  Buffer(FuzzedDataProvider& input, std::size_t size, bool skew)
      : bytes(new unsigned char[size + (skew ? 1 : 0)]), length(size), offset(skew ? 1 : 0) {
    std::size_t const filled = input.ConsumeData(Data(), size);
    std::fill(Data() + filled, Data() + size, std::uint8_t{0});
  }

  unsigned char* Data() { return bytes.get() + offset; }

  /// Takes over the bytes of `other`, as far as both go, but for one bit chosen by the input.
  void CopyFrom(Buffer& other, FuzzedDataProvider& input) {
    std::size_t const both = std::min(length, other.length);
    std::copy_n(other.Data(), both, Data());
    if (both == 0 || input.ConsumeBool()) return;
    auto const place = input.ConsumeIntegralInRange<std::size_t>(0, both - 1);
    Data()[place] ^= static_cast<unsigned char>(1U << input.ConsumeIntegralInRange(0, 7));
  }

 private:
  std::unique_ptr<unsigned char[]> bytes;
  std::size_t length;
  std::size_t offset;
};

/// Stops the run when a promise is broken.
inline void Require(bool held) {
  if (!held) __builtin_trap();
}

}  // namespace fuzz

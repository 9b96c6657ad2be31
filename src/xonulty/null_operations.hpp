#pragma once

#include <cstddef>

#include "src/xoint64/int64_family.hpp"
#include "src/xonulty/null_family.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/number_print.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/scalar_operations.hpp"
#include "src/xotypes/scalar_step.hpp"
#include "xostring.hpp"

/// The slots of numbers that can be null. What is not null goes the way of the plain number.
namespace xo {

template <class Element, class Plain>
struct NullOperations {
  using Number = typename Element::Plain;
  using Family = NullFamily<Element, Plain>;
  using Elements = typename Family::Elements;
  using Fixed = ScalarOperations<Family>;

  static void Constructor(void* values, unsigned count, unsigned) {
    for (std::size_t index = 0; index < count; ++index) {
      StoreBytes(Advance(values, index * sizeof(Element)), Element());
    }
  }

  /// Slot `Copy`, which has no elements to make where there is no memory.
  static void Copy(void* target, void* source, unsigned count, int fill) {
    if (target != nullptr) Fixed::Assignment(target, source, count, fill);
  }

  static unsigned Hash(unsigned char format, unsigned length, void* data, unsigned count,
                       int& error) {
    unsigned const width = ElementWidth<Family>(format);
    unsigned const reachable = ReachableElements(count, length, width);
    error = reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
    unsigned char const nibble = FormNibble(format);
    if (nibble == FormLittle) return HashInPlace<true, sizeof(Number) + 1>(data, reachable);
    if (nibble == FormMemory) return HashInPlace<false, sizeof(Element)>(data, reachable);
    o_u4b hash = 0;
    for (std::size_t index = 0; index < reachable; ++index) {
      hash ^= HashOf(DecodeElement<Element, Family>(Advance(data, index * width), nibble));
    }
    return hash;
  }

  static int IsNull(void* value) { return Elements::NullByteOf(value); }

  static int SetNull(void* value) {
    StoreBytes(value, Element());
    return 0;
  }

  // The number of an element is its beginning, so that the plain row takes the element for one.

  static XoString& Print(XoString& out, void* values, char const* format, unsigned) {
    if (IsNull(values) != 0) return out = NullPrintString;
    return NumberText<Number>::kPrint(out, values, format, 1);
  }

  static void* Scan(void* target, XoString& text, char const* format, unsigned) {
    if (target == nullptr) return nullptr;
    if (text.IsEmpty() != 0 || BeginsWithNull(text)) {
      SetNull(target);
    } else {
      NumberText<Number>::kScan(target, text, format, 1);
      SetPresent(target);
    }
    return target;
  }

  struct Text {
    static constexpr TypeDescriptor::PrintFunction* kPrint = Print;
    static constexpr TypeDescriptor::ScanFunction* kScan = Scan;
  };

  static int GetValue(void* value, unsigned, unsigned char format, NextValueCode code) {
    if (format != FormMemory || !AsksForNextValue(code)) return ERR_TM_NOT_SUPPORTED;
    NextValueCode const plainCode = IsNull(value) != 0 ? kLowestValue : code;
    int result = 0;
    if constexpr (std::is_same_v<Number, XoInt64>) {
      result = StepInt64(value, 1, format, plainCode);
    } else {
      result = StepValue<Number>(value, 1, format, plainCode);
    }
    SetPresent(value);
    return result;
  }

 private:
  static void SetPresent(void* value) { StoreBytes(Advance(value, sizeof(Number)), o_u1b{0}); }

  static o_u4b HashOf(Element element) {
    return element.isNull != 0 ? NullElementHashConstant : Fold(element.value) * kHashMultiplier;
  }

  template <bool kNullAhead, std::size_t kStride>
  static o_u4b HashInPlace(void const* data, std::size_t count) {
    auto const place = [data](std::size_t index) { return Advance(data, index * kStride); };
    // In groups, as most have no null in them, and in lanes that do not wait for one another.
    constexpr std::size_t kLanes = 4;
    o_u4b lanes[kLanes] = {};
    std::size_t index = 0;
    for (; index + kLanes <= count; index += kLanes) {
      unsigned nulls = 0;
      for (std::size_t lane = 0; lane < kLanes; ++lane) {
        nulls |= Elements::template NullAt<kNullAhead>(place(index + lane));
      }
      for (std::size_t lane = 0; lane < kLanes; ++lane) {
        void const* const element = place(index + lane);
        lanes[lane] ^=
            nulls == 0 ? Fold(Elements::template NumberAt<kNullAhead>(element)) * kHashMultiplier
                       : HashOf(Elements::template Read<kNullAhead>(element));
      }
    }
    for (; index < count; ++index) {
      lanes[0] ^= HashOf(Elements::template Read<kNullAhead>(place(index)));
    }
    return lanes[0] ^ lanes[1] ^ lanes[2] ^ lanes[3];
  }
};

}  // namespace xo

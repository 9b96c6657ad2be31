#pragma once

#include <cstddef>

#include "src/xoint64/int64_family.hpp"
#include "src/xonulty/null_family.hpp"
#include "src/xonulty/null_hash.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/number_print.hpp"
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
    // Numbers of one byte are the machine's own in every disk form.
    if (nibble == FormLittle || (nibble == FormBig && sizeof(Number) == 1)) {
      return NullHash<Elements, true, sizeof(Number) + 1>::Of(data, reachable);
    }
    if (nibble == FormMemory)
      return NullHash<Elements, false, sizeof(Element)>::Of(data, reachable);
    o_u4b hash = 0;
    for (std::size_t index = 0; index < reachable; ++index) {
      Element const element = DecodeElement<Element, Family>(Advance(data, index * width), nibble);
      hash ^= HashOfElement(element.value, element.isNull != 0);
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
};

}  // namespace xo

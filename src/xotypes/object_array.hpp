#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "base/allocation.hpp"
#include "base/bytes.hpp"

/// Arrays of objects, as rows of a class type make and free them.
///
/// A `count` of 0 or 1 is a single element with nothing before it. More have a word ahead of them
/// that holds their number, and it is that number that `Delete` destroys: of its argument it only
/// asks on which side of 1 it is. Where a constructor fails, nothing is left of the others.
namespace xo {

template <class Object>
struct ObjectArray {
  static_assert(alignof(Object) <= sizeof(std::uint64_t));

  static void* Create(unsigned count) { return CreateWith(count); }

  /// The same with elements that are made of `arguments`.
  template <class... Arguments>
  static void* CreateWith(unsigned count, Arguments const&... arguments) {
    std::size_t const elements = std::max(count, 1u);
    std::size_t const cookie = count > 1 ? kCookie : 0;
    std::unique_ptr<void, Release> memory(AllocateArray(cookie + elements * sizeof(Object)));
    if (cookie != 0) StoreBytes(memory.get(), std::uint64_t{count});
    Object* const first = Element(Advance(memory.get(), cookie), 0);
    if constexpr (sizeof...(arguments) == 0) {
      ConstructAll(first, elements);
    } else {
      std::uninitialized_fill_n(first, elements, Object(arguments...));
    }
    memory.release();
    return first;
  }

  static void* Delete(void* values, unsigned count) {
    if (values == nullptr) return nullptr;
    if (count <= 1) {
      Element(values, 0)->~Object();
      ReleaseArray(values);
      return nullptr;
    }
    void* const memory = static_cast<unsigned char*>(values) - kCookie;
    for (std::size_t left = LoadBytes<std::uint64_t>(memory); left != 0; --left) {
      Element(values, left - 1)->~Object();
    }
    ReleaseArray(memory);
    return nullptr;
  }

  static void Constructor(void* values, unsigned count, unsigned) {
    ConstructAll(Element(values, 0), count);
  }

  static void Destructor(void* values, unsigned count, unsigned) {
    for (std::size_t index = 0; index < count; ++index) Element(values, index)->~Object();
  }

  static void Assignment(void* target, void* source, unsigned count, int fill) {
    for (std::size_t index = 0; index < count; ++index) {
      *Element(target, index) = *Element(source, fill != 0 ? 0 : index);
    }
  }

  static void Copy(void* target, void* source, unsigned count, int fill) {
    Object* const first = Element(target, 0);
    Object const* const model = Element(source, 0);
    if (fill != 0 && count != 0) {
      std::uninitialized_fill_n(first, count, *model);
    } else {
      std::uninitialized_copy_n(model, count, first);
    }
  }

  static Object* Element(void* values, std::size_t index) {
    return static_cast<Object*>(values) + index;
  }
  static Object const* Element(void const* values, std::size_t index) {
    return static_cast<Object const*>(values) + index;
  }

 private:
  static void ConstructAll(Object* first, std::size_t count) {
    if constexpr (std::is_trivially_default_constructible_v<Object>) {
      // Padding as well, as arrays of plain fields may be compared and copied by their bytes.
      if (count != 0) std::memset(static_cast<void*>(first), 0, count * sizeof(Object));
    } else {
      std::uninitialized_value_construct_n(first, count);
    }
  }

  struct Release {
    void operator()(void* memory) const { ReleaseArray(memory); }
  };
  static constexpr std::size_t kCookie = sizeof(std::uint64_t);
};

/// Slot `DefaultValue` of types whose default is a new element: such, or null where that is asked
/// for.
template <class Object>
void* NewOrNull(unsigned count, int asNull) {
  void* const values = ObjectArray<Object>::Create(count);
  if (asNull != 0) {
    for (std::size_t index = 0; index < std::max(count, 1u); ++index) {
      ObjectArray<Object>::Element(values, index)->SetNullValue();
    }
  }
  return values;
}

}  // namespace xo

#pragma once

#include <algorithm>
#include <cstddef>

#include "src/xodate/temporal_layout.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/scalar_step.hpp"

/// The remaining slots of the temporal rows: hash, step, null and default.
namespace xo {

// Hash.

/// Fold of the three fields of a date or of a time.
constexpr o_u4b FoldFields(int high, int middle, int low) {
  return (static_cast<o_u4b>(high) << 16) + (static_cast<o_u4b>(middle) << 8) +
         static_cast<o_u4b>(low);
}

constexpr o_u4b FoldOf(XoDate const& date) { return FoldFields(date.year, date.month, date.day); }
constexpr o_u4b FoldOf(XoTime const& time) {
  return FoldFields(time.hour, time.minute, time.second);
}
constexpr o_u4b FoldOf(XoDateTime const& value) { return FoldOf(value.date) ^ FoldOf(value.time); }
template <class Value>
constexpr o_u4b FoldOf(NanoSecondFields<Value> const& value) {
  return FoldOf(value.DateTime()) ^ static_cast<o_u4b>(value.nanoSeconds);
}

/// Of the element at an address. Dates and times hash the bytes as they lie, so that a stored date
/// of the other byte order hashes apart from its value; all others hash the value.
template <class Layout>
o_u4b FoldElement(void const* data, unsigned char nibble) {
  if constexpr (Layout::kDiskWidth == Layout::kMemoryWidth) {
    return FoldOf(LoadValue<typename Layout::Value>(data));
  } else {
    return FoldOf(Layout::Decode(data, nibble));
  }
}

/// Slot `Hash`, by the fold of an element at an address in a form.
template <class Layout, o_u4b (*Fold)(void const*, unsigned char) = FoldElement<Layout>>
unsigned HashTemporal(unsigned char format, unsigned length, void* data, unsigned count,
                      int& error) {
  unsigned char const nibble = FormNibble(format);
  unsigned const width = Layout::Width(nibble);
  unsigned const reachable = ReachableElements(count, length, width);
  error = reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
  o_u4b folds = 0;
  for (std::size_t index = 0; index < reachable; ++index) {
    folds ^= Fold(Advance(data, index * width), nibble);
  }
  return folds * kHashMultiplier;
}

// Step.

inline void StepOn(XoDate& value) { ++value; }
inline void StepOn(XoTime& value) { ++value; }
inline void StepOn(XoDateTime& value) { value.AddSeconds(1); }
inline void StepOn(XoDateTimeN& value) { value.AddNanoSeconds(1); }
inline void StepOn(XoTimeSpan& value) { value.AddNanoSeconds(1); }

inline void TakePresent(XoDate& value) { value.Today(); }
inline void TakePresent(XoTime& value) { value.Now(); }
inline void TakePresent(XoDateTime& value) { value.Now(); }
inline void TakePresent(XoDateTimeN& value) { value.Now(); }
/// There is no present length of time.
inline void TakePresent(XoTimeSpan&) {}

/// Slot `GetValue`: memory form alone, the first element alone. The lowest value is null. The next
/// one is what the class's own addition gives, where that is greater.
template <class Value>
int StepTemporal(void* data, unsigned, unsigned char format, NextValueCode code) {
  if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
  Value const present = LoadValue<Value>(data);
  Value value = present;
  if (code == kLowestValue) {
    value.SetNullValue();
  } else if (code == kPresentValue) {
    TakePresent(value);
  } else if (AsksForNextValue(code)) {
    StepOn(value);
    if (value.Compare(present, XoDateTime::kStrict) <= 0) return ERR_TM_NO_NEXT_VALUE;
  } else {
    return ERR_TM_NOT_SUPPORTED;
  }
  StoreBytes(data, value);
  return 0;
}

// Null and default.

template <class Value>
int IsNullSlot(void* value) {
  return LoadValue<Value>(value).IsNullValue();
}

template <class Value>
int SetNullSlot(void* value) {
  StoreBytes(value, Value::NullValue());
  return 0;
}

/// Slot `DefaultValue`: a new array of the class's default value, or of null.
template <class Value>
void* NewDefaults(unsigned count, int asNull) {
  auto* const values = static_cast<Value*>(ObjectArray<Value>::Create(count));
  std::fill_n(values, std::max(count, 1U),
              asNull != 0 ? Value::NullValue() : Value::DefaultValue());
  return values;
}

}  // namespace xo

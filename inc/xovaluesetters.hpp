#pragma once

namespace xo {

/// Assignment of the distinguished values of `Value`, which offers each by a static accessor.
template <class Value>
class ValueSetters {
 public:
  // Each copies the constant over the object and returns 0.
  constexpr int SetNullValue() { return Take(Value::NullValue()); }
  constexpr int SetDefaultValue() { return Take(Value::DefaultValue()); }
  constexpr int SetZeroValue() { return Take(Value::ZeroValue()); }

 private:
  constexpr int Take(Value const& constant) {
    auto& self = static_cast<Value&>(*this);
    // The constants themselves lie in memory that cannot be written.
    if (&self != &constant) self = constant;
    return 0;
  }
};

}  // namespace xo

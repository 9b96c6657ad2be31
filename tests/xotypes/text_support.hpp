#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

/// Values of rows as text, for tests of print, scan and conversion.
namespace xo::test {

/// What null strings are shown as.
inline std::string const kNullString = "<null>";

inline std::string Text(XoString const& string) {
  return string.IsNullValue() != 0 ? kNullString : std::string(string.StrGet());
}

/// Prints `count` values into a string that holds `before`.
inline std::string Print(int id, void* values, char const* format = nullptr, unsigned count = 1,
                         char const* before = "") {
  XoTypeMgr const manager;
  XoString out(before);
  EXPECT_EQ(&manager.PrintToXoString(static_cast<char>(id), out, values, format, count), &out);
  return Text(out);
}

template <class Value>
std::string PrintOne(int id, Value value, char const* format = nullptr) {
  return Print(id, &value, format, 1, "replaced");
}

/// Scans into a value that holds `before`.
template <class Value>
Value ScanOne(int id, XoString text, char const* format = nullptr, Value before = Value()) {
  XoTypeMgr const manager;
  EXPECT_EQ(manager.ScanFromXoString(static_cast<char>(id), &before, text, format, 1), &before);
  return before;
}

/// The texts that values convert to.
inline std::vector<std::string> ToTexts(int id, void* values, unsigned count) {
  XoTypeMgr manager;
  XoTypeConvertData* const strings = manager.ConvertTo(static_cast<char>(id), values, count);
  std::vector<std::string> texts;
  if (strings == nullptr) {
    ADD_FAILURE() << id << " does not convert";
    return texts;
  }
  EXPECT_EQ(strings->manager, &manager);
  EXPECT_EQ(strings->type, XoSTRING_T);
  EXPECT_EQ(strings->count, count);
  for (unsigned index = 0; index < count; ++index) {
    XoString const* const string = strings->GetString(static_cast<int>(index));
    texts.push_back(string != nullptr ? Text(*string) : "<missing>");
  }
  delete strings;
  return texts;
}

template <class Value>
std::string ToText(int id, Value value) {
  return ToTexts(id, &value, 1)[0];
}

/// A carrier of strings of the test's own, which a manager that becomes its owner must not free.
class OwnStrings {
 public:
  explicit OwnStrings(std::vector<XoString> texts) : strings(std::move(texts)) {
    carrier.type = XoSTRING_T;
    carrier.data = strings.data();
    carrier.count = static_cast<unsigned>(strings.size());
  }
  ~OwnStrings() { carrier.manager = nullptr; }
  OwnStrings(OwnStrings const&) = delete;
  OwnStrings& operator=(OwnStrings const&) = delete;

  XoTypeConvertData* Get() { return &carrier; }

 private:
  std::vector<XoString> strings;
  XoTypeConvertData carrier;
};

inline XoString NullString() {
  XoString string;
  string.SetNullValue();
  return string;
}

/// The values that texts convert to; `count` may ask for more of them than there are texts.
template <class Value>
std::vector<Value> FromTexts(int id, std::vector<XoString> texts, unsigned count) {
  XoTypeMgr manager;
  OwnStrings strings(std::move(texts));
  void* const values = manager.ConvertFrom(static_cast<char>(id), strings.Get(), count);
  EXPECT_EQ(strings.Get()->manager, &manager);
  if (values == nullptr) {
    ADD_FAILURE() << id << " does not convert";
    return std::vector<Value>(count);
  }
  auto const* const first = static_cast<Value const*>(values);
  std::vector<Value> const result(first, first + count);
  EXPECT_EQ(manager.Delete(static_cast<char>(id), values, count), nullptr);
  return result;
}

template <class Value>
Value FromText(int id, XoString const& text) {
  return FromTexts<Value>(id, {text}, 1)[0];
}

}  // namespace xo::test

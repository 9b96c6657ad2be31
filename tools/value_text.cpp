#include "tools/value_text.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "tools/printable.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// A number that can be null, and the number that it is.
struct NullableType {
  char nullable;
  char plain;
};

constexpr NullableType kNullableTypes[] = {
    {XoNULL_1B_T, Xo1B_T},         {XoNULL_U1B_T, XoU1B_T},       {XoNULL_2B_T, Xo2B_T},
    {XoNULL_U2B_T, XoU2B_T},       {XoNULL_INT_T, XoINT_T},       {XoNULL_UNSIGNED_T, XoUNSIGNED_T},
    {XoNULL_4B_T, Xo4B_T},         {XoNULL_U4B_T, XoU4B_T},       {XoNULL_FLOAT_T, XoFLOAT_T},
    {XoNULL_DOUBLE_T, XoDOUBLE_T}, {XoNULL_XOINT64_T, XoINT64_T}, {XoNULL_8B_T, Xo8B_T},
    {XoNULL_U8B_T, XoU8B_T},
};

std::string UsualFormat(char type) {
  switch (PlainTypeOf(type)) {
    case Xo1B_T:
      return "%hhd";
    case XoU1B_T:
      return "%hhu";
    case XoBLOCKID_T:
      return "%lu";
    default:
      return XoTypeMgr{}.ExchangeFormat(type, nullptr);
  }
}

std::string Narrow(XoString const& text) {
  char const* const characters = text.StrGet();
  return characters != nullptr ? characters : "";
}

/// A value that prints differently from one of zeroes, if the format shows anything of it.
ValueBytes SampleOf(char type) {
  ValueBytes value{};
  // Behind the number there is the mark of a null, which stays 0.
  std::size_t const width = XoTypeMgr{}.MemLenGet(PlainTypeOf(type), 1);
  std::fill_n(value.begin(), width, static_cast<unsigned char>(1));
  float const dayHourMinuteSecond = 90061.5F;
  double const one = 1.5;
  if (type == D_INTERVAL_T || PlainTypeOf(type) == XoFLOAT_T) {
    std::memcpy(value.data(), &dayHourMinuteSecond, sizeof dayHourMinuteSecond);
  } else if (PlainTypeOf(type) == XoDOUBLE_T) {
    std::memcpy(value.data(), &one, sizeof one);
  }
  return value;
}

}  // namespace

ValueText::ValueText(char valueType, std::string givenFormat)
    : type(valueType),
      isFormatGiven(!givenFormat.empty()),
      format(isFormatGiven ? std::move(givenFormat) : UsualFormat(valueType)) {
  if (!HasDiskForm(XoTypeMgr{}, type)) {
    throw Trouble(fmt::format("values of type {} have no disk form", TypeName(type)));
  }
  if (!IsFixedKeyType(type)) {
    throw Trouble(fmt::format("values of type {} cannot be keys", TypeName(type)));
  }
  if (isFormatGiven) RequireShowingFormat();
}

/// Under such a format every line would do.
void ValueText::RequireShowingFormat() const {
  TextFamily const family = FamilyOf(type);
  if (family == TextFamily::kBoolean || type == XoSEAL_T) {
    throw Trouble(fmt::format("values of type {} have no format", TypeName(type)));
  }
  ValueBytes const zero{};
  if (Print(zero) == Print(SampleOf(type))) {
    throw Trouble(fmt::format("the format {} shows nothing of a value of type {}",
                              QuotedText(format), TypeName(type)));
  }
}

ValueBytes ValueText::Scan(std::string const& text) const {
  ValueBytes value{};
  XoString source(text.c_str());
  XoTypeMgr{}.ScanFromXoString(type, value.data(), source, format.c_str(), 1);
  return value;
}

std::string ValueText::Print(ValueBytes const& value) const {
  ValueBytes copy = value;
  XoString text;
  XoTypeMgr{}.PrintToXoString(type, text, copy.data(), format.c_str(), 1);
  return Narrow(text);
}

bool ValueText::IsNull(ValueBytes const& value) const {
  XoTypeMgr const manager;
  ValueBytes copy = value;
  return manager.SupportsNullValue(type) != 0 && manager.IsNullValue(type, copy.data()) != 0;
}

std::string NullText() { return Narrow(XoTypeMgr::GetNullPrintString()); }

bool IsFixedKeyType(char type) {
  XoTypeMgr const manager;
  return manager.IsFixed(type) != 0 && HasDiskForm(manager, type) &&
         manager.MemLenGet(type, 1) <= sizeof(ValueBytes);
}

char PlainTypeOf(char type) {
  auto const* const found =
      std::find_if(std::begin(kNullableTypes), std::end(kNullableTypes),
                   [type](NullableType const& each) { return each.nullable == type; });
  return found == std::end(kNullableTypes) ? type : found->plain;
}

TextFamily FamilyOf(char type) {
  switch (PlainTypeOf(type)) {
    case Xo1B_T:
    case XoU1B_T:
      return TextFamily::kByte;
    case XoDOUBLE_T:
    case XoFLOAT_T:
      return TextFamily::kFloating;
    case XoINT64_T:
    case XoSEAL_T:
      return TextFamily::kLargeInteger;
    case XoBOOLEAN_T:
      return TextFamily::kBoolean;
    case XoDATE_T:
    case XoTIME_T:
    case XoDATIME_T:
    case XoDATIME_N_T:
    case XoTIMESPAN_T:
    case D_DATE_T:
    case D_TIME_T:
    case D_TIMESTAMP_T:
    case D_INTERVAL_T:
      return TextFamily::kTemporal;
    case XoOBJID_T:
    case XoCLID_T:
    case XoREF_T:
      return TextFamily::kIdentifier;
    default:
      return TextFamily::kInteger;
  }
}

}  // namespace xo::tool

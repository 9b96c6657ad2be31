#pragma once

#include <string>
#include <string_view>

#include "xoistring.hpp"
#include "xotypes.hpp"

/// Print and scan of the text rows.
namespace xo {

/// `text` under a format: what stands for it is the first "%s", with flags, width, precision and
/// size as formatted print has them, "%%" is a percent sign, and everything else stands for itself.
/// What is longer than a string holds is cut.
std::string FormatText(std::string_view format, std::string_view text);

/// Text in one byte a character: that of a narrow string as it is, that of a wide one converted to
/// the default 8-bit code set.
std::string NarrowedText(XoString const& text);

TypeDescriptor::PrintFunction StringPrintToXoString;
TypeDescriptor::ScanFunction StringScanFromXoString;

/// The weighted texts know no null value.
template <class Text>
XoString& PrintWeightedText(XoString& out, void* values, char const* format, unsigned count);
template <class Text>
void* ScanWeightedText(void* target, XoString& text, char const* format, unsigned count);

extern template TypeDescriptor::PrintFunction PrintWeightedText<XoIString>;
extern template TypeDescriptor::PrintFunction PrintWeightedText<XoCaseIString>;
extern template TypeDescriptor::ScanFunction ScanWeightedText<XoIString>;
extern template TypeDescriptor::ScanFunction ScanWeightedText<XoCaseIString>;

}  // namespace xo

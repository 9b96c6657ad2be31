#pragma once

#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::tool {

/// One collation element of a text: the characters that it was made of and what its entry says.
struct OrderReport {
  /// Codes in the code set of the text, and the same in Unicode.
  std::vector<unsigned short> codes;
  std::vector<unsigned short> characters;
  unsigned short order = 0;
  unsigned char group = 0;
  /// Orders that follow.
  std::vector<unsigned short> expansion;
  /// Whether the language's own entry took the place of the common one.
  bool variant = false;
  /// Whether there is an entry at all; without one a character sorts by its code.
  bool entry = true;
};

/// The elements of a text, found as the library's comparison finds them.
std::vector<OrderReport> ReportOrders(std::vector<unsigned short> const& codes,
                                      XoCodeSet const& set, unsigned char language);

std::string OrdersAsText(std::vector<OrderReport> const& elements);
std::string OrdersAsJson(std::vector<OrderReport> const& elements);

}  // namespace xo::tool

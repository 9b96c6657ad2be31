#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/xodate/temporal_text.hpp"

namespace xo::test {
namespace {

/// docs/formats-temporal.md as it was when the tests were configured.
char const kPage[] =
#include "formats_temporal_page.inc"
    ;

/// The texts between back-quotes of a line.
std::vector<std::string> QuotedCells(std::string const& line) {
  std::vector<std::string> cells;
  for (std::size_t start = line.find('`'); start != std::string::npos;) {
    std::size_t const end = line.find('`', start + 1);
    if (end == std::string::npos) break;
    cells.push_back(line.substr(start + 1, end - start - 1));
    start = line.find('`', end + 1);
  }
  return cells;
}

Record Fields(std::string const& text) {
  Record record;
  std::istringstream in(text);
  in >> record.year >> record.month >> record.day >> record.hour >> record.minute >>
      record.second >> record.nano;
  EXPECT_FALSE(in.fail()) << text;
  return record;
}

TEST(FormatsPage, ExamplesAreWhatTheLibraryDoes) {
  std::istringstream page(kPage);
  std::string line;
  enum { kNone, kPrints, kScans } table = kNone;
  int prints = 0, scans = 0;
  while (std::getline(page, line)) {
    if (line == "| value | format | text |") {
      table = kPrints;
    } else if (line == "| text | format | value |") {
      table = kScans;
    } else if (!line.starts_with("|")) {
      table = kNone;
    } else if (table != kNone && line.starts_with("| `")) {
      SCOPED_TRACE(line);
      auto const cells = QuotedCells(line);
      ASSERT_EQ(cells.size(), 3u);
      if (table == kPrints) {
        EXPECT_EQ(Print(Fields(cells[0]), cells[1]), cells[2]);
        ++prints;
      } else {
        bool const isWhole = line.find(", failed") == std::string::npos;
        EXPECT_EQ(Scan(cells[0], cells[1]), (Scanned{Fields(cells[2]), isWhole}));
        ++scans;
      }
    }
  }
  EXPECT_GE(prints, 25);
  EXPECT_GE(scans, 20);
}

TEST(FormatsPage, NamesTheDefaultFormats) {
  std::string const page = kPage;
  for (int id : {XoDATE_T, XoTIME_T, XoDATIME_T, XoDATIME_N_T, XoTIMESPAN_T}) {
    TypeDescriptor const& row = *CurrentTypeTable[id];
    std::string const start = std::string("| `") + row.Name + "` | `";
    EXPECT_NE(page.find(start), std::string::npos) << row.Name;
    EXPECT_NE(page.find(std::string("` | `") + row.Format + "` |\n"), std::string::npos);
  }
}

}  // namespace
}  // namespace xo::test

#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace xo::test {

/// What stands between fences of one kind ("```example") in a document: an `Example` for each, that
/// takes the lines one by one and says whether it knows them.
template <class Example>
std::vector<Example> ExamplesOf(std::string const& document, std::string const& kind) {
  std::vector<Example> examples;
  std::istringstream lines(document);
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line == "```" + kind) {
      inside = true;
      examples.emplace_back();
    } else if (line.starts_with("```")) {
      inside = false;
    } else if (inside) {
      EXPECT_TRUE(examples.back().Take(line)) << line;
    }
  }
  return examples;
}

}  // namespace xo::test

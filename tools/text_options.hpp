#pragma once

#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace CLI {
class App;
}

namespace xo::tool {

/// Options of all commands that compare texts.
struct TextOptions {
  std::string language = "0";
  std::string codeSet = "253";
  std::vector<std::string> operators;
};

void AddTextOptions(CLI::App& command, TextOptions& options);

/// The operator that the options ask for: the numbers among them, or `usual` without any, changed
/// by the words. What is neither is `Trouble`.
unsigned short OperatorOf(TextOptions const& options, unsigned short usual);

/// An operator in words, such as "no wildcards, ignore case".
std::string OperatorText(unsigned short cmpOp);

/// Whether the second text of a comparison under `cmpOp` is a pattern.
bool HasPattern(unsigned short cmpOp);

}  // namespace xo::tool

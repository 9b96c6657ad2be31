#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "tools/index_reader.hpp"

namespace CLI {
class App;
}

namespace xo::tool {

/// Options of `create`.
struct CreateOptions {
  std::string file;
  std::string type;
  std::string byteOrder = "little";
  std::string input;
  std::int64_t column = 1;
  std::string delimiter = "\\t";
  std::int64_t skip = 0;
  std::string onError = "stop";
};

/// Options of all commands that read an index. Type and byte order stand in the file; whoever
/// names them is told if they are others.
struct ReadOptions {
  std::string file;
  std::string type;
  std::string byteOrder;
  bool json = false;
};

/// Options of `find`, which has no high end of its own, and `range`.
struct SearchOptions : ReadOptions {
  std::string low;
  std::optional<std::string> high;
  bool lineNumbers = false;
  bool count = false;
  bool stats = false;
};

/// Adds `index` with all its commands to `tool`. The one that the command line asks for puts what
/// it does, and returns as exit code, into `command`.
void AddIndexCommands(CLI::App& tool, std::function<int()>& command);

int CreateIndex(CreateOptions const& options);
int SearchIndex(SearchOptions const& options);
int ShowIndexStatistics(ReadOptions const& options);
int VerifyIndex(ReadOptions const& options);

/// The format byte of disk form in the byte order that an option names.
unsigned char FormatOf(std::string const& byteOrder);

/// The byte order of a format byte, in the words of the option.
std::string ByteOrderOf(unsigned char format);

/// Tells the user about options that differ from what the index says of itself.
void NoteUnusedOptions(ReadOptions const& options, IndexReader const& index);

}  // namespace xo::tool

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "tools/index_reader.hpp"

namespace CLI {
class App;
class Option;
}  // namespace CLI

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
  /// Of all but text: how the row of the type reads a value, empty for the usual format, and
  /// whether it may have wildcards.
  std::string format;
  bool patterns = false;
  // Of text alone, and empty or 0 where the user does not name them:
  std::string language;
  std::string codeSet;
  unsigned keyLength = 0;
  /// Not from an input but from the records of the index that is there.
  bool rebuild = false;
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
  /// Of all but text: how the row of the type reads a value, empty for the usual format.
  std::string format;
  /// Bits by which the comparison has no wildcards or, of text alone, ignores or skips something.
  unsigned cmpOp = 0;
  bool lineNumbers = false;
  bool count = false;
  bool stats = false;
};

/// Options of `dump`.
struct DumpOptions : ReadOptions {
  std::string format;
};

/// Options of `explain`.
struct ExplainOptions : ReadOptions {
  std::string predicate;
  std::string format;
  unsigned cmpOp = 0;
};

/// Options of `estimate`.
struct EstimateOptions : ReadOptions {
  std::uint64_t predicates = 700;
  std::uint64_t seed = 1;
  /// The picture to draw, or empty for none.
  std::string plot;
};

/// Adds `index` with all its commands to `tool`. The one that the command line asks for puts what
/// it does, and returns as exit code, into `command`.
void AddIndexCommands(CLI::App& tool, std::function<int()>& command);

int CreateIndex(CreateOptions const& options);
int RebuildIndex(CreateOptions const& options);
int SearchIndex(SearchOptions const& options);
int DumpIndex(DumpOptions const& options);
int ExplainPredicate(ExplainOptions const& options);
int TryEstimates(EstimateOptions const& options);
int ShowIndexStatistics(ReadOptions const& options);
int VerifyIndex(ReadOptions const& options);

/// Adds the option that names a byte order.
CLI::Option* AddByteOrderOption(CLI::App& command, std::string& byteOrder, char const* description);

/// The format byte of disk form in the byte order that an option names.
unsigned char FormatOf(std::string const& byteOrder);

/// The byte order of a format byte, in the words of the option.
std::string ByteOrderOf(unsigned char format);

/// For every command that reads an index, before it does: an index whose keys are not in the order
/// that they have today is `Trouble`. Tells the user about options that differ from what the index
/// says of itself.
void PrepareToRead(ReadOptions const& options, IndexReader const& index);

/// `argument` as the user gave it. A value that starts like an option is marked beforehand
/// (`MarkNegativeValue`).
std::string ValueOf(std::string argument);

/// Marks an argument that is a negative value but starts with no digit, which would be taken for an
/// option.
void MarkNegativeValue(std::string& argument);

}  // namespace xo::tool

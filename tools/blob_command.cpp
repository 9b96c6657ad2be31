#include "tools/blob_command.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/blob_record.hpp"
#include "tools/index_command.hpp"
#include "tools/printable.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_table.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct BlobOptions {
  std::string source;
  std::string byteOrder;
  unsigned shown = 16;
};

using ByteList = std::vector<unsigned char>;

/// More than a record can have.
constexpr std::size_t kMost = (std::size_t{1} << 31) + 8;

ByteList ReadAll(std::FILE* file, std::string const& name) {
  ByteList bytes;
  std::size_t size = 0;
  do {
    bytes.resize(size + 65536);
    size += std::fread(bytes.data() + size, 1, bytes.size() - size, file);
    if (std::ferror(file) != 0) {
      throw Trouble(fmt::format("{} cannot be read: {}", name, std::strerror(errno)));
    }
    if (size > kMost) throw Trouble(fmt::format("{} is longer than any record", name));
  } while (size == bytes.size());
  bytes.resize(size);
  return bytes;
}

int DigitOf(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  auto const lower = static_cast<char>(character | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The bytes that hexadecimal digits stand for, blanks between bytes being allowed.
bool ReadDigits(std::string const& text, ByteList& bytes) {
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == ' ') {
      ++at;
      continue;
    }
    int const high = DigitOf(text[at]);
    int const low = at + 1 < text.size() ? DigitOf(text[at + 1]) : -1;
    if (high < 0 || low < 0) return false;
    bytes.push_back(static_cast<unsigned char>(high << 4 | low));
    at += 2;
  }
  return true;
}

struct NamedBytes {
  std::string name;
  ByteList bytes;
};

NamedBytes BytesOf(std::string const& source) {
  if (source == "-") return {"standard input", ReadAll(stdin, "standard input")};
  std::string const name = PrintableName(source);
  if (std::FILE* const opened = std::fopen(source.c_str(), "rb")) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(opened, std::fclose);
    return {name, ReadAll(opened, name)};
  }
  int const error = errno;
  NamedBytes digits{"record", {}};
  if (ReadDigits(source, digits.bytes)) return digits;
  throw Trouble(fmt::format("{} is no file that can be read ({}), and no bytes in hexadecimal",
                            QuotedText(source), std::strerror(error)));
}

/// The byte order that was asked for, or the one in which the record is whole.
unsigned char FormatFor(std::string const& byteOrder, ByteList const& bytes) {
  if (!byteOrder.empty()) return FormatOf(byteOrder);
  bool const isBig = ReadBlobRecord(bytes, FormLittle).damage.has_value() &&
                     !ReadBlobRecord(bytes, FormBig).damage.has_value();
  return isBig ? FormBig : FormLittle;
}

/// The first bytes of an element, in hexadecimal and as text.
std::string Content(std::span<unsigned char const> bytes, std::size_t shown) {
  if (bytes.empty()) return "";
  bool const isCut = bytes.size() > shown;
  bytes = bytes.first(std::min(shown, bytes.size()));
  std::string text;
  for (unsigned char const byte : bytes) {
    text += byte >= ' ' && byte < 0x7F ? static_cast<char>(byte) : '.';
  }
  return fmt::format("{:02x}{}  {}", fmt::join(bytes, " "), isCut ? " ..." : "", text);
}

std::string Report(ByteList const& bytes, BlobRecord const& record, unsigned char format,
                   std::size_t shown) {
  std::string report = fmt::format("byte order {}\n", ByteOrderOf(format));
  if (bytes.size() < 4) return report;
  report += fmt::format("total      {}\n", record.total);
  report += fmt::format("elements   {}\n", record.elements.size());
  if (record.elements.empty()) return report;
  TextTable table("nntt");
  table.Add({"offset", "element", "length", "bytes"});
  std::size_t number = 0;
  for (BlobElement const& each : record.elements) {
    auto const content = std::span(bytes).subspan(each.offset + 4, each.length);
    table.Add({fmt::format("{}", each.offset), fmt::format("{}", ++number),
               each.isNull ? "null" : fmt::format("{}", each.length), Content(content, shown)});
  }
  return report + "\n" + table.Text();
}

/// Whether the library loads the record as the elements that were found.
bool Loads(ByteList& bytes, BlobRecord const& record, unsigned char format) {
  XoTypeMgr const manager;
  std::vector<XoBlob> blobs(record.elements.size());
  unsigned const read =
      manager.Translate(XoBLOB_T, blobs.data(), FormMemory, 0, bytes.data(), format,
                        static_cast<unsigned>(bytes.size()), static_cast<unsigned>(blobs.size()));
  return read == bytes.size() &&
         std::equal(blobs.begin(), blobs.end(), record.elements.begin(),
                    [](XoBlob const& blob, BlobElement const& element) {
                      return (blob.IsNullValue() != 0) == element.isNull &&
                             static_cast<std::uint32_t>(blob.Length()) == element.length;
                    });
}

int ShowBlob(BlobOptions const& options) {
  NamedBytes source = BytesOf(options.source);
  unsigned char const format = FormatFor(options.byteOrder, source.bytes);
  BlobRecord const record = ReadBlobRecord(source.bytes, format);
  WriteOutput(Report(source.bytes, record, format, options.shown));
  // The elements come before the message, also where both go to one place.
  FlushOutput();
  if (record.damage) {
    throw Trouble(fmt::format("{}, offset {}: {}", source.name, record.damage->offset,
                              record.damage->reason));
  }
  if (!Loads(source.bytes, record, format)) {
    throw Trouble(fmt::format("{}: the record does not load", source.name));
  }
  return kDone;
}

}  // namespace

void AddBlobCommand(CLI::App& tool, std::function<int()>& command) {
  auto const options = std::make_shared<BlobOptions>();
  CLI::App* const blob = tool.add_subcommand(
      "blob", "Show a stored blob record, element by element, and what is wrong with it");
  blob->add_option("RECORD", options->source,
                   "a file that holds the record, - for standard input, or its bytes in "
                   "hexadecimal")
      ->required();
  AddByteOrderOption(*blob, options->byteOrder,
                     "byte order of the record; by default the one in which it is whole");
  blob->add_option("--bytes", options->shown, "bytes of an element to show at most")
      ->capture_default_str();
  blob->callback([options, &command] { command = [options] { return ShowBlob(*options); }; });
}

}  // namespace xo::tool

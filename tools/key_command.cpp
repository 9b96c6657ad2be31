#include "tools/key_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/index_command.hpp"
#include "tools/record_names.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/text_key.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct KeyOptions {
  std::string text;
  std::string language = "0";
  std::string codeSet = "253";
  unsigned keyLength = kUsualKey;
  std::string byteOrder;
};

// Colours of the terminal (ECMA-48, select graphic rendition).
constexpr char const* kFrame = "\x1b[2m";
constexpr char const* kCut = "\x1b[1;31m";
constexpr char const* kLetter = "\x1b[32m";
constexpr char const* kDigit = "\x1b[36m";
constexpr char const* kIgnorable = "\x1b[33m";
constexpr char const* kUsual = "\x1b[0m";

constexpr unsigned short kFirstDigit = 16128;
constexpr unsigned short kFirstLetter = 16384;

/// The rows of the report: bytes, what they are, and what they say.
class KeyReport {
 public:
  KeyReport(Bytes const& keyBytes, bool takesColour) : bytes(keyBytes), coloured(takesColour) {}

  /// A row for the next `count` bytes.
  void Add(std::size_t count, char const* colour, char const* field, std::string const& meaning) {
    std::string shown;
    for (std::size_t last = place + count; place < last; ++place) {
      shown += fmt::format("{:02x} ", bytes[place]);
    }
    AddRow(shown, colour, field, meaning);
  }

  void AddRow(std::string const& shown, char const* colour, char const* field,
              std::string const& meaning) {
    std::string const row = fmt::format("{:<7}{:<10}{}", shown, field, meaning);
    text += coloured ? colour + row + kUsual : row;
    text += '\n';
  }

  std::string const& Text() const { return text; }

 private:
  Bytes const& bytes;
  bool coloured;
  std::size_t place = 0;
  std::string text;
};

std::string NameOfOrder(unsigned short order, unsigned char group) {
  XoString description;
  XoConvertOrderToString(order, group, description);
  std::string name = Encoded(description);
  while (name.ends_with('\n') || name.ends_with(' ')) name.pop_back();
  return name;
}

char const* ColourOf(unsigned short order) {
  if (order >= kFirstLetter) return kLetter;
  return order >= kFirstDigit ? kDigit : kIgnorable;
}

int ShowKey(KeyOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language);
  IndexShape const shape =
      TextShape(FormatOf(options.byteOrder), set.number, language.number, options.keyLength);
  Bytes record;
  MakeRecord(shape, DecodeArgument(options.text, set, language.number), record);
  Bytes bytes(shape.keyLength);
  bytes.resize(MakeKey(shape, record, bytes.data(), bytes.size()));

  TextKey const key(LmdbValue(bytes.data(), bytes.size()), shape.format);
  KeyReport report(bytes, OutputTakesColour());
  report.Add(2, kFrame, "length", fmt::format("{} bytes behind this field", key.Length()));
  report.Add(1, kFrame, "code set", fmt::format("{}: sort orders", key.CodeSet()));
  report.Add(1, key.EndsAtGroup() ? kCut : kFrame, "group",
             key.EndsAtGroup()
                 ? fmt::format("{}; cut: the text goes on in another group", key.Group())
                 : fmt::format("{}", key.Group()));
  for (std::size_t index = 0; index < key.Orders(); ++index) {
    unsigned short const order = key.Order(index);
    report.Add(2, ColourOf(order), "order",
               fmt::format("{:5}  {}", order, NameOfOrder(order, key.Group())));
  }
  if (key.IsCutForRoom()) {
    report.AddRow("", kCut, "", fmt::format("cut: no room for more in {} bytes", shape.keyLength));
  } else {
    report.Add(1, kFrame, "end", "of the orders");
    report.Add(1, kFrame, "end", "of the key");
  }
  WriteOutput(report.Text());
  return kDone;
}

}  // namespace

void AddKeyCommand(CLI::App& tool, std::function<int()>& command) {
  auto const options = std::make_shared<KeyOptions>();
  CLI::App* const key =
      tool.add_subcommand("key", "Show the bytes of a text's index key, field by field");
  key->add_option("TEXT", options->text, "the text, in UTF-8")->required();
  key->add_option("--language", options->language, "number, name or tag; neutral by default");
  key->add_option("--code-set", options->codeSet, "number or name; Unicode by default");
  key->add_option("--key-length", options->keyLength, "bytes of the key at most")
      ->check(CLI::Range(kShortestKey, kLongestKey))
      ->capture_default_str();
  AddByteOrderOption(*key, options->byteOrder, "byte order of the key")->default_str("little");
  key->callback([options, &command] { command = [options] { return ShowKey(*options); }; });
}

}  // namespace xo::tool

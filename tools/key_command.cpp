#include "tools/key_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <array>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/index_command.hpp"
#include "tools/key_sizes.hpp"
#include "tools/order_name.hpp"
#include "tools/record_names.hpp"
#include "tools/row_value.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/text_key.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

struct KeyOptions {
  std::string text;
  std::string type = "XoString";
  /// A text of which the sizes are shown, in place of one key.
  std::string sizesOf;
  // Of XoString alone, and empty where the user does not name them:
  std::string language;
  std::string codeSet;
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

/// Tag and payload of a key of weights.
constexpr std::ptrdiff_t kWeightHeader = 3;

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

char const* ColourOf(unsigned short order) {
  if (order >= kFirstLetter) return kLetter;
  return order >= kFirstDigit ? kDigit : kIgnorable;
}

int ShowOrderKey(KeyOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet.empty() ? "253" : options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language.empty() ? "0" : options.language);
  IndexShape const shape =
      TextShape(FormatOf(options.byteOrder), set.number, language.number, options.keyLength);
  Bytes record;
  auto const keyOf = [&](XoString const& text, Bytes& bytes) {
    MakeRecord(shape, text, record);
    bytes.resize(shape.keyLength);
    bytes.resize(MakeKey(shape, record, bytes.data(), bytes.size()));
    return TextKey(LmdbValue(bytes.data(), bytes.size()), shape.format).IsCut();
  };
  if (!options.sizesOf.empty()) {
    WriteOutput(KeySizes(options.sizesOf, set, language.number, keyOf));
    return kDone;
  }
  Bytes bytes;
  keyOf(DecodeArgument(options.text, set, language.number), bytes);

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

/// The weights of one class of texts, and the characters that have them.
class WeightTable {
 public:
  explicit WeightTable(char textType) : type(textType) {
    for (unsigned byte = 1; byte < 256; ++byte) {
      weights[byte] = WeightsOf(static_cast<unsigned char>(byte));
    }
  }

  /// One weight, or two.
  Bytes const& Of(unsigned char byte) const { return weights[byte]; }

  /// The other characters that have the weights of `byte`, in UTF-8.
  std::string Others(unsigned char byte) const {
    std::string others;
    for (unsigned other = 1; other < 256; ++other) {
      if (other == byte || weights[other] != weights[byte]) continue;
      others += ' ' + CharacterOf(static_cast<unsigned char>(other));
    }
    return others;
  }

  static std::string CharacterOf(unsigned char byte) {
    char const text[] = {static_cast<char>(byte), 0};
    XoString character(text);
    character.codeSet = UsualCodeSet().number;
    std::string const encoded = Encoded(character);
    bool const isShown = byte > ' ' && byte != 0x7F && !encoded.empty();
    return isShown && encoded != "?" ? encoded : fmt::format("{:02x}", byte);
  }

 private:
  Bytes WeightsOf(unsigned char byte) const {
    RowValue value(type);
    char const text[] = {static_cast<char>(byte), 0};
    XoString string(text);
    XoTypeMgr{}.ScanFromXoString(type, value.Get(), string, nullptr, 1);
    Bytes key(kWeightHeader + 3);
    unsigned const size =
        XoTypeMgr{}.Translate(type, key.data(), FormLittle | FormatIndexKey,
                              static_cast<unsigned>(key.size()), value.Get(), FormMemory, 0, 1);
    // Without the zero that closes it.
    return {key.begin() + kWeightHeader, key.begin() + size - 1};
  }

  char type;
  std::array<Bytes, 256> weights;
};

char const* ColourOfCharacter(unsigned char byte) {
  if (byte >= '0' && byte <= '9') return kDigit;
  bool const isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte >= 192;
  return isLetter ? kLetter : kIgnorable;
}

/// Adds the rows of a text's weights, of which `room` are there. False if there are more.
bool AddWeights(KeyReport& report, WeightTable const& table, std::string_view text,
                std::size_t room) {
  for (char const character : text) {
    auto const byte = static_cast<unsigned char>(character);
    Bytes const& weights = table.Of(byte);
    std::string meaning = WeightTable::CharacterOf(byte);
    std::string const others = table.Others(byte);
    if (!others.empty()) meaning += ", as" + others;
    for (unsigned char const weight : weights) {
      if (room-- == 0) return false;
      report.Add(1, ColourOfCharacter(byte), "weight", fmt::format("{:5}  {}", weight, meaning));
      // What follows is of the same character.
      meaning = "+";
    }
  }
  return true;
}

int ShowWeightKey(KeyOptions const& options, char type) {
  if (!options.language.empty() || !options.codeSet.empty()) {
    throw Trouble(
        fmt::format("{} has a collation of its own: --language and --code-set are of "
                    "XoString",
                    TypeName(type)));
  }
  RowValue value(type);
  auto const format = static_cast<unsigned char>(FormatOf(options.byteOrder) | FormatIndexKey);
  auto const keyOf = [&](XoString& text, Bytes& bytes) {
    XoTypeMgr const manager;
    manager.ScanFromXoString(type, value.Get(), text, nullptr, 1);
    bytes.resize(options.keyLength);
    bytes.resize(manager.Translate(type, bytes.data(), format, options.keyLength, value.Get(),
                                   FormMemory, 0, 1));
    return bytes.size() < manager.DiskLenGet(type, value.Get(), format, 1, FormMemory);
  };
  if (!options.sizesOf.empty()) {
    WriteOutput(KeySizes(options.sizesOf, UsualCodeSet(), 0, keyOf));
    return kDone;
  }
  XoString text = DecodeArgument(options.text, UsualCodeSet(), 0);
  Bytes bytes;
  keyOf(text, bytes);

  KeyReport report(bytes, OutputTakesColour());
  report.Add(1, kFrame, "tag", "a key: weights in place of characters");
  report.Add(2, kFrame, "payload", fmt::format("{} bytes behind this field", bytes.size() - 3));
  bool const isWhole =
      AddWeights(report, WeightTable(type), text.StrGet(), bytes.size() - kWeightHeader - 1);
  report.Add(1, isWhole ? kFrame : kCut, "end",
             isWhole ? "of the weights"
                     : fmt::format("cut: no room for more in {} bytes", options.keyLength));
  WriteOutput(report.Text());
  return kDone;
}

int ShowKey(KeyOptions const& options) {
  char const type = FindType(options.type);
  if (type == XoSTRING_T) return ShowOrderKey(options);
  if (type == XoISTRING_T || type == XoCASEISTRING_T) return ShowWeightKey(options, type);
  throw Trouble(fmt::format("keys of type {} are no text", TypeName(type)));
}

}  // namespace

void AddKeyCommand(CLI::App& tool, std::function<int()>& command) {
  auto const options = std::make_shared<KeyOptions>();
  CLI::App* const key =
      tool.add_subcommand("key", "Show the bytes of a text's index key, field by field");
  CLI::Option* const text = key->add_option("TEXT", options->text, "the text, in UTF-8");
  CLI::Option* const sizes = key->add_option(
      "--sizes", options->sizesOf, "tell instead what the keys of all lines of this text take");
  text->excludes(sizes);
  key->add_option("--type", options->type, "XoString, XoIString or XoCaseIString")
      ->capture_default_str();
  key->add_option("--language", options->language,
                  "of XoString: number, name or tag; neutral by default");
  key->add_option("--code-set", options->codeSet,
                  "of XoString: number or name; Unicode by default");
  key->add_option("--key-length", options->keyLength, "bytes of the key at most")
      ->check(CLI::Range(kShortestKey, kLongestKey))
      ->capture_default_str();
  AddByteOrderOption(*key, options->byteOrder, "byte order of the key")->default_str("little");
  key->callback([options, text, sizes, &command] {
    if (text->count() + sizes->count() == 0) throw CLI::RequiredError("TEXT");
    command = [options] { return ShowKey(*options); };
  });
}

}  // namespace xo::tool

#include "tools/value_codec.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <vector>

#include "tools/printable.hpp"
#include "tools/row_value.hpp"
#include "tools/scalar_text.hpp"
#include "tools/temporal_check.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_format.hpp"

namespace xo::tool {
namespace {

/// A line of more bytes is no value of fixed width.
constexpr std::size_t kLongestText = 4096;

std::string_view WithoutBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  std::size_t const first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

class FixedCodec : public ValueCodec {
 public:
  FixedCodec(IndexShape const& shape, CodecOptions const& codecOptions)
      : format(shape.type, codecOptions.format),
        takesPatterns(codecOptions.takesPatterns),
        diskFormat(shape.format),
        value(shape.type),
        loaded(shape.type) {}

  std::optional<StoredValue> Store(std::string_view text) override {
    if (Read(WithoutBlanks(text)) != Fault::kNone) return std::nullopt;
    return StoredValue{disk, {}, HasWildcard(loaded)};
  }

  std::string Complaint(std::string_view text) override {
    Fault const fault = Read(WithoutBlanks(text));
    std::string const quoted = QuotedText(WithoutBlanks(text));
    std::string const name = TypeName(format.Type());
    if (fault == Fault::kTooLong) return fmt::format("{} is no value of type {}", quoted, name);
    if (fault == Fault::kPattern) {
      return fmt::format("{} is a pattern, no value of type {}", quoted, name);
    }
    std::string const readAs =
        fmt::format("under the format {} it reads as {}", QuotedText(format.Text()),
                    QuotedText(loaded.Print(format.Text())));
    if (fault == Fault::kInvalid) {
      return fmt::format("{} is no valid date or time of type {}: {}", quoted, name, readAs);
    }
    return ScalarComplaint(text, quoted)
        .value_or(fmt::format("{} is no value of type {}: {}", quoted, name, readAs));
  }

 private:
  enum class Fault { kNone, kTooLong, kOtherText, kInvalid, kPattern };

  /// Reads a text into the stored value, and tells what is wrong with it.
  Fault Read(std::string_view text) {
    if (text.size() > kLongestText) return Fault::kTooLong;
    bool const isWhole = Scan(text);
    disk = value.Stored(diskFormat);
    loaded.Load(disk, diskFormat);
    if (!isWhole) return Fault::kOtherText;
    std::string const printed = loaded.Print(format.Text());
    bool const isPlain = printed == text;
    if (!isPlain && printed != value.Print(format.Text())) return Fault::kOtherText;
    if (IsInvalid(loaded)) return Fault::kInvalid;
    if (!takesPatterns && HasWildcard(loaded)) return Fault::kPattern;
    return isPlain || ComesBack(printed) ? Fault::kNone : Fault::kOtherText;
  }

  bool Scan(std::string_view text) {
    if (!text.empty()) return value.ScanWhole(text, format.Text());
    value.Scan(text, format.Text());
    // To numbers that can be null, and to them alone, no text is null.
    return PlainTypeOf(format.Type()) != format.Type() && value.IsNull();
  }

  /// Whether what is stored is read from its own print as well.
  bool ComesBack(std::string const& printed) {
    value.Scan(printed, format.Text());
    std::vector<unsigned char> again = value.Stored(diskFormat);
    if (again == disk) return true;
    // One number may have several forms, and so may what is none. Parts of identifiers do not count
    // in their order, and are not to be lost.
    char const plain = PlainTypeOf(format.Type());
    return (plain == XoDOUBLE_T || plain == XoFLOAT_T) &&
           XoTypeMgr{}.Cmp(format.Type(), again.data(), disk.data(), kCmpNoWildcards, 1,
                           diskFormat) == 0;
  }

  /// Of plain numbers in their usual form: what is wrong in their own words.
  std::optional<std::string> ScalarComplaint(std::string_view text, std::string const& quoted) {
    ScalarText const* const scalar = FindScalarText(PlainTypeOf(format.Type()));
    if (scalar == nullptr || format.IsGiven()) return std::nullopt;
    std::array<unsigned char, 8> unused{};
    bool const isNumber = scalar->read(text, unused.data()) == ScalarOutcome::kOutOfRange;
    return fmt::format("{} is {} {}: {} is wanted", quoted,
                       isNumber ? "out of the range of" : "no value of type",
                       TypeName(format.Type()), scalar->accepted());
  }

  ValueFormat format;
  bool takesPatterns;
  unsigned char diskFormat;
  /// As it was read, and as it comes back from its disk form.
  RowValue value;
  RowValue loaded;
  std::vector<unsigned char> disk;
};

class TextCodec : public ValueCodec {
 public:
  explicit TextCodec(IndexShape const& indexShape)
      : shape(indexShape),
        decoder(*XoLanguageContext::QueryCodeSet(shape.codeSet), shape.language) {}

  std::optional<StoredValue> Store(std::string_view text) override {
    // A text with a character in another one's place would be found where it does not belong.
    if (!decoder.Decode(text, string).empty() || !decoder.Loss().empty()) return std::nullopt;
    MakeRecord(shape, string, record);
    std::size_t const size = MakeKey(shape, record, key.data(), shape.keyLength);
    return StoredValue{{key.data(), size}, record};
  }

  std::string Complaint(std::string_view text) override {
    std::string const complaint = decoder.Decode(text, string);
    if (!complaint.empty()) return fmt::format("{} {}", QuotedText(text), complaint);
    return fmt::format("{}: {}", QuotedText(text), decoder.Loss());
  }

 private:
  IndexShape shape;
  TextDecoder decoder;
  XoString string;
  Bytes record;
  std::array<unsigned char, kLongestKey> key{};
};

}  // namespace

std::unique_ptr<ValueCodec> MakeCodec(IndexShape const& shape, CodecOptions const& options) {
  if (!shape.HasText()) return std::make_unique<FixedCodec>(shape, options);
  if (!options.format.empty()) {
    throw Trouble(
        fmt::format("text of type {} stands for itself: it has no format", TypeName(shape.type)));
  }
  return std::make_unique<TextCodec>(shape);
}

}  // namespace xo::tool

#include "tools/value_codec.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "tools/line_fault.hpp"
#include "tools/printable.hpp"
#include "tools/scalar_text.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_text.hpp"

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
      : options(codecOptions),
        values(shape.type, options.format),
        diskFormat(shape.format),
        width(manager.DiskLenGet(shape.type, nullptr, diskFormat, 1, FormMemory)) {}

  std::optional<StoredValue> Store(std::string_view text) override {
    if (Read(text) != Fault::kNone) return std::nullopt;
    return StoredValue{{disk.data(), width}, {}, HasWildcard(values.Type(), loaded)};
  }

  std::string Complaint(std::string_view text) override {
    Fault const fault = Read(text);
    std::string const quoted = QuotedText(WithoutBlanks(text));
    std::string const readAs = fmt::format("under the format {} it reads as {}",
                                           QuotedText(values.Format()), QuotedText(printed));
    switch (fault) {
      case Fault::kInvalid:
        return fmt::format("{} is no valid date or time of type {}: {}", quoted,
                           TypeName(values.Type()), readAs);
      case Fault::kPattern:
        return fmt::format("{} is a pattern, no value of type {}", quoted, TypeName(values.Type()));
      case Fault::kUnreadable:
        return fmt::format("{} is no value of type {}", quoted, TypeName(values.Type()));
      default:
        return ScalarComplaint(text, quoted)
            .value_or(fmt::format("{} is no value of type {}: {}", quoted, TypeName(values.Type()),
                                  readAs));
    }
  }

 private:
  enum class Fault { kNone, kUnreadable, kOtherText, kInvalid, kPattern };

  /// Reads a text into the stored value, and tells what is wrong with it.
  Fault Read(std::string_view text) {
    text = WithoutBlanks(text);
    // A zero would end the text, and the checks put a mark of their own behind it.
    constexpr std::string_view kReserved("\0\1", 2);
    if (text.size() > kLongestText || text.find_first_of(kReserved) != std::string_view::npos) {
      return Fault::kUnreadable;
    }
    line.assign(text);
    ToDisk(values.Scan(line));
    ValueBytes const stored = disk;
    loaded = {};
    manager.Load(values.Type(), loaded.data(), disk.data(), diskFormat, 1);
    printed = values.Print(loaded);
    switch (FaultOf({values, line, loaded, printed})) {
      case LineFault::kOtherText:
        return Fault::kOtherText;
      case LineFault::kInvalid:
        return Fault::kInvalid;
      case LineFault::kPattern:
        if (!options.takesPatterns) return Fault::kPattern;
        break;
      case LineFault::kNone:
        break;
    }
    if (line == printed) return Fault::kNone;
    ToDisk(values.Scan(printed));
    bool const comesBack = IsSame(stored);
    disk = stored;
    return comesBack ? Fault::kNone : Fault::kOtherText;
  }

  void ToDisk(ValueBytes value) {
    disk = {};
    manager.Store(values.Type(), disk.data(), value.data(), diskFormat, 1);
  }

  bool IsSame(ValueBytes stored) {
    if (disk == stored) return true;
    // One number may have several forms, and so may what is none. Parts of identifiers do not count
    // in their order, and are not to be lost.
    return FamilyOf(values.Type()) == TextFamily::kFloating &&
           manager.Cmp(values.Type(), disk.data(), stored.data(), kCmpNoWildcards, 1, diskFormat) ==
               0;
  }

  /// Of plain numbers in their usual form: what is wrong in their own words.
  std::optional<std::string> ScalarComplaint(std::string_view text, std::string const& quoted) {
    ScalarText const* const scalar = FindScalarText(PlainTypeOf(values.Type()));
    if (scalar == nullptr || values.IsFormatGiven()) return std::nullopt;
    ValueBytes unused{};
    bool const isNumber = scalar->read(text, unused.data()) == ScalarOutcome::kOutOfRange;
    return fmt::format("{} is {} {}: {} is wanted", quoted,
                       isNumber ? "out of the range of" : "no value of type",
                       TypeName(values.Type()), scalar->accepted());
  }

  XoTypeMgr manager;
  CodecOptions options;
  ValueText values;
  unsigned char diskFormat;
  std::size_t width;
  std::string line;
  std::string printed;
  ValueBytes loaded{};
  ValueBytes disk{};
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

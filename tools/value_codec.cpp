#include "tools/value_codec.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "tools/printable.hpp"
#include "tools/scalar_text.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// Room for the widest stored value of fixed width.
constexpr std::size_t kWidestValue = 8;

class ScalarCodec : public ValueCodec {
 public:
  ScalarCodec(char valueType, unsigned char diskFormat) : type(valueType), format(diskFormat) {
    if (!HasDiskForm(manager, type)) {
      throw Trouble(fmt::format("values of type {} have no disk form yet", TypeName(type)));
    }
    scalar = FindScalarText(type);
    // Only types of fixed width tell it without a value.
    if (scalar != nullptr) width = manager.DiskLenGet(type, nullptr, format, 1, FormMemory);
    if (scalar == nullptr || width > kWidestValue) {
      throw Trouble(fmt::format("values of type {} cannot be read from text yet", TypeName(type)));
    }
  }

  std::optional<StoredValue> Store(std::string_view text) override {
    alignas(o_8b) std::array<unsigned char, kWidestValue> memory{};
    if (scalar->read(text, memory.data()) != ScalarOutcome::kValue) return std::nullopt;
    manager.Store(type, disk.data(), memory.data(), format, 1);
    return StoredValue{{disk.data(), width}, {}};
  }

  std::string Complaint(std::string_view text) override {
    alignas(o_8b) std::array<unsigned char, kWidestValue> memory{};
    bool const isNumber = scalar->read(text, memory.data()) == ScalarOutcome::kOutOfRange;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return fmt::format("{} is {} {}: {} is wanted", QuotedText(text),
                       isNumber ? "out of the range of" : "no value of type", TypeName(type),
                       scalar->accepted());
  }

 private:
  XoTypeMgr manager;
  char type;
  unsigned char format;
  std::size_t width = 0;
  ScalarText const* scalar = nullptr;
  std::array<unsigned char, kWidestValue> disk{};
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

std::unique_ptr<ValueCodec> MakeCodec(IndexShape const& shape) {
  if (shape.HasText()) return std::make_unique<TextCodec>(shape);
  return std::make_unique<ScalarCodec>(shape.type, shape.format);
}

}  // namespace xo::tool

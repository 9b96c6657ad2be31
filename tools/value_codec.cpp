#include "tools/value_codec.hpp"

#include <fmt/core.h>

#include <algorithm>

#include "tools/printable.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {

ValueCodec::ValueCodec(char valueType, unsigned char diskFormat)
    : type(valueType), format(diskFormat) {
  if (!HasDiskForm(manager, type)) {
    throw Trouble(fmt::format("values of type {} have no disk form yet", TypeName(type)));
  }
  width = manager.DiskLenGet(type, nullptr, format, 1, FormMemory);
  scalar = FindScalarText(type);
  if (scalar == nullptr || width > kWidestValue) {
    throw Trouble(fmt::format("values of type {} cannot be read from text yet", TypeName(type)));
  }
}

std::optional<StoredValue> ValueCodec::Store(std::string_view text) const {
  alignas(o_8b) StoredValue memory{};
  if (scalar->read(text, memory.data()) != ScalarOutcome::kValue) return std::nullopt;
  StoredValue disk{};
  manager.Store(type, disk.data(), memory.data(), format, 1);
  return disk;
}

std::string ValueCodec::Complaint(std::string_view text) const {
  StoredValue memory;
  bool const isNumber = scalar->read(text, memory.data()) == ScalarOutcome::kOutOfRange;
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return fmt::format("{} is {} {}: {} is wanted", QuotedText(text),
                     isNumber ? "out of the range of" : "no value of type", TypeName(type),
                     scalar->accepted());
}

}  // namespace xo::tool

#include "tools/bound_text.hpp"

#include <fmt/core.h>

#include "tools/order_name.hpp"
#include "tools/row_value.hpp"
#include "tools/text_key.hpp"
#include "tools/value_format.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

std::string OrdersText(IndexShape const& shape, ByteSpan bytes) {
  TextKey const key(LmdbValue(bytes.data(), bytes.size()), shape.format);
  std::string text;
  for (std::size_t index = 0; index < key.Orders(); ++index) {
    unsigned short const order = key.Order(index);
    std::string const name =
        order == kHighestOrder ? "above all others" : NameOfOrder(order, key.Group());
    text += fmt::format("{}{} ({})", text.empty() ? "" : ", ", order, name);
  }
  if (text.empty()) text = "no orders";
  return key.IsCut() ? text + ", cut" : text;
}

std::string WeightsText(IndexShape const& shape, ByteSpan bytes) {
  WeightedKey const key(LmdbValue(bytes.data(), bytes.size()), shape);
  return key.Weights().empty() ? "no weights" : "weights " + HexText(key.Weights());
}

std::string ValueOfKey(IndexShape const& shape, ByteSpan key, std::string const& format) {
  ValueFormat const usual(shape.type, format);
  RowValue value(shape.type);
  value.Load(key, shape.format);
  return value.Print(usual.Text());
}

}  // namespace

std::string HexText(ByteSpan bytes) {
  std::string text;
  for (unsigned char const byte : bytes) {
    text += fmt::format("{}{:02x}", text.empty() ? "" : " ", byte);
  }
  return text;
}

std::string BoundText(IndexShape const& shape, ByteSpan key, std::string const& format) {
  if (shape.IsWeighted()) return WeightsText(shape, key);
  return shape.HasText() ? OrdersText(shape, key) : ValueOfKey(shape, key, format);
}

}  // namespace xo::tool

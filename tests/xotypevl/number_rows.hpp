#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/stored_bytes.hpp"

namespace xo::test {

/// What an element's number is.
enum class NumberKind { kSigned, kUnsigned, kFloat, kDouble, kHalves };

/// A row of numbers, which may be ones that can be null.
struct NumberRow {
  char id;
  NumberKind kind;
  unsigned width;
  bool canBeNull;

  bool IsReal() const { return kind == NumberKind::kFloat || kind == NumberKind::kDouble; }
  bool HasSign() const { return kind != NumberKind::kUnsigned; }
  /// Whether its numbers have more bits than a double.
  bool IsWide() const { return width == 8 && !IsReal(); }
  unsigned DiskWidth() const { return width + (canBeNull ? 1 : 0); }
  std::string Name() const { return "Id" + std::to_string(int{id}); }

  std::int64_t Lowest() const { return HasSign() ? INT64_MIN >> (64 - 8 * width) : 0; }
  /// The highest, or that of the signed 64-bit integers where it is above.
  std::int64_t Highest() const {
    if (width == 8) return INT64_MAX;
    return (std::int64_t{1} << (8 * width - (HasSign() ? 1 : 0))) - 1;
  }
};

inline constexpr NumberRow kPlainRows[] = {
    {Xo1B_T, NumberKind::kSigned, 1, false},        {XoU1B_T, NumberKind::kUnsigned, 1, false},
    {Xo2B_T, NumberKind::kSigned, 2, false},        {XoU2B_T, NumberKind::kUnsigned, 2, false},
    {Xo4B_T, NumberKind::kSigned, 4, false},        {XoU4B_T, NumberKind::kUnsigned, 4, false},
    {XoBLOCKID_T, NumberKind::kUnsigned, 4, false}, {XoINT_T, NumberKind::kSigned, 4, false},
    {XoENUM_T, NumberKind::kSigned, 4, false},      {XoUNSIGNED_T, NumberKind::kUnsigned, 4, false},
    {XoFLOAT_T, NumberKind::kFloat, 4, false},      {D_INTERVAL_T, NumberKind::kFloat, 4, false},
    {XoDOUBLE_T, NumberKind::kDouble, 8, false},    {Xo8B_T, NumberKind::kSigned, 8, false},
    {XoU8B_T, NumberKind::kUnsigned, 8, false},     {XoINT64_T, NumberKind::kHalves, 8, false},
};

inline constexpr NumberRow kNullRows[] = {
    {XoNULL_1B_T, NumberKind::kSigned, 1, true},
    {XoNULL_U1B_T, NumberKind::kUnsigned, 1, true},
    {XoNULL_2B_T, NumberKind::kSigned, 2, true},
    {XoNULL_U2B_T, NumberKind::kUnsigned, 2, true},
    {XoNULL_INT_T, NumberKind::kSigned, 4, true},
    {XoNULL_UNSIGNED_T, NumberKind::kUnsigned, 4, true},
    {XoNULL_4B_T, NumberKind::kSigned, 4, true},
    {XoNULL_U4B_T, NumberKind::kUnsigned, 4, true},
    {XoNULL_FLOAT_T, NumberKind::kFloat, 4, true},
    {XoNULL_DOUBLE_T, NumberKind::kDouble, 8, true},
    {XoNULL_XOINT64_T, NumberKind::kHalves, 8, true},
    {XoNULL_8B_T, NumberKind::kSigned, 8, true},
    {XoNULL_U8B_T, NumberKind::kUnsigned, 8, true},
};

/// Both lists.
inline std::vector<NumberRow> AllNumberRows() {
  std::vector<NumberRow> rows(std::begin(kPlainRows), std::end(kPlainRows));
  rows.insert(rows.end(), std::begin(kNullRows), std::end(kNullRows));
  return rows;
}

inline NumberRow const& RowOf(char id) {
  auto const hasId = [id](NumberRow const& row) { return row.id == id; };
  auto const* const plain = std::find_if(std::begin(kPlainRows), std::end(kPlainRows), hasId);
  if (plain != std::end(kPlainRows)) return *plain;
  return *std::find_if(std::begin(kNullRows), std::end(kNullRows), hasId);
}

using StoredKey = std::vector<unsigned char>;

/// The low bytes of `bits`, as an element of the row is stored.
inline StoredKey StoredBits(NumberRow const& row, std::uint64_t bits, unsigned char format,
                            unsigned char nullByte = 0) {
  StoredKey bytes;
  for (unsigned index = 0; index < row.width; ++index) {
    bytes.push_back(static_cast<unsigned char>(bits >> (8 * index)));
  }
  if (format % 16 == 2) {
    // Of the halves each has its bytes reversed; the lower one comes first as ever.
    auto const middle = bytes.begin() + (row.kind == NumberKind::kHalves ? 4 : row.width);
    std::reverse(bytes.begin(), middle);
    std::reverse(middle, bytes.end());
  }
  if (row.canBeNull) bytes.insert((format & 8) != 0 ? bytes.end() : bytes.begin(), nullByte);
  return bytes;
}

inline StoredKey StoredReal(NumberRow const& row, double number, unsigned char format) {
  if (row.kind == NumberKind::kDouble) {
    return StoredBits(row, std::bit_cast<std::uint64_t>(number), format);
  }
  return StoredBits(row, std::bit_cast<std::uint32_t>(static_cast<float>(number)), format);
}

inline StoredKey StoredNumber(NumberRow const& row, std::int64_t number, unsigned char format) {
  if (row.IsReal()) return StoredReal(row, static_cast<double>(number), format);
  return StoredBits(row, static_cast<std::uint64_t>(number), format);
}

inline StoredKey StoredNull(NumberRow const& row, unsigned char format) {
  return StoredBits(row, 0, format, 1);
}

inline constexpr unsigned char kNumberForms[] = {1, 2, 8, 0x81, 0x82, 0x88};

/// Bounds that are given back at the end of a scope.
struct OwnedBounds : XoIdxBounds {
  OwnedBounds() = default;
  OwnedBounds(OwnedBounds const&) = delete;
  OwnedBounds& operator=(OwnedBounds const&) = delete;
  ~OwnedBounds() { ReleaseBounds(*this); }
};

/// The end keys of an index and the value of a predicate, at odd addresses, each of which ends with
/// its memory.
class Predicate {
 public:
  Predicate(StoredKey const& lowKey, StoredKey const& highKey, StoredKey const& valueKey,
            unsigned char keyFormat)
      : low(lowKey, 1), high(highKey, 1), value(valueKey, 1), format(keyFormat) {
    range.low = low.Data();
    range.high = high.Data();
    range.lowLen = static_cast<std::uint8_t>(lowKey.size());
    range.highLen = static_cast<std::uint8_t>(highKey.size());
  }

  float Evaluate(NumberRow const& row, unsigned short& op, void* bounds = nullptr,
                 unsigned count = 1) {
    return XoTypeMgr().EvalAndBound(row.id, &range, op, value.Data(), format, count, bounds,
                                    nullptr);
  }

  float Share(NumberRow const& row, unsigned short op) { return Evaluate(row, op); }

  XoIdxBounds range;

 private:
  PlacedBytes low, high, value;
  unsigned char format;
};

/// The share of an index of whole numbers, in one form.
inline float ShareOfNumbers(NumberRow const& row, std::int64_t low, std::int64_t high,
                            std::int64_t value, unsigned short op, unsigned char format = 1) {
  Predicate predicate(StoredNumber(row, low, format), StoredNumber(row, high, format),
                      StoredNumber(row, value, format), format);
  return predicate.Share(row, op);
}

/// The share of an index of reals.
inline float ShareOfReals(NumberRow const& row, double low, double high, double value,
                          unsigned short op) {
  Predicate predicate(StoredReal(row, low, 1), StoredReal(row, high, 1), StoredReal(row, value, 1),
                      1);
  return predicate.Share(row, op);
}

}  // namespace xo::test

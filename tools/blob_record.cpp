#include "tools/blob_record.hpp"

#include <fmt/core.h>

#include <climits>
#include <xotypemgr.hpp>

namespace xo::tool {
namespace {

constexpr std::size_t kWord = 4;
constexpr std::uint32_t kNullLength = 0xFFFFFFFF;

std::uint32_t WordAt(std::span<unsigned char const> bytes, std::size_t offset,
                     unsigned char format) {
  o_u4b word = 0;
  LongStoreOne(&word, bytes.data() + offset, format);
  return word;
}

std::string Bytes(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "byte" : "bytes");
}

/// The next element, from `at` on; moves `at` behind it. What the total covers ends at `end`.
std::optional<BlobDamage> ReadElement(std::span<unsigned char const> bytes, unsigned char format,
                                      std::size_t end, std::size_t& at, BlobRecord& record) {
  std::size_t const number = record.elements.size() + 1;
  if (end - at < kWord) {
    return BlobDamage{at, fmt::format("the total leaves {} for element {}, whose length takes 4",
                                      Bytes(end - at), number)};
  }
  if (bytes.size() - at < kWord) {
    return BlobDamage{at, fmt::format("the record ends {} into element {}, whose length takes 4",
                                      Bytes(bytes.size() - at), number)};
  }
  std::uint32_t const length = WordAt(bytes, at, format);
  bool const isNull = length == kNullLength;
  if (!isNull && length > end - at - kWord) {
    return BlobDamage{at, fmt::format("element {} says {}, where the total leaves {}", number,
                                      Bytes(length), end - at - kWord)};
  }
  if (!isNull && length > bytes.size() - at - kWord) {
    return BlobDamage{at, fmt::format("element {} says {}, where the record has {}", number,
                                      Bytes(length), bytes.size() - at - kWord)};
  }
  record.elements.push_back({at, isNull ? 0 : length, isNull});
  at += kWord + (isNull ? 0 : length);
  return std::nullopt;
}

}  // namespace

BlobRecord ReadBlobRecord(std::span<unsigned char const> bytes, unsigned char format) {
  BlobRecord record;
  if (bytes.size() < kWord) {
    record.damage = {bytes.size(), fmt::format("the record has {}, where its total takes 4",
                                               Bytes(bytes.size()))};
    return record;
  }
  record.total = WordAt(bytes, 0, format);
  if (record.total > INT_MAX) {
    record.damage = {0, fmt::format("the total says {}, where a record has at most {}",
                                    Bytes(record.total), INT_MAX)};
    return record;
  }
  std::size_t const end = kWord + record.total;
  for (std::size_t at = kWord; at < end;) {
    record.damage = ReadElement(bytes, format, end, at, record);
    if (record.damage) return record;
  }
  if (bytes.size() > end) {
    record.damage = {
        end, fmt::format("{} behind the end that the total says", Bytes(bytes.size() - end))};
  }
  return record;
}

}  // namespace xo::tool

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace xo::tool {

/// What does not fit in a stored blob record, and where.
struct BlobDamage {
  std::size_t offset;
  std::string reason;
};

/// An element of a stored blob record.
struct BlobElement {
  std::size_t offset;  ///< of its length, behind which its bytes stand
  std::uint32_t length;
  bool isNull;
};

/// A stored array of blobs: the elements up to the first damage, if there is one. Of the bytes
/// given, none is read that is not there.
struct BlobRecord {
  std::uint32_t total = 0;
  std::vector<BlobElement> elements;
  std::optional<BlobDamage> damage;
};

BlobRecord ReadBlobRecord(std::span<unsigned char const> bytes, unsigned char format);

}  // namespace xo::tool

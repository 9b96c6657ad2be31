#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <vector>
#include <xotypemgr.hpp>

/// Texts of units in any code set, and what an iterator reads of them.
namespace xo::test {

inline constexpr unsigned char kLatin1 = 1, kCyrillic = 5, kEbcdic = 32, kUnicode = 253,
                               kOrders = 254;
inline constexpr unsigned char kNeutral = 0, kGerman = 2, kTraditionalSpanish = 8, kCzech = 22,
                               kHungarian = 24, kRussian = 38, kSwedish = 13;
inline constexpr unsigned char kLatinGroup = 2, kCyrillicGroup = 4, kUntabledGroup = 20;

using Units = std::vector<unsigned short>;

/// A text in memory of exactly its length, so that a read behind its end is found.
class Text {
 public:
  Text(Units const& units, unsigned char codeSet, unsigned char byteOrder = 1) {
    std::size_t const width = codeSet > 224 ? 2 : 1;
    size = units.size() * width;
    exact.reset(new char[size + width]());
    for (std::size_t place = 0; place < units.size(); ++place) {
      char const low = static_cast<char>(units[place] & 255);
      char const high = static_cast<char>(units[place] >> 8);
      char* const at = exact.get() + place * width;
      at[0] = width == 2 && byteOrder == 2 ? high : low;
      if (width == 2) at[1] = byteOrder == 2 ? low : high;
    }
  }
  char const* Get() const { return exact.get(); }
  std::size_t size;

 private:
  std::unique_ptr<char[]> exact;
};

struct Read {
  unsigned short order;
  unsigned char group;
  std::ptrdiff_t place;
  bool operator==(Read const&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, Read const& read) {
  return stream << read.order << " of " << int{read.group} << " at " << read.place;
}

/// All that an iterator reads up to the end.
inline std::vector<Read> ReadAll(Units const& units, unsigned char codeSet, unsigned char language,
                                 unsigned short updateGroup = 1) {
  Text const text(units, codeSet);
  XoStringIterator iterator(text.Get(), codeSet, language, 1);
  std::vector<Read> reads;
  for (;;) {
    unsigned short const order = iterator.GetNextOrder(updateGroup);
    if (order == 0) return reads;
    reads.push_back({order, iterator.orderGroup, iterator.cursor - text.Get()});
  }
}

}  // namespace xo::test

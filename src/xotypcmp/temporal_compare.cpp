#include "src/xodate/temporal_layout.hpp"
#include "src/xotypcmp/array_compare.hpp"
#include "src/xotypcmp/scalar_compare.hpp"
#include "xotypcmp.hpp"

/// Comparison of dates, times and spans. Objects compare as their class says. Stored values compare
/// field by field where they lie, and there the wildcards of the second operand alone count.
namespace xo {
namespace {

constexpr unsigned char kWildcardByte = 0xFF;

template <class Layout>
o_2b YearAt(void const* data, unsigned char nibble) {
  auto const year = LoadBytes<o_u2b>(data);
  return static_cast<o_2b>(nibble == FormBig ? ReverseBytes(year) : year);
}

o_4b NanoSecondsAt(void const* data, unsigned char nibble) {
  if (ReadsInPlace(nibble)) return LoadBytes<o_4b>(data);
  return DecodeElement<o_4b, LongFamily>(data, nibble);
}

/// The fields of one byte as one number that orders as they do, each moved so that its least value
/// is 0.
template <class Layout>
o_u8b KeyOfBytes(void const* data) {
  o_u8b key = 0;
  for (unsigned field = Layout::kFirstByte; field < Layout::kNanoSecondsOnDisk; ++field) {
    key = key << 8 | (*Advance(data, field) ^ 0x80U);
  }
  return key;
}

template <class Layout>
int CompareStrict(unsigned char nibble, void const* a, void const* b) {
  if constexpr (Layout::kHasYear) {
    o_2b const yearA = YearAt<Layout>(a, nibble);
    o_2b const yearB = YearAt<Layout>(b, nibble);
    if (yearA != yearB) return yearA < yearB ? -1 : 1;
  }
  int const order = OrderOf(KeyOfBytes<Layout>(a), KeyOfBytes<Layout>(b));
  if constexpr (Layout::kHasNanoSeconds) {
    if (order == 0) {
      return OrderOf(NanoSecondsAt(Advance(a, Layout::kNanoSecondsOnDisk), nibble),
                     NanoSecondsAt(Advance(b, Layout::kNanoSecondsOnDisk), nibble));
    }
  }
  return order;
}

template <class Layout>
int CompareWithPattern(unsigned char nibble, void const* value, void const* pattern) {
  if constexpr (Layout::kHasYear) {
    o_2b const year = YearAt<Layout>(pattern, nibble);
    int const order = OrderOf(YearAt<Layout>(value, nibble), year);
    if (order != 0 && year != kWildcard) return order;
  }
  for (unsigned field = Layout::kFirstByte; field < Layout::kNanoSecondsOnDisk; ++field) {
    unsigned char const byte = *Advance(pattern, field);
    if (byte == kWildcardByte) continue;
    int const order =
        OrderOf(static_cast<o_char>(*Advance(value, field)), static_cast<o_char>(byte));
    if (order != 0) return order;
  }
  if constexpr (Layout::kHasNanoSeconds) {
    o_4b const nanoSeconds = NanoSecondsAt(Advance(pattern, Layout::kNanoSecondsOnDisk), nibble);
    if (nanoSeconds != kWildcard) {
      return OrderOf(NanoSecondsAt(Advance(value, Layout::kNanoSecondsOnDisk), nibble),
                     nanoSeconds);
    }
  }
  return 0;
}

template <class Layout>
struct TemporalElements {
  static unsigned Width(unsigned char nibble) { return Layout::Width(nibble); }

  static int Compare(unsigned char nibble, void const* a, void const* b, unsigned short cmpOp) {
    if (nibble == FormMemory) {
      using Value = typename Layout::Value;
      return LoadValue<Value>(a).Compare(LoadValue<Value>(b), cmpOp);
    }
    return (cmpOp & CmpOpNoWildcards) != 0 ? CompareStrict<Layout>(nibble, a, b)
                                           : CompareWithPattern<Layout>(nibble, a, b);
  }
};

/// Slot `Compare` of a temporal row.
template <class Layout>
int CompareTemporal(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                    unsigned short cmpOp, unsigned count, int& status) {
  // One stored element with wildcards off is what an index page asks for, found out by one test. No
  // length can end before it.
  unsigned const otherwise = (count ^ 1U) | (FormNibble(format) ^ unsigned{FormLittle}) |
                             (~unsigned{cmpOp} & CmpOpNoWildcards);
  if (otherwise == 0) [[likely]] {
    status = 0;
    return CompareStrict<Layout>(FormLittle, buf1, buf2);
  }
  return CompareArrays<TemporalElements<Layout>>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                 status);
}

}  // namespace
}  // namespace xo

int XoDateCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                  unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareTemporal<xo::DateLayout>(format, len1, buf1, len2, buf2, cmpOp, count, status);
}

int XoTimeCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                  unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareTemporal<xo::TimeLayout>(format, len1, buf1, len2, buf2, cmpOp, count, status);
}

int XoDateTimeCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                      unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareTemporal<xo::DateTimeLayout>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                 status);
}

int XoDateTimeNCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                       unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareTemporal<xo::DateTimeNLayout>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                  status);
}

int XoTimeSpanCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                      unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareTemporal<xo::TimeSpanLayout>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                 status);
}

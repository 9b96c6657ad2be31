#include "src/odmg/odmg_rows.hpp"
#include "src/xotypcmp/array_compare.hpp"
#include "src/xotypcmp/scalar_compare.hpp"
#include "xotypcmp.hpp"

/// Comparison of the ODMG classes. Objects compare as their `operator!=` says, by calendar and
/// zone. Stored values compare by their fields where they lie, where in dates the wildcards of the
/// second operand count.
namespace xo {
namespace {

constexpr o_u2b kWildcardYear = 0xFFFF;
constexpr o_char kWildcardField = -1;
constexpr unsigned kDateWidth = OdmgDateLayout::kDiskWidth;

int CompareBytes(void const* a, void const* b, unsigned first, unsigned end) {
  for (unsigned place = first; place < end; ++place) {
    int const order =
        OrderOf(LoadBytes<o_char>(Advance(a, place)), LoadBytes<o_char>(Advance(b, place)));
    if (order != 0) return order;
  }
  return 0;
}

// Unlike that of the other dates the year compares without a sign, so that years before 0 follow
// all others.
int CompareStoredDates(unsigned char nibble, void const* a, void const* b, unsigned short cmpOp) {
  constexpr unsigned kMonth = 2, kDay = 3;
  auto const yearAt = [nibble](void const* date) {
    auto const year = LoadBytes<o_u2b>(date);
    return nibble == FormBig ? ReverseBytes(year) : year;
  };
  bool const hasWildcards = (cmpOp & CmpOpNoWildcards) == 0;
  o_u2b const year = yearAt(b);
  int const order = OrderOf(yearAt(a), year);
  if (order != 0 && !(hasWildcards && year == kWildcardYear)) return order;
  auto const isWildcard = [&](unsigned place) {
    return hasWildcards && LoadBytes<o_char>(Advance(b, place)) == kWildcardField;
  };
  return CompareBytes(a, b, isWildcard(kMonth) ? kDay : kMonth,
                      isWildcard(kDay) ? kDay : kDateWidth);
}

int CompareStored(d_Date const*, unsigned char nibble, void const* a, void const* b,
                  unsigned short cmpOp) {
  return CompareStoredDates(nibble, a, b, cmpOp);
}
int CompareStored(d_Time const*, unsigned char, void const* a, void const* b, unsigned short) {
  return CompareBytes(a, b, 0, OdmgTimeLayout::kDiskWidth);
}
int CompareStored(d_Timestamp const*, unsigned char nibble, void const* a, void const* b,
                  unsigned short cmpOp) {
  int const order = CompareStoredDates(nibble, a, b, cmpOp);
  return order != 0 ? order : CompareBytes(a, b, kDateWidth, OdmgTimestampLayout::kDiskWidth);
}

template <class Layout>
struct OdmgElements {
  using Value = typename Layout::Value;

  static unsigned Width(unsigned char nibble) { return Layout::Width(nibble); }

  static int Compare(unsigned char nibble, void const* a, void const* b, unsigned short cmpOp) {
    if (nibble == FormMemory) return LoadValue<Value>(a) != LoadValue<Value>(b);
    return CompareStored(static_cast<Value const*>(nullptr), nibble, a, b, cmpOp);
  }
};

}  // namespace
}  // namespace xo

int d_DateCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                  unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareArrays<xo::OdmgElements<xo::OdmgDateLayout>>(format, len1, buf1, len2, buf2,
                                                                 cmpOp, count, status);
}

int d_TimeCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                  unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareArrays<xo::OdmgElements<xo::OdmgTimeLayout>>(format, len1, buf1, len2, buf2,
                                                                 cmpOp, count, status);
}

int d_TimestampCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                       unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareArrays<xo::OdmgElements<xo::OdmgTimestampLayout>>(format, len1, buf1, len2,
                                                                      buf2, cmpOp, count, status);
}

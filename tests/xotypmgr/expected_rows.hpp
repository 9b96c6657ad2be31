#pragma once

#include <iterator>
#include <set>

namespace xo::test {

/// What a row of the current table says about its type.
struct ExpectedRow {
  char const* name;
  char const* typeIdName;
  char const* format;
  unsigned size;
  unsigned fixed;
};

/// All rows by id.
inline constexpr ExpectedRow kExpectedRows[] = {
    // clang-format off
    {"o_char", "Xo1B_T", "%c", 1, 1},
    {"o_2b", "Xo2B_T", "%hd", 2, 1},
    {"o_4b", "Xo4B_T", "%ld", 4, 1},
    {"o_double", "XoDOUBLE_T", "%.17g", 8, 1},
    {"o_float", "XoFLOAT_T", "%.17g", 4, 1},
    {"o_u2b", "XoU2B_T", "%hu", 2, 1},
    {"o_u4b", "XoU4B_T", "%lu", 4, 1},
    {"int", "XoINT_T", "%d", 4, 1},
    {"unsigned", "XoUNSIGNED_T", "%u", 4, 1},
    {"enum", "XoENUM_T", "%d", 4, 1},
    {"o_u1b", "XoU1B_T", "%c", 1, 1},
    {"XoString", "XoSTRING_T", "%s", 16, 0},
    {"XoDate", "XoDATE_T", "%a %e.%b %Y", 4, 1},
    {"XoTime", "XoTIME_T", "%I:%M:%S %p", 3, 1},
    {"BlockId", "XoBLOCKID_T", "#%lu", 4, 1},
    {"XoObjId", "XoOBJID_T", "(%H-%L#%B)", 12, 1},
    {"XoClassId", "XoCLID_T", "(%Cv%V)", 4, 1},
    {"XoRef", "XoREF_T", "(%D:%H-%L#%B, %C)", 16, 1},
    {"XoBlob", "XoBLOB_T", "[BLOB,len=%L]", 8, 0},
    {"XoDateTime", "XoDATIME_T", "%a %e.%b %Y %I:%M:%S %p", 8, 1},
    {"XoIString", "XoISTRING_T", "%s", 16, 0},
    {"XoCaseIString", "XoCASEISTRING_T", "%s", 16, 0},
    {"d_Date", "D_DATE_T", "%a %b %e", 4, 1},
    {"d_Time", "D_TIME_T", "%I:%M:%S %p", 6, 1},
    {"d_Timestamp", "D_TIMESTAMP_T", "%a %b %e %I:%M:%S %p", 10, 1},
    {"d_Interval", "D_INTERVAL_T", "%e days, %I hours, %M minutes, %S seconds", 4, 1},
    {"XoInt64", "XoINT64_T", "%S", 8, 1},
    {"XoBoolean", "XoBOOLEAN_T", "noop", 1, 1},
    {"XoNull_char", "XoNULL_1B_T", "%c", 2, 1},
    {"XoNull_uchar", "XoNULL_U1B_T", "%c", 2, 1},
    {"XoNull_short", "XoNULL_2B_T", "%hd", 4, 1},
    {"XoNull_ushort", "XoNULL_U2B_T", "%hu", 4, 1},
    {"XoNull_int", "XoNULL_INT_T", "%d", 8, 1},
    {"XoNull_unsigned", "XoNULL_UNSIGNED_T", "%u", 8, 1},
    {"XoNull_long", "XoNULL_4B_T", "%ld", 8, 1},
    {"XoNull_ulong", "XoNULL_U4B_T", "%lu", 8, 1},
    {"XoNull_float", "XoNULL_FLOAT_T", "%.17g", 8, 1},
    {"XoNull_double", "XoNULL_DOUBLE_T", "%.17g", 16, 1},
    {"XoNull_XoInt64", "XoNULL_XOINT64_T", "%S", 12, 1},
    {"XoSeal", "XoSEAL_T", "noop", 6, 1},
    {"XoDateTimeN", "XoDATIME_N_T", "%X", 12, 1},
    {"XoTimeSpan", "XoTIMESPAN_T", "%V", 12, 1},
    {"o_8b", "Xo8B_T", "%I64d", 8, 1},
    {"o_u8b", "XoU8B_T", "%I64u", 8, 1},
    {"XoNull_8b", "XoNULL_8B_T", "%I64d", 16, 1},
    {"XoNull_u8b", "XoNULL_U8B_T", "%I64u", 16, 1},
    {"illegal", "XoRES_T", "illegal", 0, 1},
    // clang-format on
};

inline constexpr int kRowCount = 47;
inline constexpr int kOlderRowCount = 28;
inline constexpr int kIllegalRow = 46;
static_assert(sizeof kExpectedRows / sizeof kExpectedRows[0] == kRowCount);

/// The rows of the plain scalars.
inline constexpr int kScalarRows[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 42, 43};

/// The rows of dates, times and spans.
inline constexpr int kTemporalRows[] = {12, 13, 19, 40, 41};

/// The rows of the numbers that can be null.
inline constexpr int kNullNumberRows[] = {28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 44, 45};

/// The rows of text.
inline constexpr int kTextRows[] = {11, 20, 21};

/// The rows of identifiers, seals and blobs.
inline constexpr int kIdentityRows[] = {15, 16, 17, 18, 39};

/// The rows of the ODMG classes.
inline constexpr int kOdmgRows[] = {22, 23, 24, 25};

/// The rows with operations of their own. All others answer as the `illegal` row does; whoever
/// gives one its operations moves it here.
inline std::set<int> const kBuiltRows = [] {
  std::set<int> rows(std::begin(kScalarRows), std::end(kScalarRows));
  rows.insert(std::begin(kTemporalRows), std::end(kTemporalRows));
  rows.insert(std::begin(kNullNumberRows), std::end(kNullNumberRows));
  rows.insert(std::begin(kTextRows), std::end(kTextRows));
  rows.insert(std::begin(kIdentityRows), std::end(kIdentityRows));
  rows.insert(std::begin(kOdmgRows), std::end(kOdmgRows));
  rows.insert({26, 27});
  return rows;
}();

/// The type id as the operations take it.
constexpr char Id(int number) { return static_cast<char>(number); }

}  // namespace xo::test

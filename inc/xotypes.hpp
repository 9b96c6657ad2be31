#pragma once

#include <cstdint>

#include "base/export.hpp"
#include "base/format.hpp"

class MemFile;
class XoString;
class XoTypeConvertData;
struct XoEvalData;
struct XoIdxBounds;

/// Type ids, the plain scalars and the table of types: everything that is done to a typed value
/// goes through one numeric id and one row of one table.

// Plain scalars. Their widths are the same on every platform.
using o_char = signed char;
using o_u1b = unsigned char;
using o_2b = std::int16_t;
using o_u2b = std::uint16_t;
using o_4b = std::int32_t;
using o_u4b = std::uint32_t;
using o_8b = std::int64_t;
using o_u8b = std::uint64_t;
using o_double = double;
using o_float = float;
using BlockId = o_u4b;

/// Type ids. An id travels as a `char` and is a signed 8-bit number whatever the sign of that.
enum XoTypeId : signed char {
  Xo1B_T = 0,
  Xo2B_T = 1,
  Xo4B_T = 2,
  XoDOUBLE_T = 3,
  XoFLOAT_T = 4,
  XoU2B_T = 5,
  XoU4B_T = 6,
  XoINT_T = 7,
  XoUNSIGNED_T = 8,
  XoENUM_T = 9,
  XoU1B_T = 10,
  XoSTRING_T = 11,
  XoDATE_T = 12,
  XoTIME_T = 13,
  XoBLOCKID_T = 14,
  XoOBJID_T = 15,
  XoCLID_T = 16,
  XoREF_T = 17,
  XoBLOB_T = 18,
  XoDATIME_T = 19,
  XoISTRING_T = 20,
  XoCASEISTRING_T = 21,
  D_DATE_T = 22,
  D_TIME_T = 23,
  D_TIMESTAMP_T = 24,
  D_INTERVAL_T = 25,
  XoINT64_T = 26,
  XoBOOLEAN_T = 27,
  XoNULL_1B_T = 28,
  XoNULL_U1B_T = 29,
  XoNULL_2B_T = 30,
  XoNULL_U2B_T = 31,
  XoNULL_INT_T = 32,
  XoNULL_UNSIGNED_T = 33,
  XoNULL_4B_T = 34,
  XoNULL_U4B_T = 35,
  XoNULL_FLOAT_T = 36,
  XoNULL_DOUBLE_T = 37,
  XoNULL_XOINT64_T = 38,
  XoSEAL_T = 39,
  XoDATIME_N_T = 40,
  XoTIMESPAN_T = 41,
  Xo8B_T = 42,
  XoU8B_T = 43,
  XoNULL_8B_T = 44,
  XoNULL_U8B_T = 45,
  /// The reserved id, which stands for no type. It folds to row 46, the `illegal` row.
  XoRES_T = 100,
};

// What operations report.
inline constexpr int ERR_TM_NOT_SUPPORTED = -2999;   ///< no such operation for type, format or code
inline constexpr int ERR_TM_NO_NEXT_VALUE = 2091;    ///< `GetValue` has no greater value
inline constexpr int ERR_TM_LENGTH_EXCEEDED = 2101;  ///< a count ran past the data, or cut values
inline constexpr int ERR_TM_FIRST_KEY_CUT = 2114;    ///< the first operand is a cut key
inline constexpr int ERR_TM_SECOND_KEY_CUT = 2115;   ///< the second operand is a cut key

// Bits of the option word `op` of comparisons that the comparison of stored values reads itself.
/// A wildcard field of a date or time compares as an ordinary number; text is no pattern.
inline constexpr unsigned short CmpOpNoWildcards = 0x10;
/// A cut string answers with the first difference inside the compared prefix.
inline constexpr unsigned short CmpOpPrefixResult = 0x80;
/// Text compares by raw sort orders and is no pattern.
inline constexpr unsigned short CmpOpBinaryOrder = 0x100;

/// What `GetValue` puts in a value's place. A row answers `ERR_TM_NOT_SUPPORTED` for a code that it
/// does not know, and for every format but `FormMemory`; it changes the first element alone.
using NextValueCode = unsigned char;
/// The next greater value, or `ERR_TM_NO_NEXT_VALUE` where there is none. Both codes mean the same.
/// A date moves by a day, a time by a second, what has nanoseconds by one of them.
inline constexpr NextValueCode kNextValue = 'N';
inline constexpr NextValueCode kNextValueToo = 'M';
/// The present value of a temporal type: now, today. Integers accept it and keep their value;
/// floating-point numbers do not know it. A span of time keeps its value as well.
inline constexpr NextValueCode kPresentValue = 'O';
/// The lowest value of the type: of an integer the lowest number, of a floating-point number a NaN,
/// of a temporal type null.
/// Rows know it, `XoTypeMgr::GetValue` does not.
inline constexpr NextValueCode kLowestValue = 2;

/// Signature of every comparison of the table.
///
/// `format` is the form of both operands. `len1` and `len2` are the bytes available in `buf1` and
/// `buf2`, 0 meaning that all `count` elements are there; a smaller length means a cut value. The
/// result is negative, zero or positive by the first pair of elements that differs, and `status`
/// says how far it can be trusted:
///
/// - 0: everything was compared, the result is final.
/// - `ERR_TM_LENGTH_EXCEEDED`: a buffer ended before `count` elements were seen; the result holds
///   for what was compared. A result that is already decided can carry it as well.
/// - `ERR_TM_FIRST_KEY_CUT`, `ERR_TM_SECOND_KEY_CUT`: an operand is a cut order key; as above.
/// - `ERR_TM_NOT_SUPPORTED`: no answer.
///
/// A buffer counts as used up where its next element would start at or past its end, so a partial
/// last element is read whole: the buffer must reach to the end of the element in which its length
/// ends. A `count` of 0 reads nothing and gives 0 with `status` 0. No pointer needs alignment.
/// Comparisons are re-entrant.
using XCompare = int(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                     void* buf2, unsigned short cmpOp, unsigned int count, int& status);

/// One row of the table: a type's names, its default print format, its memory size and its
/// operations, in 28 pointer-sized slots whose order is fixed. A function pointer taken from a row
/// is called with exactly these arguments.
///
/// Rows live as long as the library and are shared by all managers. They are read without a lock;
/// only the exchange operations of `XoTypeMgr` write, and belong to set-up.
struct TypeDescriptor {
  using CreateFunction = void*(unsigned count);
  using DeleteFunction = void*(void* values, unsigned count);
  using StoreFunction = unsigned(void* disk, void const* memory, unsigned char format,
                                 unsigned count);
  using LoadFunction = unsigned(void* memory, void const* disk, unsigned char format,
                                unsigned count);
  using NullSizeGetFunction = unsigned(unsigned count);
  using SizeGetFunction = unsigned(void const* data, unsigned char dataFormat,
                                   unsigned char diskFormat, unsigned count);
  using SizeGetFromMemFileFunction = unsigned(MemFile* file, unsigned char format, unsigned count);
  using EvalAndBoundFunction = float(XoIdxBounds*, unsigned short&, void*, unsigned char, unsigned,
                                     void*, XoEvalData*);
  /// Hash of the plain scalars: the elements' low 32 bits, extended by their sign (of `o_double`
  /// both halves, XORed), all XORed together and times 1103515245 in 32 bits. So it does not depend
  /// on the order of elements, and not on the high half of a 64-bit integer. Zeros of both signs
  /// and NaNs of different bits hash apart, although they compare equal.
  /// A date gives `(year << 16) + (month << 8) + day` in place of those bits, a time the same of
  /// its fields, and both read their bytes as they lie, in every format. A date and time gives the
  /// two XORed, with the nanoseconds where it has them, of the value in any format.
  using HashFunction = unsigned(unsigned char format, unsigned length, void* data, unsigned count,
                                int& error);
  using ConvertToFunction = XoTypeConvertData*(void* values, unsigned count);
  using ConvertFromFunction = void*(XoTypeConvertData* strings, unsigned count);
  using ConstructorFunction = void(void* values, unsigned count, unsigned);
  using AssignmentFunction = void(void* target, void* source, unsigned count, int fill);
  using TranslateFunction = unsigned(void* target, unsigned char targetFormat,
                                     unsigned targetLength, void* source,
                                     unsigned char sourceFormat, unsigned sourceLength,
                                     unsigned count);
  using NullFunction = int(void* value);
  using PrintFunction = XoString&(XoString& out, void* values, char const* format, unsigned count);
  using ScanFunction = void*(void* target, XoString& text, char const* format, unsigned count);
  using DefaultValueFunction = void*(unsigned count, int asNull);
  using GetValueFunction = int(void* value, unsigned count, unsigned char format,
                               NextValueCode code);

  char const* Name;        ///< 0: the class or language-level name, the key of `Name2XoTypeId`
  char const* TypeIdName;  ///< 1: the name of the id's constant
  CreateFunction* Create;  ///< 2: allocates and, where the type requires it, initialises elements
  DeleteFunction* Delete;  ///< 3: destroys and frees what `Create` gave; scalars return null
  StoreFunction* Store;    ///< 4: writes elements in disk format, returns the bytes written
  LoadFunction* Load;      ///< 5: reads elements from disk format, returns the bytes read
  NullSizeGetFunction* NullSizeGet;  ///< 6: disk size of null elements
  SizeGetFunction* SizeGet;          ///< 7: size in another format of the elements at `data`
  SizeGetFromMemFileFunction* SizeGetFromMemFile;  ///< 8: disk size at a file's read position
  XCompare* Compare;                               ///< 9: comparison
  EvalAndBoundFunction* EvalAndBound;              ///< 10: index bound evaluation
  HashFunction* Hash;                              ///< 11: hash
  ConvertToFunction* ConvertTo;                    ///< 12: array of strings from values
  ConvertFromFunction* ConvertFrom;                ///< 13: new values from strings
  ConstructorFunction* Constructor;  ///< 14: constructs in raw memory; the last argument is unread
  ConstructorFunction* Destructor;   ///< 15: destroys in place, the memory stays
  AssignmentFunction* Assignment;    ///< 16: assigns to live elements; `fill`: all from the first
  AssignmentFunction* Copy;          ///< 17: the same into raw memory
  TranslateFunction* Translate;      ///< 18: re-encodes between memory and disk formats
  NullFunction* IsNull;              ///< 19: not zero when the element is null
  NullFunction* SetNull;             ///< 20: makes the element null; null: there is no null value
  char const* Format;                ///< 21: default print format
  PrintFunction* PrintToXoString;    ///< 22: print
  ScanFunction* ScanFromXoString;    ///< 23: scan
  std::uint16_t MemLen;              ///< 24: memory size of one element in bytes
  std::uint16_t Fixed;               ///< 24: 1 when elements own no storage, else 0
  DefaultValueFunction* DefaultValue;  ///< 25: new array of default elements
  GetValueFunction* GetValue;          ///< 26: replaces the value by a derived one
  void* Reserved;                      ///< 27: null in every row; no code reads it
};

static_assert(sizeof(TypeDescriptor) == 28 * sizeof(void*));

/// Rows of each table, and the row of ids that stand for no type.
inline constexpr int kXoCurrentRows = 47;
inline constexpr int kXoOlderRows = 28;
inline constexpr int kXoIllegalRow = 46;

/// The row index of a type id: the id itself below 100, also when negative, else the smaller of
/// `id - 54` and 46.
constexpr int FoldTypeId(signed char id) {
  if (id < XoRES_T) return id;
  int const index = id - 54;
  return index < kXoIllegalRow ? index : kXoIllegalRow;
}

/// The rows by id, 0 to 46, with a null behind the last.
XO_EXPORT extern TypeDescriptor* const CurrentTypeTable[kXoCurrentRows + 1];

/// The rows of databases of an older generation, ids 0 to 27, with a null behind the last: the rows
/// of the current table but for a string row of its own.
XO_EXPORT extern TypeDescriptor* const OlderTypeTable[kXoOlderRows + 1];

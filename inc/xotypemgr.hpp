#pragma once

/// The whole public interface of the library, and the manager through which it is used.

#include "_xonulty.hpp"
#include "base/clock.hpp"
#include "base/config.hpp"
#include "base/export.hpp"
#include "base/format.hpp"
#include "base/mem_file.hpp"
#include "base/number_format.hpp"
#include "base/number_text.hpp"
#include "base/option_word.hpp"
#include "base/platform.hpp"
#include "base/scalar_disk.hpp"
#include "base/version.hpp"
#include "base/wrapping.hpp"
#include "intl/code_set.hpp"
#include "intl/language.hpp"
#include "intl/language_context.hpp"
#include "intl/order_table.hpp"
#include "intl/wide_list.hpp"
#include "xoblob.hpp"
#include "xoboolean.hpp"
#include "xochar.hpp"
#include "xodate.hpp"
#include "xodatetime.hpp"
#include "xodatetimen.hpp"
#include "xoidentifiers.hpp"
#include "xoidxbounds.hpp"
#include "xoint64.hpp"
#include "xoistring.hpp"
#include "xomodule.hpp"
#include "xomultibyte.hpp"
#include "xoodmg.hpp"
#include "xoorders.hpp"
#include "xoplainkeys.hpp"
#include "xoseal.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"
#include "xostringhash.hpp"
#include "xostringiterator.hpp"
#include "xostringstore.hpp"
#include "xotime.hpp"
#include "xotimespan.hpp"
#include "xotypcmp.hpp"
#include "xotypeconvert.hpp"
#include "xotypes.hpp"
#include "xovaluesetters.hpp"

/// The way to every typed value: an operation on a type id is forwarded to the slot of the row that
/// the id selects in the table that the manager was built with (`TypeDescriptor`).
///
/// `count` everywhere is the number of elements of an array value. Pointers to values are not
/// checked. A manager is small, holds nothing to free, and may be copied; several threads may use
/// one. An id without a row (47 to 99, negative, above 27 on the older table) selects the `illegal`
/// row, whose operations do nothing and answer 0, null or `ERR_TM_NOT_SUPPORTED`; a status or error
/// argument keeps the value that the caller gave it. Rows that have no operations yet are the same.
class XO_EXPORT XoTypeMgr {
 public:
  /// A manager of a generation of the type encoding. `factory` 0 to 3 and 11 (an alias of 3) give
  /// `OlderTypeTable`; 4 to 10 give `CurrentTypeTable`; 12 and above give it at level 4.
  XoTypeMgr(unsigned factory);

  /// A manager at the default level, 5.
  XoTypeMgr() : XoTypeMgr(5) {}

  /// Chooses table and level anew, as the constructor does.
  void SetFactory(unsigned factory);

  /// The level that was chosen: 0 to 10.
  unsigned short FactoryLevel() const { return level; }

  // Forwarding operations. A row's slots, as found at `TypeDescriptor`, do the same.

  /// New values, the caller's until `Delete`. Plain scalars are uninitialised but for the two
  /// byte-sized ones. `count` counts as a signed number; what cannot be had ends in the standard
  /// allocation failure. Null for a type that cannot be created.
  void* Create(char type, unsigned count) const;
  /// Destroys and frees what `Create` gave; `count` as it was there. Null is ignored.
  void* Delete(char type, void* values, unsigned count) const;
  /// New values with the default of the type, or null ones.
  void* DefaultValue(char type, unsigned count, int asNull) const;
  /// Order of `a` against `b`, both in `format`; lengths, result and `error` as told at `XCompare`.
  int Cmp(char type, unsigned lengthA, void* a, unsigned lengthB, void* b, unsigned short op,
          unsigned count, unsigned char format, int& error) const {
    XCompare* const compare = Row(type).Compare;
    // Keys are mostly told apart by their first letters, here in line.
    if (type == XoSTRING_T && compare == StringCompare)
      return xo::CompareByFirstLetters(compare, format, lengthA, a, lengthB, b, op, count, error);
    return compare(format, lengthA, a, lengthB, b, op, count, error);
  }
  /// The same for operands that are there whole.
  int Cmp(char type, void* a, void* b, unsigned short op, unsigned count,
          unsigned char format) const {
    int error = 0;
    return Row(type).Compare(format, 0, a, 0, b, op, count, error);
  }
  /// Hash of `count` elements at `data` in `format`. `length` is the bytes available, 0 for all of
  /// them. `error` becomes 0, or `ERR_TM_LENGTH_EXCEEDED` when the data ended before `count`
  /// elements; the hash then covers those read. As with `Cmp`, the buffer must reach to the end of
  /// the element in which `length` ends.
  unsigned Hash(char type, unsigned length, void* data, unsigned count, unsigned char format,
                int& error) const;
  /// Writes values in disk format; returns the bytes written.
  unsigned Store(char type, void* disk, void* memory, unsigned char format, unsigned count) const;
  /// Reads values from disk format; returns the bytes read.
  unsigned Load(char type, void* memory, void* disk, unsigned char format, unsigned count) const;
  /// Bytes that the values at `data`, which are in `dataFormat`, take in `diskFormat`. Types of
  /// fixed width do not read `data`.
  unsigned DiskLenGet(char type, void* data, unsigned char diskFormat, unsigned count,
                      unsigned char dataFormat) const;
  /// Disk size of the values at a file's present position.
  unsigned DiskLenGetFromMemFile(char type, MemFile* file, unsigned char format,
                                 unsigned count) const;
  /// Re-encodes between memory and disk formats; returns the bytes produced, or, into memory, the
  /// bytes read.
  ///
  /// For types of fixed width: between memory and disk, the whole elements are processed that fit
  /// the disk side's length, where 0 means not limited. Memory to memory copies `count` elements.
  /// Disk to disk copies bytes as they are, as many as both lengths allow, into a target that is
  /// set to 0 first where it is longer.
  unsigned Translate(char type, void* target, unsigned char targetFormat, unsigned targetLength,
                     void* source, unsigned char sourceFormat, unsigned sourceLength,
                     unsigned count) const;
  /// The estimated share of an index that a predicate selects, and the bounds to scan between.
  ///
  /// `range` holds the lowest and the highest key of the index, stored in `format`; null, or with a
  /// null end, means that nothing is known. `op` is the relation of the keys to the `count`
  /// elements at `value`, which are in `format` as well (`kXoBoundEqual` and its kind), for texts
  /// together with the option bits of the comparison; types with wildcards give it back changed.
  /// `bounds` points to the `XoIdxBounds` to fill, or is null. `data` is not read.
  ///
  /// The estimate assumes that keys spread evenly between the two ends of the index. Records of
  /// texts, `range` and `bounds` among them, may be written to while they are evaluated and put
  /// back: keys on a shared page are to be copied first.
  ///
  /// The value of a predicate on a `XoString` is one record, a key among them, that is there as far
  /// as its length says; nothing is read behind the lengths in `range` and `bounds`. Its bounds are
  /// index keys of at most 254 bytes, in buffers of `keyLimit` bytes at least. A bound may be a key
  /// that is cut, so a scan takes for inside what compares to it with a status other than 0. A
  /// value that is a whole key itself gets whole bounds; one of text gets the bytes that the text
  /// takes, which for characters of one byte is half of their orders. A pattern that begins with a
  /// wildcard gets no bounds. Where spaces or symbols are skipped (`kCmpSkipSpaces`,
  /// `kCmpSkipSymbols`) keys may match that stand before the lower bound; bit 0x1000 of `op` asks
  /// for none in that case.
  float EvalAndBound(char type, XoIdxBounds* range, unsigned short& op, void* value,
                     unsigned char format, unsigned count, void* bounds, XoEvalData* data) const;
  /// Not zero when the value in memory is null.
  int IsNullValue(char type, void* value) const;

  // The row's slots as they stand, null included.
  XCompare* CmpFuncPtrGet(char type) const;
  TypeDescriptor::LoadFunction* LoadPtrGet(char type) const;
  TypeDescriptor::StoreFunction* StorePtrGet(char type) const;
  TypeDescriptor::ConstructorFunction* ConstructorPtrGet(char type) const;
  TypeDescriptor::ConstructorFunction* DestructorPtrGet(char type) const;
  TypeDescriptor::AssignmentFunction* AssignmentPtrGet(char type) const;
  TypeDescriptor::AssignmentFunction* CopyPtrGet(char type) const;
  TypeDescriptor::NullFunction* IsNullPtrGet(char type) const;
  TypeDescriptor::NullFunction* SetNullPtrGet(char type) const;

  /// A comparison of two values by address alone. No row has one: always null.
  using TwoArgumentCompare = int(void*, void*);
  TwoArgumentCompare* ComparePtrGet(char type) const;

  /// Memory size of `count` elements, cut to 16 bits.
  unsigned short MemLenGet(char type, unsigned count) const;
  /// 1 when elements have a fixed size in memory and own no storage, else 0.
  unsigned short IsFixed(char type) const;
  /// Address of element `index` of an array of `count`; null when `index` is not below a `count`
  /// other than 0, and for an id without a row.
  void* GetArrayElement(char type, void* values, unsigned index, unsigned count) const;
  /// The row's `Name`: copied with its terminator into `buffer`, which must have the room and is
  /// returned, or, when that is null, the row's own text, which must not be written.
  char* NameGet(char type, char* buffer) const;
  /// The same for `TypeIdName`.
  char* TypeIdNameGet(char type, char* buffer) const;
  /// Finds the type called `name`, to the letter. Returns 0 with its id in `id`, or 1 with `id` 47.
  int Name2XoTypeId(char const* name, char& id) const;
  /// Not zero when the folded id is below 47. It looks at no table, and a negative id counts as
  /// valid.
  int IsValidType(char type) const;

  /// Whether a type (1) has a null value, (2) can count upward, (3) can hold a time stamp. 0 for
  /// any other `capability`.
  int SupportsCapability(char type, unsigned short capability) const;
  /// Capability 1.
  unsigned short SupportsNullValue(char type) const;

  // Exchange operations. Each returns the old value of a slot and installs the new one unless it is
  // null, for every manager of the process that shares the row. Set-up calls, without a lock.
  /// A text that is installed must stay: its address is kept.
  char const* ExchangeFormat(char type, char const* format);
  TypeDescriptor::PrintFunction* ExchangePrintToXoStringFunc(char type,
                                                             TypeDescriptor::PrintFunction* print);
  TypeDescriptor::ScanFunction* ExchangeScanFromXoStringFunc(char type,
                                                             TypeDescriptor::ScanFunction* scan);
  XCompare* ExchangeXoTypeCmpFunc(char type, XCompare* compare);

  /// Stored bytes cannot be asked whether they are null: always `ERR_TM_NOT_SUPPORTED`.
  int DiskIsNullValue(char type, void* data) const;

  /// Replaces a value by one derived from it: by the next greater one (`kNextValue`,
  /// `kNextValueToo`) or the present one of a temporal type (`kPresentValue`). Other codes are not
  /// supported. In memory (`format` 8) the first element is replaced in place. In another format
  /// the first stored element is, read and written as little-endian data whatever its order:
  /// big-endian data must be loaded first. Text steps its own stored form. Returns 0,
  /// `ERR_TM_NO_NEXT_VALUE` with the value unchanged, or `ERR_TM_NOT_SUPPORTED`.
  int GetValue(char type, void* value, unsigned count, unsigned char format,
               NextValueCode code) const;

  /// Stores a moment as a value of `type`, in `format`. `stamp` is laid out as an `XoDateTimeN`. A
  /// date or a time takes its part of it. The time of the ODMG classes is in the default zone and
  /// takes the 32-bit fraction for whole seconds. Returns the bytes stored, or
  /// `ERR_TM_NOT_SUPPORTED` for a type that cannot hold a time stamp (capability 3) and for no
  /// `stamp`.
  int StoreTimeStamp(char type, void* target, unsigned char format, void* stamp) const;

  // Values as text.
  /// A new carrier of `count` strings, one for each value, with this manager as its owner; `delete`
  /// frees both. Null for a type that does not convert. Numbers and text convert as told at
  /// xotypeconvert.hpp, values of other classes as they print and scan in the row's format.
  XoTypeConvertData* ConvertTo(char type, void* values, unsigned count);
  /// New values, the caller's until `Delete`, from `count` strings, whose owner this manager
  /// becomes. Strings that are missing give the default of the type or, where it has one, null.
  /// Null for a type that does not convert.
  void* ConvertFrom(char type, XoTypeConvertData* strings, unsigned count);
  /// Makes the value null. A type without null takes what an empty string converts to: 0 for the
  /// numbers. Returns 0, or what the row reports.
  int SetNullValue(char type, void* value);
  /// Prints values under `format`, null for the row's own. One value replaces what `out` holds
  /// (`XoInt64` is appended); more are appended, with commas between them. Bytes print as one piece
  /// of text, however many there are. Returns `out`.
  ///
  /// Formats of plain numbers are told at base/number_format.hpp, those of `XoInt64` there. Under
  /// "%.17g" floating-point numbers that are not finite are "NaN", "Infinity" and "-Infinity".
  XoString& PrintToXoString(char type, XoString& out, void* values, char const* format,
                            unsigned count) const;
  /// Reads a value from `text` under `format`, null for the row's own; bytes read `count` elements,
  /// one from each place of the text. Returns `target`. Nothing tells whether the text matched:
  /// where it does not, a plain number stays as it was.
  void* ScanFromXoString(char type, void* target, XoString& text, char const* format,
                         unsigned count) const;

  /// What null values print as and read from, at first "{NULL}".
  static XoString const& GetNullPrintString();
  /// Takes a copy of `text` in its place. A set-up call, without a lock.
  static void SetNullPrintString(XoString const& text);

 protected:
  /// The values as one new string, to be deleted as a single value of `XoSTRING_T`: the text of
  /// each and behind it a separator, the least character from 1 on that is in none of them. Null
  /// for a type that does not convert.
  XoString* ConvertToXoStringOld(void* values, char type, unsigned count);
  /// New values from such a text, which names its separator by its last character (a comma when it
  /// is empty) and is consumed.
  void* ConvertFromXoStringOld(XoString* text, char type, unsigned count);

 private:
  /// Whether `type` has a row in the manager's table. On the older table the reserved ids fold to
  /// an index behind its end.
  bool HasRow(char type) const {
    int const index = FoldTypeId(static_cast<signed char>(type));
    if (index < 0) return false;
    return index < kXoOlderRows || (index < kXoCurrentRows && table != OlderTypeTable);
  }

  /// The row of `type`, the `illegal` row for an id without one.
  TypeDescriptor& Row(char type) const {
    return HasRow(type) ? *table[FoldTypeId(static_cast<signed char>(type))]
                        : *CurrentTypeTable[kXoIllegalRow];
  }

  TypeDescriptor* const* table;
  unsigned short level;
};

/// The manager for code that has none of its own: null until the library is started.
XO_EXPORT extern XoTypeMgr* DefaultTypeManager;

/// Returns the present default manager and installs `manager` in its place, unless that is null.
/// The one replaced is the caller's. A set-up call, without a lock.
XO_EXPORT XoTypeMgr* DefaultTypeMgr(XoTypeMgr* manager);

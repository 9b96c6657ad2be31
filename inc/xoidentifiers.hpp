#pragma once

#include "xotypes.hpp"

class XoString;

/// The identifiers of persistent things: `XoClassId` of a class, `XoObjId` of an object, `XoRef` of
/// an object with its database and class, `XoLocalRef` of one in the database that it is used in.
///
/// They are plain values without constructors: `XoObjId id{};` is all zeros. The 48 bits of `high`
/// and `low` are one number, which is the identity; `block` rides along. Text is made and read
/// under a format, in which a field stands as '%' and its letter: %C class number, %V version, %B
/// block, %L low, %H high, %D database. "%%" is a percent sign. The older form of a format, with
/// "%hu" and "%lu" for the fields by their place, still prints; see the scans about reading it. A
/// null value prints as the null print string, and text that begins with that reads as null. Text
/// stops at 2559 characters. A scan never fails: numbers that do not parse are 0, and what is
/// missing or too much does not matter.

class XoRef;

class XO_EXPORT XoClassId {
 public:
  o_u2b classNumber;
  o_u2b version;

  /// An order, not a yes or no: null before all others, then by class number and version. -1, 0, 1.
  int operator!=(XoClassId const& other) const;
  bool operator>(XoClassId const& other) const { return (*this != other) > 0; }
  /// Both fields are 65535.
  int IsNullValue() const { return classNumber == 65535 && version == 65535; }
  int SetNullValue();

  /// Makes the value the text of `out`; a null `format` is "(%Cv%V)".
  XoString& PrintToXoString(XoString& out, char const* format) const;
  /// A character of the format that stands for itself skips any one of the text.
  void ScanFromXoString(XoString const& in, char const* format);

  // The slots of the row.
  static XCompare Compare;
  /// All of an index, and no bounds.
  static TypeDescriptor::EvalAndBoundFunction EvalAndBound;
  static TypeDescriptor::HashFunction Hash;
  static TypeDescriptor::LoadFunction Load;
  static TypeDescriptor::StoreFunction Store;
  static TypeDescriptor::SizeGetFunction SizeGet;
  static TypeDescriptor::SizeGetFromMemFileFunction SizeGetFromMemFile;
  static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  static TypeDescriptor::TranslateFunction Translate;
  static TypeDescriptor::CreateFunction Create;
  static TypeDescriptor::DeleteFunction Delete;
  static TypeDescriptor::PrintFunction PrintToString;
  static TypeDescriptor::ScanFunction ScanFromString;
};

class XO_EXPORT XoObjId {
 public:
  o_u4b block;
  o_u4b low;
  o_u2b high;

  /// The same number; the block does not count.
  int operator==(XoObjId const& other) const { return low == other.low && high == other.high; }
  /// An order, not a yes or no: the difference of `high`, then -1 or 1 by `low`, then 0.
  int operator!=(XoObjId const& other) const;
  // Steps of the 48-bit number, which wraps.
  XoObjId& operator++();
  XoObjId& operator--();
  XoObjId& operator+=(short step);
  /// The highest number, block 0.
  void SetHighestValue();
  /// The number is 0, whatever the block.
  int IsNullValue() const { return low == 0 && high == 0; }
  int SetNullValue();

  /// A null `format` is "(%H-%L#%B)".
  XoString& PrintToXoString(XoString& out, char const* format) const;
  /// The part up to a '-' may be left out of the text: "12#34" reads as low 12, block 34.
  void ScanFromXoString(XoString const& in, char const* format);

  // The slots of the row.
  static XCompare Compare;
  static TypeDescriptor::EvalAndBoundFunction EvalAndBound;
  static TypeDescriptor::HashFunction Hash;
  static TypeDescriptor::LoadFunction Load;
  static TypeDescriptor::StoreFunction Store;
  static TypeDescriptor::SizeGetFunction SizeGet;
  static TypeDescriptor::SizeGetFromMemFileFunction SizeGetFromMemFile;
  static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  static TypeDescriptor::TranslateFunction Translate;
  static TypeDescriptor::CreateFunction Create;
  static TypeDescriptor::DeleteFunction Delete;
  static TypeDescriptor::PrintFunction PrintToString;
  static TypeDescriptor::ScanFunction ScanFromString;
};

class XO_EXPORT XoLocalRef {
 public:
  o_u4b block;
  o_u4b low;
  o_u2b high;
  o_u2b classNumber;
  o_u2b version;

  /// Takes all but the database.
  XoLocalRef& operator=(XoRef const& source);
  XoLocalRef& operator=(XoClassId const& source);
  XoLocalRef& operator=(XoObjId const& source);
  int operator==(XoLocalRef const& other) const { return low == other.low && high == other.high; }
  /// The same number, in database 0.
  int operator==(XoRef const& other) const;
  /// Orders, not a yes or no: as `XoObjId`; -1 where only the database of a reference differs.
  int operator!=(XoLocalRef const& other) const;
  int operator!=(XoRef const& other) const;
  /// The number is 0.
  int IsNullValue() const { return low == 0 && high == 0; }

  /// A null `format` is "(%H-%L#%B,%C)".
  XoString& PrintToXoString(XoString& out, char const* format) const;
  void ScanFromXoString(XoString const& in, char const* format);
};

class XO_EXPORT XoRef {
 public:
  o_u4b block;
  o_u4b low;
  o_u2b high;
  o_u2b database;
  o_u2b classNumber;
  o_u2b version;

  /// Takes all fields, for database 0.
  XoRef& operator=(XoLocalRef const& source);
  // Take the fields that there are.
  XoRef& operator=(XoClassId const& source);
  XoRef& operator=(XoObjId const& source);
  XoRef& operator=(unsigned short database);
  /// The same number in the same database.
  int operator==(XoRef const& other) const {
    return low == other.low && high == other.high && database == other.database;
  }
  /// An order, not a yes or no: as `XoObjId`, then -1 or 1 by the database. Stored references order
  /// by the database first.
  int operator!=(XoRef const& other) const;
  /// A number, a class, and a database below 65535.
  unsigned short IsValid() const;
  unsigned short IsInvalid() const;
  /// A number, and a class where the database is not 65535, which marks an origin.
  unsigned short IsValidOriginId() const;
  unsigned short IsInvalidOriginId() const;
  /// The number is 0, whatever the other fields.
  int IsNullValue() const { return low == 0 && high == 0; }
  /// Leaves the class.
  int SetNullValue();

  /// A null `format` is "(%D:%H-%L#%B, %C)".
  XoString& PrintToXoString(XoString& out, char const* format) const;
  /// Blanks and opening brackets do not matter. A character of the format that stands for itself
  /// skips any one of the text. A null text leaves the class.
  void ScanFromXoString(XoString const& in, char const* format);

  // The slots of the row. The version is not stored, and is 0 after a load.
  static XCompare Compare;
  /// Takes references to spread over all that there can be, and does not look at the range.
  static TypeDescriptor::EvalAndBoundFunction EvalAndBound;
  static TypeDescriptor::HashFunction Hash;
  static TypeDescriptor::LoadFunction Load;
  static TypeDescriptor::StoreFunction Store;
  static TypeDescriptor::SizeGetFunction SizeGet;
  static TypeDescriptor::SizeGetFromMemFileFunction SizeGetFromMemFile;
  static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  static TypeDescriptor::TranslateFunction Translate;
  static TypeDescriptor::CreateFunction Create;
  static TypeDescriptor::DeleteFunction Delete;
  /// A null format is "(%D:%H-%L#%B,%Cv%V)", another one than that of `PrintToXoString`.
  static TypeDescriptor::PrintFunction PrintToString;
  static TypeDescriptor::ScanFunction ScanFromString;
};

static_assert(sizeof(XoClassId) == 4 && sizeof(XoObjId) == 12 && sizeof(XoRef) == 16);

#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {

/// How the tests understand the temporal rows, written without the library's own layouts.
struct TemporalRow {
  int id;
  unsigned memory, disk;
  bool hasYear;
  unsigned bytes;  ///< fields of one byte
  bool hasNano;
};

inline constexpr TemporalRow kTemporal[] = {{XoDATE_T, 4, 4, true, 2, false},
                                            {XoTIME_T, 3, 3, false, 3, false},
                                            {XoDATIME_T, 8, 7, true, 5, false},
                                            {XoDATIME_N_T, 12, 11, true, 5, true},
                                            {XoTIMESPAN_T, 12, 11, true, 5, true}};

inline TypeDescriptor& Row(TemporalRow const& row) { return *CurrentTypeTable[row.id]; }

using ByteList = std::vector<unsigned char>;

/// The fields of one value, in order: year, bytes, nanoseconds, as far as the row has them.
using FieldList = std::vector<int>;

inline void PutNumber(ByteList& bytes, unsigned value, unsigned width, bool isBig) {
  for (unsigned i = 0; i < width; ++i) {
    unsigned const shift = 8 * (isBig ? width - 1 - i : i);
    bytes.push_back(static_cast<unsigned char>(value >> shift));
  }
}

/// The stored form of the fields.
inline ByteList Stored(TemporalRow const& row, FieldList const& fields, bool isBig = false) {
  ByteList bytes;
  std::size_t next = 0;
  if (row.hasYear) PutNumber(bytes, static_cast<unsigned>(fields[next++]), 2, isBig);
  for (unsigned i = 0; i < row.bytes; ++i) {
    PutNumber(bytes, static_cast<unsigned>(fields[next++]), 1, isBig);
  }
  if (row.hasNano) PutNumber(bytes, static_cast<unsigned>(fields[next++]), 4, isBig);
  return bytes;
}

/// The form in memory: the same with padding before the nanoseconds and behind seven bytes.
inline ByteList InMemory(TemporalRow const& row, FieldList const& fields,
                         unsigned char padding = 0xA5) {
  ByteList bytes = Stored(row, fields);
  if (row.memory != row.disk) bytes.insert(bytes.begin() + 7, padding);
  return bytes;
}

inline std::size_t FieldCount(TemporalRow const& row) {
  return (row.hasYear ? 1 : 0) + row.bytes + (row.hasNano ? 1 : 0);
}

/// A field cut to the width that it has in the row.
inline int Cut(TemporalRow const& row, std::size_t field, int value) {
  if (row.hasYear && field == 0) return static_cast<short>(value);
  if (row.hasNano && field == FieldCount(row) - 1) return value;
  return static_cast<signed char>(value);
}

inline ByteList& operator+=(ByteList& bytes, ByteList const& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
  return bytes;
}

}  // namespace xo::test

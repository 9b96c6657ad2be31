#pragma once

#include <xotypemgr.hpp>

/// The peers of the comparison benchmarks: what a user would write for one type and one element
/// alone, with the signature of the table's comparisons.
XCompare CompareOneLong;
XCompare CompareOneLongLong;
XCompare CompareOneDate;
/// Dates one by one, field by field.
XCompare CompareDates;
/// Bytes as they lie, by memcmp; of records of one width, or of two that tell their lengths.
XCompare CompareSixBytes;
XCompare CompareTenBytes;
XCompare CompareFourteenBytes;
XCompare CompareShorterBytes;

#pragma once

#include "base/export.hpp"

class XoString;

/// What a sort order stands for, for people who look at an index key. Of `group`, the order group,
/// the low 7 bits count; one of 20 and above makes any order an ideograph's.
///
/// Puts a description in English into `text`, such as "lower letter e with accent acute", and
/// returns 0.
XO_EXPORT int XoConvertOrderToString(unsigned short order, unsigned char group, XoString& text);

/// Puts an ASCII character that stands for the order into `character`: a letter, a digit, a blank,
/// a symbol where ASCII has it and '.' for other symbols that have a name, 127 for an ideograph, 7
/// for everything else. With `mapAccented` other than 0 a letter with an accent gives its code in
/// code set 1 where that has it. `name`, unless null, then receives a way to write that letter in
/// ASCII, such as "\'e", and an empty text for other letters; it is left alone by everything that
/// is no letter with an accent. Returns 0.
XO_EXPORT int XoConvertOrderToChar(unsigned short order, unsigned char group,
                                   unsigned char& character, int mapAccented = 0,
                                   char const** name = nullptr);

/// Value and expand flag of a digit's order. Returns 0, or -2002 for any other.
XO_EXPORT int XoExtractDigitFromOrder(unsigned short order, unsigned short& digit,
                                      unsigned short& expand);

/// Number of a symbol's order. Returns 0, or -2002 for any other.
XO_EXPORT int XoExtractSymbolFromOrder(unsigned short order, unsigned short& symbol);

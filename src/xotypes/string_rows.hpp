#pragma once

#include <cstddef>

#include "xostring.hpp"
#include "xotypes.hpp"

/// The operations of the string rows: of the current one, and of that for databases of an older
/// generation, which shares what is not here twice.
namespace xo {

// Records (string_store.cpp).

/// Writes `count` strings as records with a header, as far as `room` goes. Returns the bytes of all
/// of them.
std::size_t StoreStrings(void* target, std::size_t room, XoString const* source,
                         unsigned char nibble, unsigned count);
/// Reads `count` records, of which `available` bytes are there, into live strings. What is not
/// there is missing from the texts. Returns the bytes that the records take.
std::size_t LoadStrings(XoString* target, void const* source, std::size_t available,
                        unsigned char format, unsigned count);
TypeDescriptor::NullSizeGetFunction StringNullSizeGet;
TypeDescriptor::SizeGetFromMemFileFunction StringSizeGetFromMemFile;

// The general form (string_translate.cpp).

TypeDescriptor::TranslateFunction StringTranslate;

// Index keys (string_key.cpp).

/// Makes `count` keys of strings in memory or of stored text, of which `available` bytes are there.
/// Returns the bytes written, at most `room`.
unsigned BuildKeys(void* target, unsigned char targetFormat, unsigned room, void const* source,
                   unsigned char sourceFormat, std::size_t available, unsigned count);

/// The same key for a text of one byte a character whose characters are all one order of its group
/// and none of them a wildcard; 0 for any other text. `text` are `bytes` bytes and a terminator,
/// in `codeSet` as the target has it. `room` is even, and less than that of a large key.
std::size_t BuildPlainKey(unsigned char* target, std::size_t room, unsigned char nibble,
                          unsigned char codeSet, unsigned char language, char const* text,
                          std::size_t bytes);
TypeDescriptor::GetValueFunction StringGetValue;

// Objects and hashes (string_objects.cpp).

TypeDescriptor::HashFunction StringHash;
TypeDescriptor::HashFunction OlderStringHash;
TypeDescriptor::NullFunction StringIsNull;
TypeDescriptor::NullFunction StringSetNull;
TypeDescriptor::DefaultValueFunction StringDefaultValue;

// The older generation (older_string.cpp).

TypeDescriptor::StoreFunction OlderStringStore;
TypeDescriptor::SizeGetFunction OlderStringSizeGet;
TypeDescriptor::SizeGetFromMemFileFunction OlderStringSizeGetFromMemFile;
TypeDescriptor::TranslateFunction OlderStringTranslate;

}  // namespace xo

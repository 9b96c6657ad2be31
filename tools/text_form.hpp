#pragma once

#include <span>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/index_layout.hpp"

namespace xo::tool {

using Bytes = std::vector<unsigned char>;
using ByteSpan = std::span<unsigned char const>;

/// The shape of an index of strings, for the present collation.
IndexShape TextShape(unsigned char format, unsigned char codeSet, unsigned char language,
                     unsigned keyLength);

/// Makes `record` what the index keeps of a text.
void MakeRecord(IndexShape const& shape, XoString const& text, Bytes& record);

/// Makes the index key of a record, in a target of `room` bytes at `key`. Returns the bytes
/// written.
std::size_t MakeKey(IndexShape const& shape, ByteSpan record, unsigned char* key, std::size_t room);

/// Whether the bytes are one record, whole, as the index's records are: its lengths can be believed
/// then.
bool IsRecord(IndexShape const& shape, ByteSpan bytes);

/// The text of a whole record, in UTF-8.
std::string TextOfRecord(IndexShape const& shape, ByteSpan record);

/// The order of two whole records; the second is a pattern unless `cmpOp` says otherwise.
int CompareRecords(IndexShape const& shape, ByteSpan a, ByteSpan b, unsigned short cmpOp);

}  // namespace xo::tool

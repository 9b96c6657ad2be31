"""The code sets: their numbers, names and mapping to Unicode, from Python's codecs."""

import collections

CodeSet = collections.namedtuple("CodeSet", "number name codec kind")

# Kinds: 'ordered' sets are ASCII-compatible and have an order table of their own; 'mapped' 8-bit
# sets and 'double' sets of two bytes are ordered through Unicode.
CODE_SETS = [
    CodeSet(1, "ISO-8859-1", "iso8859_1", "ordered"),
    CodeSet(2, "ISO-8859-2", "iso8859_2", "ordered"),
    CodeSet(3, "ISO-8859-3", "iso8859_3", "ordered"),
    CodeSet(4, "ISO-8859-4", "iso8859_4", "ordered"),
    CodeSet(5, "ISO-8859-5", "iso8859_5", "ordered"),
    CodeSet(6, "ISO-8859-6", "iso8859_6", "ordered"),
    CodeSet(7, "ISO-8859-7", "iso8859_7", "ordered"),
    CodeSet(8, "ISO-8859-8", "iso8859_8", "ordered"),
    CodeSet(9, "ISO-8859-9", "iso8859_9", "ordered"),
    CodeSet(10, "ISO-8859-13", "iso8859_13", "ordered"),
    CodeSet(11, "ISO-8859-15", "iso8859_15", "ordered"),
    CodeSet(12, "IBM866", "cp866", "ordered"),
    CodeSet(13, "windows-1250", "cp1250", "ordered"),
    CodeSet(14, "windows-1251", "cp1251", "ordered"),
    CodeSet(15, "windows-1252", "cp1252", "ordered"),
    CodeSet(16, "windows-1253", "cp1253", "ordered"),
    CodeSet(17, "windows-1254", "cp1254", "ordered"),
    CodeSet(18, "windows-1255", "cp1255", "ordered"),
    CodeSet(19, "windows-1256", "cp1256", "ordered"),
    CodeSet(20, "windows-1257", "cp1257", "ordered"),
    CodeSet(21, "windows-1258", "cp1258", "ordered"),
    CodeSet(22, "KOI8-R", "koi8_r", "ordered"),
    CodeSet(23, "KOI8-U", "koi8_u", "ordered"),
    CodeSet(24, "IBM437", "cp437", "ordered"),
    CodeSet(25, "IBM850", "cp850", "ordered"),
    CodeSet(26, "IBM852", "cp852", "ordered"),
    CodeSet(27, "ISO-8859-16", "iso8859_16", "ordered"),
    CodeSet(28, "ISO-8859-10", "iso8859_10", "ordered"),
    CodeSet(29, "ISO-8859-11", "iso8859_11", "ordered"),
    CodeSet(30, "ISO-8859-14", "iso8859_14", "ordered"),
    CodeSet(31, "windows-874", "cp874", "ordered"),
    CodeSet(32, "IBM037", "cp037", "mapped"),
    CodeSet(33, "IBM273", "cp273", "mapped"),
    CodeSet(34, "IBM500", "cp500", "mapped"),
    CodeSet(35, "IBM1140", "cp1140", "mapped"),
    CodeSet(225, "JIS X 0208", "euc_jp", "double"),
    CodeSet(226, "GB 2312", "gb2312", "double"),
    CodeSet(227, "KS X 1001", "euc_kr", "double"),
    CodeSet(228, "Big5", "big5", "double"),
]

UNDEFINED = 0xFFFD


def to_unicode(code_set):
    """Unicode by code, for the codes that the set defines."""
    table = {}
    if code_set.kind != "double":
        codes = [(code, bytes([code])) for code in range(256)]
    else:
        codes = [(code, bytes([code])) for code in range(128)]
        codes += [(high << 8 | low, bytes([high, low]))
                  for high in range(0x80, 0x100) for low in range(0x40, 0x100)]
    for code, data in codes:
        try:
            text = data.decode(code_set.codec)
        except UnicodeDecodeError:
            continue
        if len(text) == 1 and ord(text) < 0x10000:
            table[code] = ord(text)
    return table


def from_unicode(code_set, table):
    """Code by Unicode. Where several codes stand for a character, the codec's choice."""
    result = {}
    for code, character in sorted(table.items()):
        data = chr(character).encode(code_set.codec, "ignore")
        back = int.from_bytes(data, "big") if data else code
        result.setdefault(character, back if table.get(back) == character else code)
    return result

"""Every code set maps as Python's codec of it does, in both directions."""

from probe_support import ask, finish

CODECS = {
    1: "iso8859_1", 2: "iso8859_2", 3: "iso8859_3", 4: "iso8859_4", 5: "iso8859_5", 6: "iso8859_6",
    7: "iso8859_7", 8: "iso8859_8", 9: "iso8859_9", 10: "iso8859_13", 11: "iso8859_15",
    12: "cp866", 13: "cp1250", 14: "cp1251", 15: "cp1252", 16: "cp1253", 17: "cp1254",
    18: "cp1255", 19: "cp1256", 20: "cp1257", 21: "cp1258", 22: "koi8_r", 23: "koi8_u",
    24: "cp437", 25: "cp850", 26: "cp852", 27: "iso8859_16", 28: "iso8859_10", 29: "iso8859_11",
    30: "iso8859_14", 31: "cp874", 32: "cp037", 33: "cp273", 34: "cp500", 35: "cp1140",
    225: "euc_jp", 226: "gb2312", 227: "euc_kr", 228: "big5",
}


def decoded(code, codec, wide):
    if wide and 0x80 <= code < 0x100:
        return 0xFFFD
    data = code.to_bytes(2 if code > 0xFF else 1, "big")
    try:
        text = data.decode(codec)
    except UnicodeDecodeError:
        return 0xFFFD
    return ord(text) if len(text) == 1 else 0xFFFD


def main():
    failures, checked = [], 0
    for number, codec in CODECS.items():
        wide = number >= 225
        decode, encode = ([int(word, 16) for word in line.split()]
                          for line in ask([f"decode {number}", f"encode {number}"]))
        for code, unicode in enumerate(decode):
            checked += 1
            if unicode != decoded(code, codec, wide):
                failures.append(f"{codec}: code {code:#x} is U+{unicode:04X}")
        first = {}
        for code, unicode in enumerate(decode):
            first.setdefault(unicode, code)
        first.pop(0xFFFD, None)
        for unicode, code in enumerate(encode):
            checked += 1
            wanted = 0
            if unicode in first:
                data = chr(unicode).encode(codec, "ignore")
                wanted = int.from_bytes(data, "big")
                # A character that the codec writes otherwise than it reads it keeps its own code.
                if not data or len(data) > 2 or decoded(wanted, codec, wide) != unicode:
                    wanted = first[unicode]
            if code != wanted:
                failures.append(f"{codec}: U+{unicode:04X} is code {code:#x}, not {wanted:#x}")
    finish(failures, checked)


if __name__ == "__main__":
    main()

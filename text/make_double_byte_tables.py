#!/usr/bin/env python3
"""Writes double_byte_tables.inc, the data of posix/double_byte.cc.

Run it in this folder on a system with the GNU C library, whose conversions it asks for; the file is kept in the tree, so
that programs find the tables in themselves, and not in modules that other systems lack.
"""
import ctypes
import unicodedata

CODE_PAGES = (932, 936, 949, 950)
HOLE = 0xFFFD

libc = ctypes.CDLL(None)
libc.iconv_open.restype = ctypes.c_void_p
libc.iconv_open.argtypes = [ctypes.c_char_p, ctypes.c_char_p]
libc.iconv.restype = ctypes.c_size_t
libc.iconv.argtypes = [ctypes.c_void_p] + [ctypes.c_void_p] * 4


class Converter:
    def __init__(self, to, source):
        self.handle = libc.iconv_open(to.encode(), source.encode())

    def run(self, data):
        """The whole of `data` converted, or None when that cannot be done."""
        libc.iconv(self.handle, None, None, None, None)
        source, target = ctypes.create_string_buffer(data, len(data)), ctypes.create_string_buffer(16)
        at, to = ctypes.c_void_p(ctypes.addressof(source)), ctypes.c_void_p(ctypes.addressof(target))
        left, room = ctypes.c_size_t(len(data)), ctypes.c_size_t(16)
        status = libc.iconv(self.handle, *(ctypes.byref(x) for x in (at, left, to, room)))
        return target.raw[:16 - room.value] if status == 0 else None


def literal(characters):
    text = ""
    for code in characters:
        plain = code >= 0xA0 and unicodedata.category(chr(code))[0] in "LNPS"
        text += chr(code) if plain else "\\u%04X" % code if code >= 0xA0 else "\\x%02X" % code
    return 'u"%s"' % text


def rows(page):
    """For the first byte 0, which means none, and for each other one: the characters of the second bytes."""
    decoder = Converter("UTF-16LE", "CP%d" % page)
    for first in [0] + list(range(0x81, 0xFF)):
        found = {}
        for second in range(0x80 if first == 0 else 0x40, 0x100):
            text = decoder.run(bytes([second]) if first == 0 else bytes([first, second]))
            if text is not None and len(text) == 2:
                found[second] = int.from_bytes(text, "little")
        if found:
            yield first, min(found), [found.get(s, HOLE) for s in range(min(found), max(found) + 1)]


with open("double_byte_tables.inc", "w", encoding="utf-8", newline="\n") as out:
    out.write("// Made by make_double_byte_tables.py: code page, first byte, or 0 for characters of one byte, the lowest\n"
              "// second byte, and the characters from there on.\n"
              "// clang-format off\n"
              "constexpr DoubleByteRow kRows[] = {\n")
    exceptions = []
    for page in CODE_PAGES:
        simple = {}
        for first, second, characters in rows(page):
            out.write("    {%d, 0x%02X, 0x%02X,\n" % (page, first, second))
            pieces = [literal(characters[at:at + 40]) for at in range(0, len(characters), 40)]
            out.write("     " + "\n     ".join(pieces) + "},\n")
            for offset, character in enumerate(characters):
                if character != HOLE:
                    simple.setdefault(character, first << 8 | second + offset)
        encoder = Converter("CP%d" % page, "UTF-16LE")
        for character in list(range(0x80, 0xD800)) + list(range(0xE000, 0xFFFD)):
            code = encoder.run(character.to_bytes(2, "little"))
            code = int.from_bytes(code, "big") if code else 0
            if code != simple.get(character, 0):
                exceptions.append((page, character, code))
    out.write("};\n"
              "// Code page, character, and the bytes that it becomes, 0 for none, where these are not the first in the\n"
              "// rows.\n"
              "constexpr DoubleByteException kExceptions[] = {\n")
    for at in range(0, len(exceptions), 4):
        out.write("    " + ", ".join("{%d, 0x%04X, 0x%04X}" % item for item in exceptions[at:at + 4]) + ",\n")
    out.write("};\n// clang-format on\n")

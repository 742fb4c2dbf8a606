#!/usr/bin/env python3
"""Writes single_byte_tables.inc and entity_table.inc, the data of code_page.cc and html_entities.cc.

Run it in this folder after changing the lists below; the two files are kept in the tree, so that a build needs no Python.
"""
import codecs
import html.entities

CODE_PAGES = [
    (866, "cp866"), (874, "cp874"), (1250, "cp1250"), (1251, "cp1251"), (1252, "cp1252"),
    (1253, "cp1253"), (1254, "cp1254"), (1255, "cp1255"), (1256, "cp1256"), (1257, "cp1257"),
    (1258, "cp1258"), (10000, "mac-roman"), (10007, "mac-cyrillic"), (20866, "koi8-r"),
    (21866, "koi8-u"), (28592, "iso8859-2"), (28593, "iso8859-3"), (28594, "iso8859-4"),
    (28595, "iso8859-5"), (28596, "iso8859-6"), (28597, "iso8859-7"), (28600, "iso8859-10"),
    (28603, "iso8859-13"), (28604, "iso8859-14"), (28605, "iso8859-15"), (28606, "iso8859-16"),
]


def character(codec, byte):
    try:
        return ord(codecs.decode(bytes([byte]), codec))
    except UnicodeDecodeError:
        # Windows passes an unassigned byte of the control range through; elsewhere it has no meaning.
        return byte if byte < 0xA0 else 0xFFFD


def wrap(out, items, per_line):
    for start in range(0, len(items), per_line):
        out.write("    " + ", ".join(items[start:start + per_line]) + ",\n")


with open("single_byte_tables.inc", "w", newline="\n") as out:
    out.write("// Made by make_tables.py: the characters of the bytes 0x80 to 0xFF of each code page.\n")
    out.write("// clang-format off\n")
    for number, codec in CODE_PAGES:
        out.write("{%d, {\n" % number)
        wrap(out, ["0x%04X" % character(codec, b) for b in range(0x80, 0x100)], 12)
        out.write("}},\n")
    out.write("// clang-format on\n")

LEGACY = {name for name in html.entities.html5 if not name.endswith(";")}
with open("entity_table.inc", "w", newline="\n") as out:
    out.write("// Made by make_tables.py: name, character, and whether the name counts without its \";\".\n")
    out.write("// clang-format off\n")
    names = dict(html.entities.name2codepoint)
    names["apos"] = 0x27
    # Browsers show these two as the mathematical brackets, not as the CJK ones of the old table.
    names["lang"], names["rang"] = 0x27E8, 0x27E9
    wrap(out, ['{"%s", 0x%X, %s}' % (n, c, "true" if n in LEGACY else "false")
               for n, c in sorted(names.items())], 3)
    out.write("// clang-format on\n")

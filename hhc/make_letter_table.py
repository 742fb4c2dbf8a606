#!/usr/bin/env python3
"""Writes letter_table.inc, the data of keyword_order.cc: letters with marks and the letters they are sorted with.

Run it in this folder; the file is kept in the tree, so that a build needs no Python.
"""
import unicodedata

SPECIAL = {"\u00df": "ss", "\u00e6": "ae", "\u0153": "oe", "\u00f8": "o", "\u0111": "d", "\u00f0": "d",
           "\u0127": "h", "\u0131": "i", "\u0142": "l", "\u0167": "t", "\u00fe": "th"}


def base(char):
    low = char.lower()
    if low in SPECIAL:
        return SPECIAL[low]
    first = unicodedata.normalize("NFD", low)[0]
    return first if first != low and first.isalpha() else ""


rows = []
for code in list(range(0xC0, 0x250)) + list(range(0x370, 0x460)) + list(range(0x1E00, 0x1F00)):
    char = chr(code)
    if not char.isalpha():
        continue
    letters = base(char)
    if letters:
        first, second = letters[0], letters[1] if len(letters) > 1 else "\0"
    elif char.lower() != char and len(char.lower()) == 1:
        first, second = char.lower(), "\0"
    else:
        continue
    rows.append("{0x%X, 0x%X, 0x%X, %s}" % (code, ord(first), ord(second),
                                           "true" if char != char.lower() else "false"))
with open("letter_table.inc", "w", newline="\n") as out:
    out.write("// Made by make_letter_table.py: letter, first and second letter it sorts as, upper case.\n")
    out.write("// clang-format off\n")
    for start in range(0, len(rows), 3):
        out.write("    " + ", ".join(rows[start:start + 3]) + ",\n")
    out.write("// clang-format on\n")

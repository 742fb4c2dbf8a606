#!/usr/bin/env python3
"""Draws the pictures of the Windows setup: pictures.py FOLDER

setup.ico    the icon, a help book, in the sizes that Windows asks for
side.bmp     left of the first and the last page, 164 × 314
header.bmp   right of the title of the others, 150 × 57
"""
import pathlib
import struct
import sys
import zlib

PAPER, COVER, EDGE, MARK = (255, 255, 255), (37, 99, 168), (23, 62, 110), (240, 176, 48)
SAMPLES = 4  # points to a pixel each way

# The book in a square of 32: what lies over what, the last on top. A question mark of a ring, a stem and a point.
def colour_at(x, y):
    """The colour at a point of the book, None beside it."""
    if (x - 16) ** 2 + (y - 11) ** 2 <= 5.4 ** 2 and (x - 16) ** 2 + (y - 11) ** 2 >= 2.6 ** 2 and not (x < 16 and y > 11):
        return MARK
    if 14.6 <= x <= 17.4 and 15 <= y <= 18.6:
        return MARK
    if (x - 16) ** 2 + (y - 21.4) ** 2 <= 1.8 ** 2:
        return MARK
    if 4 <= x <= 7 and 2 <= y <= 29:
        return EDGE
    if 7 <= x <= 28 and 2 <= y <= 25:
        return COVER
    if 7 <= x <= 27 and 25 <= y <= 28:
        return PAPER if int(y * 2) % 2 == 0 else (205, 214, 224)
    if 4 <= x <= 28 and 28 <= y <= 30:
        return EDGE
    return None


def pixel(size, column, row):
    """Colour and opacity of a pixel of the book drawn in a square of `size`."""
    found = [colour_at((column + (i + .5) / SAMPLES) * 32 / size, (row + (j + .5) / SAMPLES) * 32 / size)
             for i in range(SAMPLES) for j in range(SAMPLES)]
    seen = [colour for colour in found if colour]
    if not seen:
        return (0, 0, 0, 0)
    return tuple(sum(c[k] for c in seen) // len(seen) for k in range(3)) + (255 * len(seen) // len(found),)


def png(size):
    rows = b"".join(b"\0" + bytes(value for column in range(size) for value in pixel(size, column, row))
                    for row in range(size))
    chunks = [(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)), (b"IDAT", zlib.compress(rows, 9)), (b"IEND", b"")]
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data)) for kind, data in chunks)


def bitmap_of_icon(size):
    """As Windows has read it since its beginnings: upside down, with a mask behind it."""
    pixels = b"".join(bytes((p[2], p[1], p[0], p[3])) for row in reversed(range(size))
                      for p in (pixel(size, column, row) for column in range(size)))
    mask = b"\0" * ((size + 31) // 32 * 4 * size)
    return struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0) + pixels + mask


def icon():
    pictures = [(size, png(size) if size == 256 else bitmap_of_icon(size)) for size in (16, 24, 32, 48, 256)]
    head, body, offset = struct.pack("<HHH", 0, 1, len(pictures)), b"", 6 + 16 * len(pictures)
    for size, data in pictures:
        head += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset + len(body))
        body += data
    return head + body


def bitmap(width, height, ground, book, left, top):
    """A bitmap with the book at a place; `ground` gives the colour of a row."""
    rows = []
    for row in reversed(range(height)):
        line = bytearray()
        for column in range(width):
            colour = ground(row)
            if left <= column < left + book and top <= row < top + book:
                r, g, b, opacity = pixel(book, column - left, row - top)
                colour = tuple((over * opacity + under * (255 - opacity)) // 255 for over, under in zip((r, g, b), colour))
            line += bytes(reversed(colour))
        rows.append(bytes(line) + b"\0" * (-len(line) % 4))
    data = b"".join(rows)
    return (b"BM" + struct.pack("<IHHI", 54 + len(data), 0, 0, 54) +
            struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 2835, 2835, 0, 0) + data)


def main():
    folder = pathlib.Path(sys.argv[1])
    top, bottom = (232, 240, 249), (168, 196, 226)
    shade = lambda row: tuple(a + (b - a) * row // 313 for a, b in zip(top, bottom))
    (folder / "setup.ico").write_bytes(icon())
    (folder / "side.bmp").write_bytes(bitmap(164, 314, shade, 96, 34, 100))
    (folder / "header.bmp").write_bytes(bitmap(150, 57, lambda row: PAPER, 40, 102, 8))


main()

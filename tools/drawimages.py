#!/usr/bin/env python3
"""Draws the images that the executable carries and writes them as PNG files.

    drawimages.py [FOLDER]        (gui/apps/cowl/images without one)

Both show a cowl as a cloud of points, the larger one for a start screen, the smaller one as an icon.
The files have sizes that user interface libraries know: a chunk that decoders skip fills what the
picture leaves of its size. A picture that is too large for its size is an error.
"""

import math
import pathlib
import struct
import sys
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
PADDING_CHUNK = b"fiLl"  # ancillary, private, safe to copy

# Name, pixels across and down, points around and along the cowl, radius of a point in pixels, and
# the size of the file in bytes.
IMAGES = [
    ("atelier110", 480, 320, 150, 56, 1.2, 32425),
    ("atelier110_cowl", 24, 24, 14, 6, 1.1, 688),
]


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def cowl_point(u, v):
    """A point of the surface: around by u and along by v, both from 0 to 1."""
    angle = math.pi * (0.15 + 1.7 * u)
    radius = 0.55 + 0.35 * math.sin(math.pi * v) ** 2 * (1 - 0.3 * math.cos(angle))
    return radius * math.sin(angle), -radius * math.cos(angle), 1.6 * (v - 0.5)


def projected(point, width, height):
    """Its place in the picture in pixels, and how near it is, from 0 to 1."""
    x, y, z = point
    turn = 0.7
    x, z = x * math.cos(turn) + z * math.sin(turn), z * math.cos(turn) - x * math.sin(turn)
    y, z = y * math.cos(0.4) + z * math.sin(0.4), z * math.cos(0.4) - y * math.sin(0.4)
    scale = 0.36 * min(width, height)
    return width / 2 + scale * x, height / 2 + scale * y, min(max((z + 1.4) / 2.8, 0), 1)


def draw(width, height, around, along, dot):
    """Rows of pixels, red, green, blue and opacity, from the far points to the near ones."""
    rows = [bytearray(4 * width) for _ in range(height)]
    points = [projected(cowl_point(i / (around - 1), k / (along - 1)), width, height)
              for i in range(around) for k in range(along)]
    for x, y, near in sorted(points, key=lambda point: point[2]):
        color = bytes((int(40 + 190 * near), int(90 + 130 * near), int(150 + 60 * (1 - near)), 255))
        for row in range(max(int(y - dot), 0), min(int(y + dot) + 1, height)):
            for column in range(max(int(x - dot), 0), min(int(x + dot) + 1, width)):
                if (column - x) ** 2 + (row - y) ** 2 <= dot ** 2:
                    rows[row][4 * column:4 * column + 4] = color
    return rows


def png(rows, size):
    """The file, of exactly so many bytes."""
    header = struct.pack(">IIBBBBB", len(rows[0]) // 4, len(rows), 8, 6, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + bytes(row) for row in rows), 9)
    before = SIGNATURE + chunk(b"IHDR", header)
    after = chunk(b"IDAT", pixels) + chunk(b"IEND", b"")
    padding = size - len(before) - len(after) - len(chunk(PADDING_CHUNK, b""))
    if padding < 0:
        raise ValueError(f"the picture needs {-padding} bytes more than {size}")
    return before + chunk(PADDING_CHUNK, bytes(padding)) + after


def main(arguments):
    default = pathlib.Path(__file__).resolve().parents[1] / "gui" / "apps" / "cowl" / "images"
    folder = pathlib.Path(arguments[0]) if arguments else default
    for name, width, height, around, along, dot, size in IMAGES:
        (folder / f"{name}.png").write_bytes(png(draw(width, height, around, along, dot), size))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

"""Reads point colours, from docs/formats/point-colors.md.

What a file is to hold is a list of pieces, each an object:

    {"flags": 0 to 3, "colors": [[red, green, blue], ..]}   numbers from 0 to 1 as text
"""

import struct

from different import Different, expect_equal

PAGE = "point-colors.md"
COLORS = 1
PACKED = 2


class Damaged(Exception):
    """The bytes are no point colours."""


def take(data, at, layout):
    size = struct.calcsize(layout)
    if size > len(data) - at:
        raise Damaged(f"the data ends at {len(data)}, inside the colours")
    return struct.unpack_from(layout, data, at), at + size


def unpacked(color):
    return [(color >> shift & 0xFF) / 255 for shift in (0, 8, 16)]


def read_colors(data, at):
    (flags,), at = take(data, at, ">i")
    if not flags & COLORS:
        return flags, [], at
    (count,), at = take(data, at, ">i")
    if count < 0:
        raise Damaged(f"{count} colours")
    if flags & PACKED:
        values, at = take(data, at, f">{count}I")
        if any(color >> 24 not in (0, 255) for color in values):
            raise Different("a highest byte that is not 0 or 255")
        return flags, [unpacked(color) for color in values], at
    values, at = take(data, at, f">{3 * count}f")
    return flags, [list(values[i:i + 3]) for i in range(0, len(values), 3)], at


def check(data, expected):
    at = 0
    for i, piece in enumerate(expected):
        flags, colors, at = read_colors(data, at)
        expect_equal(flags, piece["flags"], f"flags of piece {i}")
        expect_equal(len(colors), len(piece["colors"]), f"colours of piece {i}")
        for found, wanted in zip(colors, piece["colors"]):
            if any(abs(a - float(b)) > 1e-6 for a, b in zip(found, wanted)):
                raise Different(f"{found} in place of {wanted} in piece {i}")
    expect_equal(at, len(data), "size of the file")

"""Reads point arrays, from docs/formats/point-array.md.

What a file is to hold is a list of arrays, each a list of points, each three numbers as text.
"""

import struct

from different import Different, expect_equal

PAGE = "point-array.md"
IDENTIFIER = 0x0B916B
MOST_POINTS = 0x7FFFFBFE


class Damaged(Exception):
    """The bytes are no point array."""


def take(data, at, layout):
    size = struct.calcsize(layout)
    if size > len(data) - at:
        raise Damaged(f"the data ends at {len(data)}, inside an array")
    return struct.unpack_from(layout, data, at), at + size


def bits(value):
    return struct.pack(">d", value)


def read_array(data, at):
    (header, count), at = take(data, at, ">Ii")
    if header != IDENTIFIER << 8:
        raise Damaged(f"header {header:08X}")
    if not 0 <= count <= MOST_POINTS:
        raise Damaged(f"{count} points")
    if count * 24 > len(data) - at:
        raise Damaged(f"{count} points in {len(data) - at} bytes")
    values, at = take(data, at, f">{3 * count}d")
    return [values[i:i + 3] for i in range(0, len(values), 3)], at


def check(data, expected):
    at = 0
    for i, points in enumerate(expected):
        found, at = read_array(data, at)
        expect_equal(len(found), len(points), f"points of array {i}")
        for number, (point, wanted) in enumerate(zip(found, points), 1):
            if [bits(value) for value in point] != [bits(float(text)) for text in wanted]:
                raise Different(f"point {number} of array {i}: {point} in place of {wanted}")
    expect_equal(at, len(data), "size of the file")

"""Reads typed binary files, from docs/formats/typed-binary.md.

What a file is to hold is a list of fields in their order:

    ["header", identifier, version]    a chunk's header; ["negative header", value] without these
    ["signed", width, [..]]            an array of integers; "unsigned" likewise
    ["float", [..]], ["double", [..]]  numbers as text
    ["units", text]                    as long as the text is
    ["bytes", text]                    one byte for each character
"""

import math
import struct

from different import Different, expect_equal

PAGE = "typed-binary.md"


class Damaged(Exception):
    """The data ends inside a value."""


class Values:
    """Takes one value after the other from bytes."""

    def __init__(self, data):
        self.data = data
        self.at = 0

    def take(self, size):
        if size > len(self.data) - self.at:
            raise Damaged(f"the data ends at {len(self.data)}, inside a value")
        self.at += size
        return self.data[self.at - size : self.at]

    def integer(self, width, signed):
        return int.from_bytes(self.take(width), "big", signed=signed)

    def float(self):
        return struct.unpack(">f", self.take(4))[0]

    def double(self):
        return struct.unpack(">d", self.take(8))[0]

    def units(self, count):
        return self.take(2 * count).decode("utf-16-be", "surrogatepass")

    def header(self):
        """Identifier and version; None and the value for one without these."""
        value = self.integer(4, signed=True)
        return (None, value) if value < 0 else (value >> 8, value & 0xFF)


def expect_number(found, expected, what):
    """Zeros differ by their sign, and what is not a number equals nothing."""
    number = float(expected)
    same = math.isnan(found) if math.isnan(number) else found == number
    if not same or math.copysign(1, found) != math.copysign(1, number):
        raise Different(f"{what}: {found} in place of {expected}")


def check_field(values, kind, *rest):
    what = f"{kind} at {values.at}"
    if kind == "header":
        expect_equal(values.header(), tuple(rest), what)
    elif kind == "negative header":
        expect_equal(values.header(), (None, rest[0]), what)
    elif kind in ("signed", "unsigned"):
        width, expected = rest
        expect_equal([values.integer(width, kind == "signed") for _ in expected], expected, what)
    elif kind in ("float", "double"):
        for expected in rest[0]:
            expect_number(getattr(values, kind)(), expected, what)
    elif kind == "units":
        expect_equal(values.units(len(rest[0].encode("utf-16-be", "surrogatepass")) // 2), rest[0],
                     what)
    elif kind == "bytes":
        expect_equal(values.take(len(rest[0])).decode("latin-1"), rest[0], what)
    else:
        raise ValueError(kind)


def check(data, expected):
    values = Values(data)
    for field in expected:
        check_field(values, *field)
    expect_equal(values.at, len(data), "size of the file")

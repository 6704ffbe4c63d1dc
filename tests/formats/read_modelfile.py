"""Reads model files, from docs/formats/model-file.md.

What a file is to hold is {"version": of the root, "items": [..]}. Items are elements and bare
values in their order:

    ["element", tag, version, [items]]
    ["object", id, version, [items]], ["named object", name, [items]]
    ["point", ..], ["matrix", ..], ["doubles", ..], ["floats", ..]    numbers as text
    ["text", text], ["wide text", text], ["id", id]
    ["double", number], ["float", number]                             bare values
    ["int8", value], ["uint8", ..], ["int32", ..], ["uint32", ..]
"""

import uuid

from different import Different, expect_equal
from read_typedbinary import Damaged as DamagedValue
from read_typedbinary import Values, expect_number

PAGE = "model-file.md"

ROOT = 0x4B454C
OBJECT = 0xB0002
NAMED_OBJECT = 0xB0003
TEXT = 0x10003
NUMBERS = {
    "point": (0x10000, "double", 3),
    "matrix": (0x10004, "double", 16),
    "doubles": (0x10009, "double", 2),
    "floats": (0x10010, "float", 2),
}


class Damaged(Exception):
    """The bytes are no model file, or an element is broken."""


class ModelFile:
    """Enters and leaves the elements of a file."""

    def __init__(self, data):
        self.values = Values(data)
        self.size_width = 4
        self.ends = []
        tag, self.version = self.enter(is_root=True)
        if tag != ROOT or self.version > 1:
            raise Damaged("no model file")

    def enter(self, is_root=False):
        """Begins the next element and gives its tag and version."""
        values, start = self.values, self.values.at
        try:
            tag = values.integer(3, signed=False)
            version = values.integer(1, signed=False)
            if is_root:
                self.size_width = 4 if version == 0 else 8
            size = values.integer(self.size_width, signed=False)
        except DamagedValue as error:
            raise Damaged(f"the header at {start} is cut") from error
        end = len(values.data) if is_root and size == 0 else start + size
        if end < values.at or end > len(values.data):
            raise Damaged(f"the element at {start} ends at {end}")
        self.ends.append(end)
        return tag, version

    def leave(self):
        self.values.at = self.ends.pop()

    def left(self):
        """Bytes up to the end of the current element."""
        return max(self.ends[-1] - self.values.at, 0)

    def id(self):
        """An object id: integers of 4, 2 and 2 bytes, and 8 single bytes."""
        values = self.values
        fields = [values.integer(width, signed=False) for width in (4, 2, 2)]
        tail = values.take(8)
        number = fields[0] << 96 | fields[1] << 80 | fields[2] << 64 | int.from_bytes(tail, "big")
        return "{" + str(uuid.UUID(int=number)).upper() + "}"

    def text(self):
        return self.values.take(self.left()).split(b"\0")[0].decode("latin-1")

    def wide_text(self):
        return self.values.units(self.left() // 2).split("\0")[0]


class Comparison:
    """Goes through a file along what it is to hold."""

    def __init__(self, file):
        self.file = file

    def items(self, expected):
        for kind, *rest in expected:
            self.item(kind, rest)
        expect_equal(self.file.left(), 0, f"bytes left at {self.file.values.at}")

    def item(self, kind, rest):
        values = self.file.values
        what = f"{kind} at {values.at}"
        if kind == "element":
            self.element(rest[0], rest[1], lambda: self.items(rest[2]))
        elif kind == "object":
            self.element(OBJECT, rest[1], lambda: self.object(*rest))
        elif kind == "named object":
            self.element(NAMED_OBJECT, 0, lambda: self.items([["text", rest[0]]] + rest[1]))
        elif kind in NUMBERS:
            tag, type_name, count = NUMBERS[kind]
            expect_equal(len(rest), count, what)
            self.element(tag, 0, lambda: self.items([[type_name, number] for number in rest]))
        elif kind == "text":
            self.element(TEXT, 0, lambda: expect_equal(self.file.text(), rest[0], what))
        elif kind == "wide text":
            self.element(0x10005, 0, lambda: expect_equal(self.file.wide_text(), rest[0], what))
        elif kind == "id":
            self.element(0x10008, 0, lambda: expect_equal(self.file.id(), rest[0], what))
        elif kind in ("double", "float"):
            expect_number(getattr(values, kind)(), rest[0], what)
        else:
            signed, bits = kind[0] != "u", int(kind[-2:].strip("t"))
            expect_equal(values.integer(bits // 8, signed), rest[0], what)

    def element(self, tag, version, body):
        start = self.file.values.at
        expect_equal(self.file.enter(), (tag, version), f"tag and version at {start}")
        body()
        self.file.leave()

    def object(self, object_id, _, items):
        expect_equal(self.file.id(), object_id, "object id")
        self.items(items)


def check(data, expected):
    file = ModelFile(data)
    expect_equal(file.version, expected["version"], "version")
    try:
        Comparison(file).items(expected["items"])
    except DamagedValue as error:
        raise Damaged(str(error)) from error
    except IndexError as error:
        raise Different("an element ends where none is open") from error

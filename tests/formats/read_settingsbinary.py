"""Reads binary settings files, from docs/formats/settings-binary.md.

What a file is to hold is a list of settings. A null in place of the value is a setting that the file
does not give, so that it keeps the value it has:

    ["integer", path, number], ["float", path, number as text], ["blob", path, one byte a character]
    ["text", path, capacity, one byte a character], ["wide text", path, capacity, text]
"""

import struct

from different import Different, expect_equal

PAGE = "settings-binary.md"

BLOB_AREA = 4098


class Damaged(Exception):
    """Never raised: whatever stands in a file, settings are found in it or keep their values."""


class Cut(Exception):
    """The file ends inside what is being read."""


class SettingsFile:
    def __init__(self, data):
        self.data = data

    def take(self, at, size):
        if at + size > len(self.data):
            raise Cut
        return self.data[at : at + size]

    def signed(self, at, form="<h"):
        return struct.unpack(form, self.take(at, struct.calcsize(form)))[0]

    def find(self, path):
        """Where the area of the first record of the name begins, and its size; None without one."""
        at = 0
        try:
            while True:
                size, length = self.signed(at), self.signed(at + 2)
                if size <= 0 or not 0 <= length <= 255:
                    return None
                if self.take(at + 4, length) == path:
                    return at + 4 + length, size - 4 - length
                at += size
        except Cut:
            return None

    def value(self, path, least, read):
        """What read(offset) gives for an area of at least so many bytes; None for no value."""
        found = self.find(path)
        if found is None or found[1] < least:
            return None
        try:
            return read(found[0])
        except Cut:
            return None

    def integer(self, path):
        return self.value(path, 4, lambda at: self.signed(at, "<i"))

    def float(self, path):
        return self.value(path, 8, lambda at: self.signed(at, "<d"))

    def counted(self, at, most):
        """The bytes behind a field that counts them; None for a count that is out of its range."""
        count = self.signed(at)
        return self.take(at + 2, count) if 0 <= count <= most else None

    def text(self, path, capacity):
        def read(at):
            room = self.counted(at, capacity)
            return room.split(b"\0")[0].decode("latin-1") if room else None

        return self.value(path, capacity + 1, read)

    def wide_text(self, path, capacity):
        def read(at):
            room = self.signed(at)
            if not 0 <= room <= capacity * 2:
                return None
            units = bytearray()
            for place in range(at + 2, at + 2 + room // 2 * 2, 2):
                unit = self.take(place, 2)
                if unit == b"\0\0":
                    break
                units += unit
            return units.decode("utf-16-le", "surrogatepass")

        return self.value(path, capacity * 2 + 2, read)

    def blob(self, path):
        def read(at):
            count = self.counted(at, 0x7FFF)
            return count.decode("latin-1") if count else None

        return self.value(path, BLOB_AREA, read)


def check_setting(file, kind, path, *rest):
    *capacity, expected = rest
    found = getattr(file, kind.replace(" ", "_"))(path.encode("latin-1"), *capacity)
    if kind == "float" and expected is not None:
        expected = float(expected)
    expect_equal(found, expected, f"{kind} {path}")


def check(data, expected):
    file = SettingsFile(data)
    if not expected:
        raise Different("no setting is told")
    for setting in expected:
        check_setting(file, *setting)

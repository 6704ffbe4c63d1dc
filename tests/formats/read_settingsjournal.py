"""Reads settings journals, from docs/formats/settings-journal.md.

What a file is to hold is told as for settings documents, the values in the order of the entries.
"""

import re

from different import expect_equal
from read_settingsdocument import Damaged, Scanner, expect_values

PAGE = "settings-journal.md"

LARGEST = 268435456  # bytes

ENTRY_END = re.compile("</[^<>]*>\n")


def decoded(data):
    """The text of the data, and whether that ends inside a character."""
    text = []
    at = 0
    while at < len(data):
        first = data[at]
        if first >= 0xF0:
            raise Damaged(f"a character of four bytes at {at}")
        size = 1 if first < 0xC0 else 2 if first < 0xE0 else 3
        if size > len(data) - at:
            return "".join(text), True
        code = first & (0x7F, 0x1F, 0x0F)[size - 1]
        for byte in data[at + 1 : at + size]:
            code = code << 6 | byte & 0x3F
        if code == 0:
            raise Damaged(f"a character 0 at {at}")
        text.append(chr(code))
        at += size
    return "".join(text), False


class Front:
    """Tells whether a text is the front of an entry: it follows the form up to where it ends."""

    def __init__(self, text):
        self.text = text

    def take(self, literal):
        """Whether the text goes on with all of it, or ends inside of it."""
        if not self.text.startswith(literal) and not literal.startswith(self.text):
            return False
        self.text = self.text[len(literal) :]
        return True

    def take_until(self, ends):
        size = re.match(f"[^{ends}]*", self.text).end()
        self.text = self.text[size:]

    def goes_on(self, form):
        """Over literals, and None for what a text in quotes or between tags holds."""
        for part, end in form:
            if not self.take(part):
                return False
            if end:
                self.take_until(end)
        return True

    def is_entry(self):
        depth = 0
        while self.text.startswith("<s"):
            if not self.goes_on([('<section name="', '"<'), ('">', None)]):
                return False
            depth += 1
        return self.goes_on([('<value name="', '"<'), ('" type="', '"<'), ('">', "<"),
                             ("</value>" + "</section>" * depth + "\n", None)]) and not self.text


def entries(text):
    return Scanner(f"<OroDataStore>{text}</OroDataStore>").scan()


def read(data):
    if len(data) > LARGEST:
        raise Damaged("too many bytes")
    text, is_cut = decoded(data.rstrip(b"\0"))
    if not is_cut:
        try:
            return entries(text)
        except Damaged:
            pass  # the writer may have died inside the last entry
    whole = max((found.end() for found in ENTRY_END.finditer(text)), default=0)
    if not Front(text[whole:]).is_entry():
        raise Damaged("what stands behind the last entry is not the front of one")
    return entries(text[:whole])


def check(data, expected):
    values = read(data)
    expect_equal([value.path for value in values], [path for path, _, _ in expected["values"]],
                 "paths of the entries")
    expect_values(values, expected["values"])
    expect_equal(len(data), expected["bytes"], "size of the file")

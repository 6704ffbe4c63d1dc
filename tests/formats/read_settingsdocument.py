"""Reads settings documents, from docs/formats/settings-document.md.

What a file is to hold: its size as "bytes", and "values", a list of [path, type, value] in the
order in which they were set. A path and the values of text_latin1 and binary_base64 have one
character for each byte, a float is a number as text.
"""

import base64
import re

from different import Different, expect_equal

PAGE = "settings-document.md"

LARGEST_PATHS = 268435456  # bytes

SPACE = "[ \t\r\n]"
NAME = "[^ \t\r\n<>/=&\"'!?][^ \t\r\n<>/=&\"']*"
ATTRIBUTE = re.compile(f"{SPACE}+({NAME}){SPACE}*={SPACE}*(?:\"([^\"<]*)\"|'([^'<]*)')")
START = re.compile(f"<({NAME})")
START_END = re.compile(f"{SPACE}*(/?)>")
END = re.compile(f"</({NAME}){SPACE}*>")
PASSED_OVER = re.compile(r"<!--(?:(?!--).)*-->|<\?.*?\?>", re.DOTALL)
CDATA = re.compile(r"<!\[CDATA\[(.*?)\]\]>", re.DOTALL)
TEXT = re.compile("[^<]+")
REFERENCE = re.compile("&(?:(quot|amp|apos|lt|gt)|#([0-9]+)|#x([0-9A-Fa-f]+));|&")
CHARACTERS = {"quot": '"', "amp": "&", "apos": "'", "lt": "<", "gt": ">"}

INTEGER = re.compile(r"[ \t\n\v\f\r]*([+-]?)(0[xX][0-9A-Fa-f]+|0[0-7]*|[1-9][0-9]*)")
FLOAT = re.compile(
    r"[ \t\n\v\f\r]*([+-]?)"
    r"(?:(0x(?:[0-9a-f]+\.?[0-9a-f]*|\.[0-9a-f]+)(?:p[+-]?[0-9]+)?)"
    r"|((?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:e[+-]?[0-9]+)?|inf|nan))",
    re.IGNORECASE)
BLOB = re.compile("[A-Za-z0-9+/]*")


class Damaged(Exception):
    """The data is no document."""


class Value:
    def __init__(self, path, kind):
        self.path = path
        self.kind = kind
        self.text = ""


def unescaped(text):
    def character(found):
        name, decimal, hexadecimal = found.groups()
        if name:
            return CHARACTERS[name]
        code = int(decimal) if decimal else int(hexadecimal, 16) if hexadecimal else 0
        if not 0 < code <= 0x10FFFF:
            raise Damaged(f"{found[0]} stands for no character")
        return chr(code)

    return REFERENCE.sub(character, text)


class Scanner:
    """Goes over the text of a document once and collects its values in their order.

    The parsers of Python refuse the halves of surrogate pairs and U+FFFF, which texts may hold."""

    def __init__(self, text):
        self.text = text
        self.at = 0
        self.values = []
        self.path_size = 0
        self.open = []  # names of the elements around, the root first
        self.segments = []  # of the sections around, without the root
        self.value = None  # the one around
        self.value_depth = 0
        self.had_root = False

    def take(self, pattern):
        found = pattern.match(self.text, self.at)
        if found:
            self.at = found.end()
        return found

    def scan(self):
        while self.at < len(self.text):
            if self.take(PASSED_OVER):
                continue
            if found := self.take(TEXT):
                self.add_text(unescaped(found[0]), found[0].strip(" \t\r\n") == "")
            elif found := self.take(CDATA):
                self.add_text(found[1], False)
            elif found := self.take(END):
                self.end(found[1])
            elif found := self.take(START):
                self.start(found[1])
            else:
                raise Damaged(f"no XML at character {self.at}")
        if self.open or not self.had_root:
            raise Damaged("the document ends before its root does")
        return self.values

    def add_text(self, text, is_blank):
        if not self.open and not is_blank:
            raise Damaged("text outside of the root")
        # The text of an element inside of a value belongs to that, and is passed over with it.
        if self.value and len(self.open) == self.value_depth:
            self.value.text += text

    def start(self, name):
        attributes = {}
        while found := self.take(ATTRIBUTE):
            if found[1] in attributes:
                raise Damaged(f"two attributes {found[1]}")
            attributes[found[1]] = unescaped(found[2] if found[2] is not None else found[3])
        end = self.take(START_END)
        if not end:
            raise Damaged(f"no end of the tag at character {self.at}")
        self.open.append(name)
        segment = attributes.get("name", "")
        if len(self.open) == 1:
            if self.had_root:
                raise Damaged("two roots")
            self.had_root = True
        elif not self.value and name == "value":
            self.start_value(segment, attributes.get("type", ""))
        elif not self.value:
            self.segments.append(segment)
        if end[1]:
            self.end(name)

    def start_value(self, segment, kind):
        path = "/".join([*self.segments, segment]).encode("utf-8", "surrogatepass")
        self.path_size += len(path)
        if self.path_size > LARGEST_PATHS:
            raise Damaged("too many paths")
        self.value = Value(path.decode("latin-1"), kind)
        self.value_depth = len(self.open)
        self.values.append(self.value)

    def end(self, name):
        if not self.open or self.open[-1] != name:
            raise Damaged(f"{name} is closed where it is not open")
        if self.value and len(self.open) == self.value_depth:
            self.value = None
        elif not self.value and len(self.open) > 1:
            self.segments.pop()
        self.open.pop()


def decoded(data):
    try:
        return data.decode("utf-8", "surrogatepass").removeprefix("\uFEFF")
    except UnicodeDecodeError as error:
        raise Damaged(str(error)) from error


def units(text):
    return memoryview(text.encode("utf-16-le", "surrogatepass")).cast("H").tolist()


def same_text(text):
    """Two halves of a surrogate pair become the one character that they stand for."""
    return text.encode("utf-16-le", "surrogatepass").decode("utf-16-le", "surrogatepass")


def read_integer(text):
    found = INTEGER.match(text)
    if not found:
        return None
    digits = found[2]
    base = 16 if digits[:2] in ("0x", "0X") else 8 if digits[0] == "0" else 10
    return int(found[1] + digits, base)


def read_float(text):
    """The number as Python writes it, which tells -0 from 0 and has nan equal itself."""
    found = FLOAT.match(text)
    if not found:
        return None
    number = float.fromhex(found[2]) if found[2] else float(found[3])
    return repr(-number if found[1] == "-" else number)


def read_narrow(text):
    narrow = bytes(unit & 0xFF for unit in units(text)).partition(b"\0")[0]
    return narrow.decode("latin-1") or None


def read_blob(text):
    digits = BLOB.match(re.sub("[ \t\r\n]", "", text))[0]
    if len(digits) % 4 == 1:
        digits = digits[:-1]  # six bits make no byte
    return base64.b64decode(digits + "=" * (-len(digits) % 4)).decode("latin-1")


READERS = {
    "integer": read_integer,
    "float": read_float,
    "text_latin1": read_narrow,
    "text_unicode": same_text,
    "binary_base64": read_blob,
}


def base64_lines(value, depth):
    text = base64.b64encode(value.encode("latin-1")).decode("ascii")
    lines = [text[at : at + 64] for at in range(0, len(text), 64)]
    if len(lines) <= 1:
        return text
    return "".join("\n" + "\t" * (depth + 1) + line for line in lines) + "\n" + "\t" * depth


def written_text(kind, value, path):
    """The one form in which a value is written, of the many that are read."""
    if kind == "integer":
        return str(value)
    if kind == "float":
        return f"{float(value):.15e}"
    if kind == "text_latin1":
        return "".join(chr(byte if byte < 0x80 else 0xFF00 | byte)
                       for byte in value.encode("latin-1"))
    if kind == "binary_base64":
        return base64_lines(value, path.count("/") + 1)
    return same_text(value)


def expect_values(values, expected):
    """Of the values at one path the later counts, on both sides."""
    found = {value.path: value for value in values}
    wanted = {path: (kind, value) for path, kind, value in expected}
    expect_equal(sorted(found), sorted(wanted), "paths")
    for path, (kind, value) in wanted.items():
        expect_equal(found[path].kind, kind, f"type of {path!r}")
        if kind == "float":
            value_read = repr(float(value))
        else:
            value_read = same_text(value) if isinstance(value, str) else value
        expect_equal(READERS[kind](found[path].text), value_read, f"{path!r}")
        expect_equal(same_text(found[path].text), written_text(kind, value, path),
                     f"text of {path!r}")


def read(data):
    return Scanner(decoded(data)).scan()


def check(data, expected):
    values = read(data)
    expect_values(values, expected["values"])
    expect_equal(len(data), expected["bytes"], "size of the file")

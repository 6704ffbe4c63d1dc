"""Reads the elements of settings documents and journals, and the texts of their values, from
docs/formats/settings-document.md.

What a file is to hold is {"bytes": size, "values": [[path, type, value], ..]}: an integer, a float
as text, else text with a character for each byte or unit.
"""

import base64
import re

from different import Different, expect_equal

ENTITIES = {b"quot": b'"', b"amp": b"&", b"apos": b"'", b"lt": b"<", b"gt": b">"}
TAG = re.compile(rb'<(/?)([A-Za-z_][\w.-]*)((?:\s+[\w.-]+\s*=\s*"[^"<]*")*)\s*(/?)>')
ATTRIBUTE = re.compile(rb'([\w.-]+)\s*=\s*"([^"<]*)"')
BLANKS = b" \t\r\n"


class Damaged(Exception):
    """The bytes are no document, or no entry."""


class Element:
    def __init__(self, tag, attributes):
        self.tag = tag
        self.attributes = attributes
        self.text = b""
        self.children = []


def resolve(raw):
    """The text behind entities and character references."""

    def character(found):
        if found[1].startswith(b"#"):
            return chr(int(found[1][1:])).encode()
        if found[1] not in ENTITIES:
            raise Damaged(f"unknown entity {found[1]!r}")
        return ENTITIES[found[1]]

    return re.sub(rb"&([^;]*);", character, raw)


def parse(data):
    """The elements at the top, each with all that is in it."""
    top = Element(None, {})
    open_elements = [top]
    at = 0
    while at < len(data):
        angle = data.find(b"<", at)
        angle = len(data) if angle < 0 else angle
        open_elements[-1].text += resolve(data[at:angle])
        at = angle
        if at == len(data):
            break
        found = TAG.match(data, at)
        if found is None:
            raise Damaged(f"no tag at {at}")
        closing, tag, attributes, empty = found.groups()
        if closing:
            if len(open_elements) == 1 or open_elements.pop().tag != tag:
                raise Damaged(f"tags do not match at {at}")
        else:
            element = Element(tag, {k: resolve(v) for k, v in ATTRIBUTE.findall(attributes)})
            open_elements[-1].children.append(element)
            if not empty:
                open_elements.append(element)
        at = found.end()
    if len(open_elements) > 1 or top.text.strip(BLANKS):
        raise Damaged("the end is missing, or text stands outside of the root")
    return top.children


def flatten(elements, prefix, values):
    """Puts the values below the elements into the dictionary, by their paths."""
    for element in elements:
        path = prefix + element.attributes.get(b"name", b"")
        if element.tag == b"value":
            values[path] = (element.attributes.get(b"type", b""), element.text)
        else:
            flatten(element.children, path + b"/", values)


def units(data):
    """UTF-16 units of UTF-8, whose surrogates may stand alone."""
    return data.decode("utf-8", "surrogatepass").encode("utf-16-le", "surrogatepass")


def check_value(kind, text, expected, what):
    if kind == "integer":
        expect_equal(int(text), expected, what)
    elif kind == "float":
        wanted = float(expected)
        if not re.fullmatch(rb"-?\d\.\d{15}e[+-]\d{2,3}", text):
            raise Different(f"{what}: {text!r} is not in scientific notation")
        expect_equal(float(text), float(f"{wanted:.15e}"), what)
        expect_equal(text.startswith(b"-"), expected.startswith("-"), f"{what}: sign")
    elif kind == "text_latin1":
        expect_equal(units(text)[::2].decode("latin-1"), expected, what)
    elif kind == "text_unicode":
        expect_equal(units(text), expected.encode("utf-16-le", "surrogatepass"), what)
    elif kind == "binary_base64":
        expect_equal(base64.b64decode(bytes(text.translate(None, BLANKS))).decode("latin-1"),
                     expected, what)
    else:
        raise ValueError(kind)


def check_values(values, expected, data):
    wanted = {path.encode("latin-1"): (kind, value) for path, kind, value in expected["values"]}
    expect_equal(sorted(values), sorted(wanted), "paths")
    for path, (kind, value) in wanted.items():
        expect_equal(values[path][0].decode(), kind, f"type of {path!r}")
        check_value(kind, values[path][1], value, path.decode())
    expect_equal(len(data), expected["bytes"], "size of the file")

"""Reads settings journals, from docs/formats/settings-journal.md."""

import settings
from settings import Damaged

PAGE = "settings-journal.md"


def without_cut_entry(data):
    whole = max(data.rfind(b"</value>\n") + 9, data.rfind(b"</section>\n") + 11)
    whole = whole if whole > 11 else 0
    rest = data[whole:].rstrip(b"\0")
    openings = (b'<section name="', b'<value name="')
    if not any(rest[: len(text)] == text[: len(rest)] for text in openings):
        raise Damaged("what stands at the end is no entry")
    return data[:whole]


def read(data):
    data.decode("utf-8", "surrogatepass")
    values = {}
    settings.flatten(settings.parse(data), b"", values)
    return values


def check(data, expected):
    try:
        values = read(data)
    except (Damaged, UnicodeDecodeError):
        values = read(without_cut_entry(data))
    settings.check_values(values, expected, data)

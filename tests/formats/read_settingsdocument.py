"""Reads settings documents, from docs/formats/settings-document.md."""

import settings
from settings import Damaged

PAGE = "settings-document.md"


def read(data):
    found = settings.re.match(rb"(?:\xEF\xBB\xBF)?\s*<\?xml[^>]*\?>", data)
    roots = settings.parse(data[found.end():] if found else data)
    if len(roots) != 1:
        raise Damaged(f"{len(roots)} roots")
    values = {}
    settings.flatten(roots[0].children, b"", values)
    return values


def check(data, expected):
    settings.check_values(read(data), expected, data)

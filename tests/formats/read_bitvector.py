"""Reads bit vectors, from docs/formats/bit-vector.md.

What a file is to hold is a list of vectors, each an object:

    {"words": n, "form": 0 or 1, "count": n or -1, "bits": [..]}
"""

import struct

from different import Different, expect_equal

PAGE = "bit-vector.md"
HEADER = 0x315E97D6
MOST_WORDS = 0x4000000


class Damaged(Exception):
    """The bytes are no bit vector."""


def take(data, at, layout):
    size = struct.calcsize(layout)
    if size > len(data) - at:
        raise Damaged(f"the data ends at {len(data)}, inside a vector")
    return struct.unpack_from(layout, data, at), at + size


def read_dense(data, at, words):
    values, at = take(data, at, f">{words}I")
    return [32 * i + b for i, word in enumerate(values) for b in range(32) if word >> b & 1], at


def read_sparse(data, at, count):
    values, at = take(data, at, f">{max(count, 0)}i")
    return sorted({b for b in values if b >= 0}), at


def read_vector(data, at):
    (header, words, maximum, form, count), at = take(data, at, ">IIiii")
    if header != HEADER:
        raise Damaged(f"header {header:08X}")
    if words == 0 or maximum < 1:
        return {"words": 1, "form": 0, "count": count, "bits": []}, at
    if words > MOST_WORDS:
        raise Damaged(f"{words} words")
    if form not in (0, 1):
        raise Damaged(f"form {form}")
    expect_equal(maximum, words * 32 - 1, "maximum bit")
    bits, at = read_dense(data, at, words) if form == 0 else read_sparse(data, at, count)
    return {"words": words, "form": form, "count": count, "bits": bits}, at


def check(data, expected):
    at = 0
    for i, vector in enumerate(expected):
        found, at = read_vector(data, at)
        expect_equal(found, vector, f"vector {i}")
        if found["count"] not in (-1, len(found["bits"])):
            raise Different(f"vector {i} counts {found['count']}")
    expect_equal(at, len(data), "size of the file")

"""Has files written and compares what an independent reader finds in them.

    check.py FORMAT COMMAND..

COMMAND writes files into its current directory, and beside each, as its name with ".json" added,
what it holds. The module read_FORMAT offers

    PAGE                     the page in docs/formats/ that it was written from
    Damaged                  what it raises for bytes that break the format
    check(data, expected)    reads the bytes and compares; raises Damaged, or Different of this file

Every file that is written is checked, and so are those in golden/FORMAT/, which a file of the same
name has to equal byte for byte. The example in hex on the page is the golden file named "example".
Small files are cut at every byte: a reader tells that, and does not fall over.

Prints OK for each file that agrees, or FAIL with the first difference, where it ends with 1.
"""

import importlib
import json
import pathlib
import re
import subprocess
import sys
import tempfile

from different import Different

HERE = pathlib.Path(__file__).resolve().parent
PAGES = HERE.parent.parent / "docs" / "formats"
LARGEST_TO_CUT = 2048  # bytes


def files_with_values(folder):
    """The files of a folder that stand beside a .json, with what that says."""
    for values in sorted(folder.glob("*.json")):
        yield values.with_suffix(""), json.loads(values.read_text(encoding="utf-8"))


def example_of(page):
    """The bytes of the first example in hex, whose lines begin with an offset of eight digits.

    A line "00 .." stands for zeros up to the offset of the next."""
    data = bytearray()
    filling = False
    for line in page.read_text(encoding="utf-8").splitlines():
        found = re.match(r"([0-9A-F]{8}) +([0-9A-F]{2}(?:  ?[0-9A-F]{2})*)( \.\.)?(?:   |$)", line)
        if found is None:
            if data:
                break
            continue
        offset = int(found[1], 16)
        if filling:
            data += bytes(offset - len(data))
        filling = found[3] is not None
        if offset != len(data):
            raise Different(f"{page.name}: the example has {len(data):X} bytes before {offset:X}")
        data += bytes.fromhex(found[2])
    return bytes(data)


def check_cuts(reader, path, data, expected):
    for size in range(len(data)):
        try:
            reader.check(data[:size], expected)
        except (reader.Damaged, Different):
            continue
        raise Different(f"{path.name}: cut to {size} of {len(data)} bytes, it reads as if whole")


def check_file(reader, path, expected):
    data = path.read_bytes()
    try:
        reader.check(data, expected)
    except (reader.Damaged, Different) as error:
        raise Different(f"{path}: {error}") from error
    if len(data) <= LARGEST_TO_CUT:
        check_cuts(reader, path, data, expected)


def check_format(name, command):
    reader = importlib.import_module("read_" + name)
    golden = HERE / "golden" / name
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(command, cwd=folder, check=True)
        written = list(files_with_values(pathlib.Path(folder)))
        kept = list(files_with_values(golden))
        if not written or not kept:
            raise Different("no files")
        for path, expected in written + kept:
            check_file(reader, path, expected)
            print(f"OK   {path.name}{' of golden/' if golden in path.parents else ''}")
        for path, _ in written:
            same = golden / path.name
            if same.exists() and same.read_bytes() != path.read_bytes():
                raise Different(f"{path.name} is not the golden file")
    examples = [path for path, _ in kept if path.stem == "example"]
    if [example_of(PAGES / reader.PAGE)] != [path.read_bytes() for path in examples]:
        raise Different(f"the example of {reader.PAGE} is not the golden one")
    print(f"OK   {len(written)} files written and {len(kept)} golden ones, and the page's example")


if __name__ == "__main__":
    try:
        check_format(sys.argv[1], sys.argv[2:])
    except Different as error:
        sys.exit(f"FAIL {error}")

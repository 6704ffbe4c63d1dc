#!/usr/bin/env python3
"""Tests of the scripts in tools/: a failure must show in the report of `./dev test`, a changed point
in the comparison of `./dev demo`, a source package comes from where the packages come from, and the
executable's images are those that are drawn. Prints one line for each, OK or FAIL."""

import contextlib
import io
import json
import os
import pathlib
import shutil
import struct
import sys
import tempfile
import zlib

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
sys.dont_write_bytecode = True

import comparepoints  # noqa: E402
import drawimages  # noqa: E402
import fetchsource  # noqa: E402
import testreport  # noqa: E402

GOOD_TEST = {"name": "Works", "status": "RUN", "result": "COMPLETED"}
FAILED_TEST = {**GOOD_TEST, "name": "Fails", "failures": [{"failure": "1 is not 2"}]}
SKIPPED_TEST = {**GOOD_TEST, "name": "Skips", "result": "SKIPPED"}
OFF_TEST = {"name": "DISABLED_Off", "status": "NOTRUN", "result": "SUPPRESSED"}


def report(cases, tests):
    """Runs the report on made-up results: cases are (name, status, output), tests by name."""
    with tempfile.TemporaryDirectory(prefix="cowl-report-") as folder:
        results = pathlib.Path(folder) / "build" / "linux" / "testresults"
        results.mkdir(parents=True)
        if cases is not None:
            rows = "".join(f'<testcase name="{name}" status="{status}" time="1.5">'
                           f"<system-out>{output}</system-out></testcase>"
                           for name, status, output in cases)
            (results / "ctest.xml").write_text(f'<testsuite time="47.2">{rows}</testsuite>')
            (results / "buildseconds").write_text("553\n")
        for name, rows in tests.items():
            suites = [{"name": "Suite", "testsuite": rows}] if rows else []
            (results / f"{name}.json").write_text(json.dumps({"testsuites": suites}))
        output, before = io.StringIO(), os.getcwd()
        os.chdir(folder)
        try:
            with contextlib.redirect_stdout(output):
                status = testreport.main(["linux"])
        finally:
            os.chdir(before)
        return status, output.getvalue().splitlines()[-1], output.getvalue()


def report_rows():
    ran, bad = ("test_a", "run", ""), ("test_a", "fail", "")
    yield "all good", [ran], {"test_a": [GOOD_TEST] * 3}, (0, "3 passed, 0 failed")
    yield "one test fails", [bad], {"test_a": [GOOD_TEST, FAILED_TEST]}, (1, "1 passed, 1 failed")
    yield "one test skips itself", [ran], {"test_a": [GOOD_TEST, SKIPPED_TEST]}, \
        (1, "1 passed, 1 failed")
    yield "one test is off", [ran], {"test_a": [GOOD_TEST, OFF_TEST]}, (1, "1 passed, 1 failed")
    yield "a program crashes before it reports", [bad], {}, (1, "0 passed, 1 failed")
    yield "a program fails after all its tests", [bad], {"test_a": [GOOD_TEST]}, \
        (1, "1 passed, 1 failed")
    yield "a program runs no test", [ran], {"test_a": []}, (1, "0 passed, 1 failed")
    yield "a program says nothing", [ran], {}, (1, "0 passed, 1 failed")
    yield "nothing ran", [], {}, (1, "0 passed, 1 failed")
    yield "the preset did not build", None, {}, (1, "0 passed, 1 failed")
    yield "check lines count", [("layers", "run", "OK   a\nOK   b\n")], {}, \
        (0, "2 passed, 0 failed")
    yield "a failed check line counts", [("layers", "fail", "OK   a\nFAIL b\n  x:1: c\n")], {}, \
        (1, "1 passed, 1 failed")
    yield "the Wine prefix is no test", [("wine_prefix", "run", ""), ran], \
        {"test_a": [GOOD_TEST]}, (0, "1 passed, 0 failed")
    yield "a broken Wine prefix is a failure", [("wine_prefix", "fail", ""), ran], \
        {"test_a": [GOOD_TEST]}, (1, "1 passed, 1 failed")


def compare(first, second):
    with tempfile.TemporaryDirectory(prefix="cowl-points-") as folder:
        paths = []
        for name, text in (("first", first), ("second", second)):
            paths.append(os.path.join(folder, name))
            if text is not None:
                pathlib.Path(paths[-1]).write_text(text)
        with contextlib.redirect_stdout(io.StringIO()):
            return comparepoints.main(paths)


COMPARISONS = [
    ("the same text", "1 2 3\n", "1 2 3\n", 0),
    ("the same numbers written otherwise", "1.50 2 3 4 5 6\n", "# x\n1.5,2.0;3 4 5 6\r\n", 0),
    ("one digit differs", "1 2 3\n1 2 3.25\n", "1 2 3\n1 2 3.26\n", 1),
    ("a colour is missing", "1 2 3 4 5 6\n", "1 2 3\n", 1),
    ("the first is shorter", "1 2 3\n", "1 2 3\n1 2 3\n", 1),
    ("the second is shorter", "1 2 3\n1 2 3\n", "1 2 3\n", 1),
    ("both are empty", "", "", 1),
    ("one is missing", "1 2 3\n", None, 1),
    ("one holds no numbers", "1 2 3\n", "a b c\n", 1),
]


# Lines and stanzas of apt's lists, and what is made of them for the release "tidy".
SOURCE_LINES = [
    ("deb http://here.test/all tidy main", "deb-src http://here.test/all tidy main"),
    ("deb [arch=amd64 signed-by=/k.gpg] http://here.test/all tidy-updates main more",
     "deb-src [arch=amd64 signed-by=/k.gpg] http://here.test/all tidy-updates main more"),
    ("  deb\thttp://here.test/s tidy/updates main  # why",
     "deb-src http://here.test/s tidy/updates main  # why"),
    ("deb http://other.test tidyish main", None),
    ("deb http://other.test tool-tidy main", None),
    ("deb-src http://here.test/all tidy main", None),
    ("# deb http://here.test/all tidy main", None),
    ("", None),
]
SOURCE_STANZAS = [
    ("Types: deb\n# a note\nURIs: http://here.test/all\nSuites: tidy tidy-updates\nComponents: main",
     "Types: deb-src\nURIs: http://here.test/all\nSuites: tidy tidy-updates\nComponents: main"),
    ("types: deb deb-src\nSuites: other\n tidy\nSigned-By: /k.gpg",
     "Types: deb-src\nSuites: tidy\nSigned-By: /k.gpg"),
    ("Types: deb\nSuites: nodistro", None),
    ("Types: deb-src\nSuites: tidy", None),
    ("Enabled: no\nTypes: deb\nSuites: tidy", None),
    ("# nothing", None),
]


def fetch_from(entries):
    """What fetchsource writes and counts for a machine with these lists, by file name."""
    with tempfile.TemporaryDirectory(prefix="cowl-apt-") as folder:
        machine, parts = pathlib.Path(folder) / "apt", pathlib.Path(folder) / "parts"
        (machine / "sources.list.d").mkdir(parents=True)
        parts.mkdir()
        for name, text in entries.items():
            (machine / name).write_text(text)
        count = fetchsource.write_entries(machine, parts, "tidy")
        return count, (parts / "source.list").read_text() + (parts / "source.sources").read_text()


def fetch_twice():
    """A folder that is there is not fetched again: the script would need apt and a package."""
    with tempfile.TemporaryDirectory(prefix="cowl-fetch-") as folder:
        return fetchsource.main(["no such package", folder])


def fetch_when_the_update_is_missing():
    """What apt is asked for where the mirror lists an update that it has not."""
    asked = []

    def run(command, folder, what):
        if "source" not in command:
            return
        asked.append(command[-1])
        if "/" not in command[-1]:
            raise fetchsource.Missing(what)
        (folder / "thing-1").mkdir()

    # Without the programs that nobody calls here.
    kept, fetchsource.run = fetchsource.run, run
    which, shutil.which = shutil.which, lambda program: program
    try:
        with tempfile.TemporaryDirectory(prefix="cowl-fetch-") as folder:
            found = fetchsource.fetch("thing", pathlib.Path(folder)).name
    finally:
        fetchsource.run, shutil.which = kept, which
    release = fetchsource.codename(pathlib.Path("/etc/os-release").read_text(encoding="utf-8"))
    return found, asked == ["thing", f"thing/{release}"]


def read_png(data):
    """The pixels of a file, as bytes of rows without filters; raises on anything that is not sound."""
    if data[:8] != drawimages.SIGNATURE:
        raise ValueError("no PNG file")
    chunks, place = [], 8
    while place < len(data):
        size, = struct.unpack_from(">I", data, place)
        name, body = data[place + 4:place + 8], data[place + 8:place + 8 + size]
        if struct.unpack_from(">I", data, place + 8 + size)[0] != zlib.crc32(name + body):
            raise ValueError(f"{name} is damaged")
        chunks.append((name, body))
        place += 12 + size
    if chunks[0][0] != b"IHDR" or chunks[-1] != (b"IEND", b""):
        raise ValueError("first or last chunk")
    width, height = struct.unpack_from(">II", chunks[0][1])
    pixels = zlib.decompress(b"".join(body for name, body in chunks if name == b"IDAT"))
    return width, height, pixels


def image_rows():
    """Each image: its name, the size and content of its file, and what they are to be."""
    folder = pathlib.Path(__file__).resolve().parents[2] / "gui" / "apps" / "cowl" / "images"
    for name, width, height, around, along, dot, size in drawimages.IMAGES:
        data = (folder / f"{name}.png").read_bytes()
        rows = drawimages.draw(width, height, around, along, dot)
        drawn = b"".join(b"\0" + bytes(row) for row in rows)
        yield name, (len(data), read_png(data) == (width, height, drawn)), (size, True)


def main():
    results = []

    def expect(title, found, wanted):
        results.append(found == wanted)
        print(f"{'OK  ' if results[-1] else 'FAIL'} {title}"
              + ("" if results[-1] else f": found {found}, wanted {wanted}"))

    for title, cases, tests, wanted in report_rows():
        expect(f"report: {title}", report(cases, tests)[:2], wanted)
    text = report([("test_a", "fail", "")], {"test_a": [FAILED_TEST]})[2]
    expect("report: tells how long it took", ["0", "1", "553", "47"] in
           [line.split()[2:] for line in text.splitlines()] and "took 10.0 minutes" in text, True)
    expect("report: names the failed test", "FAILED linux: test_a: Suite.Fails" in text, True)
    for title, first, second, wanted in COMPARISONS:
        expect(f"points: {title}", compare(first, second), wanted)
    for line, wanted in SOURCE_LINES:
        expect(f"source: line '{line}'", fetchsource.source_line(line, "tidy"), wanted)
    for stanza, wanted in SOURCE_STANZAS:
        expect(f"source: stanza '{stanza!r}'", fetchsource.source_stanza(stanza, "tidy"), wanted)
    expect("source: all lists count", fetch_from({
        "sources.list": "deb http://a.test tidy main\n",
        "sources.list.d/b.list": "deb http://b.test tidy main\ndeb http://x.test x main\n",
        "sources.list.d/c.sources": "Types: deb\nSuites: tidy\n\nTypes: deb\nSuites: tidy-new\n",
        "sources.list.d/d.save": "deb http://d.test tidy main\n",
    }), (4, "deb-src http://a.test tidy main\ndeb-src http://b.test tidy main\n"
            "Types: deb-src\nSuites: tidy\n\nTypes: deb-src\nSuites: tidy-new\n"))
    expect("source: no list", fetch_from({})[0], 0)
    expect("source: the release is named", fetchsource.codename('ID=x\nVERSION_CODENAME="tidy"\n'),
           "tidy")
    expect("source: a folder that is there is kept", fetch_twice(), 0)
    expect("source: the release's own where an update is missing",
           fetch_when_the_update_is_missing(), ("thing-1", True))
    for name, found, wanted in image_rows():
        expect(f"image: {name}", found, wanted)
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())

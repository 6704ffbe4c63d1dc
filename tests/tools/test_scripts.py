#!/usr/bin/env python3
"""Tests of the scripts in tools/: a failure must show in the report of `./dev test`, and a changed
point in the comparison of `./dev demo`. Prints one line for each, OK or FAIL."""

import contextlib
import io
import json
import os
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
sys.dont_write_bytecode = True

import comparepoints  # noqa: E402
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
            (results / "ctest.xml").write_text(f"<testsuite>{rows}</testsuite>")
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


def main():
    results = []

    def expect(title, found, wanted):
        results.append(found == wanted)
        print(f"{'OK  ' if results[-1] else 'FAIL'} {title}"
              + ("" if results[-1] else f": found {found}, wanted {wanted}"))

    for title, cases, tests, wanted in report_rows():
        expect(f"report: {title}", report(cases, tests)[:2], wanted)
    text = report([("test_a", "fail", "")], {"test_a": [FAILED_TEST]})[2]
    expect("report: names the failed test", "FAILED linux: test_a: Suite.Fails" in text, True)
    for title, first, second, wanted in COMPARISONS:
        expect(f"points: {title}", compare(first, second), wanted)
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""testreport.py PRESET..: sums up what `./dev test` ran, from build/PRESET/testresults.

Prints a line for each failure, a table with a row for each preset, with the seconds that it took to
build and to run its tests, and at the end "N passed, N failed". The exit code is 0 when nothing
failed. Failures are: a failed test, a test that is off or was skipped, an executable that crashed,
timed out or ran no test, and a preset that did not build.
"""

import json
import pathlib
import re
import sys
import xml.etree.ElementTree


class Result:
    """What one preset did."""

    def __init__(self, preset):
        self.preset = preset
        self.programs = 0
        self.passed = 0
        self.failures = []
        self.seconds = {"build": 0.0, "tests": 0.0}

    def fail(self, what):
        self.failures.append(f"{self.preset}: {what}")


def count_google_tests(result, name, file):
    """Counts the tests that a GoogleTest executable wrote down; False when it ran none."""
    tests = [(suite["name"], test) for suite in json.loads(file.read_text())["testsuites"]
             for test in suite["testsuite"]]
    for suite, test in tests:
        title = f"{name}: {suite}.{test['name']}"
        if test.get("failures"):
            result.fail(title)
        elif test["status"] != "RUN" or test["result"] != "COMPLETED":
            result.fail(f"{title} did not run")
        else:
            result.passed += 1
    return bool(tests)


def count_check_lines(result, name, output):
    """Counts the lines that begin with OK or FAIL; False when there is none."""
    lines = re.findall(r"^(OK|FAIL) +(.*)", output, re.MULTILINE)
    for word, title in lines:
        if word == "OK":
            result.passed += 1
        else:
            result.fail(f"{name}: {title}")
    return bool(lines)


def read_preset(preset):
    result = Result(preset)
    folder = pathlib.Path("build") / preset / "testresults"
    built, summary = folder / "buildseconds", folder / "ctest.xml"
    if built.exists():
        result.seconds["build"] = float(built.read_text())
    if not summary.exists():
        result.fail("did not build, or its tests did not start")
        return result
    suite = xml.etree.ElementTree.parse(summary).getroot()
    result.seconds["tests"] = float(suite.get("time") or 0)
    for case in suite.iter("testcase"):
        read_program(result, case, folder)
    if not result.programs:
        result.fail("ran no test")
    return result


def read_program(result, case, folder):
    name = case.get("name")
    good = case.get("status") == "run"
    if name == "wine_prefix":  # prepares the others and checks nothing itself
        if not good:
            result.fail(name)
        return
    result.programs += 1
    before = len(result.failures)
    file = folder / f"{name}.json"
    if file.exists():
        counted = count_google_tests(result, name, file)
    else:
        counted = count_check_lines(result, name, case.findtext("system-out") or "")
    if not good and len(result.failures) == before:
        result.fail(f"{name} ended badly (crash, time limit, or a finding at its end)")
    elif good and not counted:
        result.fail(f"{name} ran no test")


def main(presets):
    results = [read_preset(preset) for preset in presets]
    for result in results:
        for failure in result.failures:
            print(f"   FAILED {failure}")
    print(f"   {'preset':<14}{'programs':>9}{'passed':>9}{'failed':>9}{'build s':>9}{'tests s':>9}")
    for result in results:
        print(f"   {result.preset:<14}{result.programs:>9}{result.passed:>9}"
              f"{len(result.failures):>9}{result.seconds['build']:>9.0f}"
              f"{result.seconds['tests']:>9.0f}")
    took = sum(sum(result.seconds.values()) for result in results)
    print(f"   all of it took {took / 60:.1f} minutes")
    passed = sum(result.passed for result in results)
    failed = sum(len(result.failures) for result in results)
    print(f"\n{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

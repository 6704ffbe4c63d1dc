#!/usr/bin/env python3
"""Shows that checktranslations.py flags what it is for: each row of BAD is a small tree with one
fault, on top of GOOD, in which nothing may be flagged. Prints one line for each, OK or FAIL."""

import contextlib
import io
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
sys.dont_write_bytecode = True

import checktranslations  # noqa: E402


def table(*rows):
    return "<root>" + "".join(f'<data name="{k}"><value>{v}</value></data>' for k, v in rows) + \
        "</root>"


def xliff(*rows):
    units = "".join(f"<trans-unit><source>{s}</source><target>{t}</target></trans-unit>"
                    for s, t in rows)
    return f'<xliff xmlns="urn:x"><file><body>{units}</body></file></xliff>'


HOST = (("Open %1", "%1 \u00f6ffnen"), ("a\\n&quot;b&quot;", "A\\nB"), ("mark", "Marke"))
OWN = (("Read %1 of %2", "%2: %1"), ("Two parts", "Zwei Teile"), ("Action", "Aktion"))

GOOD = {
    "services/a.cpp": """
// oroTranslate(out, "in a comment");
/* oroTranslate(out, "in another"); */
void f() {
  oroTranslate(out, "Open %1", path(a, "no key"));
  return oroTranslate(out, "a\\n" "\\"b\\"");
}
const char* const kMark = oroKey("mark");
void g() { oroTranslate(out, bad ? oroKey("mark") : oroKey("Open %1")); }
""",
    "components/points/p.cpp": """
const Record record{.name = "points", .translations = "points"};
void f() { reportPoints(1, "Read %1 of %2", a); }
void g() { PointProgress progress("Action"); }
bool h() { return fail("Two "
                       "parts"); }
void k() { other("no key"); }
""",
    "components/points/pointreport.cpp": "void r(const char* key) { oroTranslate(out, key); }\n",
    "lang/velmora.de.resx": table(*HOST),
    "lang/points_de": xliff(*OWN),
}

BAD = [
    ("a key without translation", {"services/b.cpp": 'oroTranslate(out, "new");'},
     "Each key has a translation"),
    ("a marked key without translation", {"base/b.cpp": 'k = oroKey("new");'},
     "Each key has a translation"),
    ("a key of a component that only the host has",
     {"components/points/q.cpp": 'oroTranslate(out, "mark");'}, "Each key has a translation"),
    ("an empty translation", {"lang/velmora.de.resx": table(*HOST[:2], ("mark", ""))},
     "Each key has a translation"),
    ("an object that takes a key",
     {"gui/apps/main/s.cpp": 'std::optional<CommandRecord> r(std::in_place, bar, "Save");'},
     "Each key has a translation"),
    ("a placeholder is missing", {"lang/points_de": xliff(("Read %1 of %2", "%1"), *OWN[1:])},
     "A translation has the placeholders"),
    ("a placeholder is another", {"lang/points_de": xliff(("Read %1 of %2", "%1 %3"), *OWN[1:])},
     "A translation has the placeholders"),
    ("a placeholder stands twice",
     {"lang/points_de": xliff(("Read %1 of %2", "%1 %2 %1"), *OWN[1:])},
     "A translation has the placeholders"),
    ("a placeholder too many", {"lang/points_de": xliff(*OWN[:2], ("Action", "Aktion %1"))},
     "A translation has the placeholders"),
    ("a doubled percent sign hides a placeholder",
     {"lang/velmora.de.resx": table(("Open %1", "%%1"), *HOST[1:])},
     "A translation has the placeholders"),
    ("a translation without key", {"lang/velmora.de.resx": table(*HOST, ("old", "alt"))},
     "Each translation is for a key"),
    ("a key that stands twice", {"lang/velmora.de.resx": table(*HOST, HOST[2])},
     "Each translation is for a key"),
    ("a key that nobody can find", {"services/b.cpp": "oroTranslate(out, key);"},
     "Each key of the sources can be found"),
    ("a key that is handed on and that nobody can find",
     {"components/points/q.cpp": "bool g() { return fail(kText); }"},
     "Each key of the sources can be found"),
    ("a table that is no document", {"lang/velmora.de.resx": "<root>"}, "Each table"),
    ("a component's file is missing", {"lang/points_de": None}, "Each table"),
    ("a further language that is not whole", {"lang/velmora.fr.resx": table(*HOST)}, "Each table"),
    ("no language at all", {"lang/velmora.de.resx": None}, "There is a language"),
    ("a key beyond ASCII", {"services/b.cpp": 'oroTranslate(out, "caf\u00e9");'}, "Keys are plain"),
]


def failed_checks(changes):
    """The titles of the checks that fail in the good tree with these changes."""
    with tempfile.TemporaryDirectory(prefix="cowl-translations-") as folder:
        for name, text in {**GOOD, **changes}.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            if text is not None:
                path.write_text(text, encoding="utf-8")
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = checktranslations.main([folder])
        failed = [line[5:] for line in output.getvalue().splitlines() if line.startswith("FAIL")]
        return failed if status else ["(passed)"] * (not failed) or ["(wrong exit code)"]


def main():
    good = True
    rows = [("a tree without faults", {}, "(passed)"), *BAD]
    for name, changes, expected in rows:
        failed = failed_checks(changes)
        fine = any(title.startswith(expected) for title in failed)
        print(f"{'OK  ' if fine else 'FAIL'} {name}" + ("" if fine else f": {failed}"))
        good = good and fine
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())

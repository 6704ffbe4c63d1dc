#!/usr/bin/env python3
"""Checks of the source tree that a compiler does not make.

    layers.py [ROOT]                      all checks of the text
    layers.py [ROOT] --headers COMMAND    compiles each header alone with COMMAND (a compiler and its
                                          flags) instead; --system posix or win32 chooses the folder
                                          below platform/ that is compiled with it; --built FOLDER is
                                          a build that already compiled many of them

Prints one line for each check: OK, or FAIL with the places below it. The exit code is 0 when all
are OK. Each check is a function that takes the tree and yields (file, line, message).
"""

import argparse
import concurrent.futures
import fnmatch
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

# ---------------------------------------------------------------------------------------------
# The layers: what the files of a folder may include, from the root of the tree. "x/" is the folder
# and all below it, "x/*" the files of the folder alone. The first row that fits a file is its own.

BASE = ["platform/*", "orobasictypes/*", "interfaces/*"]
KIT = ["orobasictypes/*", "interfaces/*", "components/kit/"]

LAYERS = [
    ("platform/win32/", ["platform/*", "platform/win32/"]),
    ("platform/posix/", ["platform/*", "platform/posix/"]),
    ("platform/", ["platform/"]),
    ("orobasictypes/*.h", ["platform/*", "orobasictypes/*"]),
    ("orobasictypes/", ["platform/*", "orobasictypes/*", "interfaces/*"]),
    ("interfaces/", ["orobasictypes/*", "interfaces/*"]),
    ("base/basic/", BASE + ["base/basic/"]),
    ("framework/", BASE + ["framework/"]),
    ("services/", BASE + ["services/"]),
    ("headless/", BASE + ["headless/"]),
    ("gui/apps/cowl/", BASE + ["gui/apps/cowl/"]),
    ("gui/apps/main/", BASE + ["base/basic/", "framework/", "services/", "headless/",
                               "gui/apps/cowl/", "gui/apps/main/"]),
    ("gui/apps/cowlinfo/", BASE + ["base/basic/", "framework/", "services/", "headless/",
                                   "gui/apps/cowl/", "gui/apps/main/", "gui/apps/cowlinfo/",
                                   "components/initserver/"]),
    ("components/kit/", KIT),
    ("components/initserver/", KIT + ["components/initserver/"]),
    ("components/batch/", KIT + ["components/batch/"]),
    ("components/commandline/", KIT + ["components/commandline/"]),
    ("components/memorymanager/", KIT + ["components/memorymanager/"]),
    ("components/points/", KIT + ["components/points/"]),
    ("components/pythonscript/", KIT + ["components/pythonscript/"]),
    ("components/random/", KIT + ["components/random/"]),
    # What the system knows of languages is what this one is for.
    ("components/text/", KIT + ["platform/nationaltext.h", "platform/text.h", "components/text/"]),
    ("components/xmldom/", KIT + ["components/xmldom/"]),
    ("tests/", [""]),
    ("bench/", [""]),
    ("examples/", [""]),
    ("tools/", ["tools/"]),
]

# Headers in angle brackets that a folder may include beside those of the C++ library.
THIRD_PARTY = {
    "components/points/": ["png.h"],
    "components/pythonscript/": ["Python.h", "pybind11/"],
    "components/xmldom/": ["pugixml.hpp"],
    "platform/posix/nationaltext.cpp": ["unicode/"],
    "tests/": ["gtest/", "gmock/"],
    "tests/components/points/": ["png.h"],
}

# Of the compiler, for the processor that both systems have.
PROCESSOR_HEADERS = {"emmintrin.h", "immintrin.h"}

# The headers that alone include those of an operating system.
GATES = ("platform/posix/posixgate.h", "platform/win32/win32gate.h")

# Folders whose code runs in the product: the host, the kit and the components.
PRODUCT = ("platform/", "orobasictypes/", "interfaces/", "base/", "framework/", "services/",
           "headless/", "gui/", "components/")

STANDARD_HEADERS = set("""
algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
condition_variable coroutine deque exception execution filesystem format forward_list fstream
functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list
locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept
stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits
typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef
cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype
""".split())

OS_MACRO = re.compile(
    r"\b(_?WIN(32|64|NT)|__?linux(__)?|__?unix(__)?|__APPLE__|_?_?MINGW(32|64)(__)?|_MSC_VER"
    r"|__CYGWIN__|__ANDROID__|__WINE__|__(FreeBSD|OpenBSD|NetBSD)__|__has_include)\b|_WIN32")

SKIPPED_FOLDERS = {"build", "stage", "__pycache__"}


# ---------------------------------------------------------------------------------------------
# The tree and its text

class Source:
    """One file: its path from the root, its text, and for C++ the text without comments."""

    def __init__(self, root, path):
        self.path = path
        self.name = path.rsplit("/", 1)[-1]
        self.stem, _, self.suffix = self.name.rpartition(".")
        self.text = (root / path).read_text(encoding="utf-8", errors="replace")
        self.is_cpp = self.suffix in ("h", "cpp")
        self.code = without_comments(self.text) if self.is_cpp else self.text

    def line_of(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def find(self, pattern, text=None):
        """The matches of a pattern as (line, match)."""
        for match in re.finditer(pattern, self.code if text is None else text, re.MULTILINE):
            yield self.line_of(match.start()), match

    def includes(self):
        """All includes as (line, name, is_quoted), in the order of the file."""
        pattern = r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"\n]+)[>"]'
        for match in re.finditer(pattern, self.text, re.MULTILINE):
            if self.code[match.start():match.end()].strip():
                yield self.line_of(match.start()), match.group(2), match.group(1) == '"'


class Tree:
    """The files of the source tree that the checks read."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.files = {}
        for folder, folders, names in os.walk(self.root):
            folders[:] = sorted(f for f in folders if f[0] != "." and f not in SKIPPED_FOLDERS)
            for name in sorted(names):
                path = (pathlib.Path(folder) / name).relative_to(self.root).as_posix()
                if name.endswith((".h", ".cpp", ".md", ".txt", ".cmake", ".py", ".in", ".iniml")) \
                        or path in ("dev", ".clang-tidy", ".clang-format"):
                    self.files[path] = Source(self.root, path)

    def cpp(self, *prefixes):
        return [f for f in self.files.values()
                if f.is_cpp and (not prefixes or f.path.startswith(prefixes))]

    def headers(self):
        return [f for f in self.cpp() if f.suffix == "h"]


def without_comments(text):
    """The text with comments and the insides of literals blanked; places stay the same."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"'
        r'|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])*\'', re.DOTALL)

    def blank(match):
        kept = match.group(0)
        if kept[0] == "/":
            return re.sub(r"[^\n]", " ", kept)
        return kept[0] + re.sub(r"[^\n]", " ", kept[1:-1]) + kept[-1]

    return pattern.sub(blank, text)


# ---------------------------------------------------------------------------------------------
# Includes

def fits(path, row):
    if row.endswith("*"):
        return path.startswith(row[:-1]) and "/" not in path[len(row) - 1:]
    if row.endswith("*.h"):
        return path.endswith(".h") and fits(path, row[:-2])
    return path.startswith(row)


def check_include_layers(tree):
    """Includes go down the layers, by paths from the root"""
    for source in tree.cpp():
        allowed = next((rows for place, rows in LAYERS if fits(source.path, place)), None)
        if allowed is None:
            yield source.path, 1, "the folder is in no row of the layers"
            continue
        for line, name, quoted in source.includes():
            if not quoted:
                continue
            if name not in tree.files:
                yield source.path, line, f'"{name}" is no file of the tree, from its root'
            elif not any(fits(name, row) for row in allowed):
                yield source.path, line, f'"{name}" lies in a layer that this folder may not use'


def check_system_headers(tree):
    """Headers of an operating system come in through the gate of platform/posix or platform/win32"""
    for source in tree.cpp():
        # A folder of one system needs no gate, and the peers in bench/ are calls of the system.
        if source.path in GATES or re.match(r"tests/.*/(posix|win32)/|bench/", source.path):
            continue
        known = [p for place, names in THIRD_PARTY.items() if source.path.startswith(place)
                 for p in names]
        for line, name, quoted in source.includes():
            if not quoted and name not in STANDARD_HEADERS | PROCESSOR_HEADERS and not name.startswith(tuple(known)):
                yield source.path, line, f"<{name}> is neither standard nor a library of this folder"


def check_gates(tree):
    """Only source files include a gate to an operating system: no header shows its types"""
    for source in tree.headers():
        for line, name, quoted in source.includes():
            if quoted and name in GATES:
                yield source.path, line, f'"{name}" in a header'


def check_system_branches(tree):
    """No branch on the operating system outside platform/"""
    for source in tree.cpp():
        if source.path.startswith("platform/"):
            continue
        for line, match in source.find(r"^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)\b.*$"):
            if OS_MACRO.search(match.group(0)):
                yield source.path, line, f"system branch: {match.group(0).strip()}"


def check_own_header_first(tree):
    """A source file includes its own header first"""
    for source in tree.cpp():
        own = source.path[:-3] + "h"
        if source.suffix != "cpp" or own not in tree.files:
            continue
        first = next(source.includes(), (1, "nothing", True))
        if first[1] != own:
            yield source.path, first[0], f'the first include is {first[1]}, not "{own}"'


# ---------------------------------------------------------------------------------------------
# Classes

CLASS_HEAD = re.compile(r"\b(enum\s+)?(class|struct)\s+(?:\[\[\w+\]\]\s*)?(?:alignas\([^)]*\)\s*)?"
                        r"([A-Za-z_]\w*)(\s+final)?\s*(:[^:;{}][^;{}]*)?\{")


def body_end(code, opening):
    """The place of the brace that closes the one at `opening`."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"{": 1, "}": -1}.get(code[place], 0)
        if depth == 0:
            return place
    return len(code)


def outer_classes(source):
    """The classes that are in no other class, as (keyword, name, place, first, last of the body)."""
    reached = 0
    for match in CLASS_HEAD.finditer(source.code):
        if match.start() < reached or match.group(1):
            continue
        reached = body_end(source.code, match.end() - 1)
        yield match.group(2), match.group(3), match.start(), match.end(), reached


def members(code, first, last):
    """The members of a class body as (place, text); a function's body counts to its text."""
    start = place = first
    while place < last:
        if code[place] == "{":
            place = body_end(code, place)
            rest = re.match(r"\s*[;,=]", code[place + 1:last])
            if not rest:
                yield start, code[start:place + 1]
                start = place + 1
        elif code[place] == ";":
            yield start, code[start:place + 1]
            start = place + 1
        elif code[place] == ":" and re.search(r"\b(public|protected|private)\s*$",
                                              code[start:place]):
            start = place + 1
        place += 1


ALLOWED_MEMBERS = [
    re.compile(r"^virtual\b[^{}]*=\s*0\s*;$"),
    re.compile(r"^(virtual )?~\w+\(\)( noexcept)?( override)? = default ?;$"),
    re.compile(r'^static constexpr const char\* interfaceName\(\) \{ return " *"; \}$'),
    re.compile(r"^static constexpr [\w:]+ k\w+ = [\w. <-]+;$"),
    re.compile(r"^(using|typedef|enum)\b[^(]*;$"),
    re.compile(r"^(class|struct) \w+ ?;$"),
    re.compile(r"^;$"),
]


def check_interfaces(tree):
    """Interfaces are pure: no data, no bodies but interfaceName() and default destructors"""
    # Constants are no data: they take no place in an object.
    for source in tree.headers():
        if not source.path.startswith("interfaces/"):
            continue
        for keyword, name, place, first, last in outer_classes(source):
            for start, text in members(source.code, first, last):
                shown = " ".join(text.split())
                if shown and not any(rule.match(shown) for rule in ALLOWED_MEMBERS):
                    line = source.line_of(start + len(text) - len(text.lstrip()))
                    yield source.path, line, f"{name}: {shown[:70]}"


def check_interface_names(tree):
    """An interface header is named like its one class, and interfaceName() gives that name"""
    for source in tree.headers():
        if not source.path.startswith("interfaces/"):
            continue
        names = [name for keyword, name, *_ in outer_classes(source) if keyword == "class"]
        if names != [source.stem]:
            yield source.path, 1, f"holds {', '.join(names) or 'no class'}, not {source.stem} alone"
        for line, match in source.find(r'interfaceName\(\)\s*\{\s*return\s*"([^"]*)"', source.text):
            if match.group(1) != source.stem:
                yield source.path, line, f'interfaceName() gives "{match.group(1)}"'


def check_interface_includes(tree):
    """An interface includes another only to inherit from it"""
    for source in tree.cpp("interfaces/"):
        for line, name, quoted in source.includes():
            stem = name.rsplit("/", 1)[-1][:-2]
            if quoted and name.startswith("interfaces/") and \
                    not re.search(rf"[:,]\s*(virtual\s+)?public\s+(virtual\s+)?(\w+::)*{stem}\b",
                                  source.code):
                yield source.path, line, f"{stem} is no base here: declare it forward"


def check_class_stems(tree):
    """A header that defines a class is named after it in lower case"""
    for source in tree.headers():
        if not source.path.startswith(PRODUCT) or \
                source.path.startswith(("interfaces/", "platform/")):
            continue
        names = [name for keyword, name, *_ in outer_classes(source) if keyword == "class"]
        if names and source.stem not in [name.lower() for name in names]:
            yield source.path, 1, f"holds {', '.join(names)}, none of which is {source.stem}"


def check_pragma_once(tree):
    """Each header is guarded with #pragma once"""
    for source in tree.headers():
        if not re.search(r"^#pragma once$", source.code, re.MULTILINE):
            yield source.path, 1, "no #pragma once"


def check_type_information(tree):
    """No run-time type information in the product: modules do not share it"""
    for source in tree.cpp(*PRODUCT):
        for line, match in source.find(r"\b(dynamic_cast|dynamic_pointer_cast|typeid|any_cast)\b"):
            yield source.path, line, match.group(0)


# ---------------------------------------------------------------------------------------------
# Tests and texts

def check_sources_listed(tree):
    """Each source file is named, or matched by a GLOB, in a CMakeLists.txt of its folder or above"""
    for source in tree.cpp("tests/", "bench/", "examples/", "tools/"):
        if source.suffix != "cpp":
            continue
        folder, listed = pathlib.PurePosixPath(source.path).parent, False
        for above in [folder, *folder.parents]:
            lists = tree.files.get((above / "CMakeLists.txt").as_posix())
            name = pathlib.PurePosixPath(source.path).relative_to(above).as_posix()
            code = re.sub(r"#.*", "", lists.text) if lists else ""
            if name.startswith(("posix/", "win32/")):  # the folders of one system
                code = code.replace("${system}", name.split("/")[0])
            listed = listed or re.search(rf"(?<![\w./-]){re.escape(name)}(?![\w.-])", code) \
                or any(fnmatch.fnmatch(name, word) and "/" not in name
                       for words in re.findall(r"file\(GLOB([^)]*)\)", code)
                       for word in words.split())
        if not listed:
            yield source.path, 1, "no CMakeLists.txt names it"


def check_tests_count(tree):
    """No test is off, skipped or unable to fail"""
    pattern = (r"\b(DISABLED_\w+|GTEST_SKIP|SUCCEED|GTEST_SUCCEED|GTEST_ALLOW_UNINSTANTIATED\w+)\b"
               r"|\b(EXPECT|ASSERT)_TRUE\(true\)|\b(EXPECT|ASSERT)_FALSE\(false\)")
    for source in tree.cpp("tests/"):
        for line, match in source.find(pattern):
            yield source.path, line, match.group(0)


# The words are put together here so that this file does not hold them itself.
UNWANTED_TEXT = [
    (r"\b" + r"spec" + r"\.md\b", "a document that is not part of the tree"),
    (r"(?i)\b" + r"the" + r"\s+spec(ification)?\b", "a document that is not part of the tree"),
    (r"\b" + r"Part" + r" [0-9]+\.[0-9]+", "a document that is not part of the tree"),
    (r"\b(rule|row|decision|see)\s+[FOST][0-9]{1,3}\b|\([FOST][0-9]{1,3}\)", "a row's number"),
    (r"\b(TO" + r"DO|FIX" + r"ME)\b", "unfinished work"),
    (r"(?<![\w.])/(work|root|farm)/", "a path of one machine"),
    (r"(?<![\w.])/tmp/(brief|iss|b)/", "a path of one machine"),
]


def check_texts(tree):
    """Texts speak of this system alone and of nothing unfinished"""
    for source in tree.files.values():
        for pattern, what in UNWANTED_TEXT:
            for line, match in source.find(pattern, source.text):
                yield source.path, line, f"{what}: {match.group(0)}"


CHECKS = [
    check_include_layers,
    check_system_headers,
    check_gates,
    check_system_branches,
    check_own_header_first,
    check_interfaces,
    check_interface_names,
    check_interface_includes,
    check_class_stems,
    check_pragma_once,
    check_type_information,
    check_sources_listed,
    check_tests_count,
    check_texts,
]


# ---------------------------------------------------------------------------------------------
# Headers alone

def built_alone(tree, build):
    """The headers before which an object of the build folder had nothing: it compiled them alone."""
    commands = pathlib.Path(build) / "compile_commands.json"
    for entry in json.loads(commands.read_text()) if commands.exists() else []:
        source = tree.files.get(os.path.relpath(entry["file"], tree.root))
        if source is None:
            continue
        line, name, _ = next(source.includes(), (1, "", True))
        if name not in tree.files or "".join(source.code.splitlines()[:line - 1]).strip():
            continue
        words = shlex.split(entry["command"])
        made = pathlib.Path(entry["directory"]) / words[words.index("-o") + 1]
        texts = [tree.root / source.path, tree.root / name]
        if made.exists() and made.stat().st_mtime > max(text.stat().st_mtime for text in texts):
            yield name


def check_headers_alone(tree, command, system, build=None):
    """Each header compiles alone"""
    other = {"posix": "platform/win32/", "win32": "platform/posix/"}[system]
    built = set(built_alone(tree, build)) if build else set()
    headers = [h.path for h in tree.headers() if not h.path.startswith(other)]
    if system == "win32":
        headers = [path for path in headers if path.startswith("platform/")]
    headers = [path for path in headers if path not in built]
    with tempfile.TemporaryDirectory(prefix="cowl-headers-") as folder:

        def compile_alone(path):
            unit = pathlib.Path(folder) / (path.replace("/", "_") + ".cpp")
            unit.write_text(f'#include "{path}"\n', encoding="utf-8")
            # An object file rather than a bare syntax check: compiler caches keep only those.
            run = subprocess.run(
                [*command, f"-I{tree.root}", "-c", unit.name, "-o", unit.name + ".o"],
                cwd=folder, capture_output=True, text=True)
            return run.returncode, run.stderr

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for path, (status, output) in zip(headers, pool.map(compile_alone, headers)):
                if status:
                    first = next((l for l in output.splitlines() if "error" in l), output.strip())
                    yield path, 1, first


# ---------------------------------------------------------------------------------------------

def report(title, findings):
    """Prints the check's line and returns whether it is OK."""
    findings = list(findings)
    print(f"{'FAIL' if findings else 'OK  '} {title}")
    for path, line, message in findings:
        print(f"       {path}:{line}: {message}")
    return not findings


def main(arguments):
    parser = argparse.ArgumentParser(description="Checks of the source tree.")
    parser.add_argument("root", nargs="?", default=pathlib.Path(__file__).resolve().parents[2])
    parser.add_argument("--headers", metavar="COMMAND", type=shlex.split)
    parser.add_argument("--system", choices=["posix", "win32"], default="posix")
    parser.add_argument("--built", metavar="FOLDER")
    options = parser.parse_args(arguments)

    tree = Tree(options.root)
    if not tree.cpp():
        print("FAIL there is no source file in", options.root)
        return 1
    if options.headers:
        title = check_headers_alone.__doc__ + f", {options.system}"
        results = [report(title, check_headers_alone(tree, options.headers, options.system,
                                                     options.built))]
    else:
        results = [report(check.__doc__, check(tree)) for check in CHECKS]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

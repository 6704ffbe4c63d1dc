#!/usr/bin/env python3
"""Shows that layers.py flags what it is for: each row of BAD is a small tree with one fault.

The files of a row stand on top of those of GOOD, in which nothing may be flagged. Prints one line
for each row, OK or FAIL.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

import layers

GOOD = {
    "CMakeLists.txt": "project(x)\n",
    "platform/files.h": "#pragma once\n\n#include <string>\n",
    "platform/posix/posixgate.h": "#pragma once\n\n#include <unistd.h>\n",
    "platform/posix/files.cpp": '#include "platform/files.h"\n\n'
                                '#include "platform/posix/posixgate.h"\n',
    "platform/win32/win32gate.h": "#pragma once\n\n#include <windows.h>\n",
    "platform/switch.h": "#pragma once\n\n#if defined(_WIN32)\n#endif\n",
    "orobasictypes/sptr.h": '#pragma once\n\n#include "platform/files.h"\n\n'
                            "template <class T, class U = int>\nclass SPtr {\n  T* held_;\n};\n",
    "orobasictypes/sptr.cpp": '#include "orobasictypes/sptr.h"\n\n#include <map>\n\n'
                              '#include "interfaces/IThing.h"\n',
    "interfaces/IThing.h": """#pragma once

#include <cstdint>

#include "orobasictypes/sptr.h"

class Other;
struct GUID;
enum Status : int32_t { kFine = 1 };

/* It has a body { int x; } in a comment alone. */
class IThing : public virtual Base {
 public:
  static constexpr const char* interfaceName() { return "IThing"; }
  static constexpr int32_t kReading = 0;
  virtual ~IThing() = default;
  virtual void go(const Other* other, int32_t places[4]) = 0;  // int data_;
  virtual int32_t unusedSlot2() = 0;
};
""",
    "interfaces/IThingV2.h": """#pragma once

#include "interfaces/IThing.h"

namespace names {

class IThingV2 : public IThing {
 public:
  static constexpr const char* interfaceName() { return "IThingV2"; }
};

}  // namespace names
""",
    "services/orothing.h": '#pragma once\n\n#include "interfaces/IThing.h"\n\n'
                           "class OroThing : public virtual IThing {\n  struct Row {\n  };\n};\n",
    "gui/apps/main/oroappmain.cpp": '#include "services/orothing.h"\n',
    "components/points/points.cpp": '#include "interfaces/IThing.h"\n'
                                    'const char* s = "// dynamic_cast typeid(";\nchar q = \'"\';\n'
                                    "int million = 1'000'000;  // typeid\n",
    "tests/services/CMakeLists.txt": "cowl_add_test(t SOURCES test_orothing.cpp)\n",
    "tests/services/test_orothing.cpp": '#include "services/orothing.h"\n\n#include <gtest/gtest.h>\n'
                                        "// DISABLED_ is no word for a test\nTEST(A, B) {}\n",
    "docs/architecture.md": "A part of the whole, specified nowhere else. `/tmp/out.xyz`\n",
}

INCLUDE = layers.check_include_layers
OS = layers.check_system_headers
PURE = layers.check_interfaces
TEXT = layers.check_texts
BRANCH = layers.check_system_branches


def interface(line):
    public = " public:\n"
    return {"interfaces/IThing.h": GOOD["interfaces/IThing.h"].replace(public, public + line + "\n")}


def with_line(path, line):
    return {path: GOOD[path] + line + "\n"}


# what is wrong, the files that differ from GOOD, the check that must flag it, where
BAD = [
    ("orobasictypes header includes an interface",
     with_line("orobasictypes/sptr.h", '#include "interfaces/IThing.h"'), INCLUDE,
     "orobasictypes/sptr.h"),
    ("interface includes the platform",
     with_line("interfaces/IThing.h", '#include "platform/files.h"'), INCLUDE,
     "interfaces/IThing.h"),
    ("service includes a neighbour of its layer",
     {"headless/ui.h": "#pragma once\n",
      **with_line("services/orothing.h", '#include "headless/ui.h"')}, INCLUDE,
     "services/orothing.h"),
    ("service includes a part of the platform that is one system's",
     {"platform/posix/own.h": "#pragma once\n",
      **with_line("services/orothing.h", '#include "platform/posix/own.h"')}, INCLUDE,
     "services/orothing.h"),
    ("framework includes the settings store",
     {"base/basic/keldata.h": "#pragma once\n",
      "framework/kelregistry.cpp": '#include "base/basic/keldata.h"\n'}, INCLUDE,
     "framework/kelregistry.cpp"),
    ("component includes the platform",
     with_line("components/points/points.cpp", '#include "platform/files.h"'), INCLUDE,
     "components/points/points.cpp"),
    ("component includes another component",
     {"components/kit/kit.h": '#pragma once\n#include "components/points/points.h"\n',
      "components/points/points.h": "#pragma once\n",
      "components/points/points.cpp": '#include "components/points/points.h"\n'}, INCLUDE,
     "components/kit/kit.h"),
    ("product includes a test's header",
     {"tests/help.h": "#pragma once\n",
      **with_line("gui/apps/main/oroappmain.cpp", '#include "tests/help.h"')}, INCLUDE,
     "gui/apps/main/oroappmain.cpp"),
    ("include is relative to its own folder",
     with_line("gui/apps/main/oroappmain.cpp", '#include "../../../services/orothing.h"'), INCLUDE,
     "gui/apps/main/oroappmain.cpp"),
    ("folder that no row names",
     {"extras/more.cpp": "int x;\n"}, INCLUDE, "extras/more.cpp"),
    ("system header in a service",
     with_line("services/orothing.h", "#include <unistd.h>"), OS, "services/orothing.h"),
    ("system header in the portable part of the platform",
     with_line("platform/files.h", "#  include <sys/types.h>"), OS, "platform/files.h"),
    ("system header in a test",
     with_line("tests/services/test_orothing.cpp", "#include <windows.h>"), OS,
     "tests/services/test_orothing.cpp"),
    ("library that the folder does not own",
     with_line("services/orothing.h", "#include <gtest/gtest.h>"), OS, "services/orothing.h"),
    ("system header beside the gate",
     {"platform/win32/second.cpp": "#include <windows.h>\n"}, OS, "platform/win32/second.cpp"),
    ("header that includes a gate",
     with_line("platform/files.h", '#include "platform/posix/posixgate.h"'), layers.check_gates,
     "platform/files.h"),
    ("ifdef of a system",
     with_line("services/orothing.h", "#ifdef _WIN32\n#endif"), BRANCH, "services/orothing.h"),
    ("if defined of a system",
     with_line("tests/services/test_orothing.cpp", "# if defined( __linux__ )\n#endif"), BRANCH,
     "tests/services/test_orothing.cpp"),
    ("elif of a compiler for a system",
     with_line("components/points/points.cpp", "#if 0\n#elif __MINGW64__\n#endif"), BRANCH,
     "components/points/points.cpp"),
    ("own header comes second",
     {"orobasictypes/sptr.cpp": '#include <map>\n\n#include "orobasictypes/sptr.h"\n'},
     layers.check_own_header_first, "orobasictypes/sptr.cpp"),
    ("interface with a field", interface("int data_;"), PURE, "interfaces/IThing.h"),
    ("interface with a field that has a value", interface("int data_ = 0;"), PURE,
     "interfaces/IThing.h"),
    ("interface with a field in braces", interface("int data_{0};"), PURE, "interfaces/IThing.h"),
    ("interface with a static field", interface("static int count_;"), PURE,
     "interfaces/IThing.h"),
    ("interface with a body", interface("virtual int go() { return 1; }"), PURE,
     "interfaces/IThing.h"),
    ("interface with a body on several lines", interface("int go() const\n  {\n    return 1;\n  }"),
     PURE, "interfaces/IThing.h"),
    ("interface with an operation that is not pure", interface("virtual int go();"), PURE,
     "interfaces/IThing.h"),
    ("interface with a destructor's body", interface("virtual ~IThing() { go(); }"), PURE,
     "interfaces/IThing.h"),
    ("interface that gives another name",
     {"interfaces/IThingV2.h": GOOD["interfaces/IThingV2.h"].replace('"IThingV2"', '"IThing"')},
     layers.check_interface_names, "interfaces/IThingV2.h"),
    ("interface in a file of another name",
     {"interfaces/IWrong.h": GOOD["interfaces/IThingV2.h"]}, layers.check_interface_names,
     "interfaces/IWrong.h"),
    ("interface includes one that it only mentions",
     {"interfaces/IUser.h": GOOD["interfaces/IThingV2.h"].replace("IThingV2 : public IThing",
                                                                  "IUser").replace("V2", "")},
     layers.check_interface_includes, "interfaces/IUser.h"),
    ("class in a file of another stem",
     {"services/orothing.h": GOOD["services/orothing.h"].replace("OroThing", "OroOther")},
     layers.check_class_stems, "services/orothing.h"),
    ("header without a guard",
     {"platform/files.h": "// #pragma once\n"}, layers.check_pragma_once, "platform/files.h"),
    ("dynamic_cast in a component",
     with_line("components/points/points.cpp", "auto* t = dynamic_cast<T*>(p);"),
     layers.check_type_information, "components/points/points.cpp"),
    ("typeid in the host",
     with_line("orobasictypes/sptr.cpp", "auto* n = typeid(int).name();"),
     layers.check_type_information, "orobasictypes/sptr.cpp"),
    ("test source that no list names",
     {"tests/services/test_lost.cpp": "#include <gtest/gtest.h>\n"}, layers.check_sources_listed,
     "tests/services/test_lost.cpp"),
    ("test source that only a comment names",
     {"tests/services/test_lost.cpp": "#include <gtest/gtest.h>\n",
      **with_line("tests/services/CMakeLists.txt", "# test_lost.cpp")},
     layers.check_sources_listed, "tests/services/test_lost.cpp"),
    ("test source that a GLOB does not match",
     {"tests/gui/CMakeLists.txt": "file(GLOB sources test_*.cpp)\n",
      "tests/gui/test_found.cpp": "", "tests/gui/lost.cpp": ""}, layers.check_sources_listed,
     "tests/gui/lost.cpp"),
    ("test source whose name is the end of a listed one",
     {"tests/services/orothing.cpp": "#include <gtest/gtest.h>\n"}, layers.check_sources_listed,
     "tests/services/orothing.cpp"),
    ("test that is off",
     with_line("tests/services/test_orothing.cpp", "TEST(A, DISABLED_B) {}"),
     layers.check_tests_count, "tests/services/test_orothing.cpp"),
    ("test that skips itself",
     with_line("tests/services/test_orothing.cpp", "TEST(A, C) { GTEST_SKIP(); }"),
     layers.check_tests_count, "tests/services/test_orothing.cpp"),
    ("test that cannot fail",
     with_line("tests/services/test_orothing.cpp", "TEST(A, D) { EXPECT_TRUE(true); }"),
     layers.check_tests_count, "tests/services/test_orothing.cpp"),
    ("comment that names the foreign document by file",
     with_line("services/orothing.h", "// see " + "spec" + ".md"), TEXT, "services/orothing.h"),
    ("document that names the foreign document",
     with_line("docs/architecture.md", "As the " + "specification says."), TEXT,
     "docs/architecture.md"),
    ("document that names a part by number",
     with_line("docs/architecture.md", "It is told in Part" + " 4.2."), TEXT,
     "docs/architecture.md"),
    ("comment that names a row by number",
     with_line("services/orothing.h", "// kept (F" + "17)"), TEXT, "services/orothing.h"),
    ("comment about unfinished work",
     with_line("services/orothing.h", "// TO" + "DO: more"), TEXT, "services/orothing.h"),
    ("path of one machine",
     with_line("tests/services/test_orothing.cpp", 'auto p = "/' + 'work/main/x";'), TEXT,
     "tests/services/test_orothing.cpp"),
]

BAD_HEADERS = [
    ("header that needs another before it",
     {"services/lone.h": "#pragma once\n\nstd::string name();\n"}, "services/lone.h"),
    ("header with a warning",
     {"services/lone.h": "#pragma once\n\ninline int same(int unused) { return 1; }\n"},
     "services/lone.h"),
]


def make_tree(folder, files):
    for path, text in {**GOOD, **files}.items():
        file = pathlib.Path(folder) / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
    return layers.Tree(folder)


def flagged(check, files):
    with tempfile.TemporaryDirectory(prefix="cowl-layers-") as folder:
        return sorted({path for path, _, _ in check(make_tree(folder, files))})


def headers_alone(command):
    # The good interface has a base that only its text needs.
    base = {"interfaces/IThing.h": GOOD["interfaces/IThing.h"].replace(" : public virtual Base", "")}
    return lambda files: flagged(
        lambda tree: layers.check_headers_alone(tree, command, "posix"), {**base, **files})


def built_headers(source, newer):
    """What counts as built alone when the one source with this text has an object or not."""
    with tempfile.TemporaryDirectory(prefix="cowl-layers-") as folder:
        tree = make_tree(folder, {"services/orothing.cpp": source})
        entry = {"directory": folder, "file": f"{folder}/services/orothing.cpp",
                 "command": "g++ -c services/orothing.cpp -o orothing.o"}
        pathlib.Path(folder, "compile_commands.json").write_text(json.dumps([entry]))
        if newer is not None:
            made = pathlib.Path(folder, "orothing.o")
            made.touch()
            moved = made.stat().st_mtime + (10 if newer else -10)
            os.utime(made, (moved, moved))
        return sorted(layers.built_alone(tree, folder))


def exit_code(files):
    with tempfile.TemporaryDirectory(prefix="cowl-layers-") as folder:
        make_tree(folder, files)
        command = [sys.executable, layers.__file__, folder]
        return subprocess.run(command, stdout=subprocess.DEVNULL).returncode


def main(compiler):
    results = []

    def expect(title, found, good):
        results.append(good)
        print(f"{'OK  ' if good else 'FAIL'} {title}" + ("" if good else f": found {found}"))

    for check in layers.CHECKS:
        found = flagged(check, {})
        expect(f"nothing to flag: {check.__doc__}", found, not found)
    for title, files, check, path in BAD:
        found = flagged(check, files)
        expect(f"flagged: {title}", found, found == [path])
    untested = set(layers.CHECKS) - {check for _, _, check, _ in BAD}
    expect("each check has a bad sample", [check.__name__ for check in untested], not untested)

    alone = headers_alone(compiler)
    found = alone({})
    expect("nothing to flag: each header compiles alone", found, not found)
    for title, files, path in BAD_HEADERS:
        found = alone(files)
        expect(f"flagged: {title}", found, found == [path])

    own = '#include "services/orothing.h"\n'
    for title, source, newer, good in [
            ("the header that a built source includes first", own, True, ["services/orothing.h"]),
            ("not the header of an object that is older", own, False, []),
            ("not the header of a source without an object", own, None, []),
            ("not a header after another", "#include <map>\n" + own, True, []),
            ("not a header after a definition", "#define X\n" + own, True, []),
            ("not a header in a branch", "#if X\n" + own + "#endif\n", True, [])]:
        found = built_headers(source, newer)
        expect(f"compiled alone by the build: {title}", found, found == good)

    expect("exit code 0 of a good tree", exit_code({}), exit_code({}) == 0)
    bad = BAD[0][1]
    expect("exit code 1 of a bad tree", exit_code(bad), exit_code(bad) == 1)
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:] or ["g++", "-std=c++20", "-Wall", "-Wextra", "-Werror"]))

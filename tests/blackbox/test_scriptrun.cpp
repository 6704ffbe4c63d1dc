// The real executable with its script engine: scripts in, output, errors and files out.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/productcopy.h"
#include "tests/support/holds.h"
#include "tests/tempfolder.h"

namespace {

using tests::holds;

class ScriptRun : public testing::Test {
 protected:
  tests::ChildResult runFile(const std::string& name, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"-script", name});
    const auto result = tests::runChild({tests::cowlProgram(), more, {}, folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitCode, 1);
    return result;
  }
  tests::ChildResult run(const std::string& source, std::vector<std::string> more = {}) {
    folder_.write("do.py", source);
    return runFile("do.py", std::move(more));
  }
  // What a script prints when nothing goes wrong.
  std::string output(const std::string& source) {
    const auto result = run(source);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  tests::TempFolder folder_;
};

TEST_F(ScriptRun, PrintsOnStandardOutput) {
  EXPECT_EQ(output("print('h\\u00e9llo', 1 + 1)\n"), "h\xC3\xA9llo 2\n");
}

TEST_F(ScriptRun, PrintsBetweenTheRecordsOfItsOwnTime) {
  const auto result =
      run("print('first')\nwith cowl.progress('Working') as step:\n"
          "    step.update(0.5)\n    print('inside')\n",
          {"-logfile", "stdout"});
  EXPECT_TRUE(holds(result.errors, "NameError"));
  const auto good =
      run("import cowl\nprint('first')\nwith cowl.progress('Working') as step:\n"
          "    step.update(0.5)\n    print('inside')\nprint('last')\n",
          {"-logfile", "stdout"});
  EXPECT_EQ(good.output,
            "<log>\nfirst\n<start action=\"Working\"/>\n <prog done=\"50\"/>\ninside\n"
            "<stop action=\"Working\"/>\nlast\n<set action=\"Outcome: success\"/>\n</log>\n");
}

TEST_F(ScriptRun, AFailureIsItsTracebackOnStandardErrorAndInTheRecords) {
  const auto result = run("def f():\n    return 1 / 0\n\nf()\n", {"-logfile", "stdout"});
  const std::string traceback =
      "Traceback (most recent call last):\n"
      "  File \"do.py\", line 4, in <module>\n"
      "    f()\n"
      "  File \"do.py\", line 2, in f\n"
      "    return 1 / 0\n"
      "           ~~^~~\n"
      "ZeroDivisionError: division by zero";
  EXPECT_EQ(result.errors, traceback + "\n");
  EXPECT_EQ(result.output, "<log>\n<Error=\"" + traceback +
                               "\"/>\n<set action=\"Outcome: script failed\"/>\n</log>\n");
}

TEST_F(ScriptRun, AFailedScriptDoesNotStopTheSave) {
  folder_.write("in.xyz", "1 2 3\n");
  const auto result = run("raise ValueError('no')\n", {"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_TRUE(holds(result.errors, "ValueError: no"));
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n");
}

TEST_F(ScriptRun, AMissingScriptIsNamed) {
  const auto result = runFile("absent.py");
  EXPECT_EQ(result.errors, "Cannot open the script absent.py\n");
}

TEST_F(ScriptRun, AFolderIsNoScript) {
  std::filesystem::create_directory(folder_.file("folder.py"));
  EXPECT_TRUE(holds(runFile("folder.py").errors, "folder.py\n"));
}

TEST_F(ScriptRun, AnEmptyScriptDoesNothing) { EXPECT_EQ(output(""), ""); }

TEST_F(ScriptRun, ASyntaxErrorNamesItsLine) {
  const auto result = run("x = 1\ny = (\n");
  EXPECT_TRUE(holds(result.errors, "File \"do.py\", line 2"));
  EXPECT_TRUE(holds(result.errors, "SyntaxError"));
}

TEST_F(ScriptRun, BytesThatAreNoTextAreASyntaxError) {
  EXPECT_TRUE(holds(run("x = '\xFF\xFE'\n").errors, "SyntaxError"));
  EXPECT_TRUE(holds(run(std::string("x = 1\0\n", 7)).errors, "null byte"));
  EXPECT_TRUE(holds(run("# -*- coding: nonsense -*-\n").errors, "SyntaxError"));
}

TEST_F(ScriptRun, AnotherEncodingMayBeDeclared) {
  EXPECT_EQ(output("# -*- coding: latin-1 -*-\nprint('\xE9')\n"), "\xC3\xA9\n");
}

TEST_F(ScriptRun, ATextThatIsNoUnicodeIsPrintedWithEscapes) {
  EXPECT_EQ(output("print('\\udcff')\n"), "\\udcff\n");
  EXPECT_TRUE(holds(run("raise ValueError('\\udcff')\n").errors, "ValueError: "));
}

TEST_F(ScriptRun, AMarkOfUtf8AndLinesOfOtherSystemsAreTaken) {
  EXPECT_EQ(output("\xEF\xBB\xBFprint('\xC3\xA4')\r\nif True:\r\n    print(2)\r\n"),
            "\xC3\xA4\n2\n");
  EXPECT_EQ(output("print(1)\rprint(2)"), "1\n2\n");
}

TEST_F(ScriptRun, ATracebackShowsTheLineAsItStands) {
  EXPECT_TRUE(holds(run("# -*- coding: latin-1 -*-\nraise ValueError('\xE4')\n").errors,
                    "    raise ValueError('\xC3\xA4')\nValueError: \xC3\xA4\n"));
  EXPECT_TRUE(holds(run("\xEF\xBB\xBFraise KeyError(1)\n").errors, "\n    raise KeyError(1)\n"));
  EXPECT_TRUE(holds(run("x = 'a\fb\xE2\x80\xA8'\n1 / 0\n").errors, "    1 / 0\n"));
}

TEST_F(ScriptRun, PrintsTheSameInEveryLocale) {
  folder_.write("do.py", "print('\xC3\xA4\xE2\x82\xAC')\nraise ValueError('\xC3\xB6')\n");
  const tests::Child child{tests::cowlProgram(),
                           {"-script", "do.py"},
                           {{"LANG", "C"}, {"LC_ALL", "C"}, {"PYTHONIOENCODING", "ascii"}},
                           folder_.path()};
  const auto result = tests::runChild(child);
  EXPECT_EQ(result.output, "\xC3\xA4\xE2\x82\xAC\n");
  EXPECT_TRUE(holds(result.errors, "ValueError: \xC3\xB6\n"));
}

TEST_F(ScriptRun, AnotherFolderIsTheScriptsAlone) {
  folder_.write("in.xyz", "1 2 3\n");
  std::filesystem::create_directory(folder_.file("elsewhere"));
  run("import os\nos.chdir('elsewhere')\n", {"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n");
  EXPECT_EQ(run("import os\nos.mkdir('gone')\nos.chdir('gone')\nos.rmdir('../gone')\n").errors, "");
}

TEST_F(ScriptRun, AnEndlessRecursionEndsAsAnError) {
  EXPECT_TRUE(holds(run("def f():\n    f()\nf()\n").errors, "RecursionError"));
  const std::string nested = "x = " + std::string(20000, '(') + std::string(20000, ')') + "\n";
  EXPECT_TRUE(holds(run(nested).errors, "too many nested parentheses"));
}

TEST_F(ScriptRun, LeavingWithZeroIsNoFailure) {
  EXPECT_EQ(output("import sys\nprint('a')\nsys.exit()\n"), "a\n");
  EXPECT_EQ(output("import sys\nprint('a')\nsys.exit(0)\n"), "a\n");
}

TEST_F(ScriptRun, LeavingWithAnotherStatusOrATextIsAFailure) {
  EXPECT_EQ(run("import sys\nsys.exit(3)\n").errors, "The script ended with the status 3\n");
  EXPECT_EQ(run("import sys\nsys.exit('no such scan')\n").errors, "no such scan\n");
  EXPECT_TRUE(holds(run("class C:\n    def __str__(self): raise KeyError(7)\n"
                        "raise SystemExit(C())\n")
                        .errors,
                    "KeyError: 7"));
}

TEST_F(ScriptRun, AnInterruptEndsTheScriptAndTheSaveFollows) {
  folder_.write("in.xyz", "1 2 3\n");
  const auto result =
      run("import os, signal\nprint('begun')\nos.kill(os.getpid(), signal.SIGINT)\n"
          "while True: pass\n",
          {"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_EQ(result.output, "begun\n");
  EXPECT_TRUE(holds(result.errors, "KeyboardInterrupt"));
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n");
}

TEST_F(ScriptRun, ErrorsInOddPlacesAreToldAndHarmless) {
  EXPECT_TRUE(
      holds(run("import atexit\n@atexit.register\ndef f(): raise ValueError('late')\n").errors,
            "ValueError: late"));
  EXPECT_TRUE(
      holds(run("class C:\n    def __del__(self): raise ValueError('gone')\nc = C()\n").errors,
            "ValueError: gone"));
  EXPECT_TRUE(holds(
      run("class E(BaseException):\n    def __str__(self): raise ValueError\nraise E()\n").errors,
      "<exception str() failed>"));
  EXPECT_TRUE(holds(
      run("import traceback\ntraceback.TracebackException = None\nraise KeyError(1)\n").errors,
      "KeyError"));
  EXPECT_TRUE(holds(run("import sys\nsys.stdout.close()\nprint(1)\n").errors, "ValueError"));
  EXPECT_EQ(output("import sys\nsys.stdout = None\nprint(1)\n"), "");
}

TEST_F(ScriptRun, AVeryLongErrorIsShortenedInTheMiddle) {
  const auto result = run("raise ValueError('x' * 50_000_000 + ' the end')\n");
  EXPECT_LT(result.errors.size(), 40000u);
  EXPECT_TRUE(holds(result.errors, "\n...\n"));
  EXPECT_TRUE(holds(result.errors, "x the end\n"));
}

TEST_F(ScriptRun, MuchOutputComesWhole) {
  const auto result = run("for i in range(100000): print('line', i)\n");
  EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 100000);
}

TEST_F(ScriptRun, WaitsForItsThreads) {
  EXPECT_EQ(output("import threading, time\n"
                   "def f():\n    time.sleep(0.2)\n    print('thread')\n"
                   "threading.Thread(target=f).start()\nprint('main')\n"),
            "main\nthread\n");
}

TEST_F(ScriptRun, AChildOfTheScriptDoesNotGoOnAsTheHost) {
  folder_.write("in.xyz", "1 2 3\n");
  const auto result = run("import os\npid = os.fork()\nif pid: os.waitpid(pid, 0)\n",
                          {"-input", "in.xyz", "-logfile", "stdout"});
  const std::string end = "</log>\n";
  EXPECT_EQ(result.output.find(end), result.output.size() - end.size());
}

TEST_F(ScriptRun, IsIsolatedFromEnvironmentAndFolder) {
  folder_.write("helper.py", "x = 1\n");
  folder_.write("do.py", "import sys\nprint(sys.flags.isolated, sys.argv)\nimport helper\n");
  const tests::Child child{tests::cowlProgram(),
                           {"-script", "do.py"},
                           {{"PYTHONPATH", folder_.path().string()}, {"PYTHONHOME", "/absent"}},
                           folder_.path()};
  const auto result = tests::runChild(child);
  EXPECT_EQ(result.output, "1 ['do.py']\n");
  EXPECT_TRUE(holds(result.errors, "No module named 'helper'"));
}

TEST_F(ScriptRun, IsTheMainModule) {
  EXPECT_EQ(output("print(__name__, __file__)\nimport __main__\nprint(__main__.__file__)\n"),
            "__main__ do.py\ndo.py\n");
}

TEST_F(ScriptRun, ReadsAndSetsSettings) {
  EXPECT_EQ(output("import cowl\ns = cowl.settings\n"
                   "print(s['GUI/CommandLine'], s['Scripting/Startup Macro'], s.get('No/Such'))\n"
                   "s.declare('My/Own/Number', 7)\ns['My/Own/Number'] += 1\n"
                   "s.declare('My/Own/Text', '\\u00e9')\ns.declare('My/Own/Real', 0.5)\n"
                   "print(s['My/Own/Number'], s['My/Own/Text'], s['My/Own/Real'])\n"
                   "print('My/Own/Text' in s, 'My/Own' in s)\n"),
            "1 do.py None\n8 \xC3\xA9 0.5\nTrue False\n");
}

TEST_F(ScriptRun, RefusesWhatASettingCannotHold) {
  EXPECT_TRUE(holds(run("import cowl\ncowl.settings['No/Such'] = 1\n").errors, "KeyError"));
  EXPECT_TRUE(
      holds(run("import cowl\ncowl.settings['GUI/CommandLine'] = 'x'\n").errors, "TypeError"));
  EXPECT_TRUE(
      holds(run("import cowl\ncowl.settings['Points/Decimals'] = 99\n").errors, "ValueError"));
  EXPECT_TRUE(
      holds(run("import cowl\ncowl.settings['GUI/CommandLine'] = 1 << 80\n").errors, "Error"));
  EXPECT_TRUE(holds(run("import cowl\ncowl.settings['Scripting/Output File'] = 'a\\0b'\n").errors,
                    "ValueError"));
}

TEST_F(ScriptRun, TellsWhatASettingTakes) {
  const auto errors = [&](const std::string& line) {
    return run("import cowl\ns = cowl.settings\n" + line + "\n").errors;
  };
  EXPECT_TRUE(holds(errors("s['Points/Decimals'] = 1 << 80"), "the setting goes from -1 to 15"));
  EXPECT_TRUE(holds(errors("s['Points/Decimals'] = 2.0"), "the setting is a whole number"));
  EXPECT_TRUE(holds(errors("s[5]"), "TypeError: a text is expected here"));
  EXPECT_TRUE(holds(errors("s['a\\0b']"), "ValueError: the text holds a character 0"));
  EXPECT_TRUE(holds(errors("s.declare('A/F', 1.0)\ns['A/F'] = 'x'"), "TypeError: must be real"));
  EXPECT_TRUE(holds(errors("s.declare('A/F', 1.0)\ns['A/F'] = float('nan')"), "ValueError"));
  EXPECT_TRUE(holds(errors("s.declare('A/F', float('inf'))"), "ValueError: the setting goes from"));
  EXPECT_TRUE(holds(errors("s.declare('A/B', None)"), "TypeError: a text is expected here"));
  for (const char* const bad : {"", "A/", "/A", "A//B"}) {
    EXPECT_TRUE(holds(errors(std::string("s.declare('") + bad + "', 1)"), "cannot be made")) << bad;
  }
  EXPECT_TRUE(holds(errors("s['\\udcff']"), "UnicodeEncodeError"));
  EXPECT_TRUE(holds(errors("s.declare('A/T', 'x' * 40000)"), "takes at most 32766 characters"));
  EXPECT_EQ(output("import cowl, numpy\ns = cowl.settings\n"
                   "s['Points/Decimals'] = numpy.int64(3)\nprint(s['Points/Decimals'])\n"),
            "3\n");
}

TEST_F(ScriptRun, AScriptMayChooseWhereToSave) {
  folder_.write("in.xyz", "1 2 3\n");
  run("import cowl\ncowl.settings['Scripting/Output File'] = 'chosen.xyz'\n", {"-input", "in.xyz"});
  EXPECT_EQ(folder_.read("chosen.xyz"), "1 2 3\n");
}

TEST_F(ScriptRun, Translates) {
  EXPECT_EQ(output("import cowl\nprint(cowl.text('%1 of %2', 1, 'b'))\n"), "1 of b\n");
}

TEST_F(ScriptRun, ExceptionsAreInTheLanguageOfTheUser) {
  const tests::ProductCopy product;
  product.changeDescription("", "registry Application/Language de\n");
  folder_.write(
      "do.py",
      "import cowl\n"
      "for wrong in (lambda: cowl.document[9], lambda: cowl.settings[5],\n"
      "              lambda: cowl.progress('x').update(7), lambda: cowl.open('no.xyz')):\n"
      "    try: wrong()\n"
      "    except Exception as error: print(type(error).__name__, error)\n");
  const auto result = product.run("cowl", {"-script", "do.py"}, folder_.path());
  EXPECT_EQ(result.output,
            "IndexError es gibt keine Wolke mit dieser Nummer\n"
            "TypeError hier wird ein Text erwartet\n"
            "ValueError ein Bruchteil geht von 0 bis 1\n"
            "Error Die Datei no.xyz kann nicht ge\xC3\xB6"
            "ffnet werden\n");
}

TEST_F(ScriptRun, ImportsNumPy) {
  EXPECT_EQ(output("import numpy\nprint(numpy.arange(4).sum())\n"), "6\n");
}

}  // namespace

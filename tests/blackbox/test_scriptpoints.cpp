// Scripts that work on points: the commands, and the arrays over the storage.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/support/holds.h"
#include "tests/tempfolder.h"

namespace {

using tests::holds;

class ScriptPoints : public testing::Test {
 protected:
  void SetUp() override {
    std::string text;
    for (int i = 0; i < 3000; ++i) {
      text += std::to_string(i) + " " + std::to_string(i % 7) + " 0.5 " + std::to_string(i % 256) +
              " 10 20\n";
    }
    folder_.write("in.xyz", text);
  }

  tests::ChildResult run(const std::string& source, std::vector<std::string> more = {}) {
    folder_.write("do.py", "import cowl\n" + source);
    more.insert(more.begin(), {"-script", "do.py", "-input", "in.xyz"});
    const auto result = tests::runChild({tests::cowlProgram(), more, {}, folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return result;
  }
  std::string output(const std::string& source) {
    const auto result = run(source);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }
  std::string errors(const std::string& source) { return run(source).errors; }

  tests::TempFolder folder_;
};

TEST_F(ScriptPoints, TheDocumentListsItsClouds) {
  EXPECT_EQ(output("d = cowl.document\nprint(len(d), d[0].name, len(d['in']), d[-1])\n"
                   "print([len(c) for c in d], d.clouds)\n"),
            "1 in 3000 <cowl.Cloud 'in', 3000 points>\n"
            "[3000] [<cowl.Cloud 'in', 3000 points>]\n");
  EXPECT_TRUE(holds(errors("cowl.document[1]\n"), "IndexError"));
  EXPECT_TRUE(holds(errors("cowl.document['out']\n"), "KeyError"));
  EXPECT_TRUE(holds(errors("cowl.document[1.5]\n"), "TypeError"));
  EXPECT_TRUE(holds(errors("cowl.document[-2**70]\n"), "IndexError"));
  EXPECT_TRUE(holds(errors("cowl.document['\\udcff']\n"), "KeyError"));
  EXPECT_EQ(output("import numpy\nprint(cowl.document[numpy.int64(0)].name)\n"), "in\n");
}

TEST_F(ScriptPoints, CommandsTakeValuesByPlaceAndByName) {
  EXPECT_EQ(output("import numpy\nprint(cowl.crop((10, 0, 0), max=numpy.array([19, 9, 9])))\n"
                   "print(cowl.translate(by=[1, 2, 3]))\nprint(cowl.bounds()['min'])\n"
                   "print(cowl.transform(numpy.eye(4)), cowl.thin(count=numpy.int64(4)))\n"),
            "{'before': 3000, 'after': 10}\nNone\n(11.0, 2.0, 3.5)\n"
            "None {'before': 10, 'after': 4}\n");
}

TEST_F(ScriptPoints, CommandsTellWhatIsWrong) {
  EXPECT_TRUE(holds(errors("cowl.translate((1, 2))\n"), "cowl.Error: The value by of translate"));
  EXPECT_TRUE(holds(errors("cowl.translate()\n"), "translate needs the value by"));
  EXPECT_TRUE(holds(errors("cowl.translate((1, 2, 3), 4)\n"), "TypeError"));
  EXPECT_TRUE(holds(errors("cowl.translate((1, 2, 3), by=4)\n"), "given twice"));
  EXPECT_TRUE(holds(errors("cowl.translate(to=4)\n"), "has no value named to"));
  EXPECT_TRUE(holds(errors("cowl.translate(object())\n"), "TypeError"));
  EXPECT_TRUE(holds(errors("cowl.translate(range(10**9))\n"), "ValueError"));
  EXPECT_TRUE(holds(errors("a = []\na.append(a)\ncowl.translate(a)\n"), "TypeError"));
  EXPECT_TRUE(holds(errors("cowl.translate((1, 2, 3), cloud='no')\n"), "KeyError"));
  EXPECT_TRUE(holds(errors("cowl.sort('\\0')\n"), "ValueError"));
  EXPECT_TRUE(
      holds(errors("cowl.open('absent.xyz')\n"), "cowl.Error: Cannot open the file absent.xyz\n"));
  EXPECT_TRUE(holds(errors("cowl.thin(b'5')\n"), "TypeError"));
  EXPECT_TRUE(holds(errors("cowl.thin(-1)\n"), "cowl.Error: The number of points"));
  EXPECT_TRUE(holds(errors("cowl.thin(1e300)\n"), "cowl.Error: The number of points"));
  EXPECT_TRUE(holds(errors("cowl.thin(float('nan'))\n"), "is not finite"));
  EXPECT_TRUE(holds(errors("cowl.thin(5, cloud=2**70)\n"), "IndexError"));
}

TEST_F(ScriptPoints, CommandsHaveHelp) {
  const std::string text = output("cowl.help()\nprint(cowl.crop.__doc__)\n");
  EXPECT_TRUE(holds(text, "voxel_thin(size)\nKeeps one point for each cube of space"));
  EXPECT_TRUE(holds(text, "crop(min=None, max=None, inside=None, selected=None)"));
}

TEST_F(ScriptPoints, ArraysShowTheStorageItself) {
  EXPECT_EQ(output("c = cowl.document[0]\nsizes = []\n"
                   "for b in c.blocks():\n"
                   "    sizes.append((b.first, len(b), b.points.shape, b.colors.shape))\n"
                   "    b.points[:, 2] += 1\n    b.colors[:, 0] = 7\n"
                   "print(sizes)\nprint(cowl.bounds()['max'], c.colors[2999])\n"
                   "c.colors[2999, 1] = 99\nprint(c.colors[2999], c.colors.flags.owndata)\n"),
            "[(0, 1023, (1023, 3), (1023, 3)), (1023, 1024, (1024, 3), (1024, 3)), "
            "(2047, 953, (953, 3), (953, 3))]\n(2999.0, 6.0, 1.5) [ 7 10 20]\n"
            "[ 7 99 20] False\n");
}

TEST_F(ScriptPoints, AllPointsAreAViewWhereTheyLieInOnePieceElseACopyThatRefusesWriting) {
  EXPECT_TRUE(holds(errors("cowl.document[0].points[0, 0] = 1\n"), "read-only"));
  EXPECT_EQ(
      output("c = cowl.document[0]\np = c.points\nprint(p.shape, p[2999, 0])\n"
             "cowl.thin(5)\nc.points[0] = (7, 8, 9)\nprint(c.points[0], cowl.bounds()['max'])\n"
             "c.points = c.points * 2\nprint(c.points[0])\n"),
      "(3000, 3) 2999.0\n[7. 8. 9.] (2400.0, 8.0, 9.0)\n[14. 16. 18.]\n");
  EXPECT_TRUE(holds(errors("import numpy\ncowl.document[0].points = numpy.zeros((2, 3))\n"),
                    "another shape"));
}

TEST_F(ScriptPoints, AnArrayOutlivesItsPoints) {
  EXPECT_EQ(output("c = cowl.document[0]\nb = list(c.blocks())\nk = c.colors\n"
                   "cowl.thin(2)\ncowl.deduplicate()\ncowl.sort('x', descending=True)\n"
                   "print(len(c), sum(x.points[:, 0].sum() for x in b), k[255, 0])\n"
                   "b[0].points[:] = 5\nprint(cowl.bounds()['max'])\n"
                   "cowl.open('in.xyz')\ncowl.merge()\nprint(len(c), len(cowl.document))\n"
                   "del b, k\nprint(list(c.points[0]))\n"),
            "2 4498500.0 255\n(1500.0, 2.0, 0.5)\n3002 1\n[1500.0, 2.0, 0.5]\n");
}

TEST_F(ScriptPoints, AnEmptyCloudHasEmptyArrays) {
  EXPECT_EQ(output("c = cowl.document[0]\ncowl.crop(max=(-1, 0, 0))\n"
                   "print(c.points.shape, list(c.blocks()), c.selection.shape, cowl.bounds())\n"
                   "cowl.sort()\ncowl.deduplicate()\ncowl.to_gray()\ncowl.thin(5)\n"),
            "(0, 3) [] (0,) {'points': 0}\n");
}

TEST_F(ScriptPoints, BoundsPassOverWhatIsNoNumberAndWithoutAPointThereIsNoBox) {
  EXPECT_EQ(output("import numpy\nc = cowl.document[0]\npoints = numpy.full((3000, 3), numpy.nan)\n"
                   "def tell(): print(cowl.bounds(), sorted(cowl.info()))\n"
                   "c.points = points\ntell()\n"
                   "points[7] = (numpy.inf, 1, 1)\nc.points = points\ntell()\n"
                   "points[8:10] = (1, 2, 3), (3, 1, 4)\nc.points = points\ntell()\n"
                   "cowl.select(mode='all')\nprint(cowl.bounds(selected=1)['points'])\n"
                   "c.selection = numpy.arange(3000) < 8\nprint(cowl.bounds(selected=1))\n"
                   "try: cowl.bounds(1)['min']\nexcept KeyError as error: print(error)\n"),
            "{'points': 0} ['clouds', 'colored', 'points', 'selected']\n"
            "{'points': 0} ['clouds', 'colored', 'points', 'selected']\n"
            "{'points': 2, 'min': (1.0, 1.0, 3.0), 'max': (3.0, 2.0, 4.0)} "
            "['clouds', 'colored', 'max', 'min', 'points', 'selected']\n"
            "2\n{'points': 0}\n'min'\n");
}

TEST_F(ScriptPoints, SelectionsAndColoursAreSetFromArrays) {
  EXPECT_EQ(output("import numpy\nc = cowl.document[0]\nc.selection = numpy.arange(3000) % 2 == 0\n"
                   "print(c.selected_count, c.selection[:3])\n"
                   "print(cowl.crop(selected=1)['after'], c.selected_count)\n"
                   "c.colors = None\nprint(c.colors)\n"
                   "c.colors = numpy.full((1500, 3), 9)\nprint(c.colors[1499])\n"),
            "1500 [ True False  True]\n1500 1500\nNone\n[9 9 9]\n");
  EXPECT_TRUE(holds(errors("cowl.document[0].selection = [True]\n"), "another shape"));
  EXPECT_TRUE(holds(errors("cowl.document[0].colors = [[1, 2, 3]]\n"), "another shape"));
  EXPECT_TRUE(holds(errors("cowl.document[0].selection = None\n"), "another shape"));
  EXPECT_TRUE(holds(errors("cowl.document[0].points = 'abc'\n"), "could not convert"));
  EXPECT_TRUE(holds(errors("cowl.document[0].points = None\n"), "another shape"));
  const std::string whole = "import numpy\nc = cowl.document[0]\n";
  for (const char* const bad : {"300", "-1", "256.0", "float('nan')", "float('inf')"}) {
    EXPECT_TRUE(holds(errors(whole + "c.colors = numpy.full((3000, 3), " + bad + ")\n"),
                      "ValueError: colours go from 0 to 255"))
        << bad;
  }
  EXPECT_EQ(output(whole + "c.colors = numpy.full((3000, 3), 254.7)\nprint(c.colors[7])\n"),
            "[254 254 254]\n");
}

// Runs each line and prints what it raises, or what it is when it raises nothing.
constexpr const char* kTryEach =
    "import copy, copyreg, numpy, pickle, sys\nc = cowl.document[0]\nstep = cowl.progress('a')\n"
    "block = next(c.blocks())\n"
    "kinds = [type(x) for x in (c, block, c.blocks(), cowl.document, cowl.settings, step)]\n"
    "def tell(what, *values):\n"
    "    try: print('->', what(*values))\n"
    "    except Exception as error: print(type(error).__name__)\n";

TEST_F(ScriptPoints, NoObjectIsMadeOfAClassOfTheModule) {
  EXPECT_EQ(output(std::string(kTryEach) +
                   "for k in kinds:\n"
                   "    for make in (k, lambda: k.__new__(k), lambda: copyreg.__newobj__(k),\n"
                   "                 lambda: object.__new__(k), lambda: type('D', (k,), {}),\n"
                   "                 lambda: type(k)('D', (k,), {})):\n"
                   "        tell(make)\n"
                   "base = cowl.Cloud.__base__\n"
                   "tell(base)\ntell(base.__new__, base)\ntell(type(base)('D', (base,), {}))\n"
                   "print(len(c), len(block), step.update(0.5))\n"),
            [] {
              std::string all;
              for (int i = 0; i < 6 * 6 + 3; ++i) all += "TypeError\n";
              return all + "3000 1023 None\n";
            }());
}

TEST_F(ScriptPoints, AnObjectOfTheModuleIsNeitherCopiedNorPickled) {
  EXPECT_EQ(output(std::string(kTryEach) +
                   "for x in (c, block, c.blocks(), cowl.document, cowl.settings, step):\n"
                   "    for make in (copy.copy, copy.deepcopy, pickle.dumps): tell(make, x)\n"),
            [] {
              std::string all;
              for (int i = 0; i < 6 * 3; ++i) all += "TypeError\n";
              return all;
            }());
}

TEST_F(ScriptPoints, AnObjectOfTheModuleStaysWhatItIs) {
  EXPECT_EQ(output(std::string(kTryEach) +
                   "tell(setattr, block, '__class__', cowl.Cloud)\n"
                   "tell(setattr, c, '__class__', cowl.Block)\n"
                   "tell(setattr, cowl.Cloud, 'points', 5)\ntell(delattr, cowl.Cloud, 'points')\n"
                   "tell(setattr, cowl.Cloud, '__bases__', (cowl.Block,))\n"
                   "tell(c.__init__)\nprint(c, c.points.shape)\n"),
            "TypeError\nTypeError\nTypeError\nTypeError\nTypeError\nTypeError\n"
            "<cowl.Cloud 'in', 3000 points> (3000, 3)\n");
}

TEST_F(ScriptPoints, NothingIsAskedOfWhatIsNoObjectOfItsClass) {
  // All that the classes define themselves; None for each value that is wanted.
  const std::string text =
      output(std::string(kTryEach) +
             "for k in kinds:\n"
             "    for name, value in vars(k).items():\n"
             "        calls = [getattr(value, 'fget', None), getattr(value, 'fset', None)]\n"
             "        calls += [value] if callable(value) else []\n"
             "        for call in calls:\n"
             "            if call is None: continue\n"
             "            for wrong in (None, 5, object(), cowl):\n"
             "                for values in ((), (None,), (None, None)):\n"
             "                    try: call(wrong, *values)\n"
             "                    except TypeError: continue\n"
             "                    print('taken', k, name, wrong, values)\n"
             "print('end')\n");
  EXPECT_EQ(text, "end\n");
}

TEST_F(ScriptPoints, TheModuleIsTheSameHoweverOftenItIsImported) {
  EXPECT_EQ(output("import importlib, sys\nc = cowl.document[0]\nimportlib.reload(cowl)\n"
                   "print(cowl.document[0].name)\ndel sys.modules['cowl']\nimport cowl as again\n"
                   "print(again is cowl, isinstance(c, again.Cloud), again.Error is cowl.Error)\n"
                   "try: again.thin(-1)\nexcept again.Error: print('error')\n"),
            "in\nFalse True True\nerror\n");
  EXPECT_TRUE(holds(errors("try: import _interpreters as others\n"
                           "except ImportError: import _xxsubinterpreters as others\n"
                           "others.run_string(others.create(), 'import cowl')\n"),
                    "the module cowl is for the main interpreter alone"));
}

TEST_F(ScriptPoints, ArraysOfEveryTypeAndFormAreTakenRightOrRefused) {
  EXPECT_EQ(output(std::string(kTryEach) +
                   "n = len(c)\n"
                   "for of in ('points', 'colors', 'selection'):\n"
                   "    told = []\n"
                   "    for kind in 'f2 f4 >f8 g i1 u8 ? O V8'.split():\n"
                   "        values = numpy.zeros(n if of == 'selection' else (n, 3), kind)\n"
                   "        try: setattr(c, of, values)\n"
                   "        except (TypeError, ValueError): told.append(kind)\n"
                   "    print(of, numpy.count_nonzero(getattr(c, of)), *told)\n"
                   "rows = numpy.arange(6 * n, dtype='f8').reshape(2 * n, 3)[::-2]\n"
                   "rows.flags.writeable = False\n"
                   "c.points = rows\nprint(numpy.array_equal(c.points, rows))\n"
                   "c.points = rows.T.copy().T\nprint(numpy.array_equal(c.points, rows))\n"
                   "c.colors = numpy.broadcast_to(numpy.uint8(3), (n, 3))\nprint(c.colors[n - 1])\n"
                   "c.selection = numpy.frombuffer(bytes([0, 255, 2]) * (n // 3), bool)\n"
                   "print(c.selected_count)\n"),
            "points 0 V8\ncolors 0 V8\nselection 0\nTrue\nTrue\n[3 3 3]\n2000\n");
}

TEST_F(ScriptPoints, AValueThatChangesTheDocumentWhileItIsTakenDoesNoHarm) {
  EXPECT_EQ(
      output("import numpy\nc = cowl.document[0]\n"
             "class Rows:\n"
             "    def __array__(self, *_, **__): cowl.thin(5); return numpy.zeros((3000, 3))\n"
             "for of in ('points', 'colors'):\n"
             "    try: setattr(c, of, Rows())\n"
             "    except ValueError as error: print(error)\n"
             "cowl.open('in.xyz')\ngone = cowl.document[1]\n"
             "class Number:\n"
             "    def __float__(self): cowl.merge(); return 1.0\n"
             "print(cowl.translate(cloud=gone, by=(Number(), 0, 0)), len(cowl.document))\n"
             "print(len(gone), gone.points.shape, gone.selection.shape, gone.selected_count)\n"
             "class Deeper:\n"
             "    def __float__(self): return cowl.thin(Deeper())\n"
             "try: cowl.thin(Deeper())\nexcept RecursionError: print('too deep')\n"),
      "the array has another shape than the cloud, which has 5 points\n"
      "the array has another shape than the cloud, which has 5 points\n"
      "None 1\n3000 (3000, 3) (3000,) 0\ntoo deep\n");
}

TEST_F(ScriptPoints, ThreadsOfAScriptTakeTurns) {
  EXPECT_EQ(output("import numpy, sys, threading\nc = cowl.document[0]\n"
                   "def change(work):\n"
                   "    for _ in range(30):\n"
                   "        try: work()\n"
                   "        except ValueError: pass  # another shape, by now\n"
                   "def grow(): cowl.open('in.xyz'); cowl.merge(); cowl.thin(3000)\n"
                   "def move(): c.points = numpy.zeros((len(c), 3))\n"
                   "def paint(): c.colors = None; c.colors = numpy.zeros((len(c), 3), 'u1')\n"
                   "def look(): c.selection; [b.points.sum() for b in c.blocks()]\n"
                   "sys.setswitchinterval(1e-6)\n"
                   "all = [threading.Thread(target=change, args=(work,))\n"
                   "       for work in (grow, move, paint, look)]\n"
                   "for each in all: each.start()\n"
                   "for each in all: each.join()\n"
                   "print(len(cowl.document), cowl.thin(3000)['after'])\n"),
            "1 3000\n");
}

// The interrupt of somebody at the terminal, `delay` seconds from now.
std::string interruptIn(const std::string& delay) {
  return "import os, subprocess\nsubprocess.Popen(['sh', '-c', 'sleep " + delay +
         "; kill -INT ' + str(os.getpid())])\n";
}

TEST_F(ScriptPoints, AnInterruptStopsACommandAndNoPointIsLost) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += std::to_string(i * 7919 % 100003) + " 0 0\n";
  folder_.write("in.xyz", text);
  const auto result = run(
      interruptIn("0.2") + "while True:\n    cowl.sort('x')\n    cowl.sort('x', descending=True)\n",
      {"-output", "out.xyz"});
  EXPECT_TRUE(holds(result.errors, "KeyboardInterrupt"));
  std::istringstream lines(folder_.read("out.xyz"));
  std::set<std::string> points;
  for (std::string line; std::getline(lines, line);) points.insert(line);
  EXPECT_EQ(points.size(), 100000u);
}

TEST_F(ScriptPoints, AnInterruptStopsTheReadingAndTheWritingOfFiles) {
  std::string text;
  for (int i = 0; i < 300000; ++i) text += std::to_string(i) + ".125 0.25 0.5\n";
  folder_.write("large.xyz", text);
  const auto reading = run(interruptIn("0.3") + "while True: cowl.open('large.xyz')\n");
  EXPECT_TRUE(holds(reading.errors, "KeyboardInterrupt"));
  const auto writing =
      run("cowl.open('large.xyz')\n" + interruptIn("0.3") + "while True: cowl.save('out.ply')\n");
  EXPECT_TRUE(holds(writing.errors, "KeyboardInterrupt"));
}

TEST_F(ScriptPoints, NoCodeOfAScriptRunsWithinACommand) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += std::to_string(i * 7919 % 200003) + " 0 0\n";
  folder_.write("in.xyz", text);
  // The handler sees the points as the command leaves them.
  EXPECT_EQ(output("import numpy, signal\nseen = []\n"
                   "def late(*_):\n"
                   "    seen.append(numpy.all(numpy.diff(cowl.document[0].points[:, 0]) > 0))\n"
                   "    cowl.thin(10)\n"
                   "signal.signal(signal.SIGVTALRM, late)\n"
                   "signal.setitimer(signal.ITIMER_VIRTUAL, 0.005)\n"
                   "cowl.sort('x')\nwhile not seen: pass\n"
                   "print(seen, len(cowl.document[0]))\n"),
            "[True] 10\n");
}

TEST_F(ScriptPoints, AHandlerThatTakesTheInterruptLeavesACommandStopped) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += std::to_string(i * 7919 % 200003) + " 0 0\n";
  folder_.write("in.xyz", text);
  EXPECT_EQ(output("import signal\nseen = []\n"
                   "signal.signal(signal.SIGINT, lambda *_: seen.append(1))\n" +
                   interruptIn("0.2") +
                   "try:\n    while not seen: cowl.sort('yx')\n"
                   "except cowl.Cancelled: pass\n"
                   "print(seen, cowl.info()['points'])\n"),
            "[1] 200000\n");
}

TEST_F(ScriptPoints, EveryFormatKeepsTheWorkOfAScript) {
  EXPECT_EQ(output("import numpy\ncowl.thin(100)\nwanted = cowl.document[0].points.copy()\n"
                   "for name in ('a.ply', 'a.las', 'a.pcd', 'a.cwl', 'a.xyz'):\n"
                   "    cowl.save(name)\n"
                   "    before = len(cowl.document)\n"
                   "    cowl.open(name)\n"
                   "    cloud = cowl.document[-1]\n"
                   "    print(name, numpy.array_equal(cloud.points, wanted), cloud.colors[99])\n"
                   "    cowl.merge()\n    cowl.deduplicate()\n"),
            "a.ply True [154  10  20]\na.las True [154  10  20]\na.pcd True [154  10  20]\n"
            "a.cwl True [154  10  20]\na.xyz True [154  10  20]\n");
}

TEST_F(ScriptPoints, AThreadThatIsLeftRunningStandsStillWhileTheFileIsSaved) {
  const auto result =
      run("import threading\n"
          "def work():\n    while True:\n        cowl.sort('x', descending=True)\n"
          "        print('tick')\n"
          "threading.Thread(target=work, daemon=True).start()\n"
          "import time\ntime.sleep(0.1)\n",
          {"-output", "out.xyz", "-logfile", "stdout"});
  const size_t save = result.output.find("<start cmd=\"Save File\"/>");
  ASSERT_NE(save, std::string::npos) << result.output.substr(0, 500);
  EXPECT_NE(result.output.find("tick\n"), std::string::npos);
  EXPECT_EQ(result.output.find("tick", save), std::string::npos);
  EXPECT_EQ(result.exitCode, 1);
}

TEST_F(ScriptPoints, SavesAndOpensAgain) {
  EXPECT_EQ(
      output("import pathlib\ncowl.thin(3)\ncowl.save('a.xyz')\n"
             "print(cowl.open(pathlib.Path('a.xyz')))\nprint([c.name for c in cowl.document])\n"),
      "{'points': 3}\n['in', 'a']\n");
  EXPECT_EQ(folder_.read("a.xyz"),
            "0.0 0.0 0.5 0 10 20\n1000.0 6.0 0.5 232 10 20\n2000.0 5.0 0.5 208 10 20\n");
  EXPECT_TRUE(holds(errors("cowl.save('a.nonsense')\n"),
                    "cowl.Error: The type of the file a.nonsense cannot be saved\n"));
  EXPECT_TRUE(holds(errors("cowl.save('absent/a.xyz')\n"),
                    "cowl.Error: Cannot write the file absent/a.xyz: "));
  EXPECT_TRUE(holds(errors("cowl.snapshot('absent/a.png')\n"),
                    "cowl.Error: The picture absent/a.png cannot be made in its folder: "));
}

}  // namespace

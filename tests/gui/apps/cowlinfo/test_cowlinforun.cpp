// The program cowlinfo as it is staged.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/productcopy.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::ChildResult;
using tests::plainLines;

class CowlinfoRun : public testing::Test {
 protected:
  ChildResult run(const std::vector<std::string>& arguments) {
    const ChildResult result = tests::runChild(
        {tests::stageDir() / tests::programFileName("cowlinfo"), arguments, {}, folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return {result.started, result.timedOut, result.exitCode, plainLines(result.output),
            plainLines(result.errors)};
  }

  tests::TempFolder folder_;
};

TEST_F(CowlinfoRun, HelpAndVersion) {
  const ChildResult help = run({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  for (const char* text :
       {"Usage:", "--points", "--model", "--settings", "--description", "--version", "Status: 0"}) {
    EXPECT_THAT(help.output, HasSubstr(text));
  }
  EXPECT_EQ(run({"--version"}).output, "cowlinfo " COWL_EXPECTED_VERSION "\n");
}

TEST_F(CowlinfoRun, BadOptionsAreRefused) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{},
        {"--nonsense", "x"},
        {"-x"},
        {"--points"},
        {(tests::stageDir() / "cowl.description").string(), "x"}}) {
    const ChildResult result = run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.rfind("cowlinfo: ", 0), 0u) << result.errors;
  }
}

TEST_F(CowlinfoRun, APointFile) {
  folder_.write("in.xyz", "1 2 3 10 20 30\n-4 5.5 6 10 20 30\n");
  const ChildResult result = run({"in.xyz"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, testing::StartsWith("in.xyz: "));
  EXPECT_THAT(result.output, HasSubstr("\n  \"in\": 2 points\n"
                                       "    bounds (-4, 2, 3) to (1, 5.5, 6)\n"
                                       "    attributes position, colour\n"));
}

TEST_F(CowlinfoRun, SeveralPointFilesAreLookedAtOneByOne) {
  folder_.write("a.xyz", "1 2 3\n");
  folder_.write("b.xyz", "4 5 6\n7 8 9\n");
  const ChildResult result = run({"a.xyz", "b.xyz"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("\"a\": 1 point\n"));
  EXPECT_THAT(result.output, HasSubstr("\"b\": 2 points\n"));
  EXPECT_EQ(result.output.find("\"a\"", result.output.find("\"b\"")), std::string::npos);
}

TEST_F(CowlinfoRun, ADamagedPointFileIsSaidWithItsLine) {
  folder_.write("in.xyz", "1 2 3\n1 2\n");
  const ChildResult result = run({"in.xyz"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, HasSubstr("line 2: a point needs three coordinates"));
  EXPECT_EQ(run({"absent.xyz"}).exitCode, 2);
  EXPECT_EQ(run({"--points", "."}).exitCode, 2);
}

TEST_F(CowlinfoRun, AModelFile) {
  folder_.write("m.dat", std::string("KEL\0\0\0\0\x11\x01\0\x03\0\0\0\0\x09"
                                     "a",
                                     17));
  const ChildResult result = run({"m.dat"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output,
            "m.dat: model file, version 0, 17 bytes\n  0x010003 text, version 0, 1 byte: \"a\"\n");
  EXPECT_EQ(run({"--model", "absent"}).exitCode, 2);
}

TEST_F(CowlinfoRun, WhatTheApplicationSavesInEachFormatIsKnown) {
  folder_.write("in.xyz", "1 2 3 10 20 30\n-4 5.5 6 10 20 30\n");
  for (const char* extension : {"txt", "ply", "las", "pcd", "cwl"}) {
    const std::string file = std::string("out.") + extension;
    tests::runChild(
        {tests::cowlProgram(), {"-input", "in.xyz", "-output", file}, {}, folder_.path()});
    const ChildResult result = run({"--points", file});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_THAT(result.output, Not(testing::StartsWith(file + ": points\n"))) << "has a name";
    EXPECT_THAT(result.output, HasSubstr(": 2 points\n    bounds (-4, 2, 3) to (1, 5.5, 6)\n"));
    EXPECT_THAT(result.output, HasSubstr("colour"));
  }
}

TEST_F(CowlinfoRun, ANativeDocumentIsATreeUnlessItIsAskedForAsPoints) {
  folder_.write("in.xyz", "1 2 3 10 20 30\n");
  tests::runChild(
      {tests::cowlProgram(), {"-input", "in.xyz", "-output", "out.cwl"}, {}, folder_.path()});
  const ChildResult tree = run({"out.cwl"});
  EXPECT_EQ(tree.exitCode, 0) << tree.errors;
  EXPECT_THAT(tree.output, HasSubstr("out.cwl: model file, version 1, "));
  EXPECT_THAT(tree.output, HasSubstr("\n  0x435701 document, version 1, 4 bytes\n"));
  EXPECT_THAT(tree.output, HasSubstr("{9B0E0F52-2C1D-4A77-8E31-64D05A7C1B90}"));
  EXPECT_THAT(tree.output, HasSubstr(": \"in\"\n"));
  for (const char* name : {" form, ", " scale, ", " colours, ", " points, "}) {
    EXPECT_THAT(tree.output, HasSubstr(name));
  }
  const std::string bytes = folder_.read("out.cwl");
  for (size_t size : {size_t{0}, size_t{7}, bytes.size() / 2, bytes.size() - 1}) {
    folder_.write("cut.cwl", bytes.substr(0, size));
    EXPECT_EQ(run({"--model", "cut.cwl"}).exitCode, 2) << size;
    EXPECT_EQ(run({"--points", "cut.cwl"}).exitCode, 2) << size;
  }
}

constexpr const char* kDocument =
    "<?xml version=\"1.0\"?>\n<OroDataStore><section name=\"GUI\">"
    "<value name=\"Width\" type=\"integer\">12</value>"
    "<value name=\"Title\" type=\"text_unicode\">A</value></section></OroDataStore>\n";

TEST_F(CowlinfoRun, ASettingsDocumentWithItsJournal) {
  folder_.write("a.iniml", kDocument);
  EXPECT_EQ(run({"a.iniml"}).output,
            "a.iniml: settings document, 2 values\n"
            "  GUI/Title = A (text_unicode; document, layer 1)\n"
            "  GUI/Width = 12 (integer; document, layer 1)\n");
  const std::string journal =
      "<section name=\"GUI\"><value name=\"Width\" type=\"integer\">13</value></section>\n";
  folder_.write("a.iniml.changes", journal);
  const ChildResult result = run({"a.iniml"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output,
            "a.iniml: settings document, 2 values, 1 of them from the journal\n"
            "  GUI/Title = A (text_unicode; document, layer 1)\n"
            "  GUI/Width = 13 (integer; journal)\n");
  EXPECT_EQ(folder_.read("a.iniml"), kDocument) << "nothing is merged";
  EXPECT_EQ(folder_.read("a.iniml.changes"), journal);
}

TEST_F(CowlinfoRun, ADamagedSettingsDocumentOrJournalIsSaid) {
  folder_.write("a.iniml", "<OroDataStore><section");
  EXPECT_EQ(run({"a.iniml"}).exitCode, 2);
  EXPECT_NE(run({"a.iniml"}).errors, "");
  folder_.write("b.iniml", kDocument);
  folder_.write("b.iniml.changes", "<nonsense");
  const ChildResult result = run({"b.iniml"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.output, HasSubstr("GUI/Width = 12"));
  EXPECT_THAT(result.errors, HasSubstr("b.iniml.changes cannot be merged"));
}

// "{...}" as "{}" and "in 1.2 ms" as "in ms".
std::string withoutIdsAndTimes(const std::string& text) {
  std::string out;
  for (size_t at = 0; at < text.size(); ++at) {
    const bool inTime =
        text.compare(at, 3, "in ") == 0 && text.find(" ms\n", at) == text.find('\n', at) - 3;
    out += text[at];
    if (text[at] == '{') at = text.find('}', at) - 1;
    if (inTime) {
      out += "n ms";
      at = text.find(" ms\n", at) + 2;
    }
  }
  return out;
}

TEST_F(CowlinfoRun, TheDescriptionOfTheProductIsAllRight) {
  const ChildResult result = run({(tests::stageDir() / "cowl.description").string()});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  const std::string text = withoutIdsAndTimes(result.output);
  EXPECT_THAT(text, HasSubstr("\n  component points \"Point documents\" {}: loaded in ms\n"));
  EXPECT_THAT(text, HasSubstr("{}: built in\n"));
  EXPECT_THAT(text, HasSubstr("\n    class PointDocument {}, shared\n      interface IOroDoc\n"));
}

TEST_F(CowlinfoRun, EachThingThatIsWrongWithADescriptionIsSaid) {
  const tests::ProductCopy product;
  product.replaceLibrary("points", "fw_version99");
  product.replaceLibrary("xmldom", "fw_noentry");
  product.removeLibrary("batch");
  product.changeDescription("default ICmdLine", "default ICmdLine\ndefault INonsense");
  product.changeDescription("class ExitService", "class ExitServant");
  product.changeDescription(
      "class RunOutcome", "class Nobody {00000000-1111-2222-3333-444444444444}\nclass RunOutcome");
  const ChildResult result = product.run("cowlinfo", {"cowl.description"}, product.folder());
  EXPECT_EQ(result.exitCode, 3);
  for (const char* text :
       {"component points: the version of the entry point is 99, not 100",
        "component xmldom: the library has no entry point",
        "component batch: the library, or one that it needs, cannot be loaded",
        "component commandline: the class CommandLine does not have the interface INonsense",
        "component commandline: the object of the class ExitServant calls itself ExitService",
        "component commandline: it gives no object of the class Nobody (status 0)"}) {
    EXPECT_THAT(result.errors, HasSubstr(text));
  }
  EXPECT_THAT(result.output, HasSubstr("component commandline"));
}

TEST_F(CowlinfoRun, ALibraryThatHasLostItsEndIsToldAndTheOthersFollow) {
  for (const std::uintmax_t size : {0, 64, 4096, 200000}) {
    const tests::ProductCopy product;
    product.cutLibrary("points", size);
    const ChildResult result = product.run("cowlinfo", {"cowl.description"}, product.folder());
    EXPECT_EQ(result.exitCode, 3) << size;
    EXPECT_THAT(result.errors,
                HasSubstr("component points: the library, or one that it needs, cannot be loaded"));
    EXPECT_THAT(plainLines(result.output), HasSubstr(": not loaded\n"));
    EXPECT_THAT(result.output, HasSubstr("component xmldom"));
    folder_.write("in.xyz", "1 2 3\n");
    const ChildResult points = product.run("cowlinfo", {"in.xyz", "in.xyz"}, folder_.path());
    EXPECT_EQ(points.exitCode, 2);
    const size_t first = points.errors.find("Could not load this DLL");
    EXPECT_NE(first, std::string::npos) << points.errors;
    EXPECT_EQ(points.errors.find("Could not load this DLL", first + 1), std::string::npos);
    EXPECT_THAT(points.errors, HasSubstr("there is no component that opens point files"));
  }
}

TEST_F(CowlinfoRun, WhatIsNoFileIsSaid) {
  std::filesystem::create_directory(folder_.file("folder.xyz"));
  folder_.write("in.xyz", "1 2 3\n");
  for (const char* kind : {"--points", "--model", "--settings", "--description"}) {
    const ChildResult absent = run({kind, "absent.xyz"});
    EXPECT_EQ(absent.exitCode, 2) << kind;
    EXPECT_EQ(absent.errors, "cowlinfo: absent.xyz: not found\n") << kind;
    EXPECT_EQ(absent.output, "");
    EXPECT_EQ(run({kind, "."}).errors, "cowlinfo: .: is a directory\n") << kind;
  }
  EXPECT_EQ(run({"absent"}).errors, "cowlinfo: absent: not found\n");
  EXPECT_EQ(run({"."}).errors, "cowlinfo: .: is a directory\n");
  const ChildResult some = run({"absent.xyz", "in.xyz", "folder.xyz"});
  EXPECT_EQ(some.exitCode, 2);
  EXPECT_EQ(some.errors, "cowlinfo: absent.xyz: not found\ncowlinfo: folder.xyz: is a directory\n");
  EXPECT_THAT(some.output, HasSubstr("\"in\": 1 point\n"));
}

TEST_F(CowlinfoRun, NothingIsMadeBesideTheFile) {
  folder_.write("in.xyz", "1 2 3\n");
  EXPECT_EQ(run({"in.xyz"}).exitCode, 0);
  const std::filesystem::directory_iterator entries(folder_.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(CowlinfoRun, ADamagedDescriptionIsSaidWithItsLine) {
  folder_.write("a.description", "cowl-application 1\nnonsense\n");
  const ChildResult result = run({"a.description"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, HasSubstr("line 2: "));
  EXPECT_THAT(result.errors, HasSubstr("nonsense"));
  EXPECT_EQ(run({"--description", "absent"}).exitCode, 2);
}

TEST_F(CowlinfoRun, FilesOfAnyBytesEndInAClearError) {
  std::string bytes(50000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 2654435761u >> 13);
  folder_.write("noise", bytes);
  for (const char* kind : {"--points", "--model", "--settings", "--description"}) {
    const ChildResult result = run({kind, "noise"});
    EXPECT_EQ(result.exitCode, 2) << kind;
    EXPECT_NE(result.errors, "") << kind;
  }
}

TEST_F(CowlinfoRun, NamesBeyondAsciiAndNamesLikeOptions) {
  folder_.write(std::filesystem::path(u"\u00E9.xyz"), "1 2 3\n");
  const ChildResult result = run({"\xC3\xA9.xyz"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("\xC3\xA9.xyz: "));
  folder_.write("-a.xyz", "1 2 3\n");
  EXPECT_EQ(run({"--", "-a.xyz"}).exitCode, 0);
}

}  // namespace

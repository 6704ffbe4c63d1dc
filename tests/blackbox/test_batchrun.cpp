// The real executable on a directory of point files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::ChildResult;
using tests::plainLines;

class BatchRun : public testing::Test {
 protected:
  BatchRun() {
    fs::create_directory(folder_.file("in"));
    for (const char* name : {"b10", "b9", "a"}) file(name, std::string("1 2 3 ") + "0 0 0\n");
  }

  void file(const std::string& stem, const std::string& text) {
    folder_.write("in/" + stem + ".xyz", text);
  }
  ChildResult run(std::vector<std::string> more) {
    std::vector<std::string> arguments = {"-batch", "-inputDir", "in", "-outputDir", "out"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path()});
  }
  std::vector<std::string> saved() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.file("out"))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  tests::TempFolder folder_;
};

TEST_F(BatchRun, SavesEachFileAndSaysSo) {
  const ChildResult result = run({});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(plainLines(result.output), "Batch of 3 files: 3 saved, 0 failed\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(saved(), ElementsAre("a.xyz", "b10.xyz", "b9.xyz"));
  EXPECT_EQ(folder_.read("out/b9.xyz"), "1 2 3 0 0 0\n");
}

TEST_F(BatchRun, EachFileIsSavedWithItsOwnPointsAlone) {
  file("a", "7 8 9\n");
  file("b9", "10 11 12\n13 14 15\n");
  run({});
  EXPECT_EQ(folder_.read("out/a.xyz"), "7 8 9\n");
  EXPECT_EQ(folder_.read("out/b9.xyz"), "10 11 12\n13 14 15\n");
  EXPECT_EQ(folder_.read("out/b10.xyz"), "1 2 3 0 0 0\n");
}

TEST_F(BatchRun, RecordsFilesInNaturalOrderAndThePercentOfAll) {
  const ChildResult result = run({"-logfile", "stdout"});
  std::string all = plainLines(result.output);
  std::string some;
  for (size_t at = 0; at < all.size();) {
    const size_t end = all.find('\n', at) + 1;
    const std::string line = all.substr(at, end - at);
    if (line.find("Reading") == line.npos && line.find("Writing") == line.npos &&
        line.find("100") == line.npos) {
      some += line;
    }
    at = end;
  }
  const auto fileRecords = [](const std::string& title, const std::string& percent) {
    return "<start action=\"" + title +
           "\"/>\n<start cmd=\"Open File\"/>\n<stop cmd=\"Open File\"/>\n"
           "<start cmd=\"Save File\"/>\n<stop cmd=\"Save File\"/>\n<stop action=\"" +
           title + "\"/>\n" + percent;
  };
  EXPECT_EQ(some, "<log>\n<start action=\"Batch of 3 files\"/>\n" +
                      fileRecords("File 1 of 3: a.xyz", " <prog done=\"33\"/>\n") +
                      fileRecords("File 2 of 3: b9.xyz", " <prog done=\"66\"/>\n") +
                      fileRecords("File 3 of 3: b10.xyz", "") +
                      "<set action=\"Batch of 3 files: 3 saved, 0 failed\"/>\n"
                      "<stop action=\"Batch of 3 files: 3 saved, 0 failed\"/>\n"
                      "<set action=\"Outcome: success\"/>\n</log>\n");
}

TEST_F(BatchRun, AFileThatFailsIsReportedAndTheRestGoOn) {
  file("b9", "1 2\n");
  folder_.write("in/notes.md", "not a point file");
  const ChildResult result = run({"-exitstatus"});
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_EQ(plainLines(result.output),
            "Batch of 4 files: 2 saved, 2 failed\n"
            "  b9.xyz: not opened: line 1: a point needs three coordinates\n"
            "  notes.md: not opened: The type of the file " +
                fs::path("in/notes.md").make_preferred().string() + " is not known\n");
  EXPECT_THAT(saved(), ElementsAre("a.xyz", "b10.xyz"));
  const ChildResult again = run({"-logfile", "stdout"});
  EXPECT_THAT(again.output, HasSubstr("b9.xyz, line 1: a point needs three coordinates"));
  EXPECT_THAT(again.output, HasSubstr("Outcome: open failed"));
}

TEST_F(BatchRun, NamesGetPrefixPostfixDateAndTime) {
  run({"-prefix", "new-", "-postfix", "-clean", "-dt", "3"});
  ASSERT_EQ(saved().size(), 3u);
  EXPECT_THAT(saved()[0], testing::MatchesRegex("new-a-clean_........_......\\.xyz"));
}

TEST_F(BatchRun, NothingThatIsThereIsOverwritten) {
  run({});
  folder_.write("out/a.xyz", "kept");
  const ChildResult result = run({"-logfile", "stdout"});
  EXPECT_THAT(result.output,
              HasSubstr("<Warning=\"There is a file a.xyz already, so a_2.xyz is written\"/>"));
  EXPECT_EQ(folder_.read("out/a.xyz"), "kept");
  EXPECT_EQ(saved().size(), 6u);
}

TEST_F(BatchRun, TheInputDirectoryMayBeTheOutputDirectory) {
  tests::runChild({tests::cowlProgram(),
                   {"-batch", "-inputDir", "in", "-outputDir", "in", "-prefix", "b"},
                   {},
                   folder_.path()});
  EXPECT_TRUE(fs::exists(folder_.file("in/ba.xyz")));
  EXPECT_TRUE(fs::exists(folder_.file("in/bb9.xyz")));
  EXPECT_FALSE(fs::exists(folder_.file("in/bba.xyz"))) << "what the batch made is no input of it";
}

TEST_F(BatchRun, ADirectoryThatIsNotThereIsAnErrorAndNothingIsMade) {
  const ChildResult result =
      tests::runChild({tests::cowlProgram(),
                       {"-batch", "-inputDir", "absent", "-outputDir", "out", "-logfile", "stdout"},
                       {},
                       folder_.path()});
  EXPECT_THAT(result.output, HasSubstr("<Error=\"There is no directory absent\"/>"));
  EXPECT_FALSE(fs::exists(folder_.file("out")));
}

TEST_F(BatchRun, NamesBeyondAsciiComeThrough) {
  folder_.write(fs::path(u"in/\u00E9t\u00E9.xyz"), "1 2 3\n");
  run({"-prefix", "\xC3\xA0"});
  EXPECT_EQ(folder_.read(fs::path(u"out/\u00E0\u00E9t\u00E9.xyz")), "1 2 3\n");
}

TEST_F(BatchRun, ASettingsDocumentAloneCanDriveABatch) {
  folder_.write("batch.iniml",
                "<OroDataStore><section name=\"Advanced\"><section name=\"Batch Processing\">"
                "<value name=\"Enabled\" type=\"integer\">1</value>"
                "<value name=\"Input Directory\" type=\"text_unicode\">in</value>"
                "<value name=\"Output Directory\" type=\"text_unicode\">out</value>"
                "<value name=\"Prefix\" type=\"text_unicode\">p</value>"
                "</section></section></OroDataStore>");
  const ChildResult result =
      tests::runChild({tests::cowlProgram(), {"-inifile=batch.iniml"}, {}, folder_.path()});
  EXPECT_THAT(saved(), ElementsAre("pa.xyz", "pb10.xyz", "pb9.xyz"));
  EXPECT_EQ(plainLines(result.output), "Batch of 3 files: 3 saved, 0 failed\n");
}

}  // namespace

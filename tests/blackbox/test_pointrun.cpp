// The real executable with its shipped libraries: point files in, point files and records out.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/blackbox/pipereader.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kSurveyedPoints =
    "637177.98 849393.95 411.19 84 102 93\n637177.30 849396.95 411.25 82 98 90\n";

class PointRun : public testing::Test {
 protected:
  // Runs in the test's folder, which holds nothing but what the test and the run put there.
  tests::ChildResult run(const std::vector<std::string>& arguments) {
    const tests::ChildResult result = tests::runChild({program_, arguments, {}, folder_.path()});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timedOut);
    return result;
  }

  // From now on the executable is a copy whose libraries may be taken away.
  fs::path copyProduct() {
    const fs::path copy = folder_.file("product");
    fs::copy(tests::stageDir(), copy, fs::copy_options::recursive);
    program_ = copy / tests::cowlProgram().filename();
    return copy;
  }

  void removeLibrary(const fs::path& product, const std::string& stem) {
    for (const char* suffix : {".so", ".dll"}) fs::remove(product / (stem + suffix));
  }

  std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      all.push_back(entry.path().filename().string());
    }
    std::sort(all.begin(), all.end());
    return all;
  }

  tests::TempFolder folder_;
  fs::path program_ = tests::cowlProgram();
};

constexpr const char* kRecords =
    "<log>\n"
    "<start cmd=\"Open File\"/>\n"
    "<start action=\"Reading points\"/>\n"
    " <prog done=\"100\"/>\n"
    "<stop action=\"Reading points\"/>\n"
    "<stop cmd=\"Open File\"/>\n"
    "<start cmd=\"Save File\"/>\n"
    "<start action=\"Writing points\"/>\n"
    " <prog done=\"100\"/>\n"
    "<stop action=\"Writing points\"/>\n"
    "<stop cmd=\"Save File\"/>\n"
    "<set action=\"Outcome: success\"/>\n"
    "</log>\n";

TEST_F(PointRun, OpensAndSavesAndRecordsItOnStandardOutput) {
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", "stdout"});
  EXPECT_EQ(tests::plainLines(result.output), kRecords);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(folder_.read("out.xyz"), kSurveyedPoints);
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz", "out.xyz"}));
}

TEST_F(PointRun, ASettingsDocumentChoosesTheFormOfWhatIsSaved) {
  folder_.write("in.xyz", "1.5 2 3\n");
  folder_.write("own.iniml",
                "<OroDataStore><section name=\"Points\">"
                "<value name=\"Decimals\" type=\"integer\">3</value>"
                "<value name=\"PlyForm\" type=\"integer\">0</value></section></OroDataStore>");
  const auto result = run({"-inifile=own.iniml", "-input", "in.xyz", "-output", "out.ply"});
  EXPECT_EQ(result.errors, "");
  const std::string saved = folder_.read("out.ply");
  EXPECT_NE(saved.find("end_header\n1.500 2.000 3.000\n"), saved.npos) << saved;
}

TEST_F(PointRun, RecordsOnStandardErrorInAFileAndInAPipe) {
  folder_.write("in.xyz", kSurveyedPoints);
  const std::vector<std::string> job = {"-input", "in.xyz", "-output", "out.xyz", "-logfile"};
  auto with = [&](const std::string& log) {
    std::vector<std::string> arguments = job;
    arguments.push_back(log);
    return run(arguments);
  };
  const auto errors = with("stderr");
  EXPECT_EQ(tests::plainLines(errors.errors), kRecords);
  EXPECT_EQ(errors.output, "");

  with("Stdout");
  EXPECT_EQ(tests::plainLines(folder_.read("Stdout")), kRecords);

  tests::PipeReader pipe("pointrun");
  with(pipe.setting());
  EXPECT_EQ(pipe.readAll(),
            u"<log>\n<start cmd=\"Open File\">\n<start action=\"Reading points\">\n"
            u" <prog done=\"100\"/>\n<stop action=\"Reading points\">\n<stop cmd=\"Open File\">\n"
            u"<start cmd=\"Save File\">\n<start action=\"Writing points\">\n"
            u" <prog done=\"100\"/>\n<stop action=\"Writing points\">\n<stop cmd=\"Save File\">\n"
            u"<set action=\"Outcome: success\">\n</log>\n");
}

TEST_F(PointRun, ALargeFileComesOutAsItWentIn) {
  std::string text;
  for (int i = 0; i < 50000; ++i) {
    text += std::to_string(i) + ".50 " + std::to_string(-i) + ".25 1.00 1 2 3\n";
  }
  folder_.write("in.xyz", text);
  run({"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_EQ(folder_.read("out.xyz"), text);
}

TEST_F(PointRun, OpensNamesBeyondAscii) {
  const std::u16string in = u"\u00E9t\u00E9.xyz";
  folder_.write(fs::path(in), kSurveyedPoints);
  run({"-input", "\xC3\xA9t\xC3\xA9.xyz", "-output", "\xC3\xA0.xyz"});
  EXPECT_EQ(folder_.read(fs::path(u"\u00E0.xyz")), kSurveyedPoints);
}

TEST_F(PointRun, AnUnknownOptionIsNamedAndEndsWithZero) {
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-nonsense", "-logfile", "log"});
  EXPECT_EQ(tests::plainLines(result.errors), "ERROR:\nUnknown option: -nonsense\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz"}));
}

TEST_F(PointRun, AMissingValueIsNamed) {
  const auto result = run({"-input"});
  EXPECT_EQ(tests::plainLines(result.errors), "ERROR:\nThe option -input needs a value\n");
  EXPECT_EQ(result.exitCode, 0);
}

TEST_F(PointRun, AMissingInputIsAnErrorRecordAndLeavesTheOutputAlone) {
  folder_.write("out.xyz", "old");
  const auto result = run({"-input", "absent.xyz", "-output", "out.xyz", "-logfile", "stdout"});
  const std::string records = tests::plainLines(result.output);
  EXPECT_NE(records.find("<Error=\"Cannot open the file absent.xyz\"/>\n"), std::string::npos)
      << records;
  EXPECT_NE(records.find("</log>\n"), std::string::npos);
  EXPECT_EQ(folder_.read("out.xyz"), "old");
  EXPECT_EQ(result.exitCode, 1);
}

TEST_F(PointRun, ADamagedInputNamesItsLineAndSavesNothing) {
  folder_.write("in.xyz", std::string(kSurveyedPoints) + "637176.34 849400.84\n");
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", "stdout"});
  EXPECT_NE(tests::plainLines(result.output)
                .find("<Error=\"in.xyz, line 3: a point needs three coordinates\"/>\n"),
            std::string::npos)
      << result.output;
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz"}));
}

TEST_F(PointRun, ABinaryInputEndsInAnErrorAtOnce) {
  std::string bytes(300000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 2654435761u >> 13);
  folder_.write("in.xyz", bytes);
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", "stdout"});
  EXPECT_NE(result.output.find("<Error=\"in.xyz, line 1: "), std::string::npos) << result.output;
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz"}));
}

TEST_F(PointRun, AnOutputThatCannotBeWrittenIsAnErrorRecord) {
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "absent/out.xyz", "-logfile", "stdout"});
  EXPECT_NE(result.output.find("<Error=\"Cannot write the file absent"), std::string::npos)
      << result.output;
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz"}));
}

TEST_F(PointRun, AFileTypeThatIsNotKnownIsAnErrorRecord) {
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "out.png", "-logfile", "stdout"});
  EXPECT_NE(result.output.find("<Error=\"The type of the file out.png cannot be saved\"/>"),
            std::string::npos)
      << result.output;
  EXPECT_EQ(names(), (std::vector<std::string>{"in.xyz"}));
}

TEST_F(PointRun, AMissingLibraryIsReportedAndTheRunGoesOn) {
  removeLibrary(copyProduct(), "points");
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_NE(result.errors.find("Fatal error: Could not load this DLL: "), std::string::npos)
      << result.errors;
  EXPECT_NE(result.errors.find("points"), std::string::npos);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_FALSE(fs::exists(folder_.file("out.xyz")));
}

TEST_F(PointRun, WithoutTheCommandLineLibraryTheOptionsAreNotRead) {
  removeLibrary(copyProduct(), "commandline");
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_NE(result.errors.find("Fatal error: Could not load this DLL: "), std::string::npos);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_FALSE(fs::exists(folder_.file("out.xyz")));
}

TEST_F(PointRun, ARefusedCommandLineThatNobodyEndsIsAFailedAssertion) {
  const fs::path description = copyProduct() / "cowl.description";
  std::ifstream file(description, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  file.close();
  const std::string line = "default IExitService";
  const size_t place = text.find(line);
  ASSERT_NE(place, std::string::npos);
  std::ofstream(description, std::ios::binary) << text.erase(place, line.size());
  const auto result = run({"-nonsense"});
  EXPECT_EQ(tests::plainLines(result.errors).rfind("ERROR:\nUnknown option: -nonsense\n", 0), 0u)
      << result.errors;
  EXPECT_EQ(result.exitCode, 255);
}

TEST_F(PointRun, ADamagedDescriptionIsOneErrorWithItsLine) {
  const fs::path description = copyProduct() / "cowl.description";
  std::ofstream(description, std::ios::binary | std::ios::app) << "nonsense here\n";
  folder_.write("in.xyz", kSurveyedPoints);
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz", "-logfile", "stdout"});
  const std::string errors = tests::plainLines(result.errors);
  EXPECT_EQ(errors.rfind("ERROR:\n", 0), 0u) << errors;
  EXPECT_NE(errors.find("cowl.description, line "), std::string::npos) << errors;
  EXPECT_NE(errors.find(": the statement \"nonsense\" is unknown\n"), std::string::npos) << errors;
  EXPECT_EQ(errors.find("ERROR:", 1), std::string::npos) << errors;
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.exitCode, 1);
}

TEST_F(PointRun, AMissingDescriptionIsOneError) {
  fs::remove(copyProduct() / "cowl.description");
  const auto result = run({});
  EXPECT_NE(result.errors.find("Cannot read the application description "), std::string::npos)
      << result.errors;
  EXPECT_EQ(result.errors.find("ERROR:"), 0u);
  EXPECT_EQ(result.errors.find("ERROR:", 1), std::string::npos) << result.errors;
  EXPECT_EQ(result.exitCode, 1);
}

}  // namespace

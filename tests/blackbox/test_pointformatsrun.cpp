// The real executable on point files of every format: in one form and out in another, and back.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "components/points/formats/pointformats.h"
#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"
#include "tools/samplepoints.h"

namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class PointFormatsRun : public testing::Test {
 protected:
  // The records of a run; what it warned of and failed with stands in them.
  std::string run(const std::string& input, const std::string& output) {
    const tests::ChildResult result =
        tests::runChild({tests::cowlProgram(),
                         {"-input", input, "-output", output, "-logfile", "stdout"},
                         {},
                         folder_.path(),
                         300});
    EXPECT_TRUE(result.started && !result.timedOut);
    return tests::plainLines(result.output);
  }

  // Through each format and back to text: nothing is lost, and nothing said.
  void expectKeptByEveryFormat(const std::string& input, const std::string& text) {
    for (const PointFormat& format : pointFormats()) {
      for (const char* extension : format.extensions) {
        const std::string between = std::string("between.") + extension;
        const std::string there = run(input, between);
        EXPECT_EQ(there.find("<Warning="), std::string::npos) << there;
        EXPECT_EQ(there.find("<Error="), std::string::npos) << there;
        const std::string back = run(between, "back.xyz");
        EXPECT_EQ(back.find("<Warning="), std::string::npos) << back;
        EXPECT_EQ(back.find("<Error="), std::string::npos) << back;
        EXPECT_EQ(samePoints(folder_.read("back.xyz")), samePoints(text)) << input << between;
        fs::remove(folder_.file(between));
        fs::remove(folder_.file("back.xyz"));
      }
    }
  }

  // Without the zeros behind the point that some formats cannot tell of.
  static std::string samePoints(const std::string& text) {
    std::string all;
    size_t point = std::string::npos;
    for (const char c : text + " ") {
      if (c == ' ' || c == '\n') {
        while (point != std::string::npos && all.back() == '0') all.pop_back();
        if (point != std::string::npos && all.back() == '.') all.pop_back();
        point = std::string::npos;
      }
      if (c == '.') point = all.size();
      all += c;
    }
    return all;
  }

  tests::TempFolder folder_;
};

TEST_F(PointFormatsRun, AScanSurvivesEveryFormat) {
  const std::string text = samplepoints::lines(3000);
  folder_.write("sample.xyz", text);
  expectKeptByEveryFormat("sample.xyz", text);
}

// Real data that stands beside the source tree on some machines.
TEST_F(PointFormatsRun, RealDataSurvivesEveryFormat) {
  const fs::path data = tests::sourceDir().parent_path() / "shared" / "data";
  std::vector<std::string> names = {"autzen_thin.xyz", "autzen-thin.las", "autzen.xyz"};
  std::erase_if(names, [&](const std::string& name) { return !fs::exists(data / name); });
  if (names.empty()) std::cout << "No real data in " << data.string() << "; a sample instead\n";
  folder_.write("made.xyz", samplepoints::lines(10000));
  for (const std::string& name : names) fs::copy_file(data / name, folder_.file(name));
  names.emplace_back("made.xyz");
  for (const std::string& name : names) {
    run(name, "plain.xyz");
    const std::string text = folder_.read("plain.xyz");
    // The scan has the points of the text beside it.
    const bool isText = name.ends_with(".xyz");
    EXPECT_EQ(text, isText ? folder_.read(name) : bytesOf(data / "autzen_thin.xyz")) << name;
    expectKeptByEveryFormat("plain.xyz", text);
  }
}

TEST_F(PointFormatsRun, LossesAreWarningsInTheRecords) {
  folder_.write("in.ply",
                "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
                "property float z\nproperty float nx\nend_header\n0.1 2 3 4\n");
  const std::string records = run("in.ply", "out.xyz");
  EXPECT_NE(records.find("<Warning=\"The file in.ply holds data that is not kept: nx\"/>"),
            std::string::npos)
      << records;
  EXPECT_EQ(folder_.read("out.xyz"), "0.1 2 3\n");
}

TEST_F(PointFormatsRun, DamagedFilesAreErrorsWithTheirPlaceAndSaveNothing) {
  folder_.write("in.xyz", samplepoints::lines(100));
  for (const PointFormat& format : pointFormats()) {
    const std::string name = std::string("damaged.") + format.extensions[0];
    run("in.xyz", name);
    const std::string bytes = folder_.read(name);
    folder_.write(name, bytes.substr(0, bytes.size() - 10));
    const std::string records = run(name, "out.xyz");
    const bool isText = format.recognises == nullptr;
    EXPECT_NE(records.find("<Error=\"" + name + (isText ? ", line " : ", byte ")),
              std::string::npos)
        << records;
    EXPECT_FALSE(fs::exists(folder_.file("out.xyz"))) << name;
  }
}

}  // namespace

// The real executable on point files of every format: in one form and out in another, and back.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
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
  std::string run(const std::string& input, const std::string& output,
                  const std::string& script = {}) {
    std::vector<std::string> arguments = {"-input", input, "-output", output, "-logfile", "stdout"};
    if (!script.empty()) arguments.insert(arguments.end(), {"-script", script});
    const tests::ChildResult result =
        tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path(), 300});
    EXPECT_TRUE(result.started && !result.timedOut);
    return tests::plainLines(result.output);
  }
  // The same, of a run that has nothing to say.
  void runQuietly(const std::string& input, const std::string& output,
                  const std::string& script = {}) {
    const std::string records = run(input, output, script);
    EXPECT_EQ(records.find("<Warning="), std::string::npos) << records;
    EXPECT_EQ(records.find("<Error="), std::string::npos) << records;
  }

  // Through each format and back to text: nothing is lost, and nothing said. With scripts the
  // points are turned by a right angle on the way there, which is exact, and back on the way back.
  void expectKeptByEveryFormat(const std::string& input, const std::string& text,
                               bool withScripts = false) {
    const std::string there = withScripts ? "there.py" : "";
    const std::string back = withScripts ? "back.py" : "";
    folder_.write("there.py", "import cowl\ncowl.transform([0,-1,0,0, 1,0,0,0, 0,0,1,0])\n");
    folder_.write("back.py", "import cowl\ncowl.transform([0,1,0,0, -1,0,0,0, 0,0,1,0])\n");
    const std::string between = withScripts ? turned(text) : text;
    for (const PointFormat& format : pointFormats()) {
      for (const char* extension : format.extensions) {
        const std::string name = std::string("between.") + extension;
        runQuietly(input, name, there);
        if (extension == format.extensions[0]) {
          runQuietly(name, "seen.xyz");
          EXPECT_TRUE(samePoints(folder_.read("seen.xyz")) == samePoints(between)) << input << name;
        }
        runQuietly(name, "back.xyz", back);
        EXPECT_TRUE(samePoints(folder_.read("back.xyz")) == samePoints(text)) << input << name;
        fs::remove(folder_.file(name));
        fs::remove(folder_.file("back.xyz"));
      }
    }
  }

  // Each line "x y z ..." as "-y x z ...".
  static std::string turned(const std::string& text) {
    std::istringstream lines(text);
    std::string all;
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string x, y, rest;
      words >> x >> y;
      std::getline(words, rest);
      const bool isZero = y.find_first_not_of("-0.") == y.npos;
      if (!isZero) y = y[0] == '-' ? y.substr(1) : "-" + y;
      all += y + " " + x + rest + "\n";
    }
    return all;
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
    expectKeptByEveryFormat("plain.xyz", text, COWL_WITH_SCRIPTS);
  }
}

TEST_F(PointFormatsRun, LossesAreWarningsInTheRecords) {
  folder_.write("in.ply",
                "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
                "property float z\nproperty float nx\nend_header\n0.1 2 3 4\n");
  const std::string records = run("in.ply", "out.xyz");
  EXPECT_NE(
      records.find(
          "<Warning=\"The file in.ply holds attributes of 1 points that are not kept: nx\"/>"),
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

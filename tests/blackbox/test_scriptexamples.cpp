// The worked examples of the guide, each run as the guide says.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"
#include "tools/samplepoints.h"

namespace {

namespace fs = std::filesystem;

constexpr uint64_t kPoints = 20000;

class ScriptExamples : public testing::Test {
 protected:
  void SetUp() override { folder_.write("scan.xyz", samplepoints::lines(kPoints)); }

  // What the example prints. It must not fail.
  std::string run(const std::string& name, const std::vector<std::string>& more = {}) {
    const auto result = runAnyhow(name, more);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }
  tests::ChildResult runAnyhow(const std::string& name, const std::vector<std::string>& more) {
    std::vector<std::string> arguments = more;
    const fs::path script = tests::sourceDir() / "examples" / "scripts" / name;
    arguments.insert(arguments.end(), {"-script", script.string()});
    const auto result = tests::runChild({tests::cowlProgram(), arguments, {}, folder_.path()});
    EXPECT_EQ(result.exitCode, 1);
    return result;
  }
  std::string onScan(const std::string& name, const std::string& output = {}) {
    std::vector<std::string> more = {"-input", "scan.xyz"};
    if (!output.empty()) more.insert(more.end(), {"-output", output});
    return run(name, more);
  }
  // The points of a file as numbers.
  std::vector<std::vector<double>> points(const std::string& name) {
    std::vector<std::vector<double>> all;
    std::istringstream lines(folder_.read(name));
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::vector<double> values;
      for (double value = 0; words >> value;) values.push_back(value);
      all.push_back(values);
    }
    return all;
  }

  tests::TempFolder folder_;
};

TEST_F(ScriptExamples, TenOfThemStandInTheFolder) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(tests::sourceDir() / "examples" / "scripts")) {
    count += entry.path().extension() == ".py" ? 1 : 0;
  }
  EXPECT_EQ(count, 10);
}

TEST_F(ScriptExamples, Look) {
  const std::string output = onScan("01-look.py");
  EXPECT_EQ(output.find("1 cloud(s), 20000 points, 20000 of them coloured\nscan: 20000 points, "),
            0u)
      << output;
}

TEST_F(ScriptExamples, Crop) {
  onScan("02-crop.py", "middle.xyz");
  const auto all = points("scan.xyz");
  const auto middle = points("middle.xyz");
  double low = 1e9;
  double high = 0;
  for (const auto& point : all) low = std::min(low, point[0]), high = std::max(high, point[0]);
  const double quarter = (high - low) / 4;
  EXPECT_GT(middle.size(), 1000u);
  EXPECT_LT(middle.size(), all.size() / 2);
  for (const auto& point : middle) {
    EXPECT_GE(point[0], low + quarter);
    EXPECT_LE(point[0], high - quarter);
    EXPECT_EQ(point.size(), 6u);
  }
}

TEST_F(ScriptExamples, Clean) {
  folder_.write("scan.xyz", samplepoints::lines(kPoints) + samplepoints::lines(500) +
                                "637500 849500 9999 0 0 0\n");
  const std::string output = onScan("03-clean.py", "clean.xyz");
  EXPECT_NE(output.find("outliers removed\n"), output.npos) << output;
  const auto clean = points("clean.xyz");
  EXPECT_LT(clean.size(), kPoints + 1);
  EXPECT_GT(clean.size(), kPoints * 9 / 10);
  for (const auto& point : clean) EXPECT_LT(point[2], 9000);
}

TEST_F(ScriptExamples, Thin) {
  const std::string output = onScan("04-thin.py", "thin.xyz");
  EXPECT_NE(output.find("at random: 5000\nevenly: 1000\n"), output.npos) << output;
  EXPECT_EQ(points("thin.xyz").size(), 1000u);
}

TEST_F(ScriptExamples, Move) {
  onScan("05-move.py", "moved.xyz");
  const auto moved = points("moved.xyz");
  ASSERT_EQ(moved.size(), kPoints);
  double height = 0;
  for (const auto& point : moved) {
    EXPECT_LE(point[0], 0);
    EXPECT_GE(point[1], 0);
    EXPECT_LE(point[1], 0.1);
    height = std::max(height, point[2]);
  }
  EXPECT_GT(height, 0.5);
}

TEST_F(ScriptExamples, Select) {
  const std::string output = onScan("06-select.py", "selected.xyz");
  const auto kept = points("selected.xyz");
  EXPECT_NE(output.find("kept: " + std::to_string(kept.size()) + "\n"), output.npos) << output;
  EXPECT_GT(kept.size(), 100u);
  EXPECT_LT(kept.size(), kPoints / 2);
}

TEST_F(ScriptExamples, Paint) {
  const std::string output =
      run("07-paint.py", {"-input", "scan.xyz", "-output", "painted.xyz", "-logfile", "stdout"});
  EXPECT_NE(output.find("<start action=\"Painting\"/>\n"), output.npos) << output;
  EXPECT_NE(output.find("<prog done=\"100\"/>\n"), output.npos) << output;
  EXPECT_NE(output.find("painted 20000 points\n"), output.npos) << output;
  for (const auto& point : points("painted.xyz")) {
    ASSERT_EQ(point[4], 64);
    ASSERT_NEAR(point[3] + point[5], 254, 1);
  }
}

TEST_F(ScriptExamples, Merge) {
  folder_.write("part-1.xyz", "2 0 0\n3 0 0\n");
  folder_.write("part-2.xyz", "1 0 0\n");
  EXPECT_EQ(run("08-merge.py"), "part-1.xyz 2\npart-2.xyz 1\none cloud of 3\n");
  EXPECT_EQ(folder_.read("whole.xyz"), "1 0 0\n2 0 0\n3 0 0\n");
}

TEST_F(ScriptExamples, Picture) {
  onScan("09-picture.py");
  for (const auto& [name, width, height] :
       {std::tuple{"top.png", 800, 600}, {"front.png", 640, 240}, {"gray.png", 400, 400}}) {
    const std::string bytes = folder_.read(name);
    ASSERT_GT(bytes.size(), 1000u) << name;
    EXPECT_EQ(bytes.substr(1, 3), "PNG");
    const auto number = [&](size_t at) {
      return static_cast<uint8_t>(bytes[at]) * 256 + static_cast<uint8_t>(bytes[at + 1]);
    };
    EXPECT_EQ(number(18), width) << name;
    EXPECT_EQ(number(22), height) << name;
  }
}

TEST_F(ScriptExamples, Check) {
  const auto good = runAnyhow("10-check.py", {"-input", "scan.xyz"});
  EXPECT_EQ(good.output, "no reference: Cannot open the file reference.xyz\ngood: 20000 points\n");
  folder_.write("scan.xyz", "1 2 3\n");
  folder_.write("reference.xyz", "1 2 3\n4 5 6\n");
  const auto bad = runAnyhow("10-check.py", {"-input", "scan.xyz"});
  EXPECT_EQ(bad.errors, "1 points are too few, 1000 are wanted\n");
}

}  // namespace

// A product without a script engine, as on systems where there is no Python: a run that asks for a
// script says so.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

class NoScriptEngine : public testing::Test {
 protected:
  NoScriptEngine() {
    const fs::path product = folder_.file("product");
    fs::copy(tests::stageDir(), product, fs::copy_options::recursive);
    program_ = product / tests::cowlProgram().filename();
    const fs::path description = product / "cowl.description";
    std::ifstream file(description, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    file.close();
    const size_t place = text.find("default IScriptEngine");
    if (place != text.npos) text.erase(place, std::string("default IScriptEngine").size());
    std::ofstream(description, std::ios::binary) << text;
    folder_.write("in.xyz", "1 2 3\n");
  }

  tests::ChildResult run(const std::vector<std::string>& arguments) {
    return tests::runChild({program_, arguments, {}, folder_.path()});
  }

  tests::TempFolder folder_;
  fs::path program_;
};

TEST_F(NoScriptEngine, IsToldOnStandardErrorAndTheRunGoesOn) {
  const auto result = run({"-input", "in.xyz", "-script", "do.py", "-output", "out.xyz"});
  EXPECT_EQ(tests::plainLines(result.errors), "There is no script engine to run do.py\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(tests::plainLines(folder_.read("out.xyz")), "1 2 3\n");
}

TEST_F(NoScriptEngine, IsARecordWhereRecordsAreKept) {
  const auto result = run({"-script", "do.py", "-logfile", "stdout"});
  EXPECT_EQ(tests::plainLines(result.output),
            "<log>\n<Error=\"There is no script engine to run do.py\"/>\n"
            "<set action=\"Outcome: script failed\"/>\n</log>\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(NoScriptEngine, IsNoMatterWithoutAScript) {
  const auto result = run({"-input", "in.xyz", "-output", "out.xyz"});
  EXPECT_EQ(result.errors, "");
}

}  // namespace

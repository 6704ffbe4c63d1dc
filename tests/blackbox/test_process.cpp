// The process without any component library: its help, its failure, its logs, its exit code.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "tests/blackbox/bareprogram.h"
#include "tests/blackbox/childprocess.h"

namespace {

using tests::BareProgram;
using tests::ChildResult;
using tests::plainLines;

// The loader's message for the init server, up to the system's own words.
std::string loaderError() { return "ERROR:\nFatal error: Could not load this DLL: "; }

void expectFailedStart(const ChildResult& result) {
  EXPECT_TRUE(result.started);
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  const std::string errors = plainLines(result.errors);
  EXPECT_EQ(errors.substr(0, loaderError().size()), loaderError());
  EXPECT_NE(errors.find("initserver"), std::string::npos);
  EXPECT_NE(errors.find("error code was: 0x"), std::string::npos);
  EXPECT_EQ(errors.back(), '\n');
  EXPECT_EQ(errors.find("ERROR", 1), std::string::npos);
}

TEST(Process, WithoutTheInitServerSaysSoAndEndsWithOne) {
  BareProgram bare;
  expectFailedStart(bare.run({}));
}

TEST(Process, EndsWithOneAfterHelpToo) {
  BareProgram bare;
  for (const char* spelling : {"-help", "-h", "/?"}) {
    const ChildResult result = bare.run({spelling});
    EXPECT_EQ(result.exitCode, 1) << spelling;
    EXPECT_EQ(result.errors, "") << spelling;
    const std::string name = bare.program().string();
    const std::string begin = "Usage:\n\n  " + name + " [options]\n  " + name +
                              " -batch [options] [batchoptions]\n\n  Options:\n";
    const std::string text = plainLines(result.output);
    EXPECT_EQ(text.substr(0, begin.size()), begin) << spelling;
    EXPECT_EQ(text.find("Usage:", 1), std::string::npos) << "written twice";
    EXPECT_EQ(text.find("-workflow"), std::string::npos);
  }
}

TEST(Process, OtherSpellingsAreNoHelp) {
  BareProgram bare;
  expectFailedStart(bare.run({"-H"}));
  expectFailedStart(bare.run({"--help"}));
  expectFailedStart(bare.run({"-input", "-help"}));
}

TEST(Process, ASiblingsNameShowsMoreOptions) {
  BareProgram bare("PointMeter");
  const std::string text = plainLines(bare.run({"-help"}).output);
  EXPECT_NE(text.find("    -workflow\t\tworkflow/automation name to run\n"), std::string::npos);
  EXPECT_NE(text.find("PointMeter"), std::string::npos);
}

TEST(Process, HelpBuildsNothing) {
  BareProgram bare;
  bare.run({"-help"}, {{"CREATE_ERROR_LOG_AT_STARTUP", "1"}, {"OroObjectBrokerLog", "classes"}});
  EXPECT_EQ(bare.file(".log"), "<absent>");
  EXPECT_EQ(bare.file("classes"), "<absent>");
}

TEST(Process, LogsItsStartWhereTheVariableIsExactlyOne) {
  BareProgram bare;
  const ChildResult result = bare.run({}, {{"CREATE_ERROR_LOG_AT_STARTUP", "1"}});
  expectFailedStart(result);
  // The log holds the text alone; the box puts the label in front.
  EXPECT_EQ("ERROR:\n" + bare.file(".log"), plainLines(result.errors));
}

TEST(Process, ReplacesTheLogAtEachStart) {
  BareProgram bare;
  bare.run({}, {{"CREATE_ERROR_LOG_AT_STARTUP", "1"}});
  const std::string once = bare.file(".log");
  bare.run({}, {{"CREATE_ERROR_LOG_AT_STARTUP", "1"}});
  EXPECT_EQ(bare.file(".log"), once);
}

TEST(Process, LogsNothingForAnyOtherValue) {
  BareProgram bare;
  for (const char* value : {"12", "0", "11", " 1", "1 ", "true"}) {
    bare.run({}, {{"CREATE_ERROR_LOG_AT_STARTUP", value}});
    EXPECT_EQ(bare.file(".log"), "<absent>") << value;
  }
  bare.run({}, {{"CREATE_ERROR_LOG_AT_STARTUP", std::nullopt}});
  EXPECT_EQ(bare.file(".log"), "<absent>");
}

TEST(Process, OpensTheClassLogThatTheVariableNames) {
  BareProgram bare;
  expectFailedStart(bare.run({}, {{"OroObjectBrokerLog", "classes"}}));
  EXPECT_EQ(bare.file("classes"), "");  // no class was made
}

TEST(Process, AClassLogThatDoesNotOpenIsNoFailure) {
  BareProgram bare;
  expectFailedStart(bare.run({}, {{"OroObjectBrokerLog", "nowhere/classes"}}));
}

TEST(Process, IsAProgramWithoutAConsoleOnWindows) {
  std::ifstream file(tests::cowlProgram(), std::ios::binary);
  const std::string image{std::istreambuf_iterator<char>(file), {}};
  const bool elf = image.substr(0, 4) ==
                   "\x7F"
                   "ELF";
  const auto byteAt = [&](std::size_t place) {
    return static_cast<unsigned char>(image.at(place));
  };
  if (!elf) {
    constexpr std::size_t subsystemPlace = 4 + 20 + 68;  // signature, file header, offset in it
    const std::size_t header = byteAt(0x3C) | byteAt(0x3D) << 8;
    EXPECT_EQ(byteAt(header + subsystemPlace), 2) << "not the graphical subsystem";
  }
  EXPECT_TRUE(elf || image.substr(0, 2) == "MZ");
}

TEST(Process, TakesArgumentsOfAnyKind) {
  BareProgram bare;
  expectFailedStart(bare.run({"", "%s%n%x", "\xC3\xA9\xE2\x82\xAC", std::string(8000, 'x')}));
  std::vector<std::string> many(500, "-input");
  expectFailedStart(bare.run(many));
}

TEST(Process, ADamagedInitServerIsALoadersError) {
  BareProgram bare;
  for (const char* name : {"initserver.so", "initserver.dll"}) {
    std::ofstream(bare.folder() / name) << "this is no library";
  }
  expectFailedStart(bare.run({}));
}

}  // namespace

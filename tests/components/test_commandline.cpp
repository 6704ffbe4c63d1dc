#include "components/commandline/commandline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "components/commandline/runoutcome.h"
#include "orobasictypes/testaccess.h"
#include "tests/support/fakebroker.h"
#include "tests/tempfolder.h"

namespace {

constexpr const char* kSettings[] = {"Scripting/Startup Macro", "Scripting/Input File",
                                     "Scripting/Output File", "GUI/CommandLine Log File"};

class CommandLineTest : public testing::Test {
 protected:
  void SetUp() override {
    store_ = new KelCustomDataStore;
    broker_.registerService(KelCString::borrow("IDataStore"), store_);
    for (const char* directory : {"GUI", "Scripting", "Advanced", "Advanced/Batch Processing"}) {
      store_->CreateDirectory(directory);
    }
    for (const char* setting : kSettings) {
      store_->CreateOroString(setting, 32767, OroString::empty(), 0);
    }
    store_->CreateInt("GUI/CommandLine Progress Window", 0, 0, 1, 0);
    store_->CreateInt("Advanced/Batch Processing/Enabled", 0, 0, 1, 0);
  }

  bool parse(const std::vector<std::string>& arguments) {
    std::vector<OroString> argv;
    argv.emplace_back("cowl");
    for (const std::string& argument : arguments) argv.emplace_back(argument.c_str());
    return line_->parse(static_cast<int32_t>(argv.size()), argv.data());
  }
  OroString text(const char* setting) { return store_->GetOroString(setting, nullptr); }
  std::string error() { return line_->errorText().toUtf8(); }

  tests::FakeBroker broker_;
  IDataStore* store_ = nullptr;  // the broker holds it
  IPtr<CommandLine> line_{new CommandLine};
};

TEST_F(CommandLineTest, TurnsEachOptionIntoItsSetting) {
  ASSERT_TRUE(parse({"-script", "s.py", "-input", "in.xyz", "-output", "out.xyz", "-progress", "on",
                     "-logfile", "stdout", "-batch"}))
      << error();
  EXPECT_TRUE(text("Scripting/Startup Macro") == "s.py");
  EXPECT_TRUE(text("Scripting/Input File") == "in.xyz");
  EXPECT_TRUE(text("Scripting/Output File") == "out.xyz");
  EXPECT_TRUE(text("GUI/CommandLine Log File") == "stdout");
  EXPECT_EQ(store_->GetInt("GUI/CommandLine Progress Window", nullptr), 1);
  EXPECT_EQ(store_->GetInt("Advanced/Batch Processing/Enabled", nullptr), 1);
}

TEST_F(CommandLineTest, TurnsBatchOptionsIntoTheirSettings) {
  ASSERT_TRUE(parse({"-inputDir", "a", "-outputDir", "b", "-saveActiveOnly", "off", "-prefix", "p",
                     "-postfix", "q", "-dt", "3"}))
      << error();
  EXPECT_TRUE(text("Advanced/Batch Processing/Input Directory") == "a");
  EXPECT_TRUE(text("Advanced/Batch Processing/Output Directory") == "b");
  EXPECT_EQ(store_->GetInt("Advanced/Batch Processing/Save Active Only", nullptr), 0);
  EXPECT_TRUE(text("Advanced/Batch Processing/Prefix") == "p");
  EXPECT_TRUE(text("Advanced/Batch Processing/Postfix") == "q");
  EXPECT_EQ(store_->GetInt("Advanced/Batch Processing/Date and Time", nullptr), 3);
}

TEST_F(CommandLineTest, NothingToDoIsNoError) { EXPECT_TRUE(parse({})); }

TEST_F(CommandLineTest, TurnsItsOwnOptionsIntoTheirSettings) {
  EXPECT_TRUE(parse({}));
  EXPECT_FALSE(store_->Exists(RunOutcome::kExitStatus)) << "off unless it is asked for";
  ASSERT_TRUE(parse({"-exitstatus", "-verbose"})) << error();
  EXPECT_EQ(store_->GetInt(RunOutcome::kExitStatus, nullptr), 1);
  EXPECT_EQ(store_->GetInt(RunOutcome::kVerbose, nullptr), 1);
}

TEST_F(CommandLineTest, ARefusalHasAStatusWhereOneWasAskedFor) {
  EXPECT_FALSE(parse({"-nonsense"}));
  EXPECT_EQ(CommandLine::statusOfRefusal(), 0);
  EXPECT_FALSE(parse({"-nonsense", "-exitstatus"}));
  EXPECT_EQ(CommandLine::statusOfRefusal(), 5);
  EXPECT_FALSE(parse({"-exitstatus", "-input"}));
  EXPECT_EQ(CommandLine::statusOfRefusal(), 5);
  EXPECT_TRUE(parse({"-exitstatus"}));
  EXPECT_EQ(CommandLine::statusOfRefusal(), 0);
}

TEST_F(CommandLineTest, NamesAllItsOptions) {
  const std::vector<std::string> names = CommandLine::optionNames();
  EXPECT_THAT(names, testing::IsSupersetOf(
                         {"-script", "-dt", "-exitstatus", "-verbose", "-inifile=", "-ini_out="}));
  for (const std::string& name : names) {
    const bool refused = !parse({name, "1"}) && error() == "Unknown option: " + name;
    EXPECT_FALSE(refused) << name;
  }
}

TEST_F(CommandLineTest, LetsTheNamesOfTheSettingsDocumentPass) {
  EXPECT_TRUE(parse({"-inifile=a.iniml", "-ini_out=b.iniml", "-input", "in.xyz"}));
  EXPECT_TRUE(text("Scripting/Input File") == "in.xyz");
}

TEST_F(CommandLineTest, RefusesAnUnknownOptionByItsName) {
  for (const char* option : {"-inptu", "file.xyz", "-Input", "-help", "-ref", "", "-inifile"}) {
    EXPECT_FALSE(parse({"-input", "in.xyz", option})) << option;
    EXPECT_EQ(error(), std::string("Unknown option: ") + option);
  }
}

TEST_F(CommandLineTest, RefusesAMissingValue) {
  EXPECT_FALSE(parse({"-input"}));
  EXPECT_EQ(error(), "The option -input needs a value");
  for (const char* option : {"-output", "-batch", "-inifile=x", "-ini_out=x"}) {
    EXPECT_FALSE(parse({"-input", option, "x"})) << option;
    EXPECT_EQ(error(), "The option -input needs a value") << option;
  }
}

TEST_F(CommandLineTest, RefusesAValueOutsideItsRange) {
  EXPECT_FALSE(parse({"-progress", "maybe"}));
  EXPECT_EQ(error(), "The option -progress takes on or off, not maybe");
  for (const char* value : {"4", "-1", "x", "01", ""}) {
    EXPECT_FALSE(parse({"-dt", value})) << value;
    EXPECT_EQ(error(), std::string("The option -dt takes a number from 0 to 3, not ") + value);
  }
}

TEST_F(CommandLineTest, ARefusedCommandLineChangesNothing) {
  EXPECT_FALSE(parse({"-input", "in.xyz", "-nonsense"}));
  EXPECT_TRUE(text("Scripting/Input File").isEmpty());
  EXPECT_TRUE(parse({"-input", "in.xyz"}));
  EXPECT_TRUE(line_->errorText().isEmpty());
}

TEST_F(CommandLineTest, TheLastOfARepeatedOptionCounts) {
  EXPECT_TRUE(parse({"-input", "a", "-input", "b"}));
  EXPECT_TRUE(text("Scripting/Input File") == "b");
}

// The log is emptied before the input is read.
TEST_F(CommandLineTest, RefusesALogInAFileOfTheRun) {
  const tests::TempFolder folder;
  const std::string file = folder.write("in.xyz", "1 2 3\n").string();
  const std::string again = (folder.path() / "." / "in.xyz").string();
  for (const char* option : {"-input", "-script", "-output"}) {
    const std::string expected =
        std::string("The options ") + option + " and -logfile name one file";
    EXPECT_FALSE(parse({option, file, "-logfile", file}));
    EXPECT_EQ(error(), expected);
    EXPECT_FALSE(parse({"-logfile", again, option, file}));
    EXPECT_EQ(error(), expected);
    EXPECT_FALSE(parse({option, "absent.xyz", "-logfile", "absent.xyz"}));
    EXPECT_EQ(error(), expected);
    EXPECT_TRUE(parse({option, file, "-logfile", file + ".log"})) << error();
    EXPECT_TRUE(parse({option, file, "-logfile", file, "-logfile", "stdout"})) << error();
    EXPECT_TRUE(parse({option, "stdout", "-logfile", "stdout"})) << error();
  }
}

TEST_F(CommandLineTest, RefusesALogInAFileOfTheBatch) {
  const tests::TempFolder folder;
  const std::string file = folder.write("in.xyz", "1 2 3\n").string();
  const std::string directory = folder.path().string();
  EXPECT_FALSE(parse({"-batch", "-inputDir", directory, "-logfile", file}));
  EXPECT_EQ(error(), "The option -logfile names a file in the directory of -inputDir");
  EXPECT_TRUE(parse({"-batch", "-inputDir", directory, "-logfile", file + ".log"})) << error();
  EXPECT_TRUE(parse({"-batch", "-inputDir", directory + "/absent", "-logfile", file})) << error();
}

// Lead and second byte of a letter that UTF-8 and the common code pages read alike cannot be had,
// so only the way back from widened bytes is looked at.
TEST_F(CommandLineTest, BytesBeyondAsciiAreReadInTheSystemsEncoding) {
  ASSERT_TRUE(parse({"-input", "\xC3\xA9.xyz"}));
  const OroString value = text("Scripting/Input File");
  for (int i = 0; i < value.length(); ++i) EXPECT_LT(value.at(i), 0xFF80) << i;
  EXPECT_FALSE(value == "\xC3\xA9.xyz");
}

TEST(CommandLineWithoutSettings, IsRefusedUnlessItAsksForNothing) {
  tests::FakeBroker broker;
  IPtr<CommandLine> line(new CommandLine);
  const OroString argv[] = {OroString("cowl"), OroString("-batch")};
  EXPECT_FALSE(line->parse(2, argv));
  EXPECT_TRUE(line->parse(1, argv));
}

}  // namespace

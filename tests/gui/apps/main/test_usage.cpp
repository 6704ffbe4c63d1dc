#include "gui/apps/main/usage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "orobasictypes/orostring.h"
#include "platform/console.h"
#include "platform/hooks.h"
#include "tests/blackbox/childprocess.h"
#include "tests/gui/apps/main/appworld.h"

namespace {

bool asksForHelp(const std::vector<std::string>& texts) {
  const auto arguments = tests::argumentsOf(texts);
  return isHelpRequest(static_cast<int32_t>(arguments.size()), arguments.data());
}

TEST(HelpRequest, IsTheFirstArgumentInThreeSpellings) {
  EXPECT_TRUE(asksForHelp({"cowl", "-h"}));
  EXPECT_TRUE(asksForHelp({"cowl", "-help"}));
  EXPECT_TRUE(asksForHelp({"cowl", "/?"}));
  EXPECT_TRUE(asksForHelp({"cowl", "-h", "-input", "x"}));
}

TEST(HelpRequest, IsNothingElse) {
  EXPECT_FALSE(asksForHelp({}));
  EXPECT_FALSE(asksForHelp({"cowl"}));
  EXPECT_FALSE(asksForHelp({"-help"}));
  for (const char* other : {"-H", "-Help", "--help", "-?", "/h", "help", "-help ", ""}) {
    EXPECT_FALSE(asksForHelp({"cowl", other})) << other;
  }
  EXPECT_FALSE(asksForHelp({"cowl", "-input", "-help"}));
}

// The whole text for a program of this name, with or without the options of the sibling programs.
std::string expectedUsage(const std::string& name, bool sibling) {
  return "Usage:\n\n  " + name + " [options]\n  " + name +
         " -batch [options] [batchoptions]\n\n"
         "  Options:\n    -script file\tspecify script to run\n"
         "    -input file\t\tload file at the beginning\n"
         "    -output file\tsave file at the end\n"
         "    -progress on/off\tshow or progress window, off by default\n"
         "    -logfile filename\tlog progress into file or console\n"
         "    \t\t\t use stdout/strerr for console output\n"
         "\n  Batch Options:\n    -inputDir\t\tinput directory\n"
         "    -outputDir\t\toutput directory\n"
         "    -saveActiveOnly on/off\tsave active objects only\n"
         "    -prefix\t\toutput file name prepend string\n"
         "    -postfix\t\toutput file name append string\n"
         "    -dt number\t\tdate & time (0-3 range):\n    \t\t\t 0 - none, 1 - date,\n"
         "    \t\t\t 2 - time, 3 - date & time\n" +
         (sibling ? "    -ref\t\treference object file to load\n"
                    "    -workflow\t\tworkflow/automation name to run\n"
                  : "") +
         "\n  For further information, refer to product documentation.\n\n";
}

TEST(Usage, ShowsTheNameAsGivenTwice) {
  EXPECT_EQ(usageText("cowl"), expectedUsage("cowl", false));
  EXPECT_EQ(usageText("C:\\Tools\\Cowl.EXE"), expectedUsage("C:\\Tools\\Cowl.EXE", false));
  EXPECT_EQ(usageText(""), expectedUsage("", false));
}

TEST(Usage, ShowsMoreOptionsToTheSiblingPrograms) {
  for (const char* name :
       {"PointMeter.exe", "/opt/METER/cowl", "meter", "tally", "x-TaLlY-y", "tlly", "cowlTLLY"}) {
    EXPECT_EQ(usageText(name), expectedUsage(name, true)) << name;
  }
  for (const char* name : {"mete", "eter", "tall", "tlli", "met er"}) {
    EXPECT_EQ(usageText(name), expectedUsage(name, false)) << name;
  }
}

TEST(Usage, TakesTheNameAsDataAndNotAsAFormat) {
  EXPECT_EQ(usageText("%s%n"), expectedUsage("%s%n", false));
}

std::string consoleText;
bool hasConsole = false;

bool rememberConsole(std::string_view text) {
  consoleText += text;
  return hasConsole;
}

std::string printed(const std::string& name) {
  const auto arguments = tests::argumentsOf({name, "-help"});
  consoleText.clear();
  testing::internal::CaptureStdout();
  EXPECT_TRUE(printUsage(2, arguments.data()));
  return tests::plainLines(testing::internal::GetCapturedStdout());
}

TEST(PrintUsage, WritesOnceToStandardOutputAndOnceToAConsole) {
  const platform::HookGuard hook(platform::writeUsageToConsoleHook, rememberConsole);
  for (const bool console : {false, true}) {
    hasConsole = console;
    EXPECT_EQ(printed("cowl"), expectedUsage("cowl", false));
    EXPECT_EQ(consoleText, expectedUsage("cowl", false));
  }
}

TEST(PrintUsage, GivesTheBytesOfTheNameBack) {
  const platform::HookGuard hook(platform::writeUsageToConsoleHook, rememberConsole);
  const std::string name = "caf\xC3\xA9%s";
  EXPECT_EQ(printed(name), expectedUsage(name, false));
}

}  // namespace

// Whatever the programs know is in their manual pages and in the completion of the shell, and the
// other way round.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "components/commandline/commandline.h"
#include "gui/apps/cowlinfo/infocommand.h"
#include "tests/testpaths.h"

namespace {

std::string textOf(const char* file) {
  std::ifstream stream(tests::sourceDir() / "docs" / file, std::ios::binary);
  EXPECT_TRUE(stream) << file;
  std::string text{std::istreambuf_iterator<char>(stream), {}};
  text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
  return text;
}

bool isNameUnit(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }

// The option that begins here: "-name", "--name", either with "=" behind it, or "/?"; else empty.
std::string optionAt(const std::string& text, size_t at) {
  if (text.compare(at, 2, "/?") == 0) return "/?";
  size_t end = at;
  while (end < text.size() && end < at + 2 && text[end] == '-') ++end;
  const size_t name = end;
  while (end < text.size() && isNameUnit(text[end])) ++end;
  if (name == at || end == name) return {};
  return text.substr(at, end - at) + (end < text.size() && text[end] == '=' ? "=" : "");
}

// What looks like an option and stands by itself.
std::set<std::string> optionsIn(const std::string& text) {
  std::set<std::string> found;
  for (size_t at = 0; at < text.size(); ++at) {
    const bool apart = at == 0 || std::string(" \n\t\"'(|").find(text[at - 1]) != std::string::npos;
    const std::string option = apart ? optionAt(text, at) : std::string();
    if (!option.empty()) found.insert(option);
  }
  return found;
}

std::vector<std::string> cowlOptions() {
  std::vector<std::string> names = CommandLine::optionNames();
  names.insert(names.end(), {"-h", "-help", "/?"});
  return names;
}

// The lines of a manual page that head an option.
std::string headsOf(const std::string& page) {
  std::string heads;
  bool isHead = false;
  for (size_t at = 0; at < page.size();) {
    const size_t end = std::min(page.find('\n', at), page.size());
    const std::string line = page.substr(at, end - at);
    if (isHead) heads += line + "\n";
    isHead = line == ".TP" || line == ".TQ";
    at = end + 1;
  }
  return heads;
}

TEST(ManualPages, EachOptionOfCowlHasItsPlace) {
  const std::set<std::string> told = optionsIn(headsOf(textOf("man/cowl.1")));
  for (const std::string& name : cowlOptions()) EXPECT_TRUE(told.count(name)) << name;
}

TEST(ManualPages, EachOptionOfCowlinfoHasItsPlace) {
  const std::set<std::string> told = optionsIn(headsOf(textOf("man/cowlinfo.1")));
  for (const std::string& name : infoOptionNames()) EXPECT_TRUE(told.count(name)) << name;
}

TEST(ManualPages, TellNoOptionThatThereIsNot) {
  const std::vector<std::string> cowl = cowlOptions();
  for (const std::string& told : optionsIn(headsOf(textOf("man/cowl.1")))) {
    EXPECT_NE(std::find(cowl.begin(), cowl.end(), told), cowl.end()) << told;
  }
  for (const std::string& told : optionsIn(headsOf(textOf("man/cowlinfo.1")))) {
    const auto& names = infoOptionNames();
    EXPECT_NE(std::find(names.begin(), names.end(), told), names.end()) << told;
  }
}

TEST(ManualPages, BeginWithTheirTitle) {
  EXPECT_EQ(textOf("man/cowl.1").rfind(".TH COWL 1 ", 0), 0u);
  EXPECT_EQ(textOf("man/cowlinfo.1").rfind(".TH COWLINFO 1 ", 0), 0u);
}

TEST(Completion, KnowsEachOptionOfBothPrograms) {
  const std::set<std::string> told = optionsIn(textOf("completion/cowl.bash"));
  for (const std::string& name : cowlOptions()) EXPECT_TRUE(told.count(name)) << name;
  for (const std::string& name : infoOptionNames()) EXPECT_TRUE(told.count(name)) << name;
}

}  // namespace

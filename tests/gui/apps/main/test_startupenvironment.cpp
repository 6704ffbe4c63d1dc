#include "gui/apps/main/startupenvironment.h"

#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <string>

#include "gui/apps/main/oroappmain.h"
#include "gui/apps/main/productversion.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"
#include "tests/blackbox/childprocess.h"
#include "tests/gui/apps/main/appworld.h"

namespace {

using tests::registryText;

std::string executable() { return OroString(platform::executablePath(264).c_str()).toNarrow(); }

class StartupEnvironment : public testing::Test {
 protected:
  void SetUp() override { application_.initEssential(); }
  void TearDown() override { productOverrides = before_; }

  void putRegistry(const char* name, const char* value) {
    SPtr<Velmora::IOroRegistry> registry;
    KelCString key(name);
    registry->setValue(key, KelCString(value));
  }
  // Records the arguments and gives what was printed meanwhile.
  std::string putArguments(const std::vector<std::string>& texts) {
    const auto arguments = tests::argumentsOf(texts);
    testing::internal::CaptureStdout();
    putArgumentsInRegistry(static_cast<int32_t>(arguments.size()), arguments.data());
    return tests::plainLines(testing::internal::GetCapturedStdout());
  }
  std::string processIdLine() {
    return "\nProcess ID: " + std::to_string(platform::processId()) + "\n";
  }

  ProductOverrides before_ = productOverrides;
  tests::AppWorld world_;
  OroAppMain application_;
};

TEST_F(StartupEnvironment, RecordsTheExecutableTwiceWithoutAProductModule) {
  EXPECT_EQ(putArguments({"anything"}), "");
  EXPECT_EQ(registryText("MAIN_ARGV0"), executable());
  EXPECT_EQ(registryText("ORIGINAL_MAIN_ARGV0"), executable());
}

TEST_F(StartupEnvironment, AnEmptyModuleIdIsNone) {
  putRegistry("PRODUCT_INFO/dllId", "");
  EXPECT_EQ(putArguments({"x"}), "");
}

TEST_F(StartupEnvironment, PrintsTheProcessIdAlsoWhenNoModuleMatches) {
  putRegistry("PRODUCT_INFO/dllId", "no-module-is-called-like-this");
  EXPECT_EQ(putArguments({"x"}), processIdLine());
  EXPECT_EQ(registryText("MAIN_ARGV0"), executable());
}

TEST_F(StartupEnvironment, TakesTheLastModuleWhosePathHoldsTheId) {
  // Every path has a separator, and the search does not try the last place, so all others match.
  const std::string separator = executable().find('\\') != std::string::npos ? "\\" : "/";
  putRegistry("PRODUCT_INFO/dllId", separator.c_str());
  EXPECT_EQ(putArguments({"x"}), processIdLine());
  const auto modules = platform::modulePaths(1024, 260);
  std::u16string last;
  for (const auto& module : modules) {
    if (OroString(module.c_str()).contains(OroString(separator.c_str()), true)) last = module;
  }
  ASSERT_NE(last, u"");
  EXPECT_EQ(registryText("MAIN_ARGV0"), OroString(last.c_str()).toNarrow());
  EXPECT_NE(registryText("MAIN_ARGV0"), executable());
  EXPECT_EQ(registryText("ORIGINAL_MAIN_ARGV0"), executable());
}

TEST_F(StartupEnvironment, AnIdAtTheVeryEndOfAPathIsNotFound) {
  const std::string last = OroString(platform::modulePaths(1024, 260).back().c_str()).toNarrow();
  const std::string name = last.substr(last.find_last_of("\\/") + 1);
  putRegistry("PRODUCT_INFO/dllId", name.c_str());
  putArguments({"x"});
  EXPECT_EQ(registryText("MAIN_ARGV0"), executable());
  putRegistry("PRODUCT_INFO/dllId", name.substr(0, name.size() - 1).c_str());
  putArguments({"x"});
  EXPECT_EQ(registryText("MAIN_ARGV0"), last);
}

TEST_F(StartupEnvironment, LooksForTheModuleByCase) {
  // A piece of another module's path, which is found as it stands and not in other letters.
  const std::string last = OroString(platform::modulePaths(1024, 260).back().c_str()).toNarrow();
  std::string piece = last.substr(0, last.size() - 1);
  putRegistry("PRODUCT_INFO/dllId", piece.c_str());
  putArguments({"x"});
  ASSERT_EQ(registryText("MAIN_ARGV0"), last);
  for (char& c : piece) c = static_cast<char>(std::islower(c) ? std::toupper(c) : std::tolower(c));
  putRegistry("PRODUCT_INFO/dllId", piece.c_str());
  putArguments({"x"});
  EXPECT_EQ(registryText("MAIN_ARGV0"), executable());
}

TEST_F(StartupEnvironment, NumbersTheArgumentsFromOne) {
  putArguments({"program", "a", "", "c"});
  EXPECT_EQ(registryText("MAIN_ARGV/1"), "a");
  EXPECT_EQ(registryText("MAIN_ARGV/2"), "");
  EXPECT_EQ(registryText("MAIN_ARGV/3"), "c");
  EXPECT_EQ(registryText("MAIN_ARGV/0"), "<absent>");
  EXPECT_EQ(registryText("MAIN_ARGV/4"), "<absent>");
}

TEST_F(StartupEnvironment, DropsCharactersFrom128On) {
  putArguments({"program", "caf\xC3\xA9!"});
  EXPECT_EQ(registryText("MAIN_ARGV/1"), "caf!");
}

TEST_F(StartupEnvironment, TakesNoArgumentsAtAll) {
  putArgumentsInRegistry(0, nullptr);
  EXPECT_EQ(registryText("MAIN_ARGV0"), executable());
  EXPECT_EQ(registryText("MAIN_ARGV"), "<absent>");
}

TEST_F(StartupEnvironment, NullOverridesLeaveTheirKeysAlone) {
  productOverrides = {};
  putProductFactsInRegistry();
  EXPECT_EQ(registryText("PRODUCT_INFO/appName"), "<absent>");
  EXPECT_EQ(registryText("ALT_PRODUCT_INFO/altCompanyFolder"), "<absent>");
  EXPECT_EQ(registryText("ALT_PRODUCT_INFO/altProductName"), "<absent>");
  EXPECT_EQ(registryText("PRODUCT_INFO/cwlFileVersion"), "<absent>");
}

TEST_F(StartupEnvironment, TheVersionFillsTwoKeysWhereItIsTold) {
  putProductFactsInRegistry();
  const std::optional<std::string> version = productVersionText();
  EXPECT_EQ(registryText("PRODUCT_INFO/Build Number"), version.value_or("<absent>"));
  EXPECT_EQ(registryText("PRODUCT_INFO/displayVersion"),
            version ? displayVersionOf(*version) : "<absent>");
}

TEST_F(StartupEnvironment, OverridesFillTheirKeys) {
  productOverrides = {"App", "Folder", "Product", "42"};
  putProductFactsInRegistry();
  EXPECT_EQ(registryText("PRODUCT_INFO/appName"), "App");
  EXPECT_EQ(registryText("ALT_PRODUCT_INFO/altCompanyFolder"), "Folder");
  EXPECT_EQ(registryText("ALT_PRODUCT_INFO/altProductName"), "Product");
  EXPECT_EQ(registryText("PRODUCT_INFO/cwlFileVersion"), "42");
}

TEST(StartupEnvironmentAlone, RecordsNothingWithoutARegistry) {
  const auto arguments = tests::argumentsOf({"x", "y"});
  putArgumentsInRegistry(2, arguments.data());
  putProductFactsInRegistry();
  EXPECT_EQ(registryText("MAIN_ARGV0"), "<absent>");
}

}  // namespace

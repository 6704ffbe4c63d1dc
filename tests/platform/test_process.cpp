#include "platform/process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/hooks.h"
#include "platform/sharedlibrary.h"
#include "platform/text.h"
#include "tests/platform/childprocess.h"
#include "tests/platform/textof.h"
#include "tests/testpaths.h"

namespace {

constexpr int roomForAnyPath = 4096;

struct Ended {
  int status;
};

class Variable : public testing::Test {
 protected:
  ~Variable() override { platform::setEnvironment(name_, std::nullopt); }

  const char* name_ = "COWL_TEST_VARIABLE";
};

TEST(ExecutablePath, NamesThisProgramInTheSystemsForm) {
  const std::u16string path = platform::executablePath(roomForAnyPath);
  EXPECT_NE(path.find(u"test_platform"), path.npos);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(path)));
}

TEST(ExecutablePath, IsCutToTheBufferLessTheTerminator) {
  const std::u16string path = platform::executablePath(roomForAnyPath);
  EXPECT_EQ(platform::executablePath(10), path.substr(0, 9));
  EXPECT_EQ(platform::executablePath(2), path.substr(0, 1));
  EXPECT_EQ(platform::executablePath(1), u"");
  EXPECT_EQ(platform::executablePath(0), u"");
  EXPECT_EQ(platform::executablePath(-1), u"");
  const int length = static_cast<int>(path.size());
  EXPECT_EQ(platform::executablePath(length + 1), path);
  EXPECT_EQ(platform::executablePath(length), path.substr(0, path.size() - 1));
}

TEST(ModulePaths, BeginWithTheExecutable) {
  const auto paths = platform::modulePaths(1024, roomForAnyPath);
  ASSERT_GT(paths.size(), 1u);
  EXPECT_EQ(paths[0], platform::executablePath(roomForAnyPath));
}

TEST(ModulePaths, HoldALoadedLibrary) {
  const auto holdsProbe = [] {
    const auto paths = platform::modulePaths(1024, roomForAnyPath);
    return std::any_of(paths.begin(), paths.end(), [](const std::u16string& path) {
      return path.find(u"platformprobe") != path.npos;
    });
  };
  EXPECT_FALSE(holdsProbe());
  const std::u16string file =
      tests::textOf(tests::testLibsDir() / "platformprobe") + platform::librarySuffix();
  void* const library = platform::openLibrary(file, platform::LibrarySearch::alteredPath);
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(holdsProbe());
  platform::closeLibrary(library);
}

TEST(ModulePaths, StopAtTheLimits) {
  EXPECT_EQ(platform::modulePaths(1, roomForAnyPath).size(), 1u);
  EXPECT_TRUE(platform::modulePaths(0, roomForAnyPath).empty());
  for (const auto& path : platform::modulePaths(1024, 5)) EXPECT_LE(path.size(), 4u);
}

TEST(ProcessId, IsTheSameEachTime) {
  EXPECT_NE(platform::processId(), 0u);
  EXPECT_EQ(platform::processId(), platform::processId());
}

std::string hex(const std::string& bytes) {
  std::string out;
  char digits[3];
  for (const char byte : bytes) {
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
    out += digits;
  }
  return out;
}

TEST(NarrowArguments, AreThoseOfTheCommandLineInTheSystemsNarrowForm) {
  const std::vector<std::u16string> arguments = {
      u"-input",       u"with blank", u"",       u"\u00E9t\u00E9.xyz",
      u"\u65E5\u672C", u"\U0001F600", u"\u20AC", std::u16string(3000, u'x')};
  std::string expected;
  for (const auto& argument : arguments) expected += hex(platform::toCodePage(argument)) + ";";
  const auto result = tests::runChild(tests::testLibsDir() / "platformecho", arguments);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, expected);
}

TEST(InstanceHandle, IsKept) {
  EXPECT_EQ(platform::instanceHandle(), nullptr);
  int object = 0;
  platform::storeInstanceHandle(&object);
  EXPECT_EQ(platform::instanceHandle(), &object);
  platform::storeInstanceHandle(nullptr);
}

TEST_F(Variable, IsNothingWhenUnset) {
  EXPECT_EQ(platform::environment(name_), std::nullopt);
  EXPECT_EQ(platform::environmentWide(u"COWL_TEST_VARIABLE"), std::nullopt);
  EXPECT_EQ(platform::environment(""), std::nullopt);
}

TEST_F(Variable, IsReadBackAsSet) {
  for (const char* value : {"1", "two words", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "a=b"}) {
    ASSERT_TRUE(platform::setEnvironment(name_, value));
    EXPECT_EQ(platform::environment(name_), value);
    EXPECT_EQ(platform::environmentWide(u"COWL_TEST_VARIABLE"), platform::fromSystem(value));
  }
}

TEST_F(Variable, MayBeLong) {
  for (const std::size_t length : {126, 127, 128, 129, 20000}) {
    const std::string value(length, 'v');
    ASSERT_TRUE(platform::setEnvironment(name_, value));
    EXPECT_EQ(platform::environment(name_), value);
  }
}

TEST_F(Variable, EmptyIsNotUnset) {
  ASSERT_TRUE(platform::setEnvironment(name_, ""));
  EXPECT_EQ(platform::environment(name_), "");
}

TEST_F(Variable, IsRemoved) {
  ASSERT_TRUE(platform::setEnvironment(name_, "x"));
  ASSERT_TRUE(platform::setEnvironment(name_, std::nullopt));
  EXPECT_EQ(platform::environment(name_), std::nullopt);
}

TEST_F(Variable, NamesThatCannotBeAreRefused) {
  EXPECT_FALSE(platform::setEnvironment("", "x"));
  EXPECT_FALSE(platform::setEnvironment("A=B", "x"));
}

TEST(EndOfProcess, HooksGetTheStatus) {
  platform::HookGuard end(platform::endProcessHook, [](int status) { throw Ended{status}; });
  platform::HookGuard now(platform::endProcessNowHook, [](int status) { throw Ended{-status}; });
  const auto statusOf = [](void (*call)(int), int status) {
    try {
      call(status);
    } catch (const Ended& ended) {
      return ended.status;
    }
    return -100;
  };
  EXPECT_EQ(statusOf(platform::endProcess, 3), 3);
  EXPECT_EQ(statusOf(platform::endProcessNow, 4), -4);
}

void sayGoodbye() { std::fprintf(stderr, "goodbye"); }

TEST(EndOfProcessDeathTest, ExitHandlersRunInTheOrdinaryEndOnly) {
  EXPECT_EXIT(
      {
        std::atexit(sayGoodbye);
        platform::endProcess(5);
      },
      testing::ExitedWithCode(5), "goodbye");
  EXPECT_EXIT(
      {
        std::atexit(sayGoodbye);
        platform::endProcessNow(6);
      },
      testing::ExitedWithCode(6), "^$");
}

TEST(EndOfProcessDeathTest, EndWithinAnEndIsOnTheSpot) {
  EXPECT_EXIT(
      {
        std::atexit(sayGoodbye);
        std::atexit([] { platform::endProcess(8); });
        platform::endProcess(7);
      },
      testing::ExitedWithCode(8), "^$");
}

TEST(VersionBlock, OfAMissingFileIsNotThere) {
  std::vector<std::uint8_t> block{1, 2, 3};
  EXPECT_FALSE(platform::versionBlock(u"\\no\\such\\file.exe", block));
  EXPECT_FALSE(platform::versionBlock(u"", block));
  EXPECT_EQ(block, (std::vector<std::uint8_t>{1, 2, 3}));
}

}  // namespace

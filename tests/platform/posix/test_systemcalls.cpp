// What the Linux side promises beyond the shared tests.

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/crash.h"
#include "platform/knownfolders.h"
#include "platform/posix/posixgate.h"
#include "platform/process.h"
#include "platform/sharedlibrary.h"

namespace {

using platform::KnownFolder;

class LinuxFolders : public testing::Test {
 protected:
  LinuxFolders() {
    for (const char* name : {"HOME", "XDG_DOCUMENTS_DIR", "XDG_CONFIG_HOME"}) {
      before_[name] = platform::environment(name);
      platform::setEnvironment(name, std::nullopt);
    }
  }
  ~LinuxFolders() override {
    for (const auto& [name, value] : before_) platform::setEnvironment(name, value);
  }

  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(LinuxFolders, LieInTheUsersHome) {
  platform::setEnvironment("HOME", "/home/\xC3\xA9");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::profile), u"\\home\\\u00E9");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::documents), u"\\home\\\u00E9\\Documents");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::appData), u"\\home\\\u00E9\\.config");
}

TEST_F(LinuxFolders, FollowTheirOwnVariables) {
  platform::setEnvironment("HOME", "/home/user");
  platform::setEnvironment("XDG_DOCUMENTS_DIR", "/data/documents");
  platform::setEnvironment("XDG_CONFIG_HOME", "/data/config");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::documents), u"\\data\\documents");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::appData), u"\\data\\config");
}

TEST_F(LinuxFolders, AreNotThereWithoutAHome) {
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::profile), u"");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::documents), u"");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::appData), u"");
}

TEST_F(LinuxFolders, OfAllUsersAreFixed) {
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::commonAppData), u"\\var\\lib");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::commonDocuments), u"\\usr\\local\\share");
}

void reportAndExit(int) {
  std::fprintf(stderr, "reported");
  std::fflush(stderr);
  platform::endProcessNow(7);
}

// The volatile frame keeps the compiler from turning the recursion into a loop.
int exhaustStack(int depth) {
  volatile char frame[4096];
  frame[0] = static_cast<char>(depth);
  return depth < 0 ? 0 : exhaustStack(depth + 1) + frame[0];
}

TEST(LinuxCrashDeathTest, ExhaustedStackIsReported) {
  EXPECT_EXIT(
      {
        platform::installCrashHandler(reportAndExit);
        exhaustStack(0);
      },
      testing::ExitedWithCode(7), "reported");
}

TEST(LinuxCrashDeathTest, RemovedHandlerIsNotCalled) {
  EXPECT_EXIT(
      {
        platform::installCrashHandler(reportAndExit);
        platform::removeCrashHandler();
        raise(SIGSEGV);
      },
      testing::KilledBySignal(SIGSEGV), "^$");
}

TEST(LinuxProcess, BrokenPipesDoNotEndIt) {
  EXPECT_EXIT(
      {
        platform::ignoreBrokenPipes();
        int ends[2];
        if (pipe(ends) == 0) close(ends[0]);
        const bool failed = write(ends[1], "x", 1) < 0;
        platform::endProcessNow(failed ? 3 : 4);
      },
      testing::ExitedWithCode(3), "");
}

TEST(LinuxProcess, AFileThatMayNotGrowDoesNotEndIt) {
  EXPECT_EXIT(
      {
        platform::ignoreFileSizeLimit();
        rlimit none = {};  // all zero
        setrlimit(RLIMIT_FSIZE, &none);
        std::FILE* const file = std::tmpfile();
        const bool failed = file != nullptr && write(fileno(file), "x", 1) < 0;
        platform::endProcessNow(failed ? 3 : 4);
      },
      testing::ExitedWithCode(3), "");
}

TEST(LinuxProcess, ArgumentsAreThoseOfMain) {
  char name[] = "cowl";
  char bad[] = "\xFF\xFE";
  char* values[] = {name, bad, nullptr};
  const platform::NarrowArguments arguments = platform::narrowArguments(2, values);
  EXPECT_EQ(arguments.count, 2);
  EXPECT_EQ(arguments.values, values);
}

TEST(LinuxProcess, HasNoVersionBlockAndNoInstance) {
  std::vector<std::uint8_t> block{1};
  EXPECT_FALSE(platform::versionBlock(platform::executablePath(4096), block));
  EXPECT_EQ(block.size(), 1u);
  EXPECT_EQ(platform::systemInstanceHandle(), nullptr);
}

TEST(LinuxLibraries, EndInSo) { EXPECT_EQ(std::u16string(platform::librarySuffix()), u".so"); }

TEST(LinuxLibraries, DamagedFileInTheLibraryDirectoryIsTheOneReported) {
  platform::setLibraryDirectory(u"\\etc");
  std::string error;
  EXPECT_EQ(platform::openLibrary(u"passwd", platform::LibrarySearch::plain, &error), nullptr);
  EXPECT_NE(error.find("/etc/passwd"), error.npos) << error;
  platform::setLibraryDirectory(u"");
}

}  // namespace

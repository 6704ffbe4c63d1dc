// The variable that a Windows session always has and a Linux session never.

#include "platform/temporaryfolder.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "platform/process.h"

namespace {

class TemporaryFolderName : public testing::Test {
 protected:
  TemporaryFolderName() {
    for (const char* name : {"TEMP", "TMP", "TMPDIR", "XDG_CACHE_HOME", "HOME"}) {
      before_[name] = platform::environment(name);
      platform::setEnvironment(name, std::nullopt);
    }
  }
  ~TemporaryFolderName() override {
    for (const auto& [name, value] : before_) platform::setEnvironment(name, value);
  }

  static std::optional<std::string> named() {
    platform::nameTemporaryFolder();
    return platform::environment("TEMP");
  }

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(TemporaryFolderName, IsWhatTheUserChose) {
  platform::setEnvironment("HOME", "/home/somebody");
  platform::setEnvironment("XDG_CACHE_HOME", "/cache");
  platform::setEnvironment("TMPDIR", "/scratch");
  EXPECT_EQ(named(), "/scratch");
}

TEST_F(TemporaryFolderName, IsTheUsersCacheElse) {
  platform::setEnvironment("HOME", "/home/somebody");
  EXPECT_EQ(named(), "/home/somebody/.cache");
  platform::setEnvironment("TEMP", std::nullopt);
  platform::setEnvironment("XDG_CACHE_HOME", "/cache");
  EXPECT_EQ(named(), "/cache");
}

TEST_F(TemporaryFolderName, IsTheSystemsForAUserWithoutAHome) { EXPECT_EQ(named(), "/tmp"); }

TEST_F(TemporaryFolderName, StaysAsTheSessionHasIt) {
  platform::setEnvironment("TMPDIR", "/scratch");
  platform::setEnvironment("TEMP", "/own");
  EXPECT_EQ(named(), "/own");
  platform::setEnvironment("TEMP", std::nullopt);
  platform::setEnvironment("TMP", "/own");
  EXPECT_EQ(named(), std::nullopt);
}

}  // namespace

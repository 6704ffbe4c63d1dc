#include "platform/console.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/hooks.h"

namespace {

std::string written;

// Tests run without a console to attach: the shell's own counts as none on Linux, and on Windows
// a process can have but one.
TEST(Console, ThereIsNoneToAttach) {
  EXPECT_EQ(platform::attachConsole(0), nullptr);
  EXPECT_EQ(platform::attachConsole(1), nullptr);
}

TEST(Console, CallsWithoutOneDoNothing) {
  platform::setConsoleAttributes(nullptr, 11);
  EXPECT_EQ(platform::consoleAttributes(nullptr), 0);
  platform::freeConsole(nullptr);
}

TEST(Console, UsageIsNotWrittenWithoutOne) {
  EXPECT_FALSE(platform::writeUsageToConsole("Usage:\n"));
}

TEST(Console, HookTakesTheUsage) {
  written.clear();
  platform::HookGuard guard(platform::writeUsageToConsoleHook, [](std::string_view text) {
    written = text;
    return true;
  });
  EXPECT_TRUE(platform::writeUsageToConsole("Usage: %s\n"));
  EXPECT_EQ(written, "Usage: %s\n");
}

}  // namespace

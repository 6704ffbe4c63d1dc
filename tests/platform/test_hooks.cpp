#include "platform/hooks.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

int (*someHook)(int) = nullptr;

TEST(HookGuard, SetsTheHookForItsLife) {
  {
    platform::HookGuard guard(someHook, [](int value) { return value + 1; });
    ASSERT_NE(someHook, nullptr);
    EXPECT_EQ(someHook(4), 5);
  }
  EXPECT_EQ(someHook, nullptr);
}

TEST(HookGuard, Nests) {
  platform::HookGuard outer(someHook, [](int) { return 1; });
  {
    platform::HookGuard inner(someHook, [](int) { return 2; });
    EXPECT_EQ(someHook(0), 2);
  }
  EXPECT_EQ(someHook(0), 1);
}

TEST(HookGuard, PutsBackWhenAnExceptionPasses) {
  EXPECT_THROW(
      {
        platform::HookGuard guard(someHook, [](int) { return 1; });
        throw std::runtime_error("passes");
      },
      std::runtime_error);
  EXPECT_EQ(someHook, nullptr);
}

}  // namespace

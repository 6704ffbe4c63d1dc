#include "platform/network.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "platform/hooks.h"

namespace {

using platform::HostAddress;

std::string written(const HostAddress& address) {
  std::string text;
  for (const std::uint8_t byte : address.bytes) text += std::to_string(byte) + ".";
  return text;
}

TEST(Network, FindsThisMachine) {
  HostAddress address = {};
  ASSERT_TRUE(platform::findHost("localhost", 5000, address));
  EXPECT_EQ(address.bytes[0], 127);
}

TEST(Network, AnAddressIsAName) {
  HostAddress address = {};
  ASSERT_TRUE(platform::findHost("192.0.2.17", 5000, address));
  EXPECT_EQ(written(address), "192.0.2.17.");
}

TEST(Network, ANameOfNobodyIsNotFound) {
  HostAddress address = {{1, 2, 3, 4}};
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(platform::findHost("nobody.invalid", 1000, address));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(written(address), "1.2.3.4.");
}

TEST(Network, ANameThatIsNoneIsNotFound) {
  HostAddress address = {};
  for (const std::string& name :
       {std::string(), std::string(" "), std::string("a..b"), std::string(3000, 'x')}) {
    EXPECT_FALSE(platform::findHost(name, 1000, address)) << name;
  }
}

// Set by one thread, waited for by the other.
std::atomic<bool> mayEnd = false;
std::atomic<bool> hasEnded = false;

void waitFor(const std::atomic<bool>& event) {
  while (!event) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

TEST(Network, ALookUpThatTakesTooLongIsLeftBehind) {
  const platform::HookGuard guard(platform::findHostHook,
                                  [](const std::string&, HostAddress& address) {
                                    waitFor(mayEnd);
                                    address = {{9, 9, 9, 9}};
                                    hasEnded = true;
                                    return true;
                                  });
  HostAddress address = {{1, 2, 3, 4}};
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(platform::findHost("slow", 50, address));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
  mayEnd = true;
  waitFor(hasEnded);
  EXPECT_EQ(written(address), "1.2.3.4.");
}

TEST(Network, TheLookUpAndTheRequestCanBeReplaced) {
  const platform::HookGuard find(platform::findHostHook,
                                 [](const std::string& name, HostAddress& address) {
                                   address = {{1, 2, 3, 4}};
                                   return name == "known";
                                 });
  const platform::HookGuard echo(platform::answersEchoHook,
                                 [](const HostAddress& address, int milliseconds) {
                                   return address.bytes[3] == 4 && milliseconds == 77;
                                 });
  HostAddress address = {};
  EXPECT_FALSE(platform::findHost("unknown", 5000, address));
  EXPECT_EQ(written(address), "0.0.0.0.");
  EXPECT_TRUE(platform::findHost("known", 5000, address));
  EXPECT_EQ(written(address), "1.2.3.4.");
  EXPECT_TRUE(platform::answersEcho(address, 77));
  EXPECT_FALSE(platform::answersEcho(address, 78));
}

}  // namespace

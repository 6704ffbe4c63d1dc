// The echo request as Linux lets a user send it.

#include <gtest/gtest.h>

#include <chrono>

#include "platform/network.h"
#include "platform/posix/posixgate.h"

namespace {

bool systemAllowsEcho() {
  const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_ICMP);
  if (descriptor >= 0) ::close(descriptor);
  return descriptor >= 0;
}

TEST(Echo, ThisMachineAnswersWhereTheSystemLetsTheUserAsk) {
  EXPECT_EQ(platform::answersEcho({{127, 0, 0, 1}}, 1000), systemAllowsEcho());
}

// The system refuses to send to all at once, so that nothing leaves this machine.
TEST(Echo, ARequestThatCannotBeSentIsNotWaitedFor) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(platform::answersEcho({{255, 255, 255, 255}}, 10000));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

}  // namespace

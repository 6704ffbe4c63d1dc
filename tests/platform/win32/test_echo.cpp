// The echo request where every user may send one.

#include <gtest/gtest.h>

#include "platform/network.h"

namespace {

TEST(Echo, ThisMachineAnswers) { EXPECT_TRUE(platform::answersEcho({{127, 0, 0, 1}}, 1000)); }

}  // namespace

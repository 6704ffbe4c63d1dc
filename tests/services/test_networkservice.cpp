#include "services/networkservice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "platform/network.h"
#include "services/testaccess.h"
#include "tests/services/servicetest.h"
#include "tests/support/slotnumber.h"

namespace {

using platform::HostAddress;

// What the hooks use; the service waits for them.
std::string askedName;
std::string askedAddress;
int askedLimit = 0;
int requests = 0;

bool findLoopback(const std::string& name, HostAddress& address) {
  askedName = name;
  address = {{127, 0, 0, 1}};
  return true;
}

bool answerAlways(const HostAddress& address, int milliseconds) {
  for (const std::uint8_t byte : address.bytes) askedAddress += std::to_string(byte) + ".";
  askedLimit = milliseconds;
  ++requests;
  return true;
}

bool answerNever(const HostAddress&, int) {
  ++requests;
  return false;
}

bool findNothing(const std::string&, HostAddress&) { return false; }

class Network : public tests::ServiceTest {
 protected:
  Network() {
    testaccess::resetNetworkService();
    askedName.clear();
    askedAddress.clear();
    askedLimit = 0;
    requests = 0;
  }
  ~Network() override { testaccess::resetNetworkService(); }

  void declare(int32_t value) {
    store_->CreateDirectory("Network");
    store_->CreateInt("Network/Internal", value, 0, 10, 0);
  }
  int32_t state() { return store_->GetInt("Network/Internal", nullptr); }

  IPtr<NetworkService> network_ = new NetworkService;
};

TEST_F(Network, IsInsideWhenTheHostAnswers) {
  const platform::HookGuard find(platform::findHostHook, findLoopback);
  const platform::HookGuard echo(platform::answersEchoHook, answerAlways);
  declare(7);
  EXPECT_TRUE(network_->updateNetworkState());
  EXPECT_EQ(state(), 1);
  EXPECT_EQ(askedName, COWL_EXPECTED_HOST);
  EXPECT_EQ(askedAddress, "127.0.0.1.");
  EXPECT_EQ(askedLimit, 1000);
}

TEST_F(Network, IsOutsideWhenTheHostDoesNotAnswer) {
  const platform::HookGuard find(platform::findHostHook, findLoopback);
  const platform::HookGuard echo(platform::answersEchoHook, answerNever);
  declare(7);
  EXPECT_FALSE(network_->updateNetworkState());
  EXPECT_EQ(state(), 0);
  EXPECT_EQ(requests, 1);
}

TEST_F(Network, IsOutsideWhenTheHostHasNoAddress) {
  const platform::HookGuard find(platform::findHostHook, findNothing);
  const platform::HookGuard echo(platform::answersEchoHook, answerAlways);
  declare(7);
  EXPECT_FALSE(network_->updateNetworkState());
  EXPECT_EQ(state(), 0);
  EXPECT_EQ(requests, 0);
}

// The system may not let this user send requests; that is a no like any other.
TEST_F(Network, WritesWhatTheSystemAnswers) {
  const platform::HookGuard find(platform::findHostHook, findLoopback);
  declare(7);
  const bool expected = platform::answersEcho({{127, 0, 0, 1}}, 1000);
  EXPECT_EQ(network_->updateNetworkState(), expected);
  EXPECT_EQ(state(), expected ? 1 : 0);
}

TEST_F(Network, MakesNoSetting) {
  const platform::HookGuard find(platform::findHostHook, findNothing);
  EXPECT_FALSE(network_->updateNetworkState());
  EXPECT_FALSE(store_->Exists("Network/Internal"));
}

// Set by one thread, waited for by the other.
std::atomic<bool> lookUpMayEnd = false;
std::atomic<bool> lookUpHasEnded = false;

void waitFor(const std::atomic<bool>& event) {
  while (!event) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

bool findTooLate(const std::string&, HostAddress& address) {
  waitFor(lookUpMayEnd);
  const bool found = findLoopback("late", address);
  lookUpHasEnded = true;
  return found;
}

TEST_F(Network, ANameThatIsNotFoundInASecondIsNotWaitedFor) {
  const platform::HookGuard find(platform::findHostHook, findTooLate);
  const platform::HookGuard echo(platform::answersEchoHook, answerAlways);
  declare(7);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(network_->updateNetworkState());
  const auto passed = std::chrono::steady_clock::now() - start;
  EXPECT_GE(passed, std::chrono::milliseconds(900));
  EXPECT_LT(passed, std::chrono::milliseconds(3000)) << "on a busy machine";
  EXPECT_EQ(state(), 0);
  EXPECT_EQ(requests, 0);
  lookUpMayEnd = true;
  waitFor(lookUpHasEnded);
  EXPECT_EQ(state(), 0);
}

TEST_F(Network, KeepsTheSettingsOfItsFirstAnswer) {
  const platform::HookGuard find(platform::findHostHook, findNothing);
  const int32_t before = store_->refCount();
  network_->updateNetworkState();
  network_->updateNetworkState();
  EXPECT_EQ(store_->refCount(), before + 1);
}

TEST_F(Network, WithoutSettingsOnlyAnswers) {
  const platform::HookGuard find(platform::findHostHook, findLoopback);
  const platform::HookGuard echo(platform::answersEchoHook, answerAlways);
  testaccess::resetNetworkService();
  oroSetBroker(nullptr);
  EXPECT_TRUE(network_->updateNetworkState());
  testaccess::resetNetworkService();
  oroSetBroker(&broker_);
}

TEST_F(Network, KnowsTheHostThatTheBuildNames) { EXPECT_EQ(oroInternalHost(), COWL_EXPECTED_HOST); }

TEST_F(Network, AnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQueryClass<NetworkService>(network_.get()), network_.get());
  EXPECT_EQ(oroQuery<IOroNetworkService>(network_.get()), network_.get());
  EXPECT_EQ(tests::slotNumber(&IOroNetworkService::updateNetworkState), 1);
}

}  // namespace

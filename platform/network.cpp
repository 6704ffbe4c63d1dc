#include "platform/network.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <system_error>
#include <thread>

#include "platform/clock.h"
#include "platform/systempart.h"
#include "platform/wordwait.h"

namespace platform {
namespace {

constexpr std::uint32_t kAtWork = 0;
constexpr std::uint32_t kFound = 1;
constexpr std::uint32_t kNotFound = 2;

// Shared by the look-up and whoever waits for it; the last of the two takes it away.
struct LookUp {
  std::atomic<std::uint32_t> state = kAtWork;
  HostAddress address = {};  // good once it is found
};

using Find = bool (*)(const std::string&, HostAddress&);

void lookUp(const std::shared_ptr<LookUp>& shared, Find find, const std::string& name) {
  const bool found = find(name, shared->address);
  shared->state.store(found ? kFound : kNotFound, std::memory_order_release);
  wakeOne(shared->state);
}

// False when the time was over before the end of the look-up, too.
bool isFound(const LookUp& shared, int milliseconds) {
  const std::int64_t end = steadyNanoseconds() + std::int64_t{milliseconds} * 1000000;
  for (;;) {
    const std::uint32_t state = shared.state.load(std::memory_order_acquire);
    const std::int64_t rest = end - steadyNanoseconds();
    if (state != kAtWork || rest <= 0) return state == kFound;
    waitWhile(shared.state, kAtWork, static_cast<int>(rest / 1000000 + 1));
  }
}

}  // namespace

bool (*findHostHook)(const std::string&, HostAddress&) = nullptr;
bool (*answersEchoHook)(const HostAddress&, int) = nullptr;

bool findHost(const std::string& name, int milliseconds, HostAddress& address) {
  if (name.empty()) return false;  // some systems take it for this machine
  const auto shared = std::make_shared<LookUp>();
  try {
    // The systems bound a look-up by many seconds or not at all.
    const Find find = findHostHook != nullptr ? findHostHook : findSystemHost;
    std::thread(lookUp, shared, find, name).detach();
  } catch (const std::system_error&) {
    return false;  // the system has no thread left
  }
  if (!isFound(*shared, milliseconds)) return false;
  address = shared->address;
  return true;
}

bool answersEcho(const HostAddress& address, int milliseconds) {
  return answersEchoHook != nullptr ? answersEchoHook(address, milliseconds)
                                    : systemAnswersEcho(address, milliseconds);
}

}  // namespace platform

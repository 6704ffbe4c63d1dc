#include "services/networkservice.h"

#include <array>
#include <cstdint>

#include "interfaces/IDataStore.h"
#include "orobasictypes/oroserviceonce.h"
#include "platform/network.h"
#include "services/testaccess.h"

namespace {

constexpr int kLookUpLimit = 1000;  // milliseconds
constexpr int kEchoLimit = 1000;
constexpr uint8_t kSeed = 0x5A;

// A name inside the organisation is nothing for whoever reads the executable's texts: each byte is
// mixed with the scrambled one in front of it and turned by three bits.
constexpr uint8_t turnLeft(uint8_t byte) { return static_cast<uint8_t>(byte << 3 | byte >> 5); }
constexpr uint8_t turnRight(uint8_t byte) { return static_cast<uint8_t>(byte >> 3 | byte << 5); }

template <size_t N>
consteval std::array<uint8_t, N - 1> scramble(const char (&name)[N]) {
  std::array<uint8_t, N - 1> scrambled = {};
  uint8_t before = kSeed;
  for (size_t i = 0; i + 1 < N; ++i) {
    before = turnLeft(static_cast<uint8_t>(static_cast<uint8_t>(name[i]) ^ before));
    scrambled[i] = before;
  }
  return scrambled;
}

constexpr auto kScrambledHost = scramble(COWL_INTERNAL_HOST);

OroServiceOnce<IDataStore>& storeOnce() {
  static auto* const once = new OroServiceOnce<IDataStore>;
  return *once;
}

}  // namespace

std::string oroInternalHost() {
  std::string name;
  volatile uint8_t before = kSeed;  // keeps the compiler from doing this in advance
  for (const uint8_t byte : kScrambledHost) {
    name += static_cast<char>(turnRight(byte) ^ before);
    before = byte;
  }
  return name;
}

bool NetworkService::updateNetworkState() {
  const bool isInside = pingInternalHost();
  if (IDataStore* const store = storeOnce().get()) {
    store->SetInt(nullptr, "Network/Internal", isInside ? 1 : 0);
  }
  return isInside;
}

bool NetworkService::pingInternalHost() {
  platform::HostAddress address;
  return platform::findHost(oroInternalHost(), kLookUpLimit, address) &&
         platform::answersEcho(address, kEchoLimit);
}

void testaccess::resetNetworkService() { storeOnce().reset(); }

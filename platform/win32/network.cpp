#include "platform/network.h"

#include <cstring>

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

// Started once and never ended: a look-up may outlive whoever asked for it.
bool socketsStarted() {
  static const bool started = [] {
    WSADATA data = {};
    return WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }();
  return started;
}

}  // namespace

bool findSystemHost(const std::string& name, HostAddress& address) {
  if (!socketsStarted()) return false;
  const hostent* const host = gethostbyname(name.c_str());
  if (host == nullptr || host->h_addrtype != AF_INET || host->h_addr_list[0] == nullptr) {
    return false;
  }
  std::memcpy(address.bytes, host->h_addr_list[0], sizeof address.bytes);
  return true;
}

bool systemAnswersEcho(const HostAddress& address, int milliseconds) {
  const HANDLE echo = IcmpCreateFile();
  if (echo == INVALID_HANDLE_VALUE) return false;
  IPAddr host = 0;
  std::memcpy(&host, address.bytes, sizeof address.bytes);
  char payload[32] = {};
  alignas(ICMP_ECHO_REPLY) char reply[72] = {};  // one reply and the payload, with room to spare
  const DWORD replies = IcmpSendEcho(echo, host, payload, sizeof payload, nullptr, reply,
                                     sizeof reply, static_cast<DWORD>(milliseconds));
  IcmpCloseHandle(echo);
  return replies > 0;
}

}  // namespace platform

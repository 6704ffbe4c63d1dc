#include "platform/network.h"

#include <cerrno>
#include <cstring>

#include "platform/clock.h"
#include "platform/posix/posixgate.h"
#include "platform/systempart.h"

namespace platform {
namespace {

struct EchoRequest {
  icmphdr head;
  std::uint8_t payload[32];
};

// Waits for input until the moment (of steadyNanoseconds).
bool hasInput(int descriptor, std::int64_t end) {
  for (;;) {
    const std::int64_t rest = (end - steadyNanoseconds()) / 1000000;
    pollfd wanted = {descriptor, POLLIN, 0};
    const int ready = poll(&wanted, 1, static_cast<int>(rest > 0 ? rest : 0));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

// The system gives the socket the replies to its own requests alone.
bool hasReply(int descriptor, std::int64_t end) {
  while (hasInput(descriptor, end)) {
    EchoRequest reply = {};
    const ssize_t size = recv(descriptor, &reply, sizeof reply, 0);
    if (size < static_cast<ssize_t>(sizeof reply.head)) return false;
    if (reply.head.type == ICMP_ECHOREPLY) return true;
  }
  return false;
}

}  // namespace

bool findSystemHost(const std::string& name, HostAddress& address) {
  addrinfo wanted = {};
  wanted.ai_family = AF_INET;
  wanted.ai_socktype = SOCK_STREAM;  // each address once
  addrinfo* list = nullptr;
  if (getaddrinfo(name.c_str(), nullptr, &wanted, &list) != 0) return false;
  const auto* const first = reinterpret_cast<const sockaddr_in*>(list->ai_addr);
  std::memcpy(address.bytes, &first->sin_addr, sizeof address.bytes);
  freeaddrinfo(list);
  return true;
}

bool systemAnswersEcho(const HostAddress& address, int milliseconds) {
  const std::int64_t end = steadyNanoseconds() + std::int64_t{milliseconds} * 1000000;
  // The kind of socket that needs no privilege; the system fills in identity and checksum.
  const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_ICMP);
  if (descriptor < 0) return false;
  sockaddr_in host = {};
  host.sin_family = AF_INET;
  std::memcpy(&host.sin_addr, address.bytes, sizeof address.bytes);
  EchoRequest request = {};
  request.head.type = ICMP_ECHO;
  const ssize_t sent = sendto(descriptor, &request, sizeof request, MSG_DONTWAIT,
                              reinterpret_cast<const sockaddr*>(&host), sizeof host);
  const bool answered = sent == static_cast<ssize_t>(sizeof request) && hasReply(descriptor, end);
  ::close(descriptor);
  return answered;
}

}  // namespace platform

#pragma once

// Whether another machine can be reached: its address by name, and one echo request to it. Internet
// protocol version 4. Every failure is simply "no".
// Any thread.
//
//   platform::HostAddress address;
//   const bool there = platform::findHost(name, 1000, address) &&
//                      platform::answersEcho(address, 1000);

#include <cstdint>
#include <string>

namespace platform {

/// An address, in the order in which it is written: 127, 0, 0, 1.
struct HostAddress {
  std::uint8_t bytes[4];
};

/// The first address of a host name. Waits at most so many milliseconds; a look-up that takes
/// longer goes on in a thread of its own, and nobody hears of its result.
bool findHost(const std::string& name, int milliseconds, HostAddress& address);

/// Sends one echo request of 32 zero bytes; true if the reply comes within so many milliseconds.
/// On Windows a router's reply that the host is out of reach counts too; callers know. False where
/// the system lets the user send none: Linux does so by the setting net.ipv4.ping_group_range.
bool answersEcho(const HostAddress& address, int milliseconds);

/// Replace the system's look-up (which then runs in the thread of its own) and the request.
extern bool (*findHostHook)(const std::string& name, HostAddress& address);
extern bool (*answersEchoHook)(const HostAddress& address, int milliseconds);

}  // namespace platform

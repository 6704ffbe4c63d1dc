// NetworkService: tells once at start whether the organisation's own network is in reach.
//
// It sends one echo request to one host, whose name the build tells (COWL_INTERNAL_HOST), and puts
// the answer into the setting "Network/Internal". Any failure is a no, which is the normal state of
// a machine outside. The application main makes and publishes it. Main thread; may take a second
// for the name and one for the answer.
#pragma once

#include <string>

#include "interfaces/IOroNetworkService.h"
#include "orobasictypes/orooffers.h"

class NetworkService : public IOroNetworkService {
 public:
  static constexpr const char* className() { return "NetworkService"; }

  // The setting is set to 1 or 0 where somebody has declared it, and not made here.
  bool updateNetworkState() override;

  using Offers = OroOffers<NetworkService, IOroNetworkService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  static bool pingInternalHost();
};

// The host's name in clear.
std::string oroInternalHost();

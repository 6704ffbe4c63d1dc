// KelDataReceiverOf: the class behind KelDataReceiver, which hears of changes of settings and does
// nothing. Where base/basic/keldatareceiver.h can be included, take that.
//
// A template only because headers of this folder know no interface: whoever derives from it
// includes interfaces/IOroDataReceiver.h. An item does not count its receivers: remove the receiver
// before it dies. No data, any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/orooffers.h"

class IOroDataReceiver;
class OroString;

template <class Interface = IOroDataReceiver>
class KelDataReceiverOf : public Interface {
 public:
  static constexpr const char* className() { return "KelDataReceiver"; }
  using Offers = OroOffers<KelDataReceiverOf, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void OnBlobChanged(const char*, const void*, int32_t) override {}
  void OnIntExChanged(const char*, int32_t, int32_t) override {}
  void OnOroStringChanged(const char*, const OroString&) override {}
  void OnStringChanged(const char*, const char*) override {}
  void OnFloatChanged(const char*, double) override {}
  void OnIntChanged(const char*, int32_t) override {}
  void OnVoidFired(const char*) override {}
};

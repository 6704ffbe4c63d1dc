// KelDataReceiver: the do-nothing base of the receivers of changed settings.
//
// Derive from it and override the handlers of interest; IOroDataReceiver tells when each is called.
// An item does not count its receivers: remove the receiver before it dies. One thread at a time.
#pragma once

#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/orooffers.h"

class KelDataReceiver : public IOroDataReceiver {
 public:
  static constexpr const char* className() { return "KelDataReceiver"; }
  using Offers = OroOffers<KelDataReceiver, IOroDataReceiver>;

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

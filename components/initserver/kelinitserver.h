// KelInitServer: makes the application's libraries, classes and registry values known at start.
//
// It reads "cowl.description" from the directory of the component libraries, where it lies itself.
// A description with an error is not used at all; the report names the file and the line. Main
// thread, once.
#pragma once

#include "components/initserver/applicationdescription.h"
#include "interfaces/IKelInitServer.h"
#include "orobasictypes/orooffers.h"

class IOroObjBroker;
class OroPath;

class KelInitServer : public IKelInitServer {
 public:
  static constexpr const char* className() { return "KelInitServer"; }
  using Offers = OroOffers<KelInitServer, IKelInitServer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool readDescription(int32_t options) override;
  // Nothing is left to do then: all of it is known when readDescription returns.
  void finish() override {}
  void setClassRegistration(IOroClassRegistration* registration) override {
    registration_ = registration;
  }

 private:
  bool apply(const ApplicationDescription& description, const OroPath& directory);
  void registerClasses(const ApplicationDescription::ComponentEntry& entry, IOroObjBroker& broker);
  static void setRegistryValues(const ApplicationDescription& description);
  static void runInitializers(const ApplicationDescription& description, IOroObjBroker& broker);

  IOroClassRegistration* registration_ = nullptr;  // of the process, not counted
};

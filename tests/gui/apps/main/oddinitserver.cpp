// A library "initserver" for tests: the registry value "TEST/InitServer" says how it behaves.

#include <string_view>

#include "components/kit/entrypoint.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/sptr.h"
#include "tests/gui/apps/main/double.h"

namespace {

bool behaves(const char* how) {
  SPtr<Velmora::IOroRegistry> registry;
  KelCString key("TEST/InitServer");
  return registry && registry->valueEquals(key, how);
}

void note(const char* text) {
  SPtr<Velmora::IOroRegistry> registry;
  KelCString key("TEST/Notes");
  const KelCString* before = registry->getValue(key);
  KelCString notes(before != nullptr ? before->c_str() : "", text);
  registry->setValue(key, notes);
}

struct OddInitServer : tests::Double<OddInitServer, IKelInitServer> {
  static constexpr const char* className() { return "OddInitServer"; }
  bool readDescription(int32_t) override {
    note("read;");
    return !behaves("no description");
  }
  void finish() override { note("finish;"); }
  void setClassRegistration(IOroClassRegistration*) override { note("registration;"); }
};

struct Stranger : tests::Double<Stranger, IOroComponent> {
  static constexpr const char* className() { return "Stranger"; }
  void initialise(IOroObjBroker*) override {}
  void shutDown() override {}
  int32_t getClassObject(const GUID&, IOroUnknown**) override { return 0; }
};

struct OddComponent : tests::Double<OddComponent, IOroComponent> {
  static constexpr const char* className() { return "OddComponent"; }
  ~OddComponent() override { kelPoolShutdown(); }
  void initialise(IOroObjBroker* broker) override { oroSetBroker(broker); }
  void shutDown() override {}
  int32_t getClassObject(const GUID&, IOroUnknown** out) override {
    if (behaves("shared")) {
      *out = server_.get();
      return 2;
    }
    if (behaves("refuses")) return -7;
    if (behaves("null object")) return 1;
    if (behaves("stranger")) {
      *out = stranger_.get();
      return 1;
    }
    *out = new OddInitServer();
    return 1;
  }

 private:
  IPtr<OddInitServer> server_{new OddInitServer()};
  IPtr<Stranger> stranger_{new Stranger()};
};

}  // namespace

int EntryPoint(int32_t* version, IOroComponent** component) {
  *version = 100;
  *component = new OddComponent();
  return 1;
}

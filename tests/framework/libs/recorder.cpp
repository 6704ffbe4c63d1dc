// A component library without the kit that tells a journal of everything that happens to it. The
// build varies what its entry point answers.

#include "components/kit/entrypoint.h"
#include "interfaces/IOroCompInternal.h"
#include "interfaces/IOroComponent.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orooffers.h"
#include "tests/framework/libs/itestjournal.h"

namespace {

// Outlives the library: the test takes its components away first.
struct Journal {
  ITestJournal* service = nullptr;
  void note(const char* text) const {
    if (service != nullptr) service->note(text);
  }
  ~Journal() { note("unloaded"); }
};
Journal journal;

class KelRecorder : public IOroComponent, public IOroCompInternal {
 public:
  static constexpr const char* className() { return "KelRecorder"; }
  using Offers = OroOffers<KelRecorder, IOroComponent, IOroCompInternal>;
  ~KelRecorder() override {
    journal.note("deleted");
    kelPoolShutdown();
  }
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void initialise(IOroObjBroker* broker) override {
    oroSetBroker(broker);
    void* found = nullptr;
    oroGetService(KelCString::borrow(ITestJournal::interfaceName()), &found);
    journal.service = static_cast<ITestJournal*>(found);
    journal.note("initialise");
  }
  void shutDown() override { journal.note("shutDown"); }
  int32_t getClassObject(const GUID&, IOroUnknown**) override { return 0; }
  int32_t unusedSlot4() override {
    journal.note("slot 4");
    return 0;
  }
  int32_t unusedSlot5() override {
    journal.note("slot 5");
    return 0;
  }
  void setGroupName(const KelCString& name) override {
    journal.note(KelCString("group ", name.text()).text());
  }
};

}  // namespace

int EntryPoint(int32_t* version, IOroComponent** component) {
  *version = COWL_TEST_VERSION;
  *component = COWL_TEST_COMPONENT ? new KelRecorder : nullptr;
  return COWL_TEST_STATUS;
}

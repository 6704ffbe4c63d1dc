// OroComponentBase: the component object that serves the classes of an OroComponentRecord.
//
// A library that uses componentkit has one without a line of its own. It lives until the manager
// unloads the library, and holds one reference on each shared object that it made, so that none
// of them ends while another request may see it. Its callers serialise requests.
#pragma once

#include <vector>

#include "components/kit/orocomponentrecord.h"
#include "interfaces/IOroCompInternal.h"
#include "interfaces/IOroComponent.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class OroComponentBase : public IOroComponent, public IOroCompInternal {
 public:
  static constexpr const char* className() { return "OroComponentBase"; }
  using Offers = OroOffers<OroComponentBase, IOroComponent, IOroCompInternal>;

  // The record must outlive the component.
  explicit OroComponentBase(const OroComponentRecord& record);
  ~OroComponentBase() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Makes the broker and the component's identity known to the module, then calls the record's
  // `started`. A component that is linked into the executable leaves the host's identity alone.
  void initialise(IOroObjBroker* broker) override;
  void shutDown() override;
  // 1 or 2 by the class's sharing; 0 and null for an unknown class or a failure.
  int32_t getClassObject(const GUID& classId, IOroUnknown** out) override;
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }

  void setGroupName(const KelCString& name) override;

 private:
  IOroUnknown* sharedObject(size_t row);

  const OroComponentRecord& record_;
  std::vector<IPtr<IOroUnknown>> shared_;  // by row of the record; null until asked for
  bool ownModule_ = false;                 // the module's identity is this component's
  bool running_ = false;                   // started and not yet told to stop
};

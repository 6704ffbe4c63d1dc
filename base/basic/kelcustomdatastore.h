// KelCustomDataStore: a small store for a component's own use; settings in it are nobody else's.
//
//   IPtr<IDataStore> mine(new KelCustomDataStore);
//
// It is a KelDataStore in all it does, sized small, with the operating system's registry as its
// default reader and writer.
#pragma once

#include "base/basic/keldatastore.h"
#include "interfaces/ICustomDataStore.h"

class KelCustomDataStore final : public ICustomDataStore, public KelDataStore {
 public:
  static constexpr const char* className() { return "KelCustomDataStore"; }
  using Offers = OroOffersOver<KelCustomDataStore, KelDataStore, ICustomDataStore>;

  KelCustomDataStore() : KelDataStore(false, 5, 20) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

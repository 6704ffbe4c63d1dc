// GenDataStore: the settings store of the process, published as the service IDataStore.
//
//   GenDataStore* store = getGenDataStore();
//   broker->registerService(KelCString::borrow("IDataStore"), store);
//
// Made at the first request and never destroyed. Its default reader and writer are those of the
// settings document.
#pragma once

#include "base/basic/keldatastore.h"

class GenDataStore final : public KelDataStore {
 public:
  static constexpr const char* className() { return "GenDataStore"; }
  using Offers = OroOffersOver<GenDataStore, KelDataStore>;

  GenDataStore() : KelDataStore(true, 50, 3000) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

GenDataStore* getGenDataStore();

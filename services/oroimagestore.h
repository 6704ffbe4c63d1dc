// OroImageStore: the process-wide table of named images, as undecoded bytes.
//
// The application main makes and publishes it. It copies no bytes, and a container that it made
// lives as long as the process, also when its name has got another one. Main thread.
//
//   images->addImage(KelCString::borrow("atelier110"), kBytes, sizeof kBytes);
#pragma once

#include "interfaces/IImageStore.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"

class OroImageStore : public IImageStore {
 public:
  static constexpr const char* className() { return "OroImageStore"; }

  OroImageStore();

  void addImage(const KelCString& name, const void* data, uint32_t size) override;
  IImageContainer* getImage(const KelCString& name) override;
  bool findImage(const KelCString& name, IImageContainer** out) override;

  using Offers = OroOffers<OroImageStore, IImageStore>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  OroHashTable<KelCString, IImageContainer*> images_;
};

// OroDirService: turns a short directory name into a path.
//
// Some names are computed from the executable's place and the system's folders; all others stand in
// the settings under "DefaultFileNameDirectory", where the user can change them. The application
// main makes and publishes it; modules ask through oroDirPath. Main thread.
//
//   const OroPath& reports = directories->getDir("reports");
#pragma once

#include "interfaces/IOroDirService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"

class OroDirService : public IOroDirService {
 public:
  static constexpr const char* className() { return "OroDirService"; }

  OroDirService();

  const OroPath& getDir(const char* name) override;
  void setDir(const char* name, const OroPath& path) override;
  // As setDir, once the settings hold the defaults of all names.
  void setDirAfterDefaults(const char* name, const OroPath& path);
  // Fills the settings with the default of each name and makes the most used directories. Nothing
  // when that was done before, also in an earlier run, or before the product is known.
  void initDefaults();

  using Offers = OroOffers<OroDirService, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  OroPath computedDir(const char* name);

  // A name that is asked for again overwrites its path in place: references stay good.
  OroHashTable<KelCString, OroPath> cache_;
};

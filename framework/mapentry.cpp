#include "framework/mapentry.h"

#include <cstdio>
#include <string>

#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentManagerV3.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/streams.h"

namespace {

constexpr int32_t kContractVersion = 100;

// Whether the registry asks for silence when the library does not load. Any value but "0" does.
bool opensSilently(const OroPath& path) {
  const SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return false;
  char key[256];
  std::snprintf(key, sizeof key, "COMPONENT/%s/OpenFailsSilently", path.fileName(false).toNarrow());
  KelCString keyText(key);
  const KelCString* const value = registry->getValue(keyText);
  return value != nullptr && !value->equals("0");
}

OroEntryPoint linkedEntryPoint(const OroString& stem) {
  const OroString name = stem.toLower();
  const OroEntryPoint function = staticEntryPoint(name);
  if (function == nullptr) {
    platform::writeStandardError(
        "Error: could not find entry point for library: " + std::string(name.toNarrow()) + "\n");
  }
  return function;
}

}  // namespace

mapEntry::mapEntry(const OroString& path, IOroComponentManagerV3& manager, IOroObjBroker* broker) {
  const OroEntryPoint entryPoint = findEntryPoint(OroPath(path), manager.getStaticLinkage());
  if (entryPoint == nullptr) return;
  int32_t version = 0;
  const int status = entryPoint(&version, &component_);
  if (status != 1 || version != kContractVersion || component_ == nullptr) return;
  component_->initialise(broker);
  loaded_ = true;
}

OroEntryPoint mapEntry::findEntryPoint(const OroPath& path, bool isStatic) {
  OroString stem;
  path.split(stem);
  if (isStatic) return linkedEntryPoint(stem);

  library_ = new OroDynamicLibrary{opensSilently(path)};
  OroPath library(path);
  OroString extension = path.extension();
  if (!extension.isEmpty()) {
    library.setExtension("");
    extension = OroPath::extensionMark();
    extension.append(path.extension());
  }
  if (!library_->load(library, extension)) return nullptr;
  return reinterpret_cast<OroEntryPoint>(library_->symbol("EntryPoint"));
}

mapEntry::~mapEntry() {
  if (component_ != nullptr) {
    component_->shutDown();
    delete static_cast<IOroUnknown*>(component_);
  }
  if (library_ != nullptr) {
    library_->unload();
    delete library_;
  }
}

#include "framework/mapentry.h"

#include <cstdio>
#include <string>

#include "framework/componentload.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentManagerV3.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/clock.h"
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
  const bool isStatic = manager.getStaticLinkage();
  const int64_t start = platform::steadyNanoseconds();
  ComponentLoad load{path};
  load.step = bringUp(OroPath(path), isStatic, broker, load.answer);
  loaded_ = load.step == kOroLoadDone;
  load.nanoseconds = platform::steadyNanoseconds() - start;
  load.silent = library_ != nullptr && library_->silent;
  load.reported = load.step == kOroLoadFile || (isStatic && load.step == kOroLoadEntryPoint);
  tellComponentLoad(load);
}

OroLoadStep mapEntry::bringUp(const OroPath& path, bool isStatic, IOroObjBroker* broker,
                              int32_t& answer) {
  const OroEntryPoint entryPoint = findEntryPoint(path, isStatic);
  if (entryPoint == nullptr) {
    const bool opened = isStatic || library_->handle != nullptr;
    return opened ? kOroLoadEntryPoint : kOroLoadFile;
  }
  int32_t version = 0;
  const int status = entryPoint(&version, &component_);
  const bool otherVersion = status == 1 && version != kContractVersion;
  answer = otherVersion ? version : status;
  if (otherVersion) return kOroLoadVersion;
  if (status != 1 || component_ == nullptr) return kOroLoadComponent;
  component_->initialise(broker);
  return kOroLoadDone;
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

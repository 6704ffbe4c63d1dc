#include "services/helpservice.h"

#include <utility>
#include <vector>

#include "interfaces/IDataStore.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IHelpVolume.h"
#include "interfaces/IHelpVolumeV2.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "services/registryvalue.h"
#include "services/testaccess.h"

namespace {

constexpr GUID kVolumeClass = {
    0x60EE8CA4, 0x39F8, 0x4CF1, {0xAB, 0x33, 0x8A, 0x2C, 0xAB, 0x41, 0x2B, 0x51}};
constexpr GUID kViewerClass = {
    0x0C9D5C8B, 0x341E, 0x4B42, {0x8F, 0xF2, 0x13, 0xCC, 0x34, 0xA4, 0xF3, 0x93}};

constexpr const char* kFiles = "HELP/chm/";
constexpr const char* kSymbols = "HELP/sym_name/";
constexpr const char* kRoutes = "HELP/route_to/";
constexpr const char* kCommandDone = "Document/GenCmdDone";

// Empty where there is no such file.
OroPath findHelpFile(const KelCString& name) {
  const SPtr<IFileUtil> files;
  if (!files) return OroPath();
  const OroPath file{OroString(name)};
  for (const char* directory : {"exe", "workingdir"}) {
    const OroPath candidate = oroDirPath(directory).joined("Help").joined(file);
    if (files->isFile(candidate)) return candidate;
  }
  return OroPath();
}

template <class T>
T* createdObject(const GUID& classId) {
  void* found = nullptr;
  oroCreateObject(classId, KelCString::borrow(T::interfaceName()), &found);
  return static_cast<T*>(found);
}

IPtr<HelpService>& processHelpService() {
  static auto* const holder = new IPtr<HelpService>;
  return *holder;
}

}  // namespace

HelpService* getHelpService() {
  IPtr<HelpService>& holder = processHelpService();
  if (!holder) holder = new HelpService;
  return holder.get();
}

void testaccess::resetHelpService() { processHelpService() = nullptr; }

HelpService::~HelpService() {
  for (const auto& [name, volume] : volumes_) {
    if (volume != nullptr) volume->release();
  }
  const SPtr<IDataStore> store;
  if (store) store->RemoveReceiver(kCommandDone, this);
}

// --- The viewer and the table

void HelpService::createViewer() {
  viewer_ = nullptr;
  viewer_ = createdObject<IHelpViewer>(kViewerClass);
}

void HelpService::loadVolumes() {
  loadFiles();
  loadRoutes();
  const SPtr<IDataStore> store;
  if (store) store->AddReceiver(kCommandDone, this);
}

void HelpService::loadFiles() {
  for (const OroRegistryEntry& entry : oroRegistryEntries(kFiles)) {
    const OroPath file = findHelpFile(entry.value);
    if (file.isEmpty()) continue;
    const IPtr<IHelpVolume> volume(createdObject<IHelpVolume>(kVolumeClass));
    if (!volume) continue;
    volume->open(file);
    setVolume(entry.key, volume.get());
  }
}

void HelpService::loadRoutes() {
  VolumeTable symbols;
  for (const OroRegistryEntry& entry : oroRegistryEntries(kSymbols)) {
    const auto named = volumes_.find(entry.key);
    if (named != volumes_.end()) symbols[entry.value] = named->second;
  }
  for (const OroRegistryEntry& entry : oroRegistryEntries(kRoutes)) {
    const auto target = symbols.find(entry.value);
    if (target != symbols.end()) setVolume(entry.key, target->second);
  }
}

// Takes the reference of the name.
void HelpService::setVolume(const KelCString& name, IHelpVolume* volume) {
  volume->addRef();
  volumes_[name] = volume;
}

IHelpVolume* HelpService::volumeOf(const KelCString& name) const {
  const auto found = volumes_.find(name);
  return found != volumes_.end() ? found->second : nullptr;
}

void HelpService::volumes(OroArray<IHelpVolume*>& out) {
  out.clear();
  for (const auto& [name, volume] : volumes_) out.add(volume);
}

// --- Topics

void HelpService::showTopic(const KelCString& name, const KelCString& topic) {
  if (!viewer_) return;
  IHelpVolume* const volume = volumeOf(name);
  if (volume == nullptr) return;
  OroString address;
  volume->topicAddress(address, topic);
  show(address);
}

void HelpService::showTopicV2(const KelCString& name, const KelCString& topic) {
  if (!viewer_) return;
  auto* const volume = oroQuery<IHelpVolumeV2>(volumeOf(name));
  if (volume == nullptr) return;
  OroString address;
  volume->topicAddressV2(address, topic);
  show(address);
}

void HelpService::show(const OroString& address) {
  if (!address.isEmpty()) viewer_->show(address);
}

const OroString& HelpService::defaultWebAddress() {
  static const auto& address = *new OroString(COWL_HOME_PAGE);
  return address;
}

void HelpService::setTopicOverride(const KelCString& text, bool append) {
  topicOverride_ = KelCString(text.c_str());
  overrideAppends_ = append;
}

void HelpService::topicOverride(KelCString& out) { out = topicOverride_; }

void HelpService::applyTopicOverride(KelCString& out, const KelCString& topic) {
  KelCString result(topic);
  if (!topicOverride_.isEmpty()) {
    if (overrideAppends_) {
      result.append(topicOverride_.c_str());
    } else {
      result = topicOverride_;
    }
  }
  out = result;
}

void HelpService::OnVoidFired(const char*) { topicOverride_ = KelCString::empty(); }

// The reports of OroObjectBroker: what it says when something cannot be found or made, and where.

#include <atomic>
#include <string>

#include "framework/oroobjectbroker.h"
#include "framework/testaccess.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IOroComponentManagerV2.h"
#include "interfaces/IOroLog3.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/sptr.h"
#include "platform/streams.h"

namespace {

std::atomic<int32_t> duplicateCount = 0;  // of the process

// A report may look for services that cannot be made, which is a report in turn.
thread_local bool reporting = false;

// The setting by which the user interface shows the last report.
void storeError(const char* text) {
  constexpr const char* path = "objectbroker_errorstring";
  constexpr int32_t capacity = 4095;
  const SPtr<IDataStore> store;
  if (!store) return;
  if (store->Exists(path)) {
    store->SetString(nullptr, path, text);
  } else {
    store->CreateString(path, capacity, text, 0);
  }
}

// "name (id)", or the id alone where there is no name.
void appendIdentity(KelCString& text, const KelCString& name, const GUID& id) {
  const KelCString idText = oroGuidText(id);
  if (name.isEmpty()) {
    text.append(idText.text());
    return;
  }
  text.append(name.text());
  text.append(" (");
  text.append(idText.text());
  text.append(")");
}

}  // namespace

void OroObjectBroker::report(const KelCString& text) {
  notify(text, 0);
  if (reporting) return;
  reporting = true;
  storeError(text.text());
  const SPtr<IOroLog3> log;
  if (log) log->log(text);
  reporting = false;
}

void OroObjectBroker::reportNoObject(const GUID& classId, const GUID& componentId) {
  const auto className = classNames_.find(classId);
  KelCString text("can't get object of id [");
  appendIdentity(text, className != classNames_.end() ? className->second : KelCString(), classId);
  text.append("] in component [");
  appendIdentity(text, componentName(componentId), componentId);
  text.append("]");
  report(text);
}

void OroObjectBroker::reportNoInterface(IOroUnknown& object, const KelCString& interfaceName) {
  // Asking for the default class leaves an empty entry for an unknown interface. It stays: from
  // then on the interface counts as registered.
  uint32_t index = 0;
  const auto* entry = interfaceToClass_.find(interfaceName, &index);
  if (entry == nullptr) {
    entry = interfaceToClass_.insert(index, KelCString(interfaceName.text()), GUID{});
  }
  const GUID standard = entry->value;
  KelCString text("class [", object.getClassName(), "] does not support [");
  text.append(interfaceName.text());
  text.append("] - ");
  text.append(componentNameOfClass(standard).text());
  report(text);
}

void OroObjectBroker::reportDuplicate(const GUID& classId, const GUID& firstComponent,
                                      const GUID& component, const KelCString& className) {
  const auto origin = [this](const char* lead, const GUID& id) {
    KelCString line(lead, oroGuidText(id).text(), "-");
    line.append(componentName(id).text());
    return line;
  };
  const KelCString id = oroGuidText(classId);
  const KelCString first = origin("  first defined in: ", firstComponent);
  const KelCString also = origin("   also defined in: ", component);
  report(KelCString("duplicate class id: ", id.text()));
  report(first);
  report(also);

  std::string lines = "(" + std::to_string(++duplicateCount) + ") duplicate class name = ";
  for (const char* part :
       {className.c_str(), " id = ", id.text(), "\n", first.text(), "\n", also.text(), "\n"}) {
    lines += part;
  }
  platform::writeStandardError(lines);
}

// Empty when the manager does not know it.
KelCString OroObjectBroker::componentName(const GUID& componentId) {
  KelCString name;
  auto* const manager = oroQuery<IOroComponentManagerV2>(componentManager_);
  if (manager != nullptr) manager->getComponentName(componentId, groupName_, name);
  return name;
}

KelCString OroObjectBroker::componentNameOfClass(const GUID& classId) {
  KelCString name;
  const auto* const entry = classToComponent_.find(classId);
  if (entry != nullptr) name = componentName(entry->value);
  return !name.isEmpty() ? name : KelCString::borrow("<unknown>");
}

namespace testaccess {

void resetDuplicateCount() { duplicateCount = 0; }

}  // namespace testaccess

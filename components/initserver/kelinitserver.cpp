#include "components/initserver/kelinitserver.h"

#include <string>

#include "components/initserver/applicationdescriptionparser.h"
#include "interfaces/IOroClassRegistration.h"
#include "interfaces/IOroComponentLoader.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroInitializer.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kFileName = "cowl.description";

void report(const OroString& text) {
  SPtr<IOroErrorService> errors;
  if (errors) errors->report(text, 1, KelCString());
}

// At most one byte more than a description may have, so that a larger file is refused by its size.
bool readFile(const OroPath& path, std::string& text) {
  OroFileReader file;
  if (!file.open(path)) return false;
  text.resize(ApplicationDescriptionParser::kLargestText + 1);
  size_t size = 0;
  while (const size_t got = file.read(text.data() + size, text.size() - size)) size += got;
  text.resize(size);
  return !file.failed();
}

KelCString narrow(const std::string& text) { return KelCString(text.c_str()); }

}  // namespace

bool KelInitServer::readDescription(int32_t) {
  const OroPath directory = oroDirPath("components");
  const OroPath path = directory.joined(kFileName);
  std::string text;
  OroString message;
  if (!readFile(path, text)) {
    report(oroTranslate(message, "Cannot read the application description %1", oroShownPath(path)));
    return false;
  }
  ApplicationDescription description;
  ApplicationDescriptionParser parser(description);
  if (!parser.parse(text)) {
    OroString problem;
    oroTranslate(problem, parser.problem(), OroString(parser.subject().c_str()));
    report(oroTranslate(message, "%1, line %2: %3", oroShownPath(path),
                        OroString(std::to_string(parser.line()).c_str()), problem));
    return false;
  }
  return apply(description, directory);
}

bool KelInitServer::apply(const ApplicationDescription& description, const OroPath& directory) {
  IOroObjBroker* broker = oroBroker();
  if (broker == nullptr || registration_ == nullptr) return false;
  auto* loader = oroQuery<IOroComponentLoader>(broker->componentManager());
  if (loader == nullptr) return false;
  setRegistryValues(description);
  for (const auto& entry : description.components) {
    loader->registerComponent(directory.joined(entry.library.c_str()), entry.id, narrow(entry.name),
                              narrow(entry.group));
    registerClasses(entry, *broker);
  }
  runInitializers(description, *broker);
  return true;
}

void KelInitServer::registerClasses(const ApplicationDescription::ComponentEntry& entry,
                                    IOroObjBroker& broker) {
  IOroObjBroker* owner = broker.groupBroker(narrow(entry.group), true);
  if (owner == nullptr) return;
  IOroClassRegistration* classes = entry.group.empty() ? registration_ : owner->classRegistration();
  for (const auto& described : entry.classes) {
    KelCStringSet tags;
    for (const std::string& tag : described.tags) tags.insert(narrow(tag));
    classes->registerClass(described.id, entry.id, tags, narrow(described.name));
    for (const std::string& name : described.defaultOf) {
      owner->registerInterface(narrow(name), described.id);
    }
  }
}

void KelInitServer::setRegistryValues(const ApplicationDescription& description) {
  SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return;
  for (const auto& entry : description.registry) {
    KelCString key = narrow(entry.key);
    registry->setValue(key, narrow(entry.value));
  }
}

// An object that cannot be had was reported by the loader or the broker; the start goes on.
void KelInitServer::runInitializers(const ApplicationDescription& description,
                                    IOroObjBroker& broker) {
  const KelCString wanted = KelCString::borrow(IOroInitializer::interfaceName());
  for (const auto& component : description.components) {
    IOroObjBroker* owner = broker.groupBroker(narrow(component.group), true);
    for (const auto& entry : component.classes) {
      if (!entry.initializer || owner == nullptr) continue;
      void* found = nullptr;
      owner->createObject(entry.id, wanted, &found);
      IPtr<IOroInitializer> initializer(static_cast<IOroInitializer*>(found));
      if (initializer) initializer->initialize();
    }
  }
}

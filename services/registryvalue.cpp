#include "services/registryvalue.h"

#include <utility>

#include "interfaces/IOroRegIter.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/sptr.h"

const KelCString* oroRegistryValue(const KelCString& key) { return oroRegistryValue(key.text()); }

const KelCString* oroRegistryValue(const char* key) {
  SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return nullptr;
  KelCString owned(key);  // the registry divides the key in place
  return registry->getValue(owned);
}

std::vector<OroRegistryEntry> oroRegistryEntries(const char* section) {
  std::vector<OroRegistryEntry> entries;
  const SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return entries;
  KelCString owned(section);  // the registry divides the key in place
  const IPtr<Velmora::IOroRegIter> walk(registry->newIterator(owned));
  if (!walk) return entries;
  for (walk->first(); !walk->atEnd(); walk->next()) {
    OroRegistryEntry entry;
    walk->key(entry.key);
    walk->value(entry.value);
    entries.push_back(std::move(entry));
  }
  return entries;
}

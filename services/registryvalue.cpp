#include "services/registryvalue.h"

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/sptr.h"

const KelCString* oroRegistryValue(const KelCString& key) { return oroRegistryValue(key.text()); }

const KelCString* oroRegistryValue(const char* key) {
  SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return nullptr;
  KelCString owned(key);  // the registry divides the key in place
  return registry->getValue(owned);
}

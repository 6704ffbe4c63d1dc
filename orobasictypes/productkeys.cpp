#include "orobasictypes/productkeys.h"

#include <string>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

namespace {

// Adds the value as a further level. False without one.
bool appendLevel(std::u16string& path, const char* key) {
  const SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return false;
  KelCString owned(key);  // the registry divides the key in place
  const KelCString* const value = registry->getValue(owned);
  if (value == nullptr || value->isEmpty()) return false;
  path += u'\\';
  path += OroString(*value).wideText();
  return true;
}

}  // namespace

platform::RegistryKey userProductKey(bool openVersion) {
  std::u16string path = u"Software\\Velmora";
  if (!appendLevel(path, "PRODUCT_INFO/appName")) return nullptr;
  if (openVersion && !appendLevel(path, "PRODUCT_INFO/displayVersion")) return nullptr;
  platform::RegistryKey key = nullptr;
  const platform::RegistryKey user = platform::registryRoot(platform::RegistryRoot::currentUser);
  const std::uint32_t access = platform::registryRead | platform::registryWrite;
  platform::registryCreateKey(user, path, access, key);
  return key;
}

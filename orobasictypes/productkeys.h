// The product's own keys in the operating system's registry.
//
//   const platform::RegistryKey key = userProductKey(true);
//   if (key == nullptr) return false;
//   ...
//   platform::registryCloseKey(key);
//
// The product's name and version come from the values "PRODUCT_INFO/appName" and
// "PRODUCT_INFO/displayVersion" of the process's registry. Main thread.
#pragma once

#include "platform/osregistry.h"

// Opens "Software\Velmora\<name>" of the current user, with the version below it if `openVersion`
// is set, for reading and writing, and makes what is missing. Null if that fails, or if the product
// has no such name or version yet. The caller closes it.
platform::RegistryKey userProductKey(bool openVersion);

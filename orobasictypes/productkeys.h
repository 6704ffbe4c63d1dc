// The keys in the operating system's registry where the product and its macro server keep options.
//
//   const platform::RegistryKey key = userProductKey(true);
//   if (key == nullptr) return false;
//   ...
//   platform::registryCloseKey(key);
//
// The product's name and version come from the values "PRODUCT_INFO/appName" and
// "PRODUCT_INFO/displayVersion" of the process's registry. Keys are opened for reading and writing;
// the caller closes those that it is given. A failure gives null or false and is not reported. Main
// thread.
#pragma once

#include <cstdint>

#include "platform/osregistry.h"

class OroString;

// Opens "Software\Velmora\<name>" of the current user, with the version below it if `openVersion`
// is set, and makes what is missing. Null if that fails, or if the product has no such name or
// version yet.
platform::RegistryKey userProductKey(bool openVersion);

// The same key of the local machine; nothing is made.
platform::RegistryKey machineProductKey(bool openVersion);

// Opens "Software\<company>\<product>\<version>\Options\MacroServer" of the current user. `out` is
// null on failure.
bool openMacroServerKey(platform::RegistryKey& out, const OroString& company,
                        const OroString& product, const OroString& version);

// Makes a key below userProductKey(openVersion). An empty name does nothing.
void createSubKey(const OroString& name, bool openVersion);

// Makes the record of a version of a product: "Software\Velmora\<product>" of the local machine,
// with the version as its value "Current Version", and the key `sub` in it, which is `out`; an
// empty `sub` gives the product's own key. `out` is null on failure.
bool createVersionKey(platform::RegistryKey& out, const OroString& product,
                      const OroString& version, const OroString& sub);

// The text value of an open key. False, and `out` as it was, when there is none.
bool readValue(platform::RegistryKey key, const OroString& name, OroString& out);

// The number of an open key; 0 when there is none.
uint32_t readDword(platform::RegistryKey key, const OroString& name);

// The text value of userProductKey(true), as readValue.
bool readUserValue(const OroString& name, OroString& out);

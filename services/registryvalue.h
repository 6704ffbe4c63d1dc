// Reading the process's registry, as the services here need it.
#pragma once

#include <vector>

#include "orobasictypes/kelcstring.h"

struct OroRegistryEntry {
  KelCString key;  // below the section
  KelCString value;
};

// The value at the key, borrowed until the node goes; null without such a node or without a
// registry. Main thread.
const KelCString* oroRegistryValue(const KelCString& key);
const KelCString* oroRegistryValue(const char* key);

// The entries right below a section, in the order of their making; none without a registry. Copies,
// since the registry must not change during a walk and what is done for an entry may. Main thread.
std::vector<OroRegistryEntry> oroRegistryEntries(const char* section);

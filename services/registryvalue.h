// Reading one value of the process's registry, as the services here need it.
#pragma once

class KelCString;

// The value at the key, borrowed until the node goes; null without such a node or without a
// registry. Main thread.
const KelCString* oroRegistryValue(const KelCString& key);
const KelCString* oroRegistryValue(const char* key);

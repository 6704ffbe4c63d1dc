#include "platform/osregistry.h"

#include "platform/memoryregistry.h"
#include "platform/systempart.h"

namespace platform {

// Never destroyed: keys may be closed by whoever ends last.
RegistryStore& systemRegistryStore() {
  static RegistryStore& store = *new MemoryRegistry;
  return store;
}

}  // namespace platform

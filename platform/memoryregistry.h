#pragma once

// A registry that lives in the process: the system's own on Linux, and a clean one for tests on
// every system. Names keep the letters they were made with and are found in any case (ASCII).
// Keys it gives out stay valid until they are closed, also after their tree was removed: then
// they give registryNotFound. Main thread only.

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/osregistry.h"

namespace platform {

class MemoryRegistry : public RegistryStore {
 public:
  MemoryRegistry();
  ~MemoryRegistry() override;
  MemoryRegistry(const MemoryRegistry&) = delete;
  MemoryRegistry& operator=(const MemoryRegistry&) = delete;

  RegistryKey root(RegistryRoot which) override;
  std::int32_t openKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                       RegistryKey& out) override;
  std::int32_t createKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                         RegistryKey& out) override;
  std::int32_t queryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                          void* data, std::uint32_t* size) override;
  std::int32_t setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        const void* data, std::uint32_t size) override;
  std::int32_t removeTree(RegistryKey parent, std::u16string_view name) override;
  std::int32_t closeKey(RegistryKey key) override;

  /// Keys that are open besides the roots.
  int openKeyCount() const;

 private:
  struct Node;
  struct Handle;

  Handle* handleOf(RegistryKey key) const;
  std::int32_t hand(std::shared_ptr<Node> node, std::uint32_t access, RegistryKey& out);

  std::set<RegistryKey> handles_;        // all that are valid, the two roots included
  std::unique_ptr<Handle> currentUser_;  // the roots, never closed
  std::unique_ptr<Handle> localMachine_;
};

}  // namespace platform

#pragma once

// A registry that lives in the process: a clean one for tests on every system. Names are found in
// any case of their ASCII letters. Keys it gives out stay valid until they are closed, also after
// their tree was removed: then they give registryNotFound. Main thread only.

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

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
  std::int32_t handOut(std::shared_ptr<Node> node, std::uint32_t access, RegistryKey& out);

  std::unique_ptr<Handle> currentUser_;  // the roots, never closed
  std::unique_ptr<Handle> localMachine_;
  std::set<RegistryKey> handles_;  // all that are valid, the two roots included
};

}  // namespace platform

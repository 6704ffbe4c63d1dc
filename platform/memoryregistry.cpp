#include "platform/memoryregistry.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/registrytree.h"

namespace platform {
namespace {

/// The names in a key path, folded.
std::optional<std::vector<std::u16string>> splitPath(std::u16string_view path) {
  auto names = splitRegistryPath(path);
  if (names) {
    for (std::u16string& name : *names) name = foldedRegistryName(name);
  }
  return names;
}

}  // namespace

struct MemoryRegistry::Node {
  std::size_t level = 0;                                 // roots are 0
  bool removed = false;                                  // no longer part of the tree
  std::map<std::u16string, std::shared_ptr<Node>> keys;  // by folded name
  std::map<std::u16string, RegistryValue> values;        // by folded name

  void remove() {
    removed = true;
    for (auto& [name, child] : keys) child->remove();
  }
};

struct MemoryRegistry::Handle {
  std::shared_ptr<Node> node;
  std::uint32_t access;
};

MemoryRegistry::MemoryRegistry()
    : currentUser_(new Handle{std::make_shared<Node>(), registryFullAccess}),
      localMachine_(new Handle{std::make_shared<Node>(), registryFullAccess}),
      handles_{currentUser_.get(), localMachine_.get()} {}

MemoryRegistry::~MemoryRegistry() {
  for (const RegistryKey key : handles_) {
    if (key != currentUser_.get() && key != localMachine_.get()) delete static_cast<Handle*>(key);
  }
}

RegistryKey MemoryRegistry::root(RegistryRoot which) {
  return which == RegistryRoot::currentUser ? currentUser_.get() : localMachine_.get();
}

MemoryRegistry::Handle* MemoryRegistry::handleOf(RegistryKey key) const {
  return handles_.contains(key) ? static_cast<Handle*>(key) : nullptr;
}

std::int32_t MemoryRegistry::handOut(std::shared_ptr<Node> node, std::uint32_t access,
                                     RegistryKey& out) {
  out = new Handle{std::move(node), access};
  handles_.insert(out);
  return registryOk;
}

std::int32_t MemoryRegistry::openKey(RegistryKey parent, std::u16string_view name,
                                     std::uint32_t access, RegistryKey& out) {
  const Handle* handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  const auto names = splitPath(name);
  if (!names) return registryBadParameter;
  std::shared_ptr<Node> node = handle->node;
  for (const std::u16string& step : *names) {
    const auto found = node->keys.find(step);
    if (found == node->keys.end()) return registryNotFound;
    node = found->second;
  }
  if (node->removed) return registryNotFound;
  return handOut(std::move(node), access, out);
}

std::int32_t MemoryRegistry::createKey(RegistryKey parent, std::u16string_view name,
                                       std::uint32_t access, RegistryKey& out) {
  const Handle* handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  const auto names = splitPath(name);
  if (!names) return registryBadParameter;
  std::shared_ptr<Node> node = handle->node;
  if (node->removed) return registryNotFound;
  if (node->level + names->size() > deepestRegistryLevel) {
    return registryBadParameter;
  }
  for (const std::u16string& step : *names) {
    auto found = node->keys.find(step);
    if (found == node->keys.end()) {
      if ((handle->access & registryMayCreate) == 0) return registryAccessDenied;
      auto child = std::make_shared<Node>();
      child->level = node->level + 1;
      found = node->keys.emplace(step, std::move(child)).first;
    }
    node = found->second;
  }
  return handOut(std::move(node), access, out);
}

std::int32_t MemoryRegistry::queryValue(RegistryKey key, std::u16string_view name,
                                        std::uint32_t* type, void* data, std::uint32_t* size) {
  const Handle* handle = handleOf(key);
  if (handle == nullptr) return registryBadKey;
  if (data != nullptr && size == nullptr) return registryBadParameter;
  if ((handle->access & registryMayQuery) == 0) return registryAccessDenied;
  const auto found = handle->node->values.find(foldedRegistryName(name));
  if (found == handle->node->values.end() || handle->node->removed) return registryNotFound;
  return found->second.handOut(type, data, size);
}

std::int32_t MemoryRegistry::setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                      const void* data, std::uint32_t size) {
  const Handle* handle = handleOf(key);
  if (handle == nullptr) return registryBadKey;
  if (data == nullptr && size != 0) return registryBadParameter;
  if ((handle->access & registryMaySet) == 0) return registryAccessDenied;
  if (handle->node->removed) return registryNotFound;
  const std::string bytes(static_cast<const char*>(data), size);
  handle->node->values[foldedRegistryName(name)] = {std::u16string(name), type, bytes};
  return registryOk;
}

std::int32_t MemoryRegistry::removeTree(RegistryKey parent, std::u16string_view name) {
  const Handle* handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  const auto names = splitPath(name);
  if (!names || names->empty()) return registryBadParameter;
  std::shared_ptr<Node> node = handle->node;
  for (std::size_t i = 0; i + 1 < names->size(); ++i) {
    const auto found = node->keys.find((*names)[i]);
    if (found == node->keys.end()) return registryNotFound;
    node = found->second;
  }
  const auto found = node->keys.find(names->back());
  if (found == node->keys.end()) return registryNotFound;
  found->second->remove();
  node->keys.erase(found);
  return registryOk;
}

std::int32_t MemoryRegistry::closeKey(RegistryKey key) {
  if (handleOf(key) == nullptr) return registryBadKey;
  if (key == currentUser_.get() || key == localMachine_.get()) return registryOk;
  handles_.erase(key);
  delete static_cast<Handle*>(key);
  return registryOk;
}

int MemoryRegistry::openKeyCount() const {
  constexpr int rootCount = 2;
  return static_cast<int>(handles_.size()) - rootCount;
}

}  // namespace platform

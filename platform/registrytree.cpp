#include "platform/registrytree.h"

#include <algorithm>

#include "platform/osregistry.h"

namespace platform {

std::u16string foldedRegistryName(std::u16string_view name) {
  std::u16string out(name);
  for (char16_t& c : out) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
  }
  return out;
}

std::optional<std::vector<std::u16string>> splitRegistryPath(std::u16string_view path) {
  std::vector<std::u16string> names;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(u'\\'), path.size());
    if (end > longestRegistryKeyName) return std::nullopt;
    if (end > 0) names.emplace_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return names;
}

std::int32_t RegistryValue::handOut(std::uint32_t* outType, void* outData,
                                    std::uint32_t* size) const {
  if (outType != nullptr) *outType = type;
  if (size == nullptr) return registryOk;
  const std::uint32_t room = *size;
  *size = static_cast<std::uint32_t>(data.size());
  if (outData == nullptr) return registryOk;
  if (room < data.size()) return registryMoreData;
  std::copy(data.begin(), data.end(), static_cast<char*>(outData));
  return registryOk;
}

RegistryNode* RegistryNode::child(std::u16string_view childName) const {
  const auto found = keys.find(foldedRegistryName(childName));
  return found == keys.end() ? nullptr : found->second.get();
}

RegistryNode& RegistryNode::childMade(std::u16string_view childName) {
  std::unique_ptr<RegistryNode>& slot = keys[foldedRegistryName(childName)];
  if (slot == nullptr) {
    slot = std::make_unique<RegistryNode>();
    slot->name = childName;
  }
  return *slot;
}

const RegistryValue* RegistryNode::value(std::u16string_view valueName) const {
  const auto found = values.find(foldedRegistryName(valueName));
  return found == values.end() ? nullptr : &found->second;
}

void RegistryNode::set(std::u16string_view valueName, std::uint32_t type, std::string_view data) {
  const auto [place, isNew] = values.try_emplace(foldedRegistryName(valueName));
  if (isNew) place->second.name = valueName;
  place->second.type = type;
  place->second.data = data;
}

}  // namespace platform

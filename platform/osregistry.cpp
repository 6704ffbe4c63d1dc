#include "platform/osregistry.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/systempart.h"
#include "platform/text.h"

namespace platform {
namespace {

RegistryStore* replacement = nullptr;

std::u16string_view textIn(const std::vector<char16_t>& units) {
  return {units.data(), units.size()};
}

// Hands bytes out by the rules of queryValue.
std::int32_t handOut(std::string_view bytes, void* data, std::uint32_t* size) {
  if (size == nullptr) return data == nullptr ? registryOk : registryBadParameter;
  const std::uint32_t room = *size;
  *size = static_cast<std::uint32_t>(bytes.size());
  if (data == nullptr) return registryOk;
  if (room < bytes.size()) return registryMoreData;
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(data));
  return registryOk;
}

// Reads a whole value that is known to be a text; an odd last byte is left out.
std::int32_t readUnits(RegistryKey key, std::u16string_view name, std::uint32_t size,
                       std::vector<char16_t>& units) {
  std::vector<char> bytes(size);
  std::uint32_t read = size;
  const std::int32_t status = registryQueryValue(key, name, nullptr, bytes.data(), &read);
  if (status != registryOk) return status;
  units.resize(std::min(size, read) / sizeof(char16_t));
  if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
  return registryOk;
}

}  // namespace

RegistryStore& registryStore() {
  return replacement != nullptr ? *replacement : systemRegistryStore();
}

RegistryStore* setRegistryStore(RegistryStore* store) { return std::exchange(replacement, store); }

RegistryKey registryRoot(RegistryRoot which) { return registryStore().root(which); }

std::int32_t registryOpenKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                             RegistryKey& out) {
  return registryStore().openKey(parent, name, access, out);
}

std::int32_t registryOpenKey(RegistryKey parent, std::string_view name, std::uint32_t access,
                             RegistryKey& out) {
  return registryOpenKey(parent, fromCodePage(name), access, out);
}

std::int32_t registryCreateKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                               RegistryKey& out) {
  return registryStore().createKey(parent, name, access, out);
}

std::int32_t registryCreateKey(RegistryKey parent, std::string_view name, std::uint32_t access,
                               RegistryKey& out) {
  return registryCreateKey(parent, fromCodePage(name), access, out);
}

std::int32_t registryQueryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                                void* data, std::uint32_t* size) {
  return registryStore().queryValue(key, name, type, data, size);
}

std::int32_t registryQueryValue(RegistryKey key, std::string_view name, std::uint32_t* type,
                                void* data, std::uint32_t* size) {
  const std::u16string wideName = fromCodePage(name);
  std::uint32_t storedType = registryTypeNone;
  std::uint32_t storedSize = 0;
  const std::int32_t status = registryQueryValue(key, wideName, &storedType, nullptr, &storedSize);
  if (status != registryOk) return status;
  if (type != nullptr) *type = storedType;
  if (storedType != registryTypeText) return registryQueryValue(key, wideName, type, data, size);
  std::vector<char16_t> units;
  const std::int32_t readStatus = readUnits(key, wideName, storedSize, units);
  if (readStatus != registryOk) return readStatus;
  return handOut(toCodePage(textIn(units)), data, size);
}

std::int32_t registrySetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                              const void* data, std::uint32_t size) {
  return registryStore().setValue(key, name, type, data, size);
}

std::int32_t registrySetValue(RegistryKey key, std::string_view name, std::uint32_t type,
                              const void* data, std::uint32_t size) {
  const std::u16string wideName = fromCodePage(name);
  if (type != registryTypeText) return registrySetValue(key, wideName, type, data, size);
  const std::u16string text = fromCodePage({static_cast<const char*>(data), size});
  return registrySetValue(key, wideName, type, text.data(),
                          static_cast<std::uint32_t>(text.size() * sizeof(char16_t)));
}

std::int32_t registryRemoveTree(RegistryKey parent, std::u16string_view name) {
  return registryStore().removeTree(parent, name);
}

std::int32_t registryCloseKey(RegistryKey key) { return registryStore().closeKey(key); }

bool registryReadText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                      std::u16string& out) {
  RegistryKey open = nullptr;
  if (registryOpenKey(registryRoot(root), key, registryRead, open) != registryOk) return false;
  std::uint32_t type = registryTypeNone;
  std::uint32_t size = 0;
  std::vector<char16_t> units;
  const bool read = registryQueryValue(open, name, &type, nullptr, &size) == registryOk &&
                    type == registryTypeText && readUnits(open, name, size, units) == registryOk;
  registryCloseKey(open);
  if (!read) return false;
  out.assign(units.begin(), std::find(units.begin(), units.end(), u'\0'));
  return true;
}

}  // namespace platform

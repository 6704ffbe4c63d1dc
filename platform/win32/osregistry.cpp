#include "platform/osregistry.h"

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {
namespace {

static_assert(registryTypeText == REG_SZ && registryTypeDword == REG_DWORD);
static_assert(registryRead == KEY_READ && registryWrite == KEY_WRITE);
static_assert(registryFullAccess == KEY_ALL_ACCESS && registryMoreData == ERROR_MORE_DATA);
static_assert(registryDamaged == ERROR_REGISTRY_CORRUPT &&
              registryIoFailed == ERROR_REGISTRY_IO_FAILED);

HKEY systemKey(RegistryKey key) { return static_cast<HKEY>(key); }

class SystemRegistry : public RegistryStore {
 public:
  RegistryKey root(RegistryRoot which) override {
    return which == RegistryRoot::currentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
  }

  std::int32_t openKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                       RegistryKey& out) override {
    HKEY opened = nullptr;
    const LSTATUS status =
        RegOpenKeyExW(systemKey(parent), toWide(name).c_str(), 0, access, &opened);
    if (status == ERROR_SUCCESS) out = opened;
    return status;
  }

  std::int32_t createKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                         RegistryKey& out) override {
    HKEY opened = nullptr;
    const LSTATUS status = RegCreateKeyExW(systemKey(parent), toWide(name).c_str(), 0, nullptr, 0,
                                           access, nullptr, &opened, nullptr);
    if (status == ERROR_SUCCESS) out = opened;
    return status;
  }

  std::int32_t queryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                          void* data, std::uint32_t* size) override {
    DWORD storedType = 0;
    DWORD storedSize = size != nullptr ? *size : 0;
    const LSTATUS status =
        RegQueryValueExW(systemKey(key), toWide(name).c_str(), nullptr, &storedType,
                         static_cast<BYTE*>(data), size != nullptr ? &storedSize : nullptr);
    if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return status;
    if (type != nullptr) *type = storedType;
    if (size != nullptr) *size = storedSize;
    return status;
  }

  std::int32_t setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        const void* data, std::uint32_t size) override {
    return RegSetValueExW(systemKey(key), toWide(name).c_str(), 0, type,
                          static_cast<const BYTE*>(data), size);
  }

  std::int32_t removeTree(RegistryKey parent, std::u16string_view name) override {
    if (name.empty()) return registryBadParameter;  // the system would empty the parent
    return RegDeleteTreeW(systemKey(parent), toWide(name).c_str());
  }

  std::int32_t closeKey(RegistryKey key) override { return RegCloseKey(systemKey(key)); }
};

}  // namespace

RegistryStore& systemRegistryStore() {
  static RegistryStore& store = *new SystemRegistry;
  return store;
}

}  // namespace platform

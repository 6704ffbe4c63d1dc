#include "orobasictypes/productkeys.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

using platform::RegistryKey;

namespace {

constexpr uint32_t kAccess = platform::registryRead | platform::registryWrite;

// Adds the value as a further level. False without one.
bool appendLevel(std::u16string& path, const char* key) {
  const SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return false;
  KelCString owned(key);  // the registry divides the key in place
  const KelCString* const value = registry->getValue(owned);
  if (value == nullptr || value->isEmpty()) return false;
  path += u'\\';
  path += OroString(*value).wideText();
  return true;
}

// The product's path below either root; empty where the product is not known yet.
std::u16string productPath(bool withVersion) {
  std::u16string path = u"Software\\Velmora";
  if (!appendLevel(path, "PRODUCT_INFO/appName")) return {};
  if (withVersion && !appendLevel(path, "PRODUCT_INFO/displayVersion")) return {};
  return path;
}

using OpenCall = int32_t (*)(RegistryKey, std::u16string_view, uint32_t, RegistryKey&);

// Goes down from an open key level by level and closes those on the way. Null on failure.
RegistryKey descend(RegistryKey from, std::initializer_list<std::u16string_view> levels,
                    OpenCall open) {
  RegistryKey key = from;
  for (const std::u16string_view level : levels) {
    RegistryKey next = nullptr;
    if (open(key, level, kAccess, next) != platform::registryOk) next = nullptr;
    if (key != from) platform::registryCloseKey(key);
    if (next == nullptr) return nullptr;
    key = next;
  }
  return key;
}

bool setText(RegistryKey key, std::u16string_view name, const OroString& text) {
  const std::u16string units = text.wideText();
  const auto size = static_cast<uint32_t>((units.size() + 1) * sizeof(char16_t));
  return platform::registrySetValue(key, name, platform::registryTypeText, units.c_str(), size) ==
         platform::registryOk;
}

}  // namespace

RegistryKey userProductKey(bool openVersion) {
  const std::u16string path = productPath(openVersion);
  if (path.empty()) return nullptr;
  RegistryKey key = nullptr;
  const RegistryKey user = platform::registryRoot(platform::RegistryRoot::currentUser);
  platform::registryCreateKey(user, path, kAccess, key);
  return key;
}

RegistryKey machineProductKey(bool openVersion) {
  const std::u16string path = productPath(openVersion);
  if (path.empty()) return nullptr;
  RegistryKey key = nullptr;
  const RegistryKey machine = platform::registryRoot(platform::RegistryRoot::localMachine);
  if (platform::registryOpenKey(machine, path, kAccess, key) != platform::registryOk) {
    return nullptr;
  }
  return key;
}

bool openMacroServerKey(RegistryKey& out, const OroString& company, const OroString& product,
                        const OroString& version) {
  out = descend(platform::registryRoot(platform::RegistryRoot::currentUser),
                {u"Software", company.wideText(), product.wideText(), version.wideText(),
                 u"Options", u"MacroServer"},
                platform::registryOpenKey);
  return out != nullptr;
}

void createSubKey(const OroString& name, bool openVersion) {
  if (name.isEmpty()) return;
  const RegistryKey product = userProductKey(openVersion);
  if (product == nullptr) return;
  RegistryKey key = nullptr;
  if (platform::registryCreateKey(product, name.wideText(), kAccess, key) == platform::registryOk) {
    platform::registryCloseKey(key);
  }
  platform::registryCloseKey(product);
}

bool createVersionKey(RegistryKey& out, const OroString& product, const OroString& version,
                      const OroString& sub) {
  out = nullptr;
  const RegistryKey key =
      descend(platform::registryRoot(platform::RegistryRoot::localMachine),
              {u"Software", u"Velmora", product.wideText()}, platform::registryCreateKey);
  if (key == nullptr) return false;
  const bool set = setText(key, u"Current Version", version);
  // An empty name would be the product's key once more.
  if (set) out = descend(key, {sub.wideText()}, platform::registryCreateKey);
  platform::registryCloseKey(key);
  return out != nullptr;
}

bool readValue(RegistryKey key, const OroString& name, OroString& out) {
  uint32_t type = platform::registryTypeNone;
  uint32_t size = 0;
  if (platform::registryQueryValue(key, name.wideText(), &type, nullptr, &size) !=
          platform::registryOk ||
      type != platform::registryTypeText) {
    return false;
  }
  std::vector<char> bytes(size);
  if (platform::registryQueryValue(key, name.wideText(), nullptr, bytes.data(), &size) !=
      platform::registryOk) {
    return false;
  }
  std::u16string text(std::min<size_t>(size, bytes.size()) / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  out = OroString(text.c_str());  // a value need not have a terminator, and may have several
  return true;
}

uint32_t readDword(RegistryKey key, const OroString& name) {
  uint32_t type = platform::registryTypeNone;
  uint32_t value = 0;
  uint32_t size = sizeof value;
  const int32_t status = platform::registryQueryValue(key, name.wideText(), &type, &value, &size);
  const bool read = status == platform::registryOk && type == platform::registryTypeDword;
  return read && size == sizeof value ? value : 0;
}

bool readUserValue(const OroString& name, OroString& out) {
  const RegistryKey key = userProductKey(true);
  if (key == nullptr) return false;
  const bool read = readValue(key, name, out);
  platform::registryCloseKey(key);
  return read;
}

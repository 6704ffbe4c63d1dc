#include "base/basic/keldataregistry.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oronumbertext.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/productkeys.h"

namespace {

// Room in bytes for what is read back; more than that was written for nothing.
constexpr uint32_t kFloatRoom = 1024;
constexpr uint32_t kRoom = 8192;

void assertThat(bool holds, const char* expression, int32_t line) {
  if (!holds) kelAssertFail(expression, "base/basic/keldata", line);
}

bool isMode(int32_t mode) {
  return mode == IKelDataVisitor::kReading || mode == IKelDataVisitor::kWriting;
}

}  // namespace

bool KelDataRegistry::Begin() {
  closeKeys();
  return true;
}

void KelDataRegistry::closeKeys() {
  for (platform::RegistryKey& key : keys_) {
    if (key != nullptr) platform::registryCloseKey(key);
    key = nullptr;
  }
  level_ = 0;
  current_ = nullptr;
}

platform::RegistryKey KelDataRegistry::openLevel(IKelDataDirectory* directory) const {
  platform::RegistryKey key = nullptr;
  if (level_ > 0) {
    platform::registryCreateKey(current_, directory->GetName(), platform::registryFullAccess, key);
    return key;
  }
  const platform::RegistryKey product = userProductKey(true);
  if (product == nullptr) return nullptr;
  const uint32_t access = platform::registryRead | platform::registryWrite;
  platform::registryCreateKey(product, u"Options", access, key);
  platform::registryCloseKey(product);
  return key;
}

bool KelDataRegistry::EnterDirectory(IKelDataDirectory* directory) {
  assertThat(isMode(GetMode()), "mode_ == 0 || mode_ == 1", __LINE__);
  if (!isMode(GetMode()) || level_ == kDeepest) return false;
  const platform::RegistryKey key = openLevel(directory);
  if (key == nullptr) return false;
  current_ = key;
  keys_[static_cast<size_t>(level_++)] = key;
  return true;
}

bool KelDataRegistry::LeaveDirectory(IKelDataDirectory*) {
  --level_;
  assertThat(level_ >= 0, "level_ >= 0", __LINE__);
  level_ = std::max(level_, 0);
  platform::RegistryKey& key = keys_[static_cast<size_t>(level_)];
  if (key != nullptr) platform::registryCloseKey(key);
  key = nullptr;
  current_ = level_ > 0 ? keys_[static_cast<size_t>(level_ - 1)] : nullptr;
  return true;
}

template <class Item>
bool KelDataRegistry::visit(Item* item, bool (KelDataRegistry::*read)(Item*, const char*),
                            bool (KelDataRegistry::*write)(Item*, const char*)) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if ((any->GetFlags() & IKelDataItem::kPersistent) == 0) return true;
  if (GetFilter() != nullptr && !GetFilter()->Accept(any)) return true;
  assertThat(isMode(GetMode()), "mode_ == 0 || mode_ == 1", __LINE__);
  if (!isMode(GetMode())) return false;
  return (this->*(GetMode() == kReading ? read : write))(item, any->GetName());
}

bool KelDataRegistry::query(const char* name, uint32_t type, const char* assertion, void* data,
                            uint32_t& size) {
  uint32_t stored = 0;
  if (current_ == nullptr) return false;
  if (platform::registryQueryValue(current_, std::string_view(name), &stored, data, &size) !=
      platform::registryOk) {
    return false;
  }
  assertThat(stored == type, assertion, __LINE__);
  return true;
}

bool KelDataRegistry::set(const char* name, uint32_t type, const void* data, int64_t size) {
  if (current_ == nullptr || size < 0) return false;
  return platform::registrySetValue(current_, std::string_view(name), type, data,
                                    static_cast<uint32_t>(size)) == platform::registryOk;
}

bool KelDataRegistry::VisitInt(IKelDataInt* item) {
  return visit(item, &KelDataRegistry::readInt, &KelDataRegistry::writeInt);
}

bool KelDataRegistry::readInt(IKelDataInt* item, const char* name) {
  int32_t value = 0;
  uint32_t size = sizeof value;
  if (!query(name, platform::registryTypeDword, "type == REG_DWORD", &value, size)) return false;
  item->Set(value);
  return true;
}

bool KelDataRegistry::writeInt(IKelDataInt* item, const char* name) {
  const int32_t value = item->Get();
  return set(name, platform::registryTypeDword, &value, sizeof value);
}

bool KelDataRegistry::VisitFloat(IKelDataFloat* item) {
  return visit(item, &KelDataRegistry::readFloat, &KelDataRegistry::writeFloat);
}

// Text that is no number is 0.
bool KelDataRegistry::readFloat(IKelDataFloat* item, const char* name) {
  char text[kFloatRoom + 1] = {};
  uint32_t size = kFloatRoom;
  if (!query(name, platform::registryTypeText, "type == REG_SZ", text, size)) return false;
  double value = 0;
  oronumbers::parseReal(text, value);
  item->Set(value);
  return true;
}

// Six decimals: what is finer is lost.
bool KelDataRegistry::writeFloat(IKelDataFloat* item, const char* name) {
  oronumbers::Buffer buffer;
  const std::string text(oronumbers::printFixed(item->Get(), buffer));
  return set(name, platform::registryTypeText, text.c_str(), int64_t(text.size()) + 1);
}

bool KelDataRegistry::VisitString(IKelDataString* item) {
  return visit(item, &KelDataRegistry::readString, &KelDataRegistry::writeString);
}

bool KelDataRegistry::readString(IKelDataString* item, const char* name) {
  std::string text(kRoom + 1, '\0');
  uint32_t size = kRoom;
  if (!query(name, platform::registryTypeText, "type == REG_SZ", text.data(), size)) return false;
  item->Set(text.c_str());
  return true;
}

bool KelDataRegistry::writeString(IKelDataString* item, const char* name) {
  const char* const text = item->Get();
  if (text == nullptr) return false;
  return set(name, platform::registryTypeText, text, int64_t(std::strlen(text)) + 1);
}

bool KelDataRegistry::VisitOroString(IKelDataOroString* item) {
  return visit(item, &KelDataRegistry::readOroString, &KelDataRegistry::writeOroString);
}

// The count in front is trusted only as far as units were read.
bool KelDataRegistry::readOroString(IKelDataOroString* item, const char* name) {
  std::u16string units(kRoom / sizeof(char16_t) + 1, u'\0');
  uint32_t size = kRoom;
  if (!query(name, platform::registryTypeNone, "type == REG_NONE", units.data(), size)) {
    return false;
  }
  const size_t read = size / sizeof(char16_t);
  if (read == 0) return false;
  units[std::min<size_t>(std::max<size_t>(units[0], 1), read)] = u'\0';
  item->Set(OroString(units.c_str() + 1));
  return true;
}

// A text of 65535 units or more leaves the low bits of its count.
bool KelDataRegistry::writeOroString(IKelDataOroString* item, const char* name) {
  const OroString& text = item->Get();
  const auto length = static_cast<size_t>(text.length());
  std::u16string units(1, static_cast<char16_t>(length + 1));
  units.append(text.wideText(), length);
  return set(name, platform::registryTypeNone, units.data(),
             static_cast<int64_t>(units.size() * sizeof(char16_t)));
}

bool KelDataRegistry::VisitBlob(IKelDataBlob* item) {
  return visit(item, &KelDataRegistry::readBlob, &KelDataRegistry::writeBlob);
}

bool KelDataRegistry::readBlob(IKelDataBlob* item, const char* name) {
  std::string data(kRoom, '\0');
  uint32_t size = kRoom;
  if (!query(name, platform::registryTypeNone, "type == REG_NONE", data.data(), size)) return false;
  item->Set(data.data(), static_cast<int32_t>(size));
  return true;
}

// The size is cut to 16 bits with a sign: of 65540 bytes 4 are written, 40000 are refused.
bool KelDataRegistry::writeBlob(IKelDataBlob* item, const char* name) {
  return set(name, platform::registryTypeNone, item->Get(), static_cast<int16_t>(item->GetSize()));
}

#include "orobasictypes/productkeys.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "platform/memoryregistry.h"
#include "tests/support/fakebroker.h"

namespace {

using platform::RegistryKey;
using platform::RegistryRoot;

OroString wide(const char* text) { return OroString(text); }

// The process's registry, as far as the product keys need it.
class Facts : public Velmora::IOroRegistry {
 public:
  static constexpr const char* className() { return "Facts"; }
  using Offers = OroOffers<Facts, Velmora::IOroRegistry>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t setValue(KelCString& key, const KelCString& value) override {
    values_[key.c_str()] = value;
    return 1;
  }
  const KelCString* getValue(KelCString& key) override {
    const auto found = values_.find(key.c_str());
    return found != values_.end() ? &found->second : nullptr;
  }
  int32_t removeKey(KelCString&) override { return 0; }
  const KelCString* getValue2(KelCString&, KelCString&) override { return nullptr; }
  bool valueEquals(KelCString&, const char*) override { return false; }
  int32_t getInt(KelCString&, int32_t fallback) override { return fallback; }
  Velmora::IOroRegIter* newIterator(KelCString&) override { return nullptr; }

 private:
  std::map<std::string, KelCString> values_;
};

// A registry that notes the access rights that are asked for.
class NotingRegistry : public platform::MemoryRegistry {
 public:
  std::int32_t openKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                       RegistryKey& out) override {
    rights |= access;
    return MemoryRegistry::openKey(parent, name, access, out);
  }
  std::int32_t createKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                         RegistryKey& out) override {
    rights |= access;
    return MemoryRegistry::createKey(parent, name, access, out);
  }
  std::uint32_t rights = 0;
};

class ProductKeys : public testing::Test {
 protected:
  ProductKeys() : before_(platform::setRegistryStore(&system_)) {
    broker_.registerService(KelCString::borrow("IOroRegistry"), facts_.get());
  }
  ~ProductKeys() override { platform::setRegistryStore(before_); }

  void setValue(const char* key, const char* value) {
    KelCString owned(key);
    facts_->setValue(owned, KelCString(value));
  }
  void nameProduct() {
    setValue("PRODUCT_INFO/appName", "Scan");
    setValue("PRODUCT_INFO/displayVersion", "7.5");
  }
  RegistryKey make(RegistryRoot root, const std::u16string& path) {
    RegistryKey key = nullptr;
    platform::registryCreateKey(platform::registryRoot(root), path, platform::registryFullAccess,
                                key);
    return key;
  }
  bool exists(RegistryRoot root, const std::u16string& path) {
    RegistryKey key = nullptr;
    if (platform::registryOpenKey(platform::registryRoot(root), path, platform::registryRead,
                                  key) != platform::registryOk) {
      return false;
    }
    platform::registryCloseKey(key);
    return true;
  }
  // Sets a text with its terminator, or the bytes as they are.
  void setText(RegistryKey key, const char16_t* name, const std::u16string& text) {
    setUnits(key, name, text + u'\0');
  }
  void setUnits(RegistryKey key, const char16_t* name, const std::u16string& units) {
    platform::registrySetValue(key, name, platform::registryTypeText, units.data(),
                               static_cast<std::uint32_t>(units.size() * sizeof(char16_t)));
  }
  // The value that can be read through the key, to see which key it is.
  std::string readAndClose(RegistryKey key, const char* name = "mark") {
    OroString text("<absent>");
    readValue(key, wide(name), text);
    platform::registryCloseKey(key);
    return text.toNarrow();
  }
  void mark(RegistryRoot root, const std::u16string& path, const std::u16string& text) {
    const RegistryKey key = make(root, path);
    setText(key, u"mark", text);
    platform::registryCloseKey(key);
  }

  NotingRegistry system_;
  IPtr<Facts> facts_ = new Facts;
  tests::FakeBroker broker_;

 private:
  platform::RegistryStore* before_;
};

TEST_F(ProductKeys, WithoutAProductThereAreNone) {
  EXPECT_EQ(userProductKey(false), nullptr);
  EXPECT_EQ(machineProductKey(false), nullptr);
  setValue("PRODUCT_INFO/appName", "Scan");
  EXPECT_EQ(userProductKey(true), nullptr);
  EXPECT_EQ(machineProductKey(true), nullptr);
  setValue("PRODUCT_INFO/displayVersion", "");
  EXPECT_EQ(userProductKey(true), nullptr);
  EXPECT_FALSE(exists(RegistryRoot::currentUser, u"Software"));
}

TEST_F(ProductKeys, TheUsersKeyIsMade) {
  nameProduct();
  platform::registryCloseKey(userProductKey(false));
  EXPECT_TRUE(exists(RegistryRoot::currentUser, u"Software\\Velmora\\Scan"));
  EXPECT_FALSE(exists(RegistryRoot::currentUser, u"Software\\Velmora\\Scan\\7.5"));
  platform::registryCloseKey(userProductKey(true));
  EXPECT_TRUE(exists(RegistryRoot::currentUser, u"Software\\Velmora\\Scan\\7.5"));
  EXPECT_EQ(system_.openKeyCount(), 0);
}

TEST_F(ProductKeys, TheMachinesKeyIsOpenedOnly) {
  nameProduct();
  EXPECT_EQ(machineProductKey(true), nullptr);
  EXPECT_FALSE(exists(RegistryRoot::localMachine, u"Software"));
  mark(RegistryRoot::localMachine, u"Software\\Velmora\\Scan", u"product");
  EXPECT_EQ(machineProductKey(true), nullptr);
  EXPECT_EQ(readAndClose(machineProductKey(false)), "product");
  mark(RegistryRoot::localMachine, u"Software\\Velmora\\Scan\\7.5", u"version");
  EXPECT_EQ(readAndClose(machineProductKey(true)), "version");
  EXPECT_EQ(system_.openKeyCount(), 0);
}

TEST_F(ProductKeys, TheProductAloneNeedsNoVersion) {
  setValue("PRODUCT_INFO/appName", "Scan");
  mark(RegistryRoot::localMachine, u"Software\\Velmora\\Scan", u"product");
  EXPECT_EQ(readAndClose(machineProductKey(false)), "product");
}

TEST_F(ProductKeys, TheMacroServersKeyIsTheUsers) {
  const std::u16string path = u"Software\\Acme\\Scan\\7.5\\Options\\MacroServer";
  RegistryKey key = &key;
  EXPECT_FALSE(openMacroServerKey(key, wide("Acme"), wide("Scan"), wide("7.5")));
  EXPECT_EQ(key, nullptr);
  EXPECT_FALSE(exists(RegistryRoot::currentUser, u"Software")) << "it is not made";
  mark(RegistryRoot::currentUser, path, u"server");
  system_.rights = 0;
  ASSERT_TRUE(openMacroServerKey(key, wide("Acme"), wide("Scan"), wide("7.5")));
  EXPECT_EQ(system_.rights, 0x2001fu);
  EXPECT_EQ(system_.openKeyCount(), 1) << "those on the way are closed";
  EXPECT_EQ(readAndClose(key), "server");
  EXPECT_FALSE(openMacroServerKey(key, wide("Acme"), wide("Scan"), wide("8.0")));
  EXPECT_EQ(key, nullptr);
  EXPECT_EQ(system_.openKeyCount(), 0);
}

TEST_F(ProductKeys, AKeyBelowTheUsersIsMade) {
  createSubKey(wide("Recent"), true);
  EXPECT_FALSE(exists(RegistryRoot::currentUser, u"Software")) << "no product";
  nameProduct();
  createSubKey(wide(""), true);
  EXPECT_FALSE(exists(RegistryRoot::currentUser, u"Software")) << "no name";
  createSubKey(wide("Recent"), true);
  createSubKey(wide("All"), false);
  EXPECT_TRUE(exists(RegistryRoot::currentUser, u"Software\\Velmora\\Scan\\7.5\\Recent"));
  EXPECT_TRUE(exists(RegistryRoot::currentUser, u"Software\\Velmora\\Scan\\All"));
  EXPECT_EQ(system_.openKeyCount(), 0);
}

TEST_F(ProductKeys, TheRecordOfAVersionIsMade) {
  RegistryKey key = nullptr;
  ASSERT_TRUE(createVersionKey(key, wide("Scan"), wide("7.5"), wide("Options")));
  EXPECT_EQ(system_.openKeyCount(), 1);
  setText(key, u"mark", u"options");
  platform::registryCloseKey(key);
  std::u16string text;
  EXPECT_TRUE(platform::registryReadText(RegistryRoot::localMachine, u"Software\\Velmora\\Scan",
                                         u"Current Version", text));
  EXPECT_EQ(text, u"7.5");
  EXPECT_TRUE(platform::registryReadText(RegistryRoot::localMachine,
                                         u"Software\\Velmora\\Scan\\Options", u"mark", text));
  ASSERT_TRUE(createVersionKey(key, wide("Scan"), wide("8"), wide("")));
  EXPECT_EQ(readAndClose(key, "Current Version"), "8");
  EXPECT_EQ(system_.openKeyCount(), 0);
}

TEST_F(ProductKeys, ATextIsReadWithWhateverEndItHas) {
  const RegistryKey key = make(RegistryRoot::currentUser, u"Software\\Test");
  setText(key, u"ended", u"h\u00e4user");
  setUnits(key, u"open", u"open");
  setUnits(key, u"twice", std::u16string(u"one\0two\0", 8));
  setUnits(key, u"empty", u"");
  OroString text;
  EXPECT_TRUE(readValue(key, wide("ended"), text));
  EXPECT_EQ(std::u16string(text.wideText()), u"h\u00e4user");
  EXPECT_TRUE(readValue(key, wide("open"), text));
  EXPECT_TRUE(text == "open");
  EXPECT_TRUE(readValue(key, wide("twice"), text));
  EXPECT_TRUE(text == "one");
  EXPECT_TRUE(readValue(key, wide("empty"), text));
  EXPECT_TRUE(text == "");
  platform::registryCloseKey(key);
}

TEST_F(ProductKeys, WhatIsNoTextIsNotRead) {
  const RegistryKey key = make(RegistryRoot::currentUser, u"Software\\Test");
  const std::uint32_t number = 7;
  platform::registrySetValue(key, u"number", platform::registryTypeDword, &number, sizeof number);
  OroString text("before");
  EXPECT_FALSE(readValue(key, wide("absent"), text));
  EXPECT_FALSE(readValue(key, wide("number"), text));
  EXPECT_FALSE(readValue(nullptr, wide("number"), text));
  EXPECT_TRUE(text == "before");
  platform::registryCloseKey(key);
}

TEST_F(ProductKeys, ANumberIsReadOrZero) {
  const RegistryKey key = make(RegistryRoot::currentUser, u"Software\\Test");
  const std::uint32_t number = 0xFFFFFFFE;
  platform::registrySetValue(key, u"number", platform::registryTypeDword, &number, sizeof number);
  platform::registrySetValue(key, u"short", platform::registryTypeDword, &number, 2);
  setText(key, u"text", u"7");
  EXPECT_EQ(readDword(key, wide("number")), 0xFFFFFFFEu);
  EXPECT_EQ(readDword(key, wide("short")), 0u);
  EXPECT_EQ(readDword(key, wide("text")), 0u);
  EXPECT_EQ(readDword(key, wide("absent")), 0u);
  EXPECT_EQ(readDword(nullptr, wide("number")), 0u);
  platform::registryCloseKey(key);
}

TEST_F(ProductKeys, ATextOfTheUsersKeyIsReadAtOnce) {
  OroString text("before");
  EXPECT_FALSE(readUserValue(wide("mark"), text));
  nameProduct();
  EXPECT_FALSE(readUserValue(wide("mark"), text));
  EXPECT_TRUE(text == "before");
  mark(RegistryRoot::currentUser, u"Software\\Velmora\\Scan\\7.5", std::u16string(500, u'x'));
  EXPECT_TRUE(readUserValue(wide("mark"), text));
  EXPECT_EQ(std::string(text.toNarrow()), std::string(500, 'x'));
  EXPECT_EQ(system_.openKeyCount(), 0);
}

}  // namespace

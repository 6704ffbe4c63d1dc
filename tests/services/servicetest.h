// ServiceTest: a process as the services meet it, made anew for each test.
//
// It has a broker, a registry and a settings store, system folders below a folder of its own, an
// empty registry of the operating system, and a message box that records. Nothing of the machine is
// touched.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "base/basic/gendatastore.h"
#include "framework/kelregistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "platform/hooks.h"
#include "platform/knownfolders.h"
#include "platform/memoryregistry.h"
#include "platform/messagebox.h"
#include "tests/support/fakebroker.h"
#include "tests/tempfolder.h"

namespace tests {

std::string narrow(const OroString& text);

struct ShownBox {
  std::u16string title;
  std::u16string text;
  unsigned style;
};

class ServiceTest : public ::testing::Test {
 protected:
  ServiceTest();
  ~ServiceTest() override;

  void publish(const char* name, IOroUnknown* object) {
    broker_.registerService(KelCString::borrow(name), object);
  }
  // A value of the process's registry.
  void setValue(const char* key, const char* value);
  void removeValue(const char* key);
  // A text value of the operating system's registry, below the local machine.
  void setMachineValue(const char16_t* key, const char16_t* name, const std::u16string& value);
  // "PRODUCT_INFO/appName" and "PRODUCT_INFO/displayVersion".
  void nameProduct(const char* name = "Scan", const char* version = "7.5");

  // The folder of this test, and what lies in it, as the system under test spells it.
  OroPath base() const;
  OroPath base(const char* below) const { return base().joined(below); }
  bool isThere(const OroPath& path) const;

  std::vector<ShownBox>& boxes();
  // What the system answers for a folder: base()/profile, /documents, /commonDocuments, /appData
  // or /commonAppData. An empty text: the system has none.
  void setSystemFolder(platform::KnownFolder folder, const std::u16string& path);

  TempFolder folder_;
  FakeBroker broker_;
  IPtr<KelRegistry> registry_;
  IPtr<GenDataStore> store_;
  platform::MemoryRegistry systemRegistry_;

 private:
  platform::RegistryStore* registryBefore_;
  platform::HookGuard<std::u16string(platform::KnownFolder)> folders_;
  platform::HookGuard<int(const std::u16string&, const std::u16string&, unsigned)> box_;
};

// Sets an environment variable, or removes it, and puts the old value back when it goes.
class EnvironmentGuard {
 public:
  EnvironmentGuard(const char* name, std::optional<std::string> value);
  ~EnvironmentGuard();
  EnvironmentGuard(const EnvironmentGuard&) = delete;
  EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace tests

#include "tests/services/servicetest.h"

#include <map>

#include "orobasictypes/testaccess.h"
#include "platform/crash.h"
#include "platform/files.h"
#include "platform/process.h"
#include "services/testaccess.h"

namespace tests {
namespace {

// Hooks are plain functions, so what they use stands here.
std::map<platform::KnownFolder, std::u16string> systemFolders;
std::vector<ShownBox> shownBoxes;

std::u16string answerFolder(platform::KnownFolder folder) { return systemFolders[folder]; }

int recordBox(const std::u16string& title, const std::u16string& text, unsigned style) {
  shownBoxes.push_back({title, text, style});
  return platform::answerOk;
}

void forgetAll() {
  testaccess::resetModuleTranslator();
  testaccess::resetLogFile();
  testaccess::resetDirectories();
  testaccess::resetDefaultDirsWanted();
  testaccess::resetProductInfo();
}

}  // namespace

std::string narrow(const OroString& text) { return text.toNarrow(); }

ServiceTest::ServiceTest()
    : registry_(new KelRegistry),
      store_(new GenDataStore),
      registryBefore_(platform::setRegistryStore(&systemRegistry_)),
      folders_(platform::knownFolderHook, answerFolder),
      box_(platform::messageBoxHook, recordBox) {
  forgetAll();
  shownBoxes.clear();
  systemFolders = {
      {platform::KnownFolder::profile, base("profile").wideText()},
      {platform::KnownFolder::documents, base("documents").wideText()},
      {platform::KnownFolder::commonDocuments, base("commonDocuments").wideText()},
      {platform::KnownFolder::appData, base("appData").wideText()},
      {platform::KnownFolder::commonAppData, base("commonAppData").wideText()},
  };
  publish("IOroRegistry", registry_.get());
  publish("IDataStore", store_.get());
}

ServiceTest::~ServiceTest() {
  forgetAll();
  platform::removeCrashHandler();
  platform::setRegistryStore(registryBefore_);
}

void ServiceTest::setValue(const char* key, const char* value) {
  KelCString owned(key);
  registry_->setValue(owned, KelCString(value));
}

void ServiceTest::removeValue(const char* key) {
  KelCString owned(key);
  registry_->removeKey(owned);
}

void ServiceTest::setMachineValue(const char16_t* key, const char16_t* name,
                                  const std::u16string& value) {
  platform::RegistryKey opened = nullptr;
  ASSERT_EQ(
      platform::registryCreateKey(platform::registryRoot(platform::RegistryRoot::localMachine), key,
                                  platform::registryFullAccess, opened),
      platform::registryOk);
  platform::registrySetValue(opened, name, platform::registryTypeText, value.c_str(),
                             static_cast<std::uint32_t>((value.size() + 1) * sizeof(char16_t)));
  platform::registryCloseKey(opened);
}

void ServiceTest::nameProduct(const char* name, const char* version) {
  setValue("PRODUCT_INFO/appName", name);
  setValue("PRODUCT_INFO/displayVersion", version);
}

OroPath ServiceTest::base() const { return OroPath(OroString(folder_.path().u16string().c_str())); }

bool ServiceTest::isThere(const OroPath& path) const {
  return platform::isDirectory(path.toOsPath().wideText());
}

std::vector<ShownBox>& ServiceTest::boxes() { return shownBoxes; }

void ServiceTest::setSystemFolder(platform::KnownFolder folder, const std::u16string& path) {
  systemFolders[folder] = path;
}

EnvironmentGuard::EnvironmentGuard(const char* name, std::optional<std::string> value)
    : name_(name), before_(platform::environment(name)) {
  platform::setEnvironment(name, value);
}

EnvironmentGuard::~EnvironmentGuard() { platform::setEnvironment(name_, before_); }

}  // namespace tests

#include "tests/gui/apps/main/appworld.h"

#include <cstdint>
#include <limits>

#include "base/basic/gendatastore.h"
#include "base/basic/testaccess.h"
#include "framework/oroobjectbroker.h"
#include "gui/apps/main/appglobals.h"
#include "headless/testaccess.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/orocommandlineflag.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/testaccess.h"
#include "platform/crash.h"
#include "platform/knownfolders.h"
#include "platform/messagebox.h"
#include "platform/network.h"
#include "platform/text.h"
#include "services/testaccess.h"
#include "tests/gui/apps/main/events.h"

namespace tests {
namespace {

std::u16string shownText;
std::u16string profileFolder;

int rememberBox(const std::u16string&, const std::u16string& text, unsigned) {
  shownText += text;
  return platform::answerOk;
}

std::u16string folderInProfile(platform::KnownFolder) { return profileFolder; }

bool findNoHost(const std::string&, platform::HostAddress&) {
  event("network");
  return false;
}

void declareParent(IDataStore& store, const std::string& path) {
  for (std::size_t slash = path.find('/'); slash != path.npos; slash = path.find('/', slash + 1)) {
    store.CreateDirectory(path.substr(0, slash).c_str());
  }
}

// As the process leaves them, but for one that goes on.
void endApplication() {
  headlesstest::forgetService();
  OroAppGlobals& globals = oroAppGlobals();
  if (globals.broker != nullptr) globals.broker->release();
  globals = OroAppGlobals();
}

}  // namespace

AppWorld::AppWorld() {
  events().clear();
  shownText.clear();
  profileFolder = platform::fromSystemPath(folder_.path().string());
  platform::messageBoxHook = rememberBox;
  platform::knownFolderHook = folderInProfile;
  platform::findHostHook = findNoHost;
}

AppWorld::~AppWorld() {
  endApplication();
  getGenDataStore()->Clear();
  getGenDataStore()->SetAutoSave(true);
  oroCommandLineFlag() = 0;
  testaccess::resetModule();
  testaccess::resetModuleTranslator();
  testaccess::resetDirPath();
  testaccess::resetSettingsPaths();
  testaccess::resetDirectories();
  testaccess::resetDefaultDirsWanted();
  testaccess::resetProductInfo();
  testaccess::resetHelpService();
  testaccess::resetNetworkService();
  platform::removeCrashHandler();
  platform::messageBoxHook = nullptr;
  platform::knownFolderHook = nullptr;
  platform::findHostHook = nullptr;
}

const std::u16string& AppWorld::boxText() const { return shownText; }

void publish(const char* name, IOroUnknown* object) {
  oroAppGlobals().broker->registerService(KelCString::borrow(name), object);
}

std::string registryText(const std::string& key) {
  SPtr<Velmora::IOroRegistry> registry;
  KelCString path(key.c_str());
  const KelCString* value = registry ? registry->getValue(path) : nullptr;
  return value != nullptr ? value->c_str() : "<absent>";
}

void setText(const char* path, const char* text) {
  IDataStore& store = *getGenDataStore();
  declareParent(store, path);
  store.CreateOroString(path, 1000, OroString::empty(), 0);
  store.SetOroString(nullptr, path, OroString(text));
}

void setNumber(const char* path, int value) {
  IDataStore& store = *getGenDataStore();
  declareParent(store, path);
  using Limits = std::numeric_limits<int32_t>;
  store.CreateInt(path, 0, Limits::min(), Limits::max(), 0);
  store.SetInt(nullptr, path, value);
}

std::vector<OroString> argumentsOf(const std::vector<std::string>& texts) {
  std::vector<OroString> arguments;
  for (const std::string& text : texts) arguments.emplace_back(text.c_str());
  return arguments;
}

}  // namespace tests

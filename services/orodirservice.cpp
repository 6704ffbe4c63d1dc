#include "services/orodirservice.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "interfaces/IDataStore.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"
#include "platform/osregistry.h"
#include "platform/process.h"
#include "services/knownfolders.h"
#include "services/registryvalue.h"
#include "services/testaccess.h"

namespace {

constexpr uint32_t kCacheBuckets = 17;
constexpr int kPathUnits = 260;            // buffer for what the system tells, terminator included
constexpr int32_t kSettingCapacity = 256;  // code units; longer paths are cut
constexpr uint32_t kSaved = 1;             // settings that are kept, but not journalled one by one

constexpr const char* kSection = "DefaultFileNameDirectory";
constexpr const char* kCommonDirectory = "Directories/Common Directory";
constexpr const char16_t* kInstallCommon = u"C:\\Program Files\\Velmora\\Common\\";
constexpr const char16_t* kPlugins = u"SOFTWARE\\Velmora\\Plugins";

KelCString settingPath(const char* name) {
  KelCString path(kSection);
  path.append("/");
  path.append(name);
  return path;
}

// A directory that the settings hold; empty where they do not.
OroPath storedPath(const char* setting) {
  SPtr<IDataStore> store;
  return store ? OroPath(store->GetOroString(setting, nullptr)) : OroPath();
}

OroPath storedDir(const char* name) { return storedPath(settingPath(name).text()); }

bool isStored(const char* name) {
  SPtr<IDataStore> store;
  return store && store->Exists(settingPath(name).text());
}

void createSetting(IDataStore& store, const char* name, const OroPath& path) {
  store.CreateOroString(settingPath(name).text(), kSettingCapacity, path.toOsPath(), kSaved);
}

// Computed once. A setting wins over the executable's place only before that.
struct ExecutableDir {
  bool known = false;  // set before the settings are written, which may ask for it
  OroPath path;
};

ExecutableDir executableDir;
std::optional<OroPath> workingDirAtStart;

void storeDir(const char* name, const OroPath& path) {
  SPtr<IDataStore> store;
  if (!store) return;
  const KelCString setting = settingPath(name);
  if (store->Exists(setting.text())) {
    store->SetOroString(nullptr, setting.text(), path.toOsPath());
    return;
  }
  if (!store->DirectoryExists(kSection)) store->CreateDirectory(kSection);
  createSetting(*store, name, path);
}

const OroPath& exeDir() {
  if (executableDir.known) return executableDir.path;
  executableDir.known = true;
  if (isStored("exe")) {
    executableDir.path = storedDir("exe");  // an empty one too, as it is with "components"
  } else {
    const OroPath executable(OroString(platform::executablePath(kPathUnits).c_str()));
    executableDir.path = executable.parent();
    storeDir("exe", executableDir.path);
  }
  return executableDir.path;
}

const OroPath& workingDir() {
  if (!workingDirAtStart) {
    workingDirAtStart = OroPath(OroString(platform::currentDirectory(kPathUnits).c_str()));
  }
  return *workingDirAtStart;
}

bool readPluginPath(OroPath& out) {
  std::u16string text;
  if (!platform::registryReadText(platform::RegistryRoot::localMachine, kPlugins, u"PluginPath",
                                  text)) {
    return false;
  }
  out = OroPath(OroString(text.c_str()));
  return true;
}

OroPath installCommon() {
  OroPath path = storedPath(kCommonDirectory);
  if (!path.isEmpty()) return path;
  if (!readPluginPath(path)) path = OroPath(OroString(kInstallCommon));
  SPtr<IDataStore> store;
  if (store && !path.isEmpty()) {
    store->SetOroString(nullptr, kCommonDirectory, path.toOsPath());
  }
  return path;
}

OroPath supportDir() {
  OroString text(installCommon());
  text.append("\\Support\\V7\\");
  return OroPath(text);
}

// A default that the settings start with: names that share one place below it.
enum class Base { executable, documents };
struct DefaultRow {
  const char* name;
  Base base;
  const char* below;  // folder in the base, or null for the base itself
};

// In the order in which the settings are made.
constexpr DefaultRow kDefaults[] = {
    {"components", Base::executable, nullptr},
    {"bin", Base::executable, nullptr},
    {"exe", Base::executable, nullptr},
    {"install", Base::executable, nullptr},
    {"pdf", Base::executable, nullptr},
    {"spectrum", Base::executable, nullptr},
    {"fonts", Base::executable, nullptr},
    {"config", Base::executable, nullptr},
    {"options", Base::executable, nullptr},
    {"language", Base::executable, "lang"},
    {"import", Base::executable, "import"},
    {"plugins", Base::executable, "plugins"},
    {"help", Base::executable, "help"},
    {"common", Base::documents, nullptr},
    {"data", Base::documents, "data"},
    {"files", Base::documents, "data"},
    {"batchinput", Base::documents, "data"},
    {"batchoutput", Base::documents, "data"},
    {"macros", Base::documents, "macros"},
    {"snapshots", Base::documents, "snapshots"},
    {"captures", Base::documents, "captures"},
    {"reports", Base::documents, "reports"},
    {"logs", Base::documents, "logs"},
    {"pdf3d", Base::documents, "pdf"},
    {"sample_data", Base::documents, "Sample Data"},
    {"studies", Base::documents, "studies"},
    {"study_templates", Base::documents, "study_templates"},
    {"templates", Base::documents, "report_templates"},
    {"themes", Base::documents, "themes"},
    {"textures", Base::documents, "textures"},
    {"ribbon_layout", Base::documents, "Ribbon Layout"},
    {"wysiwygreport_template", Base::documents, "wysiwygreport_templates"},
};

constexpr const char* kMadeAtStart[] = {"data", "snapshots",   "captures", "reports", "macros",
                                        "logs", "sample_data", "themes",   "temp",    "textures"};

OroPath environmentPath(std::u16string_view name) {
  const auto value = platform::environmentWide(name);
  return value ? OroPath(OroString(value->c_str())) : OroPath();
}

OroPath tempDir() {
  OroPath path = environmentPath(u"TEMP");
  if (path.isEmpty()) path = environmentPath(u"TMP");
  if (path.isEmpty()) path = OroPath(".");
  return path.joined("Velmora");
}

// The first place that exists; the last one when none does.
OroPath commonImportDir() {
  OroPath path;
  if (readPluginPath(path)) {
    path.append("import");
    if (platform::isDirectory(path.toOsPath().wideText())) return path;
  }
  path = exeDir().joined("..").joined("Common").joined("import");
  if (platform::isDirectory(path.toOsPath().wideText())) return path;
  return OroPath("C:\\Program Files\\Velmora\\Common\\import");
}

void createDefaultSettings(IDataStore& store) {
  const OroPath executable = exeDir();
  const OroPath documents = oroKnownFolder("COMMON_DOCUMENTS", true, true);
  for (const DefaultRow& row : kDefaults) {
    const OroPath& base = row.base == Base::executable ? executable : documents;
    createSetting(store, row.name, row.below != nullptr ? base.joined(row.below) : base);
  }
  createSetting(store, "python", OroPath("c:\\python"));
  createSetting(store, "temp", tempDir());
  createSetting(store, "CommonImportDirectory", commonImportDir());
}

}  // namespace

OroDirService::OroDirService()
    : cache_(OroHashTable<KelCString, OroPath>::withBuckets(kCacheBuckets)) {}

const OroPath& OroDirService::getDir(const char* name) {
  if (name == nullptr) name = "";
  OroPath path = computedDir(name);
  if (path.isEmpty()) {
    initDefaults();
    path = storedDir(name);
  }
  if (path.isEmpty()) return oroFallbackFolder();
  const KelCString key(name);
  uint32_t bucket = 0;
  auto* entry = cache_.find(key, &bucket);
  if (entry == nullptr) return cache_.insert(bucket, key, path)->value;
  entry->value = path;
  return entry->value;
}

// Empty for a name that has no rule of its own, or whose rule gives nothing.
OroPath OroDirService::computedDir(const char* name) {
  const auto is = [name](const char* other) { return std::strcmp(name, other) == 0; };
  if (is("components")) return isStored(name) ? storedDir(name) : getDir("exe");
  if (is("exe") || is("bin") || is("config")) return exeDir();
  if (is("language")) return exeDir().joined("lang");
  if (is("home")) return oroKnownFolder("HOME", false, false);
  if (is("userconfig")) return oroKnownFolder("APPDATA", true, true);
  if (is("publicconfig")) return oroKnownFolder("COMMON_APPDATA", false, false);
  if (is("installoptions")) return oroKnownFolder("COMMON_DOCUMENTS", true, false);
  if (is("support")) return supportDir();
  if (is("workingdir")) return workingDir();
  if (is("installcommon")) return installCommon();
  if (is("python")) return storedPath("Directories/python");
  return OroPath();
}

void OroDirService::setDir(const char* name, const OroPath& path) {
  if (name != nullptr) storeDir(name, path);
}

void OroDirService::setDirAfterDefaults(const char* name, const OroPath& path) {
  initDefaults();
  setDir(name, path);
}

void OroDirService::initDefaults() {
  SPtr<IDataStore> store;
  if (!store || store->Exists(settingPath("temp").text())) return;
  if (oroRegistryValue("PRODUCT_INFO/appName") == nullptr) return;
  store->CreateDirectory(kSection);
  createDefaultSettings(*store);
  for (const char* name : kMadeAtStart) oroMakeDefaultDir(getDir(name));
}

void testaccess::resetDirectories() {
  executableDir = ExecutableDir();
  workingDirAtStart.reset();
}

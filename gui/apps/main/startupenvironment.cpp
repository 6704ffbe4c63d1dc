#include "gui/apps/main/startupenvironment.h"

#include <optional>
#include <string>

#include "gui/apps/main/productversion.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"
#include "platform/streams.h"

ProductOverrides productOverrides = {
    COWL_APP_NAME_OVERRIDE,
    COWL_ALT_COMPANY_FOLDER_OVERRIDE,
    COWL_ALT_PRODUCT_NAME_OVERRIDE,
    COWL_NATIVE_FILE_VERSION_OVERRIDE,
};

namespace {

using Velmora::IOroRegistry;

constexpr int kExecutableRoom = 264;  // units
constexpr int kModuleRoom = 260;
constexpr int kMaxModules = 1024;

void put(IOroRegistry& registry, const char* name, const char* value) {
  KelCString key(name);  // its own text: the registry divides keys in place
  registry.setValue(key, KelCString(value));
}

void putOverride(IOroRegistry& registry, const char* name, const char* value) {
  if (value != nullptr) put(registry, name, value);
}

// The last module whose path holds the product's id, if any; tells the process's id on the way.
std::optional<std::u16string> productModule(IOroRegistry& registry) {
  KelCString key("PRODUCT_INFO/dllId");
  const KelCString* dllId = registry.getValue(key);
  if (dllId == nullptr || dllId->isEmpty()) return std::nullopt;
  const OroString wanted(*dllId);
  platform::writeStandardOutput("\nProcess ID: " + std::to_string(platform::processId()) + "\n");
  std::optional<std::u16string> found;
  for (const std::u16string& module : platform::modulePaths(kMaxModules, kModuleRoom)) {
    if (OroString(module.c_str()).contains(wanted, true)) found = module;
  }
  return found;
}

void putVersion(IOroRegistry& registry) {
  const std::optional<std::string> version = productVersionText();
  if (!version) return;
  put(registry, "PRODUCT_INFO/Build Number", version->c_str());
  put(registry, "PRODUCT_INFO/displayVersion", displayVersionOf(*version).c_str());
}

}  // namespace

void putArgumentsInRegistry(int32_t argc, const OroString* argv) {
  SPtr<IOroRegistry> registry;
  if (!registry) return;
  const std::u16string executable = platform::executablePath(kExecutableRoom);
  const std::u16string module = productModule(*registry).value_or(executable);
  put(*registry, "MAIN_ARGV0", OroString(module.c_str()).toNarrow());
  put(*registry, "ORIGINAL_MAIN_ARGV0", OroString(executable.c_str()).toNarrow());
  for (int32_t i = 1; i < argc; ++i) {
    put(*registry, ("MAIN_ARGV/" + std::to_string(i)).c_str(), argv[i].toNarrow());
  }
}

void putProductFactsInRegistry() {
  SPtr<IOroRegistry> registry;
  if (!registry) return;
  putOverride(*registry, "PRODUCT_INFO/appName", productOverrides.appName);
  putOverride(*registry, "ALT_PRODUCT_INFO/altCompanyFolder", productOverrides.altCompanyFolder);
  putOverride(*registry, "ALT_PRODUCT_INFO/altProductName", productOverrides.altProductName);
  putVersion(*registry);
  putOverride(*registry, "PRODUCT_INFO/cwlFileVersion", productOverrides.nativeFileVersion);
}

#include "base/basic/kelsettingspaths.h"

#include <optional>
#include <string_view>

#include "base/basic/testaccess.h"
#include "interfaces/IOroRegIter.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"

namespace {

using Velmora::IOroRegistry;

constexpr const char kFileName[] = "velmora.iniml";
constexpr std::string_view kReadOption = "-inifile=";
constexpr std::string_view kWriteOption = "-ini_out=";

void takeOption(std::string_view argument, std::string_view option, OroPath& path) {
  if (argument.starts_with(option)) {
    path = OroString::fromUtf8(argument.substr(option.size()).data());  // ends where it ends
  }
}

void takeArguments(KelSettingsPaths& paths) {
  SPtr<IOroRegistry> registry;
  if (!registry) return;
  KelCString section("MAIN_ARGV");
  const IPtr<Velmora::IOroRegIter> argument(registry->newIterator(section));
  if (!argument) return;
  for (argument->first(); !argument->atEnd(); argument->next()) {
    KelCString text;
    argument->value(text);
    takeOption(text.c_str(), kReadOption, paths.read);
    takeOption(text.c_str(), kWriteOption, paths.write);
  }
}

// The settings document in a directory; empty when there is no such directory.
OroPath documentIn(const char* directoryName) {
  const OroPath& directory = oroDirPath(directoryName);
  return directory.isEmpty() ? OroPath() : OroPath(directory, kFileName);
}

bool exists(const OroPath& path) {
  return !path.isEmpty() && platform::pathExists(path.wideText());
}

KelSettingsPaths workOutPaths() {
  KelSettingsPaths paths;
  takeArguments(paths);
  if (paths.read.isEmpty()) {
    const OroPath own = documentIn("userconfig");
    if (exists(own)) paths.read = own;
    if (paths.write.isEmpty()) paths.write = own;
  }
  if (paths.read.isEmpty()) {
    const OroPath installed = documentIn("config");
    if (exists(installed)) paths.read = installed;
  }
  return paths;
}

std::optional<KelSettingsPaths>& keptPaths() {
  static auto* const kept = new std::optional<KelSettingsPaths>;  // outlives every store
  return *kept;
}

}  // namespace

const KelSettingsPaths& kelSettingsPaths() {
  std::optional<KelSettingsPaths>& kept = keptPaths();
  if (!kept) kept = workOutPaths();
  return *kept;
}

void testaccess::resetSettingsPaths() { keptPaths().reset(); }

#include "platform/knownfolders.h"

#include <string>

#include "platform/posix/posixgate.h"
#include "platform/systempart.h"
#include "platform/text.h"

namespace platform {
namespace {

std::string variable(const char* name) {
  const char* value = getenv(name);
  return value != nullptr ? value : "";
}

// A folder that a variable names, or that lies in the user's own directory if there is one.
std::string folderOfUser(const char* name, const char* belowHome) {
  const std::string named = variable(name);
  if (!named.empty()) return named;
  const std::string home = variable("HOME");
  return home.empty() ? home : home + belowHome;
}

std::string systemForm(KnownFolder folder) {
  switch (folder) {
    case KnownFolder::profile:
      return variable("HOME");
    case KnownFolder::documents:
      return folderOfUser("XDG_DOCUMENTS_DIR", "/Documents");
    case KnownFolder::appData:
      return folderOfUser("XDG_CONFIG_HOME", "/.config");
    case KnownFolder::commonAppData:
      return "/var/lib";
    case KnownFolder::commonDocuments:
      return "/usr/local/share";
  }
  return {};
}

}  // namespace

std::u16string systemKnownFolder(KnownFolder folder) { return fromSystemPath(systemForm(folder)); }

}  // namespace platform

#include "platform/temporaryfolder.h"

#include "platform/process.h"
#include "platform/text.h"

namespace platform {
namespace {

bool isSet(const char* name) { return !environment(name).value_or("").empty(); }

// What may grow large does not lie in "/tmp", which is memory on many systems and everybody's.
std::string folderForLargeFiles() {
  for (const char* name : {"TMPDIR", "XDG_CACHE_HOME"}) {
    if (isSet(name)) return *environment(name);
  }
  return isSet("HOME") ? *environment("HOME") + "/.cache" : "/tmp";
}

}  // namespace

std::u16string temporaryFolder() {
  std::string path = environment("TMPDIR").value_or("");
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return fromSystemPath(path.empty() ? "/tmp" : path);
}

void nameTemporaryFolder() {
  if (!isSet("TEMP") && !isSet("TMP")) setEnvironment("TEMP", folderForLargeFiles());
}

}  // namespace platform

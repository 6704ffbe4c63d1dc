#include "platform/temporaryfolder.h"

#include "platform/process.h"
#include "platform/text.h"

namespace platform {

std::u16string temporaryFolder() {
  std::string path = environment("TMPDIR").value_or("");
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return fromSystemPath(path.empty() ? "/tmp" : path);
}

}  // namespace platform

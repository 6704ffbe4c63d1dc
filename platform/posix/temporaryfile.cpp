#include "platform/temporaryfile.h"

#include "platform/posix/posixgate.h"
#include "platform/systempart.h"
#include "platform/text.h"

namespace platform {

int systemTemporaryDescriptor(std::u16string_view path) {
  constexpr mode_t forTheUserAlone = 0600;
  const std::string name = toSystemPath(path);
  const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, forTheUserAlone);
  if (descriptor >= 0) unlink(name.c_str());
  return descriptor;
}

}  // namespace platform

#include "platform/temporaryfile.h"

#include "platform/systempart.h"

namespace platform {

int (*temporaryFileHook)(std::u16string_view) = nullptr;

int openTemporaryDescriptor(std::u16string_view path) {
  return temporaryFileHook != nullptr ? temporaryFileHook(path) : systemTemporaryDescriptor(path);
}

}  // namespace platform

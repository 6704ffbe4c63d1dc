#include "platform/knownfolders.h"

#include "platform/systempart.h"

namespace platform {

std::u16string (*knownFolderHook)(KnownFolder) = nullptr;

std::u16string knownFolderPath(KnownFolder folder) {
  return knownFolderHook != nullptr ? knownFolderHook(folder) : systemKnownFolder(folder);
}

}  // namespace platform

#include "platform/osregistry.h"

#include "platform/fileregistry.h"
#include "platform/knownfolders.h"
#include "platform/systempart.h"

namespace platform {
namespace {

std::u16string fileOf(RegistryRoot root) {
  const bool ofUser = root == RegistryRoot::currentUser;
  std::u16string folder =
      knownFolderPath(ofUser ? KnownFolder::appData : KnownFolder::commonAppData);
  return folder.empty() ? folder : folder + u"\\Velmora\\registry.txt";
}

}  // namespace

// Never destroyed: keys may be closed by whoever ends last.
RegistryStore& systemRegistryStore() {
  static RegistryStore& store = *new FileRegistry(fileOf);
  return store;
}

}  // namespace platform

// Writes settings journals into the current directory, and beside each what it holds.
#include <cstdlib>

#include "base/basic/testaccess.h"
#include "tests/formats/settingscontents.h"

int main() {
  for (const tests::Contents& contents : tests::kContents) {
    testaccess::resetSettingsPaths();
    tests::SettingsFile file(contents.name);
    (contents.put == tests::putExample ? tests::putJournalExample : contents.put)(file);
    if (!file.saveJournal()) return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}

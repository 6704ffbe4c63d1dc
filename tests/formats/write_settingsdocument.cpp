// Writes settings documents into the current directory, and beside each what it holds.
#include <cstdlib>

#include "base/basic/testaccess.h"
#include "tests/formats/settingscontents.h"

int main() {
  for (const tests::Contents& contents : tests::kContents) {
    testaccess::resetSettingsPaths();
    tests::SettingsFile file(std::string(contents.name) + ".iniml");
    contents.put(file);
    if (!file.saveDocument()) return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}

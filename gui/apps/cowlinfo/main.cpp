// The entry of cowlinfo.

#include <string>
#include <vector>

#include "gui/apps/cowlinfo/infocommand.h"
#include "platform/process.h"
#include "platform/temporaryfolder.h"
#include "platform/text.h"

int main(int argc, char** argv) {
  platform::fillStandardStreams();
  platform::nameTemporaryFolder();
  const platform::NarrowArguments arguments = platform::narrowArguments(argc, argv);
  std::vector<std::string> texts;
  for (int i = 1; i < arguments.count; ++i) {
    texts.push_back(platform::toSystem(platform::fromCodePage(arguments.values[i])));
  }
  return runInfo(texts);
}

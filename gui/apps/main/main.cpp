// The entry of the process.

#include "gui/apps/main/mainfunction.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orobaselibrary.h"
#include "platform/process.h"
#include "platform/temporaryfolder.h"

// Always 1, good or bad: callers of the program know no other result of a run that came back, and
// a status of its own is given only by a component that ends the process.
int main(int argc, char** argv) {
  platform::fillStandardStreams();
  kelHelpOperatorNew();
  platform::ignoreBrokenPipes();    // progress that nobody reads any more does not end the work
  platform::ignoreFileSizeLimit();  // a save then fails and tells why, and takes its file away
  platform::nameTemporaryFolder();
  platform::storeInstanceHandle(platform::systemInstanceHandle());
  const platform::NarrowArguments arguments = platform::narrowArguments(argc, argv);
  oroMainFunction(arguments.count, arguments.values);
  oroEndWithStatus();
  oroBaseLibraryEnd();
  return 1;
}

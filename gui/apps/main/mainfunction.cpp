#include "gui/apps/main/mainfunction.h"

#include <memory>

#include "gui/apps/main/commandlineflow.h"
#include "gui/apps/main/loadjournal.h"
#include "gui/apps/main/oroappmain.h"
#include "gui/apps/main/usage.h"
#include "interfaces/IExitService.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroRunOutcome.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orobaselibrary.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"

namespace {

constexpr int32_t kNoStatus = -1;

int32_t runToEnd(OroAppMain& application, int32_t argc, const OroString* argv,
                 IOroAppMainHook* hook) {
  const IPtr<LoadJournal> journal(new LoadJournal);
  const LoadJournal::Listening listening(*journal);
  application.init(argc, argv, hook);  // a failure shows in the run
  if (IOroObjBroker* const broker = oroBroker()) {
    broker->registerService(KelCString::borrow(IOroLoadJournal::interfaceName()), journal.get());
  }
  kelFindMemoryManager();
  const int32_t result = application.isHeadless() ? runCommandLine(argc, argv) : application.run();
  // After a failed run the destructor shuts down, and a script's error changes nothing any more.
  return result != 0 || application.shutDown() != 0 ? 1 : 0;
}

}  // namespace

int32_t oroMainFunction(int argc, const char* const* argv, IOroAppMainHook* hook) {
  platform::reportRuntimeErrorsInBox();
  OroAppMain application;
  const int32_t count = argc > 0 ? argc : 0;
  const std::unique_ptr<OroString[]> arguments(new OroString[static_cast<size_t>(count) + 1]);
  for (int32_t i = 0; i < count; ++i) arguments[i] = OroString(argv[i]);
  if (isHelpRequest(count, arguments.get())) {
    printUsage(count, arguments.get());
    return 0;
  }
  return runToEnd(application, count, arguments.get(), hook);
}

void oroEndWithStatus() {
  const SPtr<IOroRunOutcome> outcome;
  const int32_t status = outcome ? outcome->exitStatus() : kNoStatus;
  if (status == kNoStatus) return;
  const SPtr<IExitService> exitService;
  if (!exitService) return;
  oroBaseLibraryEnd();
  exitService->exit(status);
}

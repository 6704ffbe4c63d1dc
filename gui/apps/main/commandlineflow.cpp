#include "gui/apps/main/commandlineflow.h"

#include <optional>

#include "base/basic/gendatastore.h"
#include "gui/apps/main/commandlinesettings.h"
#include "gui/apps/main/commandrecord.h"
#include "gui/apps/main/errorprinter.h"
#include "gui/apps/main/runstep.h"
#include "gui/apps/main/savestep.h"
#include "headless/attachheadless.h"
#include "interfaces/ICmdLine.h"
#include "interfaces/ICommandAccess.h"
#include "interfaces/ICommandRegistration.h"
#include "interfaces/IExitService.h"
#include "interfaces/IGenApp.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IInfoBar2.h"
#include "interfaces/IOroBatchProcessingService.h"
#include "interfaces/IOroDoc.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroOpenOptions.h"
#include "interfaces/IPrimitivesService.h"
#include "interfaces/IScriptEngine.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orocommandlineflag.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

using namespace commandlinesettings;

int32_t integerSetting(const char* path) {
  SPtr<IDataStore> store;
  return store ? store->GetInt(path, nullptr) : 0;
}

// A copy: a later step may change the setting.
OroString textSetting(const char* path) {
  SPtr<IDataStore> store;
  return store ? store->GetOroString(path, nullptr) : OroString();
}

// From here on nothing is journalled, and everybody can see that there is no user interface.
void beginCommandLine() {
  oroCommandLineFlag() = 1;
  SPtr<IDataStore> store;
  if (!store) return;
  declareCommandLineSettings(*store);
  getGenDataStore()->SetAutoSave(false);
  store->SetInt(nullptr, kCommandLine, 1);
}

void prepareApplication() {
  SPtr<IGenApp> application;
  if (application) application->prepare();
}

void registerCommands(ICommandRegistration* registration) {
  if (registration == nullptr) return;
  registration->registerCommands();
  registration->commandsRegistered();
}

void refuseCommandLine(ICmdLine& options) {
  SPtr<IOroErrorService> errors;
  if (errors) errors->report(options.errorText(), 1, KelCString());
  SPtr<IExitService> exitService;
  if (exitService) {
    exitService->exit(0);
  } else {
    kelAssertFail("theExitService", "gui/apps/main/oroappmain", 711);
  }
}

// False for a command line that was refused; the process has been told to end then.
bool takeOptions(int32_t argc, const OroString* argv) {
  SPtr<ICmdLine> options;
  if (!options || options->parse(argc, argv)) return true;
  refuseCommandLine(*options);
  return false;
}

void makeDocument() {
  SPtr<IOroDoc> document;
  if (document) document->makeDocument();
}

// The batch tells its own steps.
void runBatch() {
  SPtr<IOroBatchProcessingService> batch;
  if (batch) {
    batch->run();
  } else {
    RunStep(kOroRunBatch, OroString()).end(kOroRunNobody);
  }
}

// What goes wrong is the open service's business, which reports it; only whoever gathers the
// outcome looks at the result.
OroRunResult openFile(const OroString& file, IInfoBar2* bar) {
  const CommandRecord record(bar, "Open File");
  SPtr<IOroOpenDoc> opener;
  if (!opener) return kOroRunNobody;
  opener->setMode(1);
  opener->setText(0, OroString::empty());
  SPtr<IOroOpenOptions> options;
  return opener->open(OroPath(file), options.get(), 1) ? kOroRunDone : kOroRunFailed;
}

// A script that is asked for and cannot run must not pass in silence.
void reportMissingEngine(const OroString& file) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  errors->report(oroTranslate(text, "There is no script engine to run %1", file), 1, KelCString());
}

// 1 when the script left an error; 0 also where nobody can run it.
int32_t runScript(IScriptEngine* engine, const OroString& file) {
  RunStep step(kOroRunScript, file);
  if (engine == nullptr) {
    reportMissingEngine(file);
    step.end(kOroRunNobody);
    return 0;
  }
  engine->runScript(file, OroString::empty());
  const bool good = textSetting(kScriptError).isEmpty();
  step.end(good ? kOroRunDone : kOroRunFailed);
  return good ? 0 : 1;
}

int32_t openScriptAndSave() {
  SPtr<IInfoBar> bar;
  auto* const commands = oroQuery<IInfoBar2>(bar.get());
  const OroString script = textSetting(kScript);
  const OroString input = textSetting(kInputFile);
  SPtr<IScriptEngine> engine;
  if (!input.isEmpty()) {
    RunStep step(kOroRunOpen, input);
    step.end(openFile(input, commands));
  }
  const int32_t result = script.isEmpty() ? 0 : runScript(engine.get(), script);
  // Also after a failed script: what it did up to then is wanted.
  const OroString output = textSetting(kOutputFile);
  if (!output.isEmpty()) {
    RunStep step(kOroRunSave, output);
    step.end(saveFile(output, commands, engine.get()));
  }
  return result;
}

// Steps, with what goes wrong told to the person who started them: by records, or else by lines on
// standard error.
int32_t runSteps() {
  std::optional<ErrorPrinter::Attached> printing;
  if (headlessDropsReports()) printing.emplace();
  if (integerSetting(kBatch) == 0) return openScriptAndSave();
  runBatch();
  return 0;
}

}  // namespace

int32_t runCommandLine(int32_t argc, const OroString* argv) {
  beginCommandLine();
  prepareApplication();
  // Held for the length of the run, so that their libraries are loaded.
  const SPtr<ICommandAccess> commandAccess;
  const SPtr<ICommandRegistration> commandRegistration;
  const SPtr<IPrimitivesService> primitives;
  registerCommands(commandRegistration.get());
  if (!takeOptions(argc, argv)) return 1;
  makeDocument();
  attachHeadlessService();
  const int32_t result = runSteps();
  endRun();
  detachHeadlessService();
  return result;
}

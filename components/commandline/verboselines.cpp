#include "components/commandline/verboselines.h"

#include <chrono>
#include <cstdio>
#include <string>

#include "components/commandline/runoutcome.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"

namespace {

int32_t toldLoads = 0;  // of the journal

std::string milliseconds(int64_t nanoseconds) {
  char text[40];
  std::snprintf(text, sizeof text, "%.1f ms", static_cast<double>(nanoseconds) / 1e6);
  return text;
}

void printLine(const std::string& line) {
  std::fputs((line + "\n").c_str(), stderr);
  std::fflush(stderr);
}

const char* loadResult(int32_t step) {
  switch (step) {
    case kOroLoadDone:
      return "loaded";
    case kOroLoadFile:
      return "not loaded (file)";
    case kOroLoadEntryPoint:
      return "not loaded (entry point)";
    case kOroLoadVersion:
      return "not loaded (version)";
    default:
      return "not loaded (component)";
  }
}

}  // namespace

int64_t steadyNanoseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

bool isVerbose() {
  SPtr<IDataStore> store;
  return store && store->GetInt(RunOutcome::kVerbose, nullptr) != 0;
}

void printNewLoads() {
  SPtr<IOroLoadJournal> journal;
  if (!journal) return;
  OroString path;
  int32_t step = 0;
  int64_t time = 0;
  while (journal->load(toldLoads + 1, path, step, time)) {
    ++toldLoads;
    printLine(std::string("cowl: ") + loadResult(step) + ": " +
              oroTerminalText(oroShownPath(OroPath(path))) + " in " + milliseconds(time));
  }
}

void printStep(const char* name, const OroString& subject, bool good, int64_t nanoseconds) {
  printLine(std::string("cowl: ") + name + (good ? "" : " failed") + ": " +
            oroTerminalText(subject) + " in " + milliseconds(nanoseconds));
}

#include "components/commandline/runoutcome.h"

#include "components/commandline/verboselines.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IGuiBusyState.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

// What a program reads stays as it is in every language. 1 is left out: every run ends with it that
// was not asked for a status or did not get as far as to hear of that.
struct Outcome {
  int32_t status;
  const char* word;    // of the record
  const char* name;    // of the step, for the verbose lines
  const char* nobody;  // said where no component offers what the step needs; null: others say it
};

// By OroRunStep; 0 is success.
constexpr Outcome kOutcomes[] = {
    {0, "success", nullptr, nullptr},
    {3, "open failed", "open", oroKey("There is nothing to open the file %1 with")},
    {2, "script failed", "script", nullptr},
    {4, "save failed", "save", oroKey("There is nothing to save the file %1 with")},
    {6, "batch failed", "batch", oroKey("There is nothing to run a batch with")},
};

bool isStep(int32_t step) { return step >= kOroRunOpen && step <= kOroRunBatch; }

void report(const char* key, const OroString& subject) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  errors->report(oroTranslate(text, key, subject), 1, KelCString());
}

}  // namespace

void RunOutcome::stepBegun(int32_t step, const OroString& subject) {
  if (isStep(step)) steps_[step] = {subject, steadyNanoseconds()};
}

void RunOutcome::stepEnded(int32_t step, int32_t result) {
  if (!isStep(step)) return;
  if (result == kOroRunNobody && kOutcomes[step].nobody != nullptr) {
    report(kOutcomes[step].nobody, steps_[step].subject);
  }
  if (result != kOroRunDone && failed_ == 0) failed_ = step;
  if (!isVerbose()) return;
  printNewLoads();
  printStep(kOutcomes[step].name, steps_[step].subject, result == kOroRunDone,
            steadyNanoseconds() - steps_[step].start);
}

void RunOutcome::runEnded() {
  SPtr<IGuiBusyState> busy;
  if (!busy) return;
  OroString text(u"Outcome: ");
  text.append(kOutcomes[failed_].word);
  busy->setBusyText(text);
}

int32_t RunOutcome::exitStatus() {
  SPtr<IDataStore> store;
  const bool wanted = store && store->GetInt(kExitStatus, nullptr) != 0;
  return wanted ? kOutcomes[failed_].status : -1;
}

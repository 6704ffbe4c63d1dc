#include "gui/apps/main/runstep.h"

RunStep::RunStep(OroRunStep step, const OroString& subject) : step_(step) {
  if (outcome_) outcome_->stepBegun(step_, subject);
}

void RunStep::end(OroRunResult result) {
  if (outcome_) outcome_->stepEnded(step_, result);
}

void endRun() {
  SPtr<IOroRunOutcome> outcome;
  if (outcome) outcome->runEnded();
}

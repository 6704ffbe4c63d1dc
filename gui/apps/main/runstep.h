// RunStep: a step of the command-line flow, told to whoever gathers the outcome of the run.
//
//   RunStep step(kOroRunOpen, file);
//   step.end(openFile(file));
//
// Without such a component nothing is told. Main thread.
#pragma once

#include "interfaces/IOroRunOutcome.h"
#include "orobasictypes/sptr.h"

class RunStep {
 public:
  RunStep(OroRunStep step, const OroString& subject);
  void end(OroRunResult result);

 private:
  SPtr<IOroRunOutcome> outcome_;
  OroRunStep step_;
};

// All steps are done; the progress stream is still open.
void endRun();

// RunOutcome: how the steps of a run went, told in a form that the program around this one can use.
//
// The last record of the progress stream is "Outcome: WORD", where WORD is one of kOutcomes. With
// the option -exitstatus the process ends with the status beside it. The first step that failed
// decides. Main thread.
#pragma once

#include "interfaces/IOroRunOutcome.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

class RunOutcome : public IOroRunOutcome {
 public:
  static constexpr const char* className() { return "RunOutcome"; }
  using Offers = OroOffers<RunOutcome, IOroRunOutcome>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Settings, 0 or 1; other components may read them.
  static constexpr const char* kExitStatus = "GUI/CommandLine Exit Status";
  static constexpr const char* kVerbose = "GUI/CommandLine Verbose";

  // A command line that was refused, while a status was asked for. No step was begun then.
  static constexpr int32_t kRefusedStatus = 5;

  void stepBegun(int32_t step, const OroString& subject) override;
  void stepEnded(int32_t step, int32_t result) override;
  void runEnded() override;
  int32_t exitStatus() override;

 private:
  struct Step {
    OroString subject;
    int64_t start = 0;  // nanoseconds of the steady clock
  };

  Step steps_[kOroRunBatch + 1];  // by OroRunStep: the batch and a step of its file are both begun
  int32_t failed_ = 0;            // the step that failed first
};

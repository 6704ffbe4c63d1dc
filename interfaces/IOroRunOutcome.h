// IOroRunOutcome: gathers how the steps of a run without a user interface went.
//
// The command-line flow and the batch tell it each step; a component library answers, or nobody
// does and nothing is gathered. Must be one shared object. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

enum OroRunStep : int32_t {
  kOroRunOpen = 1,
  kOroRunScript = 2,
  kOroRunSave = 3,
  kOroRunBatch = 4,  // the batch as a whole; its files are steps of the other kinds
};

enum OroRunResult : int32_t {
  kOroRunDone = 0,
  kOroRunFailed = 1,  // whoever did the step has reported why
  kOroRunNobody =
      2,  // no component offers what it needs; a missing script engine alone is reported
};

class IOroRunOutcome : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroRunOutcome"; }

  // A step begins; `subject` is its file. Each is ended before the next of its kind begins.
  virtual void stepBegun(int32_t step, const OroString& subject) = 0;
  virtual void stepEnded(int32_t step, int32_t result) = 0;

  // All steps are done, and the progress stream still takes records.
  virtual void runEnded() = 0;

  // The status that the process is to end with: 0 when all steps were done, else one that tells
  // what failed first. -1 where nobody asked for one, and the process ends as ever.
  virtual int32_t exitStatus() = 0;
};

// PointProgress: shows how far a long step is, through the interactive services; silent where they
// are absent.
//
//   PointProgress progress("Reading points");
//   progress.update(done, whole);
//
// An action begins when it is made and ends with it. Main thread only.
#pragma once

#include <cstdint>

#include "interfaces/IGuiBusyState.h"
#include "interfaces/IInfoBar.h"
#include "orobasictypes/sptr.h"

class PointProgress {
 public:
  // `key` is the step's name in English.
  explicit PointProgress(const char* key);
  ~PointProgress();
  PointProgress(const PointProgress&) = delete;
  PointProgress& operator=(const PointProgress&) = delete;

  // Work done so far of the whole, in any unit. A whole of 0 reports nothing.
  void update(int64_t done, int64_t whole);

 private:
  SPtr<IInfoBar> bar_;
  SPtr<IGuiBusyState> busy_;
  int32_t percent_ = -1;  // reported last
};

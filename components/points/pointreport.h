// What the point library tells the user: errors through the error service, and the progress of a
// long step through the interactive services. Both are silent where those services are absent.
#pragma once

#include <cstdint>

#include "interfaces/IGuiBusyState.h"
#include "interfaces/IInfoBar.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

// Reports the text of an English key with its arguments; severity 1 is an error, 0 a warning.
void reportPoints(int32_t severity, const char* key, const OroString& a1,
                  const OroString& a2 = OroString(), const OroString& a3 = OroString());

// The time in which one step runs: an action begins and ends with it.
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

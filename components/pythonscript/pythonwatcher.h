// PythonWatcher: lets a command that works in C++ hear of the user's interrupt and of a wish to
// stop.
//
// It only notes an interrupt: were Python's handlers to run here, a script could change the points
// in the middle of the work. Whoever runs the command hands the interrupt on when the work has
// ended. Main thread, under the interpreter's lock.
#pragma once

#include "interfaces/IOroProgress.h"
#include "orobasictypes/orooffers.h"

class PythonWatcher : public IOroProgress {
 public:
  static constexpr const char* className() { return "PythonWatcher"; }
  using Offers = OroOffers<PythonWatcher, IOroProgress>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool isInterrupted() const { return interrupted_; }

  bool Update(float fraction) override;
  bool IsCancelled() override { return interrupted_; }
  // Commands show what they do themselves.
  void startAction(const void*, const OroString&) override {}
  void stopAction(const void*) override {}
  void setAction(const void*, const OroString&) override {}
  void currentAction(OroString&) override {}
  int32_t resolve(int32_t value) override { return value; }

  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }

 private:
  bool interrupted_ = false;
};

// FakeProgress: a progress service that tells what it was asked and answers as it is told.
#pragma once

#include <utility>
#include <vector>

#include "interfaces/IOroProgress.h"
#include "orobasictypes/orooffers.h"

namespace tests {

class FakeProgress : public IOroProgress {
 public:
  static constexpr const char* className() { return "FakeProgress"; }
  using Offers = OroOffers<FakeProgress, IOroProgress>;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Update(float fraction) override {
    calls_.push_back(fraction);
    return goesOn;
  }
  bool IsCancelled() override {
    calls_.push_back(asked);
    return isCancelled;
  }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  void startAction(const void*, const OroString&) override {}
  void stopAction(const void*) override {}
  void setAction(const void*, const OroString&) override {}
  void currentAction(OroString&) override {}
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }
  int32_t resolve(int32_t value) override { return value; }

  // The fractions that were shown since the last call, `asked` for each question.
  std::vector<float> take() { return std::exchange(calls_, {}); }

  static constexpr float asked = -1;
  bool goesOn = true;
  bool isCancelled = false;

 private:
  std::vector<float> calls_;
};

}  // namespace tests

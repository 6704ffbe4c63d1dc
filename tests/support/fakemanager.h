// FakeManager: a memory manager that can release so many times, and counts how often it was asked.
//
//   FakeManager manager;
//   manager.releases = 3;
#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>

#include "interfaces/IOroMManager.h"
#include "orobasictypes/orooffers.h"

namespace tests {

class FakeManager : public OroMM::IOroMManager {
 public:
  static constexpr const char* className() { return "FakeManager"; }
  using Offers = OroOffers<FakeManager, OroMM::IOroMManager>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int64_t releases = 0;             // how often it will say true
  int64_t asked = 0;                // how often it was asked
  std::function<void()> onRelease;  // called when it says true

  void* AllocBlock(int32_t bytes, bool zero) override {
    return zero ? std::calloc(1, static_cast<size_t>(bytes))
                : std::malloc(static_cast<size_t>(bytes));
  }
  void FreeBlock(void* block) override { std::free(block); }
  bool ReleaseMemory() override {
    if (++asked > releases) return false;
    if (onRelease) onRelease();
    return true;
  }
  int64_t CoreLimit() override { return 200; }
  int64_t SwapLimit() override { return 400000000; }
  int64_t SwapPages() override { return 3; }
  int64_t CorePages() override { return 100; }
  void unusedPlace3() override {}
  void unusedPlace5() override {}
  void unusedPlace6() override {}
  void unusedPlace7() override {}
  void unusedPlace8() override {}
  void unusedPlace9() override {}
  void unusedPlace10() override {}
  void unusedPlace14() override {}
  void unusedPlace15() override {}
  void unusedPlace16() override {}
  void unusedPlace17() override {}
};

}  // namespace tests

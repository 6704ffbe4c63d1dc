#pragma once

// Doubles of the services around a start with an application of its own.

#include <string>

#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroAppStarter.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/orostring.h"
#include "tests/gui/apps/main/double.h"
#include "tests/gui/apps/main/events.h"

namespace tests {

struct Starter : Double<Starter, IOroAppStarter> {
  static constexpr const char* className() { return "Starter"; }
  int32_t startResult = 0;
  int32_t runResult = 0;
  ~Starter() override { event("starter gone"); }
  void init(int32_t argc, const OroString* argv) override {
    event("starter init " + std::to_string(argc), argv[argc - 1]);
  }
  void initDone() override { event("starter initDone"); }
  int32_t start() override {
    event("starter start");
    return startResult;
  }
  int32_t run() override {
    event("starter run");
    return runResult;
  }
  void shutDown() override { event("starter shutDown"); }
};

struct MemoryManager : Double<MemoryManager, OroMM::IOroMManager, IMemoryInit> {
  static constexpr const char* className() { return "MemoryManager"; }
  void* AllocBlock(int32_t, bool) override { return nullptr; }
  void FreeBlock(void*) override {}
  bool ReleaseMemory() override { return false; }
  int64_t CoreLimit() override { return 0; }
  int64_t SwapLimit() override { return 0; }
  int64_t SwapPages() override { return 0; }
  int64_t CorePages() override { return 0; }
  void end() override { event("memory end"); }
};

}  // namespace tests

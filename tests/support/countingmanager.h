// CountingManager: a memory manager on the heap that tells what was asked of it. Blocks that need
// not be zero are full of rubbish.
//
//   tests::ManagedMemory memory;  // a broker with a manager, for the life of this object
//   OroMM::IntArray array(1);
//   array.Set(0, 5);
//   EXPECT_THAT(memory.manager->takeLog(), ElementsAre("alloc 1 8192 zero"));
//
// Blocks are numbered in the order in which they were made. One at a time, and no split array may
// outlive it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "interfaces/IOroMManager.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/testaccess.h"
#include "tests/support/fakebroker.h"

namespace tests {

class CountingManager : public OroMM::IOroMManager {
 public:
  static constexpr const char* className() { return "CountingManager"; }
  using Offers = OroOffers<CountingManager, OroMM::IOroMManager>;

  ~CountingManager() override {
    for (const auto& [block, number] : living_) std::free(block);
  }
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void* AllocBlock(int32_t bytes, bool zero) override {
    ++allocations;
    void* const block = std::malloc(static_cast<size_t>(bytes));
    std::memset(block, zero ? 0 : 0xCD, static_cast<size_t>(bytes));
    living_[block] = allocations;
    if (logs) {
      log_.push_back("alloc " + std::to_string(allocations) + " " + std::to_string(bytes) +
                     (zero ? " zero" : " raw"));
    }
    return block;
  }
  void FreeBlock(void* block) override {
    if (block == nullptr) {
      ++nullFrees;
      if (logs) log_.push_back("free null");
      return;
    }
    ++frees;
    if (logs) log_.push_back("free " + std::to_string(living_.at(block)));
    living_.erase(block);
    std::free(block);
  }
  void unusedPlace3() override {}
  bool ReleaseMemory() override { return false; }
  void unusedPlace5() override {}
  void unusedPlace6() override {}
  void unusedPlace7() override {}
  void unusedPlace8() override {}
  void unusedPlace9() override {}
  void unusedPlace10() override {}
  int64_t CoreLimit() override { return 0; }
  int64_t SwapLimit() override { return 0; }
  int64_t SwapPages() override { return 0; }
  void unusedPlace14() override {}
  void unusedPlace15() override {}
  void unusedPlace16() override {}
  void unusedPlace17() override {}
  int64_t CorePages() override { return 0; }

  // What was asked since the last call.
  std::vector<std::string> takeLog() { return std::exchange(log_, {}); }
  // Blocks that did not come back.
  int living() const { return static_cast<int>(living_.size()); }

  bool logs = true;
  int allocations = 0;
  int frees = 0;  // of blocks
  int nullFrees = 0;

 private:
  std::unordered_map<void*, int> living_;
  std::vector<std::string> log_;
};

// The split arrays of this program take their blocks from `manager`.
class ManagedMemory {
 public:
  ManagedMemory() {
    broker.registerService(KelCString::borrow(OroMM::IOroMManager::interfaceName()), manager.get());
    testaccess::resetArrayManager();
  }
  ~ManagedMemory() { testaccess::resetArrayManager(); }
  ManagedMemory(const ManagedMemory&) = delete;
  ManagedMemory& operator=(const ManagedMemory&) = delete;

  FakeBroker broker;
  const IPtr<CountingManager> manager = new CountingManager;
};

// There is no manager.
class UnmanagedMemory {
 public:
  UnmanagedMemory() { testaccess::resetArrayManager(); }
};

}  // namespace tests

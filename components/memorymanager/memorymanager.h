// MemoryManager: the service IOroMManager, whose blocks outgrow the machine's memory.
//
// Blocks lie in memory up to a limit and beyond it in a temporary file that is mapped into memory,
// out of which the system can move them. Three settings in "Memory" say how; they are read from the
// settings document when the first block is asked for:
//   "CoreLimit"      bytes of blocks in memory; 0 for half of what this process may have
//   "SwapLimit"      bytes of blocks in the file; 0 for four times what this process may have
//   "SwapDirectory"  folder of the file; empty for that of all temporary files
// One shared object. Any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "components/memorymanager/blockmanager.h"
#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/orooffers.h"

class MemoryManager : public OroMM::IOroMManager, public IMemoryInit {
 public:
  static constexpr const char* className() { return "MemoryManager"; }
  using Offers = OroOffers<MemoryManager, OroMM::IOroMManager, IMemoryInit>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  MemoryManager() = default;  // with the limits of the settings
  explicit MemoryManager(const BlockManager::Limits& limits);
  ~MemoryManager() override;

  void* AllocBlock(int32_t bytes, bool zero) override;
  void FreeBlock(void* block) override;
  bool ReleaseMemory() override;
  // Whole pages of 24 KiB, begun ones counted. Until the first block the limits are those of the
  // machine.
  int64_t CoreLimit() override;
  int64_t SwapLimit() override;
  int64_t SwapPages() override;
  int64_t CorePages() override;

  // The file goes, and the blocks in it. Blocks may still be freed.
  void end() override;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
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

 private:
  BlockManager* made() const { return blocks_.load(std::memory_order_acquire); }
  BlockManager* make();

  std::mutex making_;                            // held while the blocks are made
  std::atomic<BlockManager*> blocks_ = nullptr;  // owned; null until the first block
};

// IOroMManager: the memory manager that a component library may publish.
//
// The split arrays take their blocks from it, and an allocation that fails asks it to give memory
// back to the heap. It is looked up once and held for the life of the process, so it must be one
// shared object. ReleaseMemory may be called by any thread; the rest by the owner of the blocks.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

namespace OroMM {

class IOroMManager : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroMManager"; }

  // A block, cleared when `zero` is set; its address stays valid and directly usable until
  // FreeBlock. Null when there is no memory.
  virtual void* AllocBlock(int32_t bytes, bool zero) = 0;

  // Accepts null.
  virtual void FreeBlock(void* block) = 0;

  // Not called by the host; the place counts. Implementations do nothing.
  virtual void unusedPlace3() = 0;

  // Gives memory back to the heap, typically one page; false when nothing more can be given.
  virtual bool ReleaseMemory() = 0;

  // Not called by the host; the place counts. Implementations do nothing.
  virtual void unusedPlace5() = 0;
  virtual void unusedPlace6() = 0;
  virtual void unusedPlace7() = 0;
  virtual void unusedPlace8() = 0;
  virtual void unusedPlace9() = 0;
  virtual void unusedPlace10() = 0;

  // The limits and the present use, all in pages of 24 KiB.
  virtual int64_t CoreLimit() = 0;

  virtual int64_t SwapLimit() = 0;

  virtual int64_t SwapPages() = 0;

  // Not called by the host; the place counts. Implementations do nothing.
  virtual void unusedPlace14() = 0;
  virtual void unusedPlace15() = 0;
  virtual void unusedPlace16() = 0;
  virtual void unusedPlace17() = 0;

  virtual int64_t CorePages() = 0;
};

}  // namespace OroMM

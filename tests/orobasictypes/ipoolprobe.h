// IPoolProbe: a module of its own, seen from a test: what its strings' pool does.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IBucketMemoryPool;

class IPoolProbe : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IPoolProbe"; }

  // kelPoolAlloc, kelPoolFree, kelPoolAdopt and kelPoolShutdown of the module.
  virtual void* take(int32_t size, int32_t& actual) = 0;
  virtual void give(int32_t size, void* block) = 0;
  virtual int32_t adopt() = 0;
  virtual void shutDown() = 0;
  // The current pool of the module, made when there is none.
  virtual IBucketMemoryPool* current() = 0;
  // From here on the module has a pool of its own, which looks for the service.
  virtual void makeLocal() = 0;
  // The address of the lock of the module's pools.
  virtual const void* lock() = 0;
};

// PoolOff: for the life of this object strings take each block from the heap and give it back at
// once, so that a test sees every one of them. Sizes are then those asked for.
#pragma once

#include "interfaces/IBucketMemoryPool.h"
#include "orobasictypes/kelpool.h"

namespace tests {

class PoolOff {
 public:
  PoolOff() {
    kelPoolInstance()->Purge();
    kelPoolInstance()->SetEnabled(false);
  }
  ~PoolOff() { kelPoolInstance()->SetEnabled(true); }
  PoolOff(const PoolOff&) = delete;
  PoolOff& operator=(const PoolOff&) = delete;
};

}  // namespace tests

// IRealPArrayFactory: makes the array that a chunk of a file is to be read into.
//
// A component library that knows storage classes of its own publishes one.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IRealPArray;

class IRealPArrayFactory : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IRealPArrayFactory"; }

  // A new array, which nobody holds yet, with room for `size` points; null for a tag that is not
  // known. The tag is the chunk's first 32 bits, or the identifier in them.
  virtual IRealPArray* MakeFromChunk(int32_t tag, int32_t size) = 0;
};

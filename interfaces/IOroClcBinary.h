// IOroClcBinary: a block of bytes that is handed from component to component.
//
// components/kit has a ready class. The bytes are the object's and live as long as it does.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroClcBinary : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroClcBinary"; }

  virtual uint32_t size() = 0;  // bytes
  // Null for an empty block.
  virtual const void* data() = 0;
};

// IImageContainer: one named image of the image store, as the bytes of its file.
//
// The bytes are whoever's put them into the store, and are not copied: a change of them shows here.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IImageContainer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IImageContainer"; }

  virtual const void* getData() = 0;
  virtual uint32_t getSize() = 0;  // bytes
};

// IPointClouds: the point clouds of the document, in its order.
//
// A shared service. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IPointCloud;

class IPointClouds : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IPointClouds"; }

  virtual int32_t count() = 0;
  // The cloud of that number, from 0, as a new object with a count of 0; null outside. Whoever
  // holds it may keep it: a cloud that left the document goes on as a cloud of its own.
  virtual IPointCloud* cloud(int32_t index) = 0;
};

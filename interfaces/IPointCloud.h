// IPointCloud: one cloud of the document.
//
// Points are numbered from 0 here. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IPointBlocks;
class OroString;

class IPointCloud : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IPointCloud"; }

  // Borrowed from the cloud.
  virtual const OroString& name() = 0;
  virtual int64_t count() = 0;
  virtual bool hasColors() = 0;
  // New colours are black. False when there is no room for them.
  virtual bool setHasColors(bool wanted) = 0;

  // The storage as it is now; new, with a count of 0. See there for how long it shows the points.
  virtual IPointBlocks* blocks() = 0;

  virtual int64_t selectedCount() = 0;
  // 1 for each selected point, 0 for the others. False, and nothing done, for points that are not
  // there.
  virtual bool readSelection(int64_t first, int64_t size, uint8_t* flags) = 0;
  virtual bool writeSelection(int64_t first, int64_t size, const uint8_t* flags) = 0;
};

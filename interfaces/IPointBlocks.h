// IPointBlocks: the storage of a cloud, as blocks of points that lie in one piece and may be read
// and written where they are.
//
// Its addresses are good as long as the object lives. Coordinates and colours that commands change
// are seen here, and the other way round. A command that takes points away, adds some or moves them
// gives the cloud a storage of its own first: this one then keeps the points of before, and no
// longer belongs to the cloud. One thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IPointBlocks : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IPointBlocks"; }

  virtual int64_t count() = 0;
  // Blocks are numbered from 0 and hold the points in order.
  virtual int32_t blockCount() = 0;
  // The first point of a block, from 0, and the number of its points. Null outside.
  // Three doubles for each point.
  virtual double* positions(int32_t block, int64_t& first, int64_t& size) = 0;

  // The colours of all points in one piece, red, green, blue and 255 in four bytes each; null where
  // there are none.
  virtual uint8_t* colors() = 0;
};

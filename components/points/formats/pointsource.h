// PointSource: gives a writer the clouds that a file is to hold, block by block and as often as it
// likes.
//
// The clouds must not change while it is in use. One thread.
#pragma once

#include <span>

#include "components/points/formats/pointcloudhead.h"

class BitVector;

class PointSource {
 public:
  virtual ~PointSource() = default;

  // Every head has its count.
  virtual std::span<const PointCloudHead> clouds() const = 0;
  // Copies `count` points from index `first` on, from 0. `colors` may be null; it is left alone
  // where the cloud has none. Requires: the range lies within the cloud. False ends the writing.
  virtual bool points(size_t cloud, int64_t first, size_t count, double* xyz,
                      PointColor* colors) = 0;
  // The selected points of the cloud, from 1. Null where none is.
  virtual const BitVector* selection(size_t) const { return nullptr; }
  // Told after each block that went out, for a progress; what a writer only looks at is not
  // counted.
  virtual void wrote(size_t count) = 0;
};

// PointColorObserver: hears of a point's colour before it changes (RealPArray::SetColorNotify).
//
// The array does not own it. Called on the thread that changes the colour.
#pragma once

#include <cstdint>

class PointColorObserver {
 public:
  // The colour of point i is about to change.
  virtual void ColorChanges(int32_t i) = 0;

 protected:
  ~PointColorObserver() = default;
};

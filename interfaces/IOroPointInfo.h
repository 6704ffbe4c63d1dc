// IOroPointInfo: what a document object's points are, for whoever shows or counts them and knows
// nothing of how they are kept.
//
// Offered by the objects of a document. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroStringArray;

class IOroPointInfo : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroPointInfo"; }

  // -1 for an object that holds something else.
  virtual int64_t pointCount() = 0;

  // The smallest box around the points, three coordinates a corner; false without points.
  virtual bool pointBounds(double* minimum, double* maximum) = 0;

  // Appends what is known of each point: "position", "colour" and the like, in English.
  virtual void pointAttributes(OroStringArray& names) = 0;
};

// IKelDataFloat: a setting that is a 64-bit float within a range.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroDataReceiver;

class IKelDataFloat : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataFloat"; }

  virtual double Get() const = 0;
  // Clamps to the range and stores, silently. Not-a-number becomes the maximum.
  virtual void Set(double value) = 0;
  // As Set; then, if the value changed or `force` is set, tells the receivers. `sender`, which may
  // be null, is passed over unless `force` is set.
  virtual void Update(double value, IOroDataReceiver* sender, bool force) = 0;
  virtual void GetRange(double& minimum, double& maximum) const = 0;
};

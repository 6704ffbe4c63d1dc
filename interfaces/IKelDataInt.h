// IKelDataInt: a setting that is a signed 32-bit integer within a range.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataReceiver;

class IKelDataInt : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataInt"; }

  virtual int32_t Get() const = 0;
  // Clamps to the range and stores, silently.
  virtual void Set(int32_t value) = 0;
  // As Set; then, if the value changed or `force` is set, tells the receivers. `sender`, which may
  // be null, is passed over unless `force` is set.
  virtual void Update(int32_t value, IOroDataReceiver* sender, bool force) = 0;
  virtual void GetRange(int32_t& minimum, int32_t& maximum) const = 0;
};

// IKelDataOroString: a setting that is a wide text of limited length.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataReceiver;
class OroString;

class IKelDataOroString : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataOroString"; }

  // The item's own, good until the next change.
  virtual const OroString& Get() const = 0;
  // Cuts to the capacity and stores, silently.
  virtual void Set(const OroString& text) = 0;
  // As Set; then, if the stored text changed or `force` is set, tells the receivers. `sender`,
  // which may be null, is passed over unless `force` is set.
  virtual void Update(const OroString& text, IOroDataReceiver* sender, bool force) = 0;
  // In 16-bit units.
  virtual int32_t GetCapacity() const = 0;
};

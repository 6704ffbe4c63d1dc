// IInfoBar: the line of the user interface that shows a status text and a progress bar.
//
// In a run without a user interface the headless service answers for it. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class OroString;

class IInfoBar : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IInfoBar"; }

  virtual void setStatusText(const OroString& text) = 0;

  virtual void clearStatusText() = 0;

  // Percent from 0 to 100.
  virtual void setPercent(int32_t percent) = 0;

  // Back to 0 percent.
  virtual void clearPercent() = 0;

  // From 0 to 1, cut to whole percents.
  virtual void setFraction(float fraction) = 0;

  // The same for the work of one owner.
  virtual void setFractionFor(const void* id, float fraction) = 0;
};

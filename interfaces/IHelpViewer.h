// IHelpViewer: shows help to the user; offered by a component library.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroString;

class IHelpViewer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IHelpViewer"; }

  // Shows what a volume gave as the address of a topic; never called with an empty text.
  virtual void show(const OroString& text) = 0;
};

// IHelpVolume: one help file, offered by a component library that knows its format.
//
// The help service makes one object a file. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroPath;
class OroString;

class IHelpVolume : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IHelpVolume"; }

  // Binds the object to its file; called once, right after it was made.
  virtual void open(const OroPath& path) = 0;
  // The host does not call it; its place counts.
  virtual int32_t unusedSlot2() = 0;
  // What a viewer is to show for the topic; empty where there is nothing.
  virtual void topicAddress(OroString& out, const KelCString& topic) = 0;
};

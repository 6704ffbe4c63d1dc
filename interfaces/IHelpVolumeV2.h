// IHelpVolumeV2: what a help volume may offer beside IHelpVolume: topics in their later form.
#pragma once

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroString;

class IHelpVolumeV2 : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IHelpVolumeV2"; }

  // As IHelpVolume::topicAddress.
  virtual void topicAddressV2(OroString& out, const KelCString& topic) = 0;
};

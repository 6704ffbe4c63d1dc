// IHelpServiceV3: help topics in their later form.
#pragma once

#include "interfaces/IHelpServiceV2.h"

class IHelpServiceV3 : public virtual IHelpServiceV2 {
 public:
  static constexpr const char* interfaceName() { return "IHelpServiceV3"; }

  // As showTopic, but through IHelpVolumeV2; a volume without it shows nothing.
  virtual void showTopicV2(const KelCString& name, const KelCString& topic) = 0;
};

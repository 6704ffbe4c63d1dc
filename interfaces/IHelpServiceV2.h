// IHelpServiceV2: a running command may put another help topic in the place of the usual ones.
//
// What it sets lasts until the event "Document/GenCmdDone" of the settings.
#pragma once

#include "interfaces/IHelpService.h"

class IHelpServiceV2 : public virtual IHelpService {
 public:
  static constexpr const char* interfaceName() { return "IHelpServiceV2"; }

  // With `append` the text goes behind each topic, without it in its place. Empty: topics stay.
  virtual void setTopicOverride(const KelCString& text, bool append) = 0;
  virtual void topicOverride(KelCString& out) = 0;
  // The topic as it is to be asked for.
  virtual void applyTopicOverride(KelCString& out, const KelCString& topic) = 0;
};

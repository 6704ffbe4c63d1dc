// IOroLanguageID: holds a language code such as "en", "de" or "zh-cn".
//
// The service of this name holds the language in force. Offered by component libraries only.
#pragma once

#include "orobasictypes/iorounknown.h"

class KelCString;

class IOroLanguageID : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroLanguageID"; }

  virtual const KelCString& getLanguage() = 0;
  virtual void setLanguage(const KelCString& code) = 0;
};

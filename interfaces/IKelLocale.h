// IKelLocale: the language of the operating system's user. Offered by component libraries only.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroLanguageID;

class IKelLocale : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelLocale"; }

  // An object that holds the code of that language, in small letters. The locale's own.
  virtual IOroLanguageID* systemLanguage() = 0;
};

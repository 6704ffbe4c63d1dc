// IOroInternalLanguageService: puts a language in force in every translator of the process.
//
// Called by the start of the application; asked of the translator service. Main thread only.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroLanguageID;

class IOroInternalLanguageService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroInternalLanguageService"; }

  // Sets the code of `language` on the service "IOroLanguageID" and hands that to each translator.
  virtual void setLanguage(IOroLanguageID* language) = 0;
};

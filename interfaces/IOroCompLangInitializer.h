// IOroCompLangInitializer: a class of a component that wants to know the language of the session.
//
// Its class id stands as a value in the registry's section "I18N". The start makes an object, tells
// it the language and drops it.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroLanguageID;

class IOroCompLangInitializer : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroCompLangInitializer"; }

  virtual void initLanguage(IOroLanguageID* language) = 0;
};

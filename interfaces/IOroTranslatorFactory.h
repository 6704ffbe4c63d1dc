// IOroTranslatorFactory: makes translators of one kind.
//
// Offered by component libraries and registered with IOroCustomTranslatorRegistry.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroTranslator;

class IOroTranslatorFactory : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroTranslatorFactory"; }

  // A new translator with a count of 0, or null.
  virtual IOroTranslator* newTranslator() = 0;
};

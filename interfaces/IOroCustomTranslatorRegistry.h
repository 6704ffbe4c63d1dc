// IOroCustomTranslatorRegistry: the factories for further kinds of translators.
//
// Same object as IOroTranslatorService. Main thread only.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroTranslatorFactory;
class KelCString;

class IOroCustomTranslatorRegistry : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroCustomTranslatorRegistry"; }

  // Takes a reference. False when the kind has a factory, which stays.
  virtual bool registerFactory(const KelCString& kind, IOroTranslatorFactory* factory) = 0;
  // False when the kind has none.
  virtual bool unregisterFactory(const KelCString& kind) = 0;
};

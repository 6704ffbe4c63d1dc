// IOroExternalTranslator: a translator that reads its texts from files of a component.
//
// Asked of the translator that IOroTranslatorService made, before its first text. Main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class OroPath;

class IOroExternalTranslator : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroExternalTranslator"; }

  // Where the files lie and how their names begin; the language follows. Returns true.
  virtual bool setBaseName(const OroPath& path) = 0;
};

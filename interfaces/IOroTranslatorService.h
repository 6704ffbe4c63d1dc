// IOroTranslatorService: the translators of the process, one for each component that has its own.
//
// Components make theirs with createTranslator when they are initialised. Main thread only. The
// service holds the translators; all pointers that it hands out are borrowed.
#pragma once

#include "orobasictypes/iorounknown.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oroguid.h"

class IOroLanguageID;
class IOroTranslator;
class KelCString;
class OroString;

class IOroTranslatorService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroTranslatorService"; }

  // The component's translator, made when it has none: by the kind "XLIFF", a registered factory,
  // or the class named by the registry's "TRANSLATORS/" and the kind. Null for an unknown kind.
  virtual IOroTranslator* createTranslator(const KelCString& kind, const GUID& componentId) = 0;
  virtual IOroTranslator* getTranslator(const GUID& componentId) = 0;
  // The language now in force, or null.
  virtual IOroLanguageID* getLanguageId() = 0;
  // The component ids that have a translator; what stood in the array is dropped.
  virtual void listTranslators(OroArray<GUID>& out) = 0;
  // As translateQualified; a null text is empty.
  virtual OroString& translateText(OroString& out, const char* text) = 0;
  // "ID|key" asks the translator of that component; an unknown id, or a key without "|", the
  // module's own. Returns `out`.
  virtual OroString& translateQualified(OroString& out, const char* key) = 0;
};

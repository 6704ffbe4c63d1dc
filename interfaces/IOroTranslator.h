// IOroTranslator: turns an English key into text of the user's language.
//
// Code calls oroTranslate, which finds the module's translator. A key without translation is its
// own text. All operations store into `out` and return it; null arguments count as empty. No lock:
// tables are filled before first use.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroLanguageID;
class OroString;

class IOroTranslator : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroTranslator"; }

  // Fills "%1" to "%99" from `count` strings, in number order.
  virtual OroString& translateArray(OroString& out, const char* key, int32_t count,
                                    const OroString* arguments) = 0;
  virtual OroString& translate6(OroString& out, const char* key, const OroString* a1,
                                const OroString* a2, const OroString* a3, const OroString* a4,
                                const OroString* a5, const OroString* a6) = 0;
  virtual OroString& translate5(OroString& out, const char* key, const OroString* a1,
                                const OroString* a2, const OroString* a3, const OroString* a4,
                                const OroString* a5) = 0;
  virtual OroString& translate4(OroString& out, const char* key, const OroString* a1,
                                const OroString* a2, const OroString* a3, const OroString* a4) = 0;
  virtual OroString& translate3(OroString& out, const char* key, const OroString* a1,
                                const OroString* a2, const OroString* a3) = 0;
  virtual OroString& translate2(OroString& out, const char* key, const OroString* a1,
                                const OroString* a2) = 0;
  virtual OroString& translate1(OroString& out, const char* key, const OroString* a1) = 0;
  // The text as it stands, placeholders included.
  virtual OroString& translate(OroString& out, const char* key) = 0;
  // False when the translator cannot change its language.
  virtual bool setLanguage(IOroLanguageID* language) = 0;
};

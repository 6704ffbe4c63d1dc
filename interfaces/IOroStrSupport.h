// IOroStrSupport: locale-aware text operations, offered by a component library.
// Without it the strings use their plain ASCII rules. It is asked for once in each module.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;
class OroString;

class IOroStrSupport : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroStrSupport"; }

  virtual int32_t unusedSlot1() = 0;  // never called; keeps its place
  virtual void toNarrow(KelCString& out, const OroString& text) = 0;
  virtual int32_t compare(const OroString& left, const OroString& right) = 0;  // below 0, 0, above
  virtual bool isSpace(char16_t unit) = 0;
  virtual bool isDigit(char16_t unit) = 0;
  virtual bool contains(const OroString& text, const OroString& part, bool caseSensitive) = 0;
  // These four edit the text in place.
  virtual void stripSpace(OroString& text) = 0;
  virtual void normalize(OroString& text) = 0;
  virtual void toLower(OroString& text) = 0;
  virtual void toUpper(OroString& text) = 0;
};

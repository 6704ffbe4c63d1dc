// OroStringFormat: how an OroString prints a number.
//
//   OroString text(3.14159, OroStringFormat(KelCString::borrow("8.3")));  // "   3.142"
//
// The text is flags, width and precision as in the C format language, without "%" and
// conversion letter; it ends at the first character that is none of these, and numbers above 4095
// count as that. A plain value; the constructors of OroString that take one print with it.
#pragma once

#include "orobasictypes/kelcstring.h"

class OroStringFormat {
 public:
  OroStringFormat() = default;
  explicit OroStringFormat(const KelCString& text, bool exponent = false, bool force = false)
      : useExponentForm(exponent), forceExponent(force), layout(text) {}

  bool useExponentForm = false;  // reals: false prints as "f"
  bool forceExponent = false;    // with useExponentForm: true prints as "e", false as "g"
  KelCString layout;
};

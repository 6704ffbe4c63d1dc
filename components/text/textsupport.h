// TextSupport: text operations by the rules of all scripts and of the user's language.
//
// Shared; the strings of every module that asks after this library is known work by it: order of
// words, letter case, blanks. The host's own strings do not: the host asks at its first text, when
// no library is known yet, and keeps to that answer. No data, any thread.
#pragma once

#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/orooffers.h"

class TextSupport : public IOroStrSupport {
 public:
  static constexpr const char* className() { return "TextSupport"; }
  using Offers = OroOffers<TextSupport, IOroStrSupport>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t unusedSlot1() override { return 0; }
  // The system's narrow text: UTF-8 on Linux, the ANSI code page on Windows, where a character
  // that has no place in it becomes another one.
  void toNarrow(KelCString& out, const OroString& text) override;
  int32_t compare(const OroString& left, const OroString& right) override;  // -1, 0, 1
  bool isSpace(char16_t unit) override;
  bool isDigit(char16_t unit) override;
  // An empty part is in no text.
  bool contains(const OroString& text, const OroString& part, bool caseSensitive) override;
  void stripSpace(OroString& text) override;  // at both ends
  void normalize(OroString& text) override;   // form C
  void toLower(OroString& text) override;     // character by character, in no special language
  void toUpper(OroString& text) override;
};

// OroTrivialTranslator: the translator whose every text is its key.
//
//   #include "interfaces/IOroTranslator.h"
//   class TableTranslator : public OroTrivialTranslator<> { bool lookup(...) override; };
//
// It serves a module while no other translator is to be had, and is the base of those that have a
// table: they override lookup() and inherit how arguments are filled in. A template only because
// headers of this folder know no interface: whoever makes one includes that of the translator.
// No data, any thread.
#pragma once

#include <cstdint>
#include <utility>

#include "orobasictypes/orooffers.h"
#include "orobasictypes/oroplaceholders.h"
#include "orobasictypes/orostring.h"

class IOroLanguageID;
class IOroTranslator;

template <class Interface = IOroTranslator>
class OroTrivialTranslator : public Interface {
 public:
  static constexpr const char* className() { return "OroTrivialTranslator"; }
  using Text = const OroString*;  // an argument; null counts as empty

  // Texts are made aside: `out` may be one of the arguments, and the key one of its narrow forms.
  OroString& translateArray(OroString& out, const char* key, int32_t count,
                            Text arguments) override {
    OroString text;
    lookup(key, text);
    oroFillNumbers(text, count, arguments);
    return out = std::move(text);
  }
  OroString& translate6(OroString& out, const char* key, Text a1, Text a2, Text a3, Text a4,
                        Text a5, Text a6) override {
    return filled(out, key, {a1, a2, a3, a4, a5, a6});
  }
  OroString& translate5(OroString& out, const char* key, Text a1, Text a2, Text a3, Text a4,
                        Text a5) override {
    return filled(out, key, {a1, a2, a3, a4, a5});
  }
  OroString& translate4(OroString& out, const char* key, Text a1, Text a2, Text a3,
                        Text a4) override {
    return filled(out, key, {a1, a2, a3, a4});
  }
  OroString& translate3(OroString& out, const char* key, Text a1, Text a2, Text a3) override {
    return filled(out, key, {a1, a2, a3});
  }
  OroString& translate2(OroString& out, const char* key, Text a1, Text a2) override {
    return filled(out, key, {a1, a2});
  }
  OroString& translate1(OroString& out, const char* key, Text a1) override {
    return filled(out, key, {a1});
  }
  OroString& translate(OroString& out, const char* key) override {
    OroString text;
    lookup(key, text);
    return out = std::move(text);
  }
  bool setLanguage(IOroLanguageID*) override { return false; }

  // Stores the text of the key, placeholders included, and returns whether there was one. The text
  // must be a buffer of its own, or placeholders in it are not filled.
  virtual bool lookup(const char* key, OroString& out) {
    out = OroString(key);
    return true;
  }

  using Offers = OroOffers<OroTrivialTranslator, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  OroString& filled(OroString& out, const char* key, const OroPlaceholderArguments& arguments) {
    OroString text;
    lookup(key, text);
    text.substitute(arguments.texts);
    return out = std::move(text);
  }
};

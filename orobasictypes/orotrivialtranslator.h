// OroTrivialTranslator: the translator whose every text is its key.
//
// It serves a module while no other translator is to be had, and is the base of those that have a
// table: they override lookup() and inherit how arguments are filled in. No data, any thread.
#pragma once

#include <cstdint>

#include "interfaces/IOroTranslator.h"
#include "orobasictypes/orooffers.h"

class OroTrivialTranslator : public IOroTranslator {
 public:
  static constexpr const char* className() { return "OroTrivialTranslator"; }

  OroString& translateArray(OroString& out, const char* key, int32_t count,
                            const OroString* arguments) override;
  OroString& translate6(OroString& out, const char* key, const OroString* a1, const OroString* a2,
                        const OroString* a3, const OroString* a4, const OroString* a5,
                        const OroString* a6) override;
  OroString& translate5(OroString& out, const char* key, const OroString* a1, const OroString* a2,
                        const OroString* a3, const OroString* a4, const OroString* a5) override;
  OroString& translate4(OroString& out, const char* key, const OroString* a1, const OroString* a2,
                        const OroString* a3, const OroString* a4) override;
  OroString& translate3(OroString& out, const char* key, const OroString* a1, const OroString* a2,
                        const OroString* a3) override;
  OroString& translate2(OroString& out, const char* key, const OroString* a1,
                        const OroString* a2) override;
  OroString& translate1(OroString& out, const char* key, const OroString* a1) override;
  OroString& translate(OroString& out, const char* key) override;
  bool setLanguage(IOroLanguageID* language) override;

  // Stores the text of the key, placeholders included, and returns whether there was one. The text
  // must be a buffer of its own, or placeholders in it are not filled.
  virtual bool lookup(const char* key, OroString& out);

  using Offers = OroOffers<OroTrivialTranslator, IOroTranslator>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

// SessionLanguage: holds a language code, "de" or "zh-cn"; empty until one is set.
//
// The shared one is the language in force, which the start of the application sets. A plain holder:
// one thread at a time.
#pragma once

#include "interfaces/IOroLanguageID.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"

class SessionLanguage : public IOroLanguageID {
 public:
  static constexpr const char* className() { return "SessionLanguage"; }
  using Offers = OroOffers<SessionLanguage, IOroLanguageID>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const KelCString& getLanguage() override { return code_; }
  // A copy, since a literal of another library may go with it.
  void setLanguage(const KelCString& code) override { code_ = KelCString(code.c_str()); }

 private:
  KelCString code_ = KelCString("");
};

// SystemLocale: the language of the system's user as a code of the program's own form.
//
// Only a language that the installation has is told, so that nobody who never chose one hears of
// files that are missing; else the code is empty. It asks once, when it is made, and owns the
// object that holds the answer.
#pragma once

#include <string>
#include <string_view>

#include "components/text/sessionlanguage.h"
#include "interfaces/IKelLocale.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class OroPath;

class SystemLocale : public IKelLocale {
 public:
  static constexpr const char* className() { return "SystemLocale"; }
  using Offers = OroOffers<SystemLocale, IKelLocale>;
  SystemLocale();
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  IOroLanguageID* systemLanguage() override { return language_.get(); }

  // Whether the folder has the application's texts in that language. English needs none.
  static bool isInstalled(const OroPath& folder, const std::string& code);

  // The code for a language tag: the language in small letters, "de" for "de-AT". Chinese is told
  // apart by its script: "zh-tw" for the traditional one, else "zh-cn".
  static std::string codeOf(std::string_view tag);

 private:
  IPtr<SessionLanguage> language_ = new SessionLanguage;
};

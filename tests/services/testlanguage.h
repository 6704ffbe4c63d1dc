// TestLanguage: holds a language code.
#pragma once

#include "interfaces/IOroLanguageID.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"

namespace tests {

class TestLanguage : public IOroLanguageID {
 public:
  static constexpr const char* className() { return "TestLanguage"; }
  using Offers = OroOffers<TestLanguage, IOroLanguageID>;
  explicit TestLanguage(const char* code) : code_(code) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const KelCString& getLanguage() override { return code_; }
  void setLanguage(const KelCString& code) override { code_ = KelCString(code.text()); }

 private:
  KelCString code_;
};

}  // namespace tests

// KelProductInfo: answers for the name and the version of the running product.
//
// One object for the process (getProductInfo), published as IProductInfo. Most answers are those of
// the registry's "PRODUCT_INFO/..." keys; its own facts stand in where a key is absent, and change
// through setFact alone. The registry is asked for at the first such answer and then kept. Main
// thread.
#pragma once

#include "interfaces/IProductInfoV2.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"

class KelProductInfo : public IProductInfoV2 {
 public:
  static constexpr const char* className() { return "KelProductInfo"; }

  KelCString& productName(KelCString& out) override;
  KelCString& version(KelCString& out) override;  // never from the registry
  KelCString& servicePack(KelCString& out) override;
  KelCString& subVersion(KelCString& out) override;
  KelCString& fullVersion(KelCString& out) override;
  int32_t appModeNumber() override { return appMode_; }
  KelCString& appModeName(KelCString& out) override;
  KelCString& buildNumber(KelCString& out) override;
  KelCString& buildDateText(KelCString& out) override;
  KelCString& buildText(KelCString& out) override;
  KelCString& platform(KelCString& out) override;
  KelCString& changeLabel(KelCString& out) override;
  int32_t firstYear() override { return 1996; }
  int32_t lastYear() override { return 2012; }  // of the copyright, which the version outlives
  void banner(std::ostream& out) override;
  bool isPrototype() override { return appMode_ == kPrototype; }
  bool isAlpha() override { return appMode_ == kAlpha; }
  bool isBeta() override { return appMode_ == kBeta; }
  bool isReleaseCandidate() override { return appMode_ == kReleaseCandidate; }
  bool isRelease() override { return appMode_ == kRelease; }
  int32_t setFact(const KelCString& name, const KelCString& value) override;
  KelCString& displayVersion(KelCString& out) override;
  KelCString& internalVersionText(KelCString& out) override;

  using Offers = OroOffers<KelProductInfo, IProductInfo, IProductInfoV2>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 protected:
  enum Mode : int32_t { kPrototype, kAlpha, kBeta, kReleaseCandidate, kRelease };

  int32_t appMode_ = kPrototype;  // index in the table of modes

 private:
  KelCString buildNum_ = KelCString::empty();
  KelCString buildDate_ = KelCString::empty();
  KelCString buildInfo_ = KelCString::empty();  // free text; nothing gives it out
  KelCString name_ = KelCString::empty();
  KelCString version_ = KelCString::empty();
  KelCString internalVersion_ = KelCString::empty();
};

// The process's object, made at the first call and never destroyed.
KelProductInfo* getProductInfo();

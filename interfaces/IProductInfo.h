// IProductInfo: name, version and build of the running product.
//
// Text results are stored in `out`, which is also returned. Most come from the registry's
// "PRODUCT_INFO/..." keys, and from the facts of the build where a key is absent.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "orobasictypes/iorounknown.h"

class KelCString;

class IProductInfo : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IProductInfo"; }

  virtual KelCString& productName(KelCString& out) = 0;
  virtual KelCString& version(KelCString& out) = 0;
  virtual KelCString& servicePack(KelCString& out) = 0;
  virtual KelCString& subVersion(KelCString& out) = 0;
  // Display version, service pack and sub-version, with nothing between.
  virtual KelCString& fullVersion(KelCString& out) = 0;

  // 0 prototype, 1 alpha, 2 beta, 3 release candidate, 4 release.
  virtual int32_t appModeNumber() = 0;
  // Leaves `out` as it stands for a mode outside 0 to 5.
  virtual KelCString& appModeName(KelCString& out) = 0;
  virtual KelCString& buildNumber(KelCString& out) = 0;
  virtual KelCString& buildDateText(KelCString& out) = 0;
  // The letter of the mode and the build number; empty for a release.
  virtual KelCString& buildText(KelCString& out) = 0;
  // "Win64" on every platform: components test for that text.
  virtual KelCString& platform(KelCString& out) = 0;
  virtual KelCString& changeLabel(KelCString& out) = 0;
  virtual int32_t firstYear() = 0;
  virtual int32_t lastYear() = 0;
  // Writes the banner of several lines.
  virtual void banner(std::ostream& out) = 0;

  virtual bool isPrototype() = 0;
  virtual bool isAlpha() = 0;
  virtual bool isBeta() = 0;
  virtual bool isReleaseCandidate() = 0;
  virtual bool isRelease() = 0;

  // Stores a fact of the build; 0 for a name that is not known, otherwise non-zero.
  virtual int32_t setFact(const KelCString& name, const KelCString& value) = 0;
};

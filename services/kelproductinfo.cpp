#include "services/kelproductinfo.h"

#include <iterator>
#include <ostream>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oroserviceonce.h"
#include "services/testaccess.h"

namespace {

using Velmora::IOroRegistry;

constexpr KelCString kModes[] = {KelCString::borrow("Prototype"), KelCString::borrow("Alpha"),
                                 KelCString::borrow("Beta"),      KelCString::borrow("RC"),
                                 KelCString::borrow("Release"),   KelCString::borrow("")};
constexpr auto kModeCount = static_cast<int32_t>(std::size(kModes));
constexpr const char* kLetters[] = {"prototype", "a", "b", "rc"};  // in build texts

OroServiceOnce<IOroRegistry>& registryOnce() {
  static auto* const once = new OroServiceOnce<IOroRegistry>;
  return *once;
}

// The registry's value; the fact where there is no such key, but not where the value is empty.
KelCString& valueOr(KelCString& out, const char* key, const KelCString& fact) {
  IOroRegistry* const registry = registryOnce().get();
  KelCString owned(key);  // its own text: the registry divides keys in place
  const KelCString* const value = registry != nullptr ? registry->getValue(owned) : nullptr;
  return out = value != nullptr ? *value : fact;
}

IPtr<KelProductInfo>& processProductInfo() {
  static auto* const holder = new IPtr<KelProductInfo>;
  return *holder;
}

}  // namespace

KelProductInfo* getProductInfo() {
  IPtr<KelProductInfo>& holder = processProductInfo();
  if (!holder) holder = new KelProductInfo;
  return holder.get();
}

void testaccess::resetProductInfo() {
  processProductInfo() = nullptr;
  registryOnce().reset();
}

KelCString& KelProductInfo::productName(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/productName", name_);
}

KelCString& KelProductInfo::version(KelCString& out) { return out = version_; }

KelCString& KelProductInfo::servicePack(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/servicePack", KelCString::borrow("0"));
}

KelCString& KelProductInfo::subVersion(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/subVersion", KelCString::borrow("0"));
}

KelCString& KelProductInfo::fullVersion(KelCString& out) {
  KelCString whole;
  KelCString part;
  whole.append(displayVersion(part).c_str());
  whole.append(servicePack(part).c_str());
  whole.append(subVersion(part).c_str());
  return out = whole;
}

KelCString& KelProductInfo::appModeName(KelCString& out) {
  if (appMode_ >= 0 && appMode_ < kModeCount) out = kModes[appMode_];
  return out;
}

KelCString& KelProductInfo::buildNumber(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/Build Number", buildNum_);
}

KelCString& KelProductInfo::buildDateText(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/Build Date", buildDate_);
}

KelCString& KelProductInfo::buildText(KelCString& out) {
  KelCString text("");
  if (!isRelease()) {
    if (appMode_ >= 0 && appMode_ < static_cast<int32_t>(std::size(kLetters))) {
      text.append(kLetters[appMode_]);
    }
    KelCString number;
    text.append(buildNumber(number).c_str());
  }
  return out = text;
}

KelCString& KelProductInfo::platform(KelCString& out) { return out = KelCString("Win64"); }

// Stands as it is: the system that would expand it is no longer used.
KelCString& KelProductInfo::changeLabel(KelCString& out) { return out = KelCString("$Change$"); }

void KelProductInfo::banner(std::ostream& out) {
  KelCString product;
  KelCString number;
  out << productName(product) << ' ' << version(number) << (isBeta() ? " Beta" : "") << "\n\n"
      << "\tCopyright (C) " << firstYear() << '-' << lastYear() << " Velmora\n"
      << "\tCode provided AS IS    and    WITHOUT ANY WARRANTIES, expressed or\n\timplied!\n";
}

int32_t KelProductInfo::setFact(const KelCString& name, const KelCString& value) {
  if (name == "appMode") {
    for (int32_t mode = 0; mode < kModeCount; ++mode) {
      if (value == kModes[mode].text()) appMode_ = mode;
    }
    return 1;  // also for a text that is no mode
  }
  const struct {
    const char* name;
    KelCString& fact;
  } facts[] = {{"buildNum", buildNum_},   {"buildDate", buildDate_},
               {"buildInfo", buildInfo_}, {"name", name_},
               {"version", version_},     {"internalVersion", internalVersion_}};
  for (const auto& known : facts) {
    if (!(name == known.name)) continue;
    known.fact = KelCString(value.c_str());
    return 1;
  }
  return 0;
}

KelCString& KelProductInfo::displayVersion(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/displayVersion", version_);
}

KelCString& KelProductInfo::internalVersionText(KelCString& out) {
  return valueOr(out, "PRODUCT_INFO/internalVersion", internalVersion_);
}

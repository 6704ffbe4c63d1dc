#include "gui/apps/cowl/productfacts.h"

#include "interfaces/IOroRegistry.h"
#include "interfaces/IProductInfo.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/sptr.h"

namespace {

struct Fact {
  const char* name;
  const char* value;
};

// A build that is to tell its number, date and information stamps the words in capitals.
constexpr Fact kFacts[] = {
    {"buildNum", "BUILDNUM"},   {"buildDate", "BUILDDATE"}, {"buildInfo", "BUILDINFO"},
    {"appMode", "Release"},     {"name", "CowlCORE"},       {"version", "2021"},
    {"cwlFileVersion", "2021"},  // not known there, and offered all the same
};

// "App" and "APP" are two sections; components know each key in its own.
constexpr Fact kRegistryValues[] = {
    {"PRODUCT_INFO/displayVersion", "2021"}, {"PRODUCT_INFO/servicePack", "0"},
    {"PRODUCT_INFO/subVersion", "0"},        {"App/Enable World Object", "true"},
    {"App/Enable World CSYS", "true"},       {"APP/GlobalNoiseReduction", "4"},
    {"APP/LocalNoiseReduction", "2"},        {"APP/AllowCADExport", "true"},
};

// Only the host's own product information is filled, not one that a component puts in its place.
bool isOwn(IProductInfo& product) {
  void* own = nullptr;
  product.queryInterface("KelProductInfo", &own);
  return own != nullptr;
}

}  // namespace

void fillProductFacts() {
  const SPtr<IProductInfo> product;
  if (!product || !isOwn(*product)) return;
  KelCString version;
  if (!product->version(version).isEmpty()) return;
  for (const Fact& fact : kFacts) {
    product->setFact(KelCString::borrow(fact.name), KelCString::borrow(fact.value));
  }
  const SPtr<Velmora::IOroRegistry> registry;
  if (!registry) return;
  for (const Fact& entry : kRegistryValues) {
    KelCString key(entry.name);  // its own text: the registry divides keys in place
    registry->setValue(key, KelCString(entry.value));
  }
}

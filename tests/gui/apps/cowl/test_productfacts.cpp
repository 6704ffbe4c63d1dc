#include "gui/apps/cowl/productfacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "framework/kelregistry.h"
#include "orobasictypes/iptr.h"
#include "services/kelproductinfo.h"
#include "services/testaccess.h"
#include "tests/support/fakebroker.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

class NotingProductInfo : public KelProductInfo {
 public:
  Pairs facts;
  std::vector<int32_t> results;
  int32_t setFact(const KelCString& name, const KelCString& value) override {
    facts.emplace_back(name.c_str(), value.c_str());
    results.push_back(KelProductInfo::setFact(name, value));
    return results.back();
  }
};

class ProductFacts : public testing::Test {
 protected:
  ProductFacts() { testaccess::resetProductInfo(); }
  ~ProductFacts() override { testaccess::resetProductInfo(); }

  void publishProduct() {
    broker_.registerService(KelCString::borrow("IProductInfo"), product_.get());
  }
  void publishRegistry() {
    broker_.registerService(KelCString::borrow("IOroRegistry"), registry_.get());
  }
  std::string value(const char* key) {
    KelCString owned(key);
    const KelCString* const found = registry_->getValue(owned);
    return found != nullptr ? found->c_str() : "<absent>";
  }
  void setValue(const char* key, const char* text) {
    KelCString owned(key);
    registry_->setValue(owned, KelCString(text));
  }

  tests::FakeBroker broker_;
  IPtr<NotingProductInfo> product_ = new NotingProductInfo;
  IPtr<KelRegistry> registry_ = new KelRegistry;
};

TEST_F(ProductFacts, AreToldInTheirOrder) {
  publishProduct();
  fillProductFacts();
  EXPECT_EQ(product_->facts, (Pairs{{"buildNum", "BUILDNUM"},
                                    {"buildDate", "BUILDDATE"},
                                    {"buildInfo", "BUILDINFO"},
                                    {"appMode", "Release"},
                                    {"name", "CowlCORE"},
                                    {"version", "2021"},
                                    {"cwlFileVersion", "2021"}}));
  EXPECT_EQ(product_->results.back(), 0) << "a name that nobody knows, told all the same";
  EXPECT_TRUE(product_->isRelease());
}

TEST_F(ProductFacts, GoIntoTheRegistryUnderTwoSpellingsOfASection) {
  publishProduct();
  publishRegistry();
  fillProductFacts();
  EXPECT_EQ(value("PRODUCT_INFO/displayVersion"), "2021");
  EXPECT_EQ(value("PRODUCT_INFO/servicePack"), "0");
  EXPECT_EQ(value("PRODUCT_INFO/subVersion"), "0");
  EXPECT_EQ(value("App/Enable World Object"), "true");
  EXPECT_EQ(value("App/Enable World CSYS"), "true");
  EXPECT_EQ(value("APP/GlobalNoiseReduction"), "4");
  EXPECT_EQ(value("APP/LocalNoiseReduction"), "2");
  EXPECT_EQ(value("APP/AllowCADExport"), "true");
  for (const char* key :
       {"PRODUCT_INFO/appName", "PRODUCT_INFO/productName", "PRODUCT_INFO/companyName",
        "PRODUCT_INFO/Build Number", "APP/Enable World CSYS", "App/AllowCADExport"}) {
    EXPECT_EQ(value(key), "<absent>") << key;
  }
}

TEST_F(ProductFacts, OverrideTheDisplayVersionOfTheExecutableAndNotItsBuildNumber) {
  publishProduct();
  publishRegistry();
  setValue("PRODUCT_INFO/displayVersion", "7");
  setValue("PRODUCT_INFO/Build Number", "7.0.0.1");
  fillProductFacts();
  EXPECT_EQ(value("PRODUCT_INFO/displayVersion"), "2021");
  EXPECT_EQ(value("PRODUCT_INFO/Build Number"), "7.0.0.1");
}

TEST_F(ProductFacts, MakeTheProductAnswer) {
  publishProduct();
  publishRegistry();
  fillProductFacts();
  KelCString text;
  EXPECT_STREQ(product_->productName(text).c_str(), "CowlCORE");
  EXPECT_STREQ(product_->fullVersion(text).c_str(), "202100");
  EXPECT_STREQ(product_->buildNumber(text).c_str(), "BUILDNUM");
  EXPECT_STREQ(product_->buildDateText(text).c_str(), "BUILDDATE");
  EXPECT_STREQ(product_->buildText(text).c_str(), "");
}

TEST_F(ProductFacts, ASecondTimeChangesNothing) {
  publishProduct();
  publishRegistry();
  fillProductFacts();
  product_->facts.clear();
  setValue("APP/LocalNoiseReduction", "3");
  fillProductFacts();
  EXPECT_THAT(product_->facts, testing::IsEmpty());
  EXPECT_EQ(value("APP/LocalNoiseReduction"), "3");
}

TEST_F(ProductFacts, AProductThatKnowsItsVersionIsLeftAlone) {
  publishProduct();
  publishRegistry();
  product_->setFact(KelCString("version"), KelCString("7"));
  product_->facts.clear();
  fillProductFacts();
  EXPECT_THAT(product_->facts, testing::IsEmpty());
  EXPECT_EQ(value("PRODUCT_INFO/servicePack"), "<absent>");
}

TEST_F(ProductFacts, WithoutAProductNothingIsSet) {
  publishRegistry();
  fillProductFacts();
  EXPECT_EQ(value("PRODUCT_INFO/servicePack"), "<absent>");
}

// The product information of somebody else.
class Stranger : public KelProductInfo {
 public:
  int asked = 0;
  void queryInterface(const char* name, void* out) override {
    if (name != nullptr && std::string(name) == "KelProductInfo") {
      ++asked;
      *static_cast<void**>(out) = nullptr;
    } else {
      KelProductInfo::queryInterface(name, out);
    }
  }
};

TEST_F(ProductFacts, AreToldToTheHostsOwnProductInformationOnly) {
  const IPtr<Stranger> stranger(new Stranger);
  broker_.registerService(KelCString::borrow("IProductInfo"), stranger.get());
  publishRegistry();
  fillProductFacts();
  EXPECT_EQ(stranger->asked, 1);
  KelCString text;
  EXPECT_STREQ(stranger->version(text).c_str(), "");
  EXPECT_EQ(value("PRODUCT_INFO/servicePack"), "<absent>");
}

}  // namespace

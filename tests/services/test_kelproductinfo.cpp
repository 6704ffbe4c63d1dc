#include "services/kelproductinfo.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "services/testaccess.h"
#include "tests/services/servicetest.h"
#include "tests/support/slotnumber.h"

namespace {

// A mode that no name leads to.
class OddProductInfo : public KelProductInfo {
 public:
  explicit OddProductInfo(int32_t mode) { appMode_ = mode; }
};

class ProductInfo : public tests::ServiceTest {
 protected:
  // The answer, which is `out` itself.
  template <class Q>
  std::string answer(Q question) {
    KelCString out("before");
    IProductInfoV2& product = *product_;
    KelCString& given = (product.*question)(out);
    EXPECT_EQ(&given, &out);
    return out.c_str();
  }
  int32_t setFact(const char* name, const char* value) {
    return product_->setFact(KelCString(name), KelCString(value));
  }
  std::string banner() {
    std::ostringstream out;
    product_->banner(out);
    return out.str();
  }

  IPtr<KelProductInfo> product_ = new KelProductInfo;
};

TEST_F(ProductInfo, KnowsNothingAtFirst) {
  EXPECT_EQ(answer(&IProductInfo::productName), "");
  EXPECT_EQ(answer(&IProductInfo::version), "");
  EXPECT_EQ(answer(&IProductInfo::servicePack), "0");
  EXPECT_EQ(answer(&IProductInfo::subVersion), "0");
  EXPECT_EQ(answer(&IProductInfo::fullVersion), "00");
  EXPECT_EQ(answer(&IProductInfo::buildNumber), "");
  EXPECT_EQ(answer(&IProductInfo::buildDateText), "");
  EXPECT_EQ(answer(&IProductInfo::buildText), "prototype");
  EXPECT_EQ(answer(&IProductInfoV2::displayVersion), "");
  EXPECT_EQ(answer(&IProductInfoV2::internalVersionText), "");
  EXPECT_EQ(product_->appModeNumber(), 0);
  EXPECT_TRUE(product_->isPrototype());
}

TEST_F(ProductInfo, AnAnswerIsNeverNull) {
  KelCString out;
  EXPECT_FALSE(product_->productName(out).isNull());
  EXPECT_FALSE(product_->version(out).isNull());
  EXPECT_FALSE(product_->buildNumber(out).isNull());
}

TEST_F(ProductInfo, TheRegistryWinsOverTheFacts) {
  setFact("name", "own");
  setFact("buildNum", "17");
  setFact("buildDate", "monday");
  setFact("internalVersion", "7.0");
  EXPECT_EQ(answer(&IProductInfo::productName), "own");
  EXPECT_EQ(answer(&IProductInfo::buildNumber), "17");
  EXPECT_EQ(answer(&IProductInfo::buildDateText), "monday");
  EXPECT_EQ(answer(&IProductInfoV2::internalVersionText), "7.0");
  setValue("PRODUCT_INFO/productName", "Scan");
  setValue("PRODUCT_INFO/Build Number", "18");
  setValue("PRODUCT_INFO/Build Date", "tuesday");
  setValue("PRODUCT_INFO/internalVersion", "8.0");
  setValue("PRODUCT_INFO/servicePack", "2");
  setValue("PRODUCT_INFO/subVersion", "3");
  EXPECT_EQ(answer(&IProductInfo::productName), "Scan");
  EXPECT_EQ(answer(&IProductInfo::buildNumber), "18");
  EXPECT_EQ(answer(&IProductInfo::buildDateText), "tuesday");
  EXPECT_EQ(answer(&IProductInfoV2::internalVersionText), "8.0");
  EXPECT_EQ(answer(&IProductInfo::servicePack), "2");
  EXPECT_EQ(answer(&IProductInfo::subVersion), "3");
}

TEST_F(ProductInfo, AnEmptyValueWinsToo) {
  setFact("name", "own");
  setValue("PRODUCT_INFO/productName", "");
  EXPECT_EQ(answer(&IProductInfo::productName), "");
}

TEST_F(ProductInfo, TheVersionIsTheFactAndTheDisplayVersionTheRegistryFirst) {
  setFact("version", "2021");
  EXPECT_EQ(answer(&IProductInfoV2::displayVersion), "2021");
  setValue("PRODUCT_INFO/version", "1");
  setValue("PRODUCT_INFO/displayVersion", "7.5");
  EXPECT_EQ(answer(&IProductInfo::version), "2021");
  EXPECT_EQ(answer(&IProductInfoV2::displayVersion), "7.5");
}

TEST_F(ProductInfo, TheFullVersionHasNothingBetween) {
  setValue("PRODUCT_INFO/displayVersion", "2021");
  EXPECT_EQ(answer(&IProductInfo::fullVersion), "202100");
  setValue("PRODUCT_INFO/servicePack", "12");
  setValue("PRODUCT_INFO/subVersion", "3");
  EXPECT_EQ(answer(&IProductInfo::fullVersion), "2021123");
}

TEST_F(ProductInfo, IsForAllPlatformsThatOfItsComponents) {
  EXPECT_EQ(answer(&IProductInfo::platform), "Win64");
  EXPECT_EQ(answer(&IProductInfo::changeLabel), "$Change$");
  EXPECT_EQ(product_->firstYear(), 1996);
  EXPECT_EQ(product_->lastYear(), 2012);
}

struct ModeRow {
  const char* name;
  int32_t number;
  const char* build;
};

TEST_F(ProductInfo, KnowsItsModesByName) {
  setFact("buildNum", "17");
  for (const ModeRow& row : {ModeRow{"Prototype", 0, "prototype17"}, ModeRow{"Alpha", 1, "a17"},
                             ModeRow{"Beta", 2, "b17"}, ModeRow{"RC", 3, "rc17"},
                             ModeRow{"Release", 4, ""}, ModeRow{"", 5, "17"}}) {
    EXPECT_NE(setFact("appMode", row.name), 0);
    EXPECT_EQ(product_->appModeNumber(), row.number);
    EXPECT_EQ(answer(&IProductInfo::appModeName), row.name);
    EXPECT_EQ(answer(&IProductInfo::buildText), row.build);
    EXPECT_EQ(product_->isPrototype(), row.number == 0);
    EXPECT_EQ(product_->isAlpha(), row.number == 1);
    EXPECT_EQ(product_->isBeta(), row.number == 2);
    EXPECT_EQ(product_->isReleaseCandidate(), row.number == 3);
    EXPECT_EQ(product_->isRelease(), row.number == 4);
  }
}

TEST_F(ProductInfo, TheBuildNumberInItsTextIsTheRegistrysToo) {
  setFact("appMode", "Beta");
  setValue("PRODUCT_INFO/Build Number", "2021.0.0.1");
  EXPECT_EQ(answer(&IProductInfo::buildText), "b2021.0.0.1");
}

TEST_F(ProductInfo, AnUnknownModeChangesNothing) {
  setFact("appMode", "RC");
  for (const char* mode : {"rc", "RC ", "Gamma", "3"}) {
    EXPECT_NE(setFact("appMode", mode), 0) << mode;
    EXPECT_EQ(product_->appModeNumber(), 3) << mode;
  }
}

TEST_F(ProductInfo, AModeOutsideTheTableHasNoNameAndNoLetter) {
  for (const int32_t mode : {7, 6, -1}) {
    OddProductInfo odd(mode);
    odd.setFact(KelCString("buildNum"), KelCString("17"));
    KelCString out("before");
    EXPECT_STREQ(odd.appModeName(out).c_str(), "before");
    EXPECT_STREQ(odd.buildText(out).c_str(), "17");
  }
}

TEST_F(ProductInfo, TakesTheFactsThatItKnows) {
  for (const char* name :
       {"appMode", "buildNum", "buildDate", "buildInfo", "name", "version", "internalVersion"}) {
    EXPECT_NE(setFact(name, "x"), 0) << name;
  }
  for (const char* name : {"cwlFileVersion", "Name", "", "appmode", "servicePack"}) {
    EXPECT_EQ(setFact(name, "x"), 0) << name;
  }
  EXPECT_EQ(product_->setFact(KelCString(), KelCString()), 0);
}

TEST_F(ProductInfo, KeepsACopyOfAFact) {
  char text[] = "Scan";
  product_->setFact(KelCString("name"), KelCString::borrow(text));
  text[0] = 'X';
  EXPECT_EQ(answer(&IProductInfo::productName), "Scan");
}

TEST_F(ProductInfo, TheBannerNamesProductYearsAndDisclaimer) {
  const std::string rest =
      "\n\n\tCopyright (C) 1996-2012 Velmora\n"
      "\tCode provided AS IS    and    WITHOUT ANY WARRANTIES, expressed or\n\timplied!\n";
  setFact("name", "CowlCORE");
  setFact("version", "2021");
  setValue("PRODUCT_INFO/displayVersion", "7.5");
  EXPECT_EQ(banner(), "CowlCORE 2021" + rest);
  setFact("appMode", "Beta");
  EXPECT_EQ(banner(), "CowlCORE 2021 Beta" + rest);
}

TEST_F(ProductInfo, KeepsTheRegistryOfItsFirstAnswer) {
  setValue("PRODUCT_INFO/productName", "Scan");
  EXPECT_EQ(registry_->refCount(), 2);
  answer(&IProductInfo::version);
  EXPECT_EQ(registry_->refCount(), 2) << "the version asks nobody";
  answer(&IProductInfo::productName);
  answer(&IProductInfo::servicePack);
  EXPECT_EQ(registry_->refCount(), 3);
}

TEST_F(ProductInfo, IsOneObjectForTheProcess) {
  KelProductInfo* const product = getProductInfo();
  EXPECT_EQ(getProductInfo(), product);
  EXPECT_EQ(product->refCount(), 1);
  { IPtr<IProductInfo> user(product); }
  EXPECT_EQ(getProductInfo(), product);
}

TEST_F(ProductInfo, AnswersForItsClassAndBothInterfaces) {
  EXPECT_EQ(oroQueryClass<KelProductInfo>(product_.get()), product_.get());
  EXPECT_EQ(oroQuery<IProductInfo>(product_.get()), product_.get());
  EXPECT_EQ(oroQuery<IProductInfoV2>(product_.get()), product_.get());
  EXPECT_EQ(oroQuery<IOroUnknown>(product_.get()), product_.object());
  EXPECT_STREQ(product_->getClassName(), "KelProductInfo");
}

TEST(ProductInfoSlots, StandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IProductInfo::productName), 1);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::version), 2);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::servicePack), 3);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::subVersion), 4);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::fullVersion), 5);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::appModeNumber), 6);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::appModeName), 7);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::buildNumber), 8);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::buildDateText), 9);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::buildText), 10);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::platform), 11);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::changeLabel), 12);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::firstYear), 13);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::lastYear), 14);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::banner), 15);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::isPrototype), 16);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::isRelease), 20);
  EXPECT_EQ(tests::slotNumber(&IProductInfo::setFact), 21);
  // Behind the destructor, which takes two places.
  EXPECT_EQ(tests::slotNumber(&IProductInfoV2::displayVersion), 2 + 22);
  EXPECT_EQ(tests::slotNumber(&IProductInfoV2::internalVersionText), 2 + 23);
}

}  // namespace

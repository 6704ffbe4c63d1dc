#include "gui/apps/main/builtinservices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/basic/gendatastore.h"
#include "gui/apps/main/oroappmain.h"
#include "interfaces/IBucketMemoryPool.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IHelpServiceV3.h"
#include "interfaces/IImageStore.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroCustomTranslatorRegistry.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroHeapMemoryUsage.h"
#include "interfaces/IOroNetworkService.h"
#include "interfaces/IOroRegistry.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "interfaces/IProductInfo.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/sptr.h"
#include "services/helpservice.h"
#include "services/kelproductinfo.h"
#include "services/oroxlifftranslator.h"
#include "services/translator.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/support/fakebroker.h"

namespace {

class RecordingBroker : public tests::FakeBroker {
 public:
  std::vector<std::string> names;
  int32_t registerService(const KelCString& name, IOroUnknown* object) override {
    names.push_back(name.c_str());
    EXPECT_NE(object, nullptr) << name.c_str();
    return FakeBroker::registerService(name, object);
  }
};

TEST(BuiltInServices, ArePublishedInTheOrderOfTheirNeeds) {
  tests::AppWorld world;
  RecordingBroker broker;
  registerBuiltInServices(broker);
  EXPECT_THAT(broker.names,
              testing::ElementsAre("IOroRegistry", "IProductInfo", "IDataStore", "IImageStore",
                                   "IOroTranslatorService", "IOroCustomTranslatorRegistry",
                                   "IHelpService", "IBucketMemoryPool", "IOroTranslator",
                                   "IFileUtil", "IOroHeapMemoryUsage", "IOroErrorService",
                                   "IOroDirService", "IOroNetworkService"));
}

TEST(BuiltInServices, ThePoolIsHeldOnceMoreWhenItIsPublished) {
  tests::AppWorld world;
  IBucketMemoryPool* const pool = kelPoolInstance();
  const int32_t before = pool->refCount();
  EXPECT_GE(before, 1) << "by the strings";
  RecordingBroker broker;
  registerBuiltInServices(broker);
  EXPECT_EQ(pool->refCount(), before + 1);
}

class BuiltIn : public testing::Test {
 protected:
  BuiltIn() { application_.initEssential(); }

  tests::AppWorld world_;
  OroAppMain application_;
};

TEST_F(BuiltIn, AnswerUnderTheirNames) {
  EXPECT_TRUE(SPtr<IOroComponentManager>());
  EXPECT_TRUE(SPtr<Velmora::IOroRegistry>());
  EXPECT_TRUE(SPtr<IDataStore>());
  EXPECT_TRUE(SPtr<IOroTranslatorService>());
  EXPECT_TRUE(SPtr<IOroCustomTranslatorRegistry>());
  EXPECT_TRUE(SPtr<IBucketMemoryPool>());
  EXPECT_TRUE(SPtr<IOroHeapMemoryUsage>());
  EXPECT_TRUE(SPtr<IOroTranslator>());
  EXPECT_TRUE(SPtr<IOroErrorService>());
  EXPECT_TRUE(SPtr<IOroDirService>());
  EXPECT_TRUE(SPtr<IProductInfo>());
  EXPECT_TRUE(SPtr<IImageStore>());
  EXPECT_TRUE(SPtr<IHelpService>());
  EXPECT_TRUE(SPtr<IFileUtil>());
  EXPECT_TRUE(SPtr<IOroNetworkService>());
}

TEST_F(BuiltIn, OneTranslatorServiceHasTwoNames) {
  SPtr<IOroTranslatorService> service;
  SPtr<IOroCustomTranslatorRegistry> registry;
  EXPECT_EQ(service.object(), registry.object());
  EXPECT_EQ(service.object()->refCount(), 4);  // two by the broker, two here
}

TEST_F(BuiltIn, TheApplicationsTranslatorReadsTables) {
  SPtr<IOroTranslator> translator;
  EXPECT_NE(oroQueryClass<Translator>(translator.get()), nullptr);
}

TEST_F(BuiltIn, TheTranslatorServiceHasTheKindOfTheHost) {
  SPtr<IOroTranslatorService> service;
  IOroTranslator* const made = service->createTranslator(KelCString("XLIFF"), GUID{1, 2, 3, {}});
  EXPECT_NE(oroQueryClass<OroXLIFFTranslator>(made), nullptr);
}

TEST_F(BuiltIn, TheSettingsAreThoseOfTheProcess) {
  SPtr<IDataStore> store;
  EXPECT_EQ(store.get(), static_cast<IDataStore*>(getGenDataStore()));
}

TEST_F(BuiltIn, TheProductInformationIsThatOfTheProcess) {
  SPtr<IProductInfo> product;
  EXPECT_EQ(product.get(), getProductInfo());
}

TEST_F(BuiltIn, TheHelpIsThatOfTheProcess) {
  SPtr<IHelpService> help;
  EXPECT_EQ(oroQuery<IHelpServiceV3>(help.get()), getHelpService());
}

TEST_F(BuiltIn, EachIsHeldByTheBrokerAlone) {
  SPtr<Velmora::IOroRegistry> registry;
  EXPECT_EQ(registry.object()->refCount(), 2);
  SPtr<IOroDirService> directories;
  EXPECT_EQ(directories.object()->refCount(), 2);
}

TEST_F(BuiltIn, ThePoolIsTheOneOfTheStrings) {
  SPtr<IBucketMemoryPool> pool;
  EXPECT_EQ(pool.get(), kelPoolInstance());
  EXPECT_EQ(kelPoolAdopt(), 1);
}

TEST_F(BuiltIn, TheLedgerOutlivesTheBroker) {
  SPtr<IOroHeapMemoryUsage> usage;
  EXPECT_EQ(usage.object()->refCount(), 3) << "by itself, by the broker, here";
}

TEST_F(BuiltIn, ErrorsGoToTheMessageBoxFromTheStart) {
  SPtr<IOroErrorService> errors;
  errors->report(OroString("bad"), 1, KelCString());
  EXPECT_EQ(world_.boxText(), u"ERROR:\nbad");
}

}  // namespace

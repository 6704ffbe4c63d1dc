#include "services/orotranslatorservice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorFactory.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "tests/services/servicetest.h"
#include "tests/services/testlanguage.h"
#include "tests/support/slotnumber.h"

namespace {

using ::testing::ElementsAre;
using tests::TestLanguage;

constexpr GUID kPoints{0x11111111, 1, 1, {1, 1, 1, 1, 1, 1, 1, 1}};
constexpr GUID kBatch{0x22222222, 2, 2, {2, 2, 2, 2, 2, 2, 2, 2}};
constexpr GUID kClass{0x33333333, 3, 3, {3, 3, 3, 3, 3, 3, 3, 3}};
constexpr const char* kPointsText = "{11111111-0001-0001-0101-010101010101}";
constexpr const char* kBatchText = "{22222222-0002-0002-0202-020202020202}";

// Puts its mark in front of every key, and keeps the languages that it was told.
class MarkTranslator : public OroTrivialTranslator<> {
 public:
  explicit MarkTranslator(const char* mark) : mark_(mark) { ++alive; }
  ~MarkTranslator() override { --alive; }
  bool lookup(const char* key, OroString& out) override {
    out = OroString(mark_);
    out.append(key);
    return true;
  }
  bool setLanguage(IOroLanguageID* language) override {
    languages.push_back(language != nullptr ? language->getLanguage().c_str() : "(none)");
    return true;
  }

  std::vector<std::string> languages;
  static inline int alive = 0;

 private:
  const char* mark_;
};

class MarkFactory : public IOroTranslatorFactory {
 public:
  static constexpr const char* className() { return "MarkFactory"; }
  using Offers = OroOffers<MarkFactory, IOroTranslatorFactory>;
  explicit MarkFactory(const char* mark) : mark_(mark) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IOroTranslator* newTranslator() override { return mark_ ? new MarkTranslator(mark_) : nullptr; }

 private:
  const char* mark_;  // null: it makes none
};

class TranslatorServiceTest : public tests::ServiceTest {
 protected:
  IOroTranslator* create(const char* kind, const GUID& id) {
    return service_->createTranslator(KelCString(kind), id);
  }
  bool addFactory(const char* kind, const char* mark) {
    const IPtr<MarkFactory> factory = new MarkFactory(mark);
    return service_->registerFactory(KelCString(kind), factory.get());
  }
  std::string text(IOroTranslator* translator) {
    OroString out;
    return translator != nullptr ? tests::narrow(translator->translate(out, "key")) : "(null)";
  }
  std::string qualified(const char* key) {
    OroString out("before");
    return tests::narrow(service_->translateQualified(out, key));
  }

  IPtr<OroTranslatorService> service_ = new OroTranslatorService;
};

TEST_F(TranslatorServiceTest, AnUnknownKindGivesNoTranslator) {
  EXPECT_EQ(create("XLIFF", kPoints), nullptr);
  EXPECT_EQ(create("", kPoints), nullptr);
  EXPECT_EQ(service_->getTranslator(kPoints), nullptr);
}

TEST_F(TranslatorServiceTest, AKnownComponentGivesItsTranslatorWhateverTheKind) {
  addFactory("mark", "a:");
  IOroTranslator* const first = create("mark", kPoints);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->refCount(), 1);
  EXPECT_EQ(create("mark", kPoints), first);
  EXPECT_EQ(create("no such kind", kPoints), first);
  EXPECT_EQ(service_->getTranslator(kPoints), first);
  EXPECT_EQ(first->refCount(), 1);
  EXPECT_NE(create("mark", kBatch), first);
}

TEST_F(TranslatorServiceTest, AFactoryThatMakesNothingLeavesNoEntry) {
  addFactory("empty", nullptr);
  EXPECT_EQ(create("empty", kPoints), nullptr);
  EXPECT_EQ(service_->getTranslator(kPoints), nullptr);
}

TEST_F(TranslatorServiceTest, AFactoryOfAKindThatExistsIsRefused) {
  EXPECT_TRUE(addFactory("mark", "first:"));
  EXPECT_FALSE(addFactory("mark", "second:"));
  EXPECT_EQ(text(create("mark", kPoints)), "first:key");
}

TEST_F(TranslatorServiceTest, AFactoryIsHeldUntilItIsTakenOut) {
  const IPtr<MarkFactory> factory = new MarkFactory("a:");
  EXPECT_TRUE(service_->registerFactory(KelCString("mark"), factory.get()));
  EXPECT_EQ(factory->refCount(), 2);
  EXPECT_FALSE(service_->unregisterFactory(KelCString("Mark")));
  EXPECT_TRUE(service_->unregisterFactory(KelCString("mark")));
  EXPECT_EQ(factory->refCount(), 1);
  EXPECT_FALSE(service_->unregisterFactory(KelCString("mark")));
  EXPECT_EQ(create("mark", kPoints), nullptr);
  EXPECT_TRUE(addFactory("mark", "b:"));
  EXPECT_EQ(text(create("mark", kPoints)), "b:key");
}

TEST_F(TranslatorServiceTest, ANullFactoryIsRefused) {
  EXPECT_FALSE(service_->registerFactory(KelCString("mark"), nullptr));
  EXPECT_TRUE(addFactory("mark", "a:"));
}

TEST_F(TranslatorServiceTest, ATranslatorOutlivesItsFactory) {
  addFactory("mark", "a:");
  create("mark", kPoints);
  service_->unregisterFactory(KelCString("mark"));
  EXPECT_EQ(text(service_->getTranslator(kPoints)), "a:key");
}

TEST_F(TranslatorServiceTest, TheRegistryNamesAClassForAKind) {
  broker_.setClassObject(kClass, new MarkTranslator("class:"));
  setValue("TRANSLATORS/stored", "{33333333-0003-0003-0303-030303030303}");
  EXPECT_EQ(text(create("stored", kPoints)), "class:key");
  EXPECT_EQ(create("other", kBatch), nullptr);
}

TEST_F(TranslatorServiceTest, ARegistryValueThatIsNoIdOrNoClassGivesNothing) {
  setValue("TRANSLATORS/stored", "not an id");
  EXPECT_EQ(create("stored", kPoints), nullptr);
  setValue("TRANSLATORS/stored", "");
  EXPECT_EQ(create("stored", kPoints), nullptr);
  setValue("TRANSLATORS/stored", "{33333333-0003-0003-0303-030303030303}");
  EXPECT_EQ(create("stored", kPoints), nullptr);
}

TEST_F(TranslatorServiceTest, AFactoryGoesBeforeTheRegistry) {
  broker_.setClassObject(kClass, new MarkTranslator("class:"));
  setValue("TRANSLATORS/both", "{33333333-0003-0003-0303-030303030303}");
  addFactory("both", "factory:");
  EXPECT_EQ(text(create("both", kPoints)), "factory:key");
}

TEST_F(TranslatorServiceTest, TheKindOfTheHostGoesBeforeAFactory) {
  service_ =
      new OroTranslatorService(+[]() -> IOroTranslator* { return new MarkTranslator("host:"); });
  addFactory("XLIFF", "factory:");
  addFactory("xliff", "other:");
  EXPECT_EQ(text(create("XLIFF", kPoints)), "host:key");
  EXPECT_EQ(text(create("xliff", kBatch)), "other:key");
}

TEST_F(TranslatorServiceTest, WithoutAHostKindAFactoryMayServeIt) {
  addFactory("XLIFF", "factory:");
  EXPECT_EQ(text(create("XLIFF", kPoints)), "factory:key");
}

TEST_F(TranslatorServiceTest, TheListHoldsEachComponentOnce) {
  addFactory("mark", "a:");
  OroArray<GUID> ids;
  ids.add(kClass);
  service_->listTranslators(ids);
  EXPECT_EQ(ids.count(), 0);
  create("mark", kPoints);
  create("mark", kBatch);
  create("mark", kPoints);
  service_->listTranslators(ids);
  ASSERT_EQ(ids.count(), 2);
  EXPECT_TRUE((ids[1] == kPoints && ids[2] == kBatch) || (ids[1] == kBatch && ids[2] == kPoints));
}

TEST_F(TranslatorServiceTest, ManyComponentsKeepTheirTranslators) {
  addFactory("mark", "a:");
  std::vector<IOroTranslator*> made;
  for (uint32_t i = 0; i < 100; ++i)
    made.push_back(create("mark", GUID{i % 7, 0, uint16_t(i), {}}));
  for (uint32_t i = 0; i < 100; ++i) {
    EXPECT_EQ(service_->getTranslator(GUID{i % 7, 0, uint16_t(i), {}}), made[i]);
  }
}

TEST_F(TranslatorServiceTest, AQualifiedKeyIsAskedOfItsComponent) {
  addFactory("points", "P:");
  create("points", kPoints);
  EXPECT_EQ(qualified((std::string(kPointsText) + "|Open").c_str()), "P:Open");
  EXPECT_EQ(qualified("11111111-0001-0001-0101-010101010101|Open"), "P:Open");
  EXPECT_EQ(qualified("0x11111111, 0x1, 0x1, 0x1, 0x1, 0x1, 0x1, 0x1, 0x1, 0x1, 0x1|Open"),
            "P:Open");
}

TEST_F(TranslatorServiceTest, AnUnknownComponentFallsToTheModulesTranslator) {
  oroSetModuleTranslator(new MarkTranslator("module:"));
  EXPECT_EQ(qualified((std::string(kBatchText) + "|Open").c_str()), "module:Open");
  EXPECT_EQ(qualified("no id|Open"), "module:Open");
  EXPECT_EQ(qualified("|Open"), "module:Open");
  EXPECT_EQ(qualified("Open"), "module:Open");
  EXPECT_EQ(qualified(""), "module:");
}

TEST_F(TranslatorServiceTest, OnlyTheFirstBarDivides) {
  addFactory("points", "P:");
  create("points", kPoints);
  EXPECT_EQ(qualified((std::string(kPointsText) + "|a|b").c_str()), "P:a|b");
  EXPECT_EQ(qualified((std::string(kPointsText) + "|").c_str()), "P:");
}

TEST_F(TranslatorServiceTest, ATextThatIsNoIdNeverMeansTheHost) {
  addFactory("host", "H:");
  create("host", GUID{});
  EXPECT_EQ(qualified("{00000000-0000-0000-0000-000000000000}|Open"), "H:Open");
  OroString out;
  oroSetModuleTranslator(new MarkTranslator("module:"));
  EXPECT_EQ(qualified("nonsense|Open"), "module:Open");
}

TEST_F(TranslatorServiceTest, ANullTextIsEmpty) {
  OroString out("before");
  OroString& result = service_->translateText(out, nullptr);
  EXPECT_EQ(&result, &out);
  EXPECT_TRUE(out.isEmpty());
  EXPECT_FALSE(out.isNull());
  EXPECT_EQ(tests::narrow(out), "");
  EXPECT_EQ(tests::narrow(service_->translateText(out, "Open")), "Open");
}

TEST_F(TranslatorServiceTest, ANewLanguageReachesTheServiceAndEveryTranslator) {
  const IPtr<TestLanguage> inForce = new TestLanguage("en");
  const IPtr<TestLanguage> chosen = new TestLanguage("de");
  publish("IOroLanguageID", inForce.get());
  addFactory("mark", "a:");
  auto* const points = static_cast<MarkTranslator*>(create("mark", kPoints));
  auto* const batch = static_cast<MarkTranslator*>(create("mark", kBatch));
  EXPECT_EQ(service_->getLanguageId(), nullptr);
  service_->setLanguage(chosen.get());
  EXPECT_EQ(service_->getLanguageId(), inForce.get());
  EXPECT_STREQ(inForce->getLanguage().text(), "de");
  EXPECT_THAT(points->languages, ElementsAre("de"));
  EXPECT_THAT(batch->languages, ElementsAre("de"));
}

TEST_F(TranslatorServiceTest, WithoutALanguageServiceTranslatorsAreToldOfNone) {
  const IPtr<TestLanguage> chosen = new TestLanguage("de");
  addFactory("mark", "a:");
  auto* const points = static_cast<MarkTranslator*>(create("mark", kPoints));
  service_->setLanguage(chosen.get());
  EXPECT_EQ(service_->getLanguageId(), nullptr);
  EXPECT_THAT(points->languages, ElementsAre("(none)"));
}

TEST_F(TranslatorServiceTest, ANullLanguageLeavesTheCodeInForce) {
  const IPtr<TestLanguage> inForce = new TestLanguage("fr");
  publish("IOroLanguageID", inForce.get());
  service_->setLanguage(nullptr);
  EXPECT_STREQ(inForce->getLanguage().text(), "fr");
  EXPECT_EQ(service_->getLanguageId(), inForce.get());
}

TEST_F(TranslatorServiceTest, ItsEndReleasesTranslatorsAndFactories) {
  const int before = MarkTranslator::alive;
  const IPtr<MarkFactory> factory = new MarkFactory("a:");
  service_->registerFactory(KelCString("mark"), factory.get());
  create("mark", kPoints);
  create("mark", kBatch);
  EXPECT_EQ(MarkTranslator::alive, before + 2);
  service_ = nullptr;
  EXPECT_EQ(MarkTranslator::alive, before);
  EXPECT_EQ(factory->refCount(), 1);
}

TEST_F(TranslatorServiceTest, OneObjectAnswersForThreeInterfaces) {
  EXPECT_EQ(oroQuery<IOroTranslatorService>(service_.get()), service_.get());
  EXPECT_EQ(oroQuery<IOroInternalLanguageService>(service_.get()), service_.get());
  EXPECT_EQ(oroQuery<IOroCustomTranslatorRegistry>(service_.get()), service_.get());
  EXPECT_EQ(oroQueryClass<OroTranslatorService>(service_.get()), service_.get());
  EXPECT_EQ(oroQuery<IOroTranslator>(service_.get()), nullptr);
}

TEST(IOroTranslatorServiceTest, OperationsStandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IOroTranslatorService::createTranslator), 1);
  EXPECT_EQ(slotNumber(&IOroTranslatorService::getTranslator), 2);
  EXPECT_EQ(slotNumber(&IOroTranslatorService::getLanguageId), 3);
  EXPECT_EQ(slotNumber(&IOroTranslatorService::listTranslators), 4);
  EXPECT_EQ(slotNumber(&IOroTranslatorService::translateText), 5);
  EXPECT_EQ(slotNumber(&IOroTranslatorService::translateQualified), 6);
  EXPECT_EQ(slotNumber(&IOroInternalLanguageService::setLanguage), 1);
  EXPECT_EQ(slotNumber(&IOroCustomTranslatorRegistry::registerFactory), 1);
  EXPECT_EQ(slotNumber(&IOroCustomTranslatorRegistry::unregisterFactory), 2);
  EXPECT_EQ(slotNumber(&IOroTranslatorFactory::newTranslator), 1);
  EXPECT_EQ(slotNumber(&IOroLanguageID::getLanguage), 1);
  EXPECT_EQ(slotNumber(&IOroLanguageID::setLanguage), 2);
}

}  // namespace

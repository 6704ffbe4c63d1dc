#include "services/languagechoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/basic/keldatavisitor.h"
#include "base/basic/keldataxmlreader.h"
#include "interfaces/IKelDataString.h"
#include "interfaces/IKelLocale.h"
#include "interfaces/IOroCompLangInitializer.h"
#include "interfaces/IOroInternalLanguageService.h"
#include "interfaces/IOroTranslator.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "services/orotranslatorservice.h"
#include "tests/services/testlanguage.h"
#include "tests/services/translationworld.h"
#include "tests/support/slotnumber.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::TestLanguage;

constexpr GUID kFirstClass{0x11111111, 1, 1, {1, 1, 1, 1, 1, 1, 1, 1}};
constexpr GUID kSecondClass{0x22222222, 2, 2, {2, 2, 2, 2, 2, 2, 2, 2}};
constexpr const char* kFirst = "{11111111-0001-0001-0101-010101010101}";
constexpr const char* kSecond = "{22222222-0002-0002-0202-020202020202}";
constexpr const char* kSetting = "Fonts and Languages/Language";

std::vector<std::string> told;  // who was told which language, in order

void tell(const std::string& who, IOroLanguageID* language) {
  told.push_back(who + " " + (language != nullptr ? language->getLanguage().c_str() : "(none)"));
}

class ToldTranslator : public OroTrivialTranslator<> {
 public:
  explicit ToldTranslator(const char* name) : name_(name) {}
  bool setLanguage(IOroLanguageID* language) override {
    tell(name_, language);
    return false;
  }

 private:
  const char* name_;
};

class ToldComponent : public IOroCompLangInitializer {
 public:
  static constexpr const char* className() { return "ToldComponent"; }
  using Offers = OroOffers<ToldComponent, IOroCompLangInitializer>;
  explicit ToldComponent(const char* name) : name_(name) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void initLanguage(IOroLanguageID* language) override { tell(name_, language); }

 private:
  const char* name_;
};

class TestLocale : public IKelLocale {
 public:
  static constexpr const char* className() { return "TestLocale"; }
  using Offers = OroOffers<TestLocale, IKelLocale>;
  explicit TestLocale(IOroLanguageID* language) : language_(language) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IOroLanguageID* systemLanguage() override { return language_.get(); }

 private:
  IPtr<IOroLanguageID> language_;
};

// Settings that hold this one language, or that cannot be read.
class StoredLanguage : public KelDataVisitor {
 public:
  explicit StoredLanguage(const char* code) : KelDataVisitor(kReading), code_(code) {}
  bool VisitString(IKelDataString* item) override {
    ++visits;
    if (code_ != nullptr) item->Set(code_);
    return code_ != nullptr;
  }
  int visits = 0;

 private:
  const char* code_;  // null: it fails
};

class LanguageChoice : public tests::TranslationWorld {
 protected:
  LanguageChoice() {
    told.clear();
    publish("IOroTranslator", new ToldTranslator("application"));
  }
  ~LanguageChoice() override { store_->SetReader(nullptr); }

  void publishLanguage() { publish("IOroLanguageID", language_.get()); }
  void publishLocale(IOroLanguageID* language) { publish("IKelLocale", new TestLocale(language)); }
  // The translator service with the translator of one component.
  void publishTranslators() {
    const IPtr<OroTranslatorService> service = new OroTranslatorService(
        +[]() -> IOroTranslator* { return new ToldTranslator("component"); });
    service->createTranslator(KelCString("XLIFF"), kFirstClass);
    publish("IOroTranslatorService", service.get());
  }
  void store(const char* code) { store_->SetReader(reader_ = new StoredLanguage(code)); }
  std::string code() { return language_->getLanguage().c_str(); }
  std::string setting() {
    const char* const text = store_->GetString(kSetting, nullptr);
    return text != nullptr ? text : "(none)";
  }

  IPtr<TestLanguage> language_ = new TestLanguage("");
  StoredLanguage* reader_ = nullptr;
};

TEST_F(LanguageChoice, TheRegistryWinsOverTheStoredLanguageAndLeavesItAlone) {
  publishLanguage();
  store("fr");
  setValue("Application/Language", "de");
  EXPECT_EQ(chooseLanguage().get(), language_.get());
  EXPECT_EQ(code(), "de");
  EXPECT_EQ(reader_->visits, 0);
  EXPECT_EQ(setting(), "(none)");
  EXPECT_FALSE(store_->Exists("Fonts and Languages"));
}

TEST_F(LanguageChoice, AnEmptyLanguageOfTheRegistryCountsToo) {
  publishLanguage();
  store("fr");
  setValue("Application/Language", "");
  chooseLanguage();
  EXPECT_EQ(code(), "");
  EXPECT_EQ(reader_->visits, 0);
}

TEST_F(LanguageChoice, TheStoredLanguageIsReadByItsPathAlone) {
  publishLanguage();
  store("fr");
  store_->CreateDirectory("Other");
  store_->CreateString("Other/Text", 80, "before", 0);
  chooseLanguage();
  EXPECT_EQ(code(), "fr");
  EXPECT_EQ(reader_->visits, 1);
  EXPECT_STREQ(store_->GetString("Other/Text", nullptr), "before");
}

TEST_F(LanguageChoice, TheSettingIsDeclaredWithItsCapacityDefaultAndFlag) {
  publishLanguage();
  store(nullptr);
  chooseLanguage();
  bool ok = false;
  EXPECT_EQ(store_->GetCapacity(kSetting, &ok), 80);
  EXPECT_TRUE(ok);
  EXPECT_EQ(setting(), "en");
  EXPECT_EQ(store_->GetFlags(kSetting), 1u);
}

TEST_F(LanguageChoice, TheDefaultDoesNotCountWhenTheSettingsCannotBeRead) {
  publishLanguage();
  store(nullptr);
  chooseLanguage();
  EXPECT_EQ(code(), "");
  store_->SetReader(nullptr);
  chooseLanguage();
  EXPECT_EQ(code(), "");
}

TEST_F(LanguageChoice, WithoutALanguageServiceThereIsNone) {
  store("fr");
  EXPECT_FALSE(chooseLanguage());
  EXPECT_EQ(reader_->visits, 1);
  setValue("Application/Language", "de");
  EXPECT_FALSE(chooseLanguage());
  firstLanguageStep();
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(LanguageChoice, WithoutRegistryAndSettingsTheServiceIsGivenAsItIs) {
  tests::FakeBroker bare;
  bare.registerService(KelCString::borrow("IOroLanguageID"), language_.get());
  EXPECT_EQ(chooseLanguage().get(), language_.get());
  EXPECT_EQ(code(), "");
  firstLanguageStep();
  EXPECT_EQ(code(), "en");
  oroSetBroker(&broker_);
}

TEST_F(LanguageChoice, AnEmptyStoreGivesEnglish) {
  publishLanguage();
  store(nullptr);
  firstLanguageStep();
  EXPECT_EQ(code(), "en");
  EXPECT_THAT(told, ElementsAre("application en"));
}

TEST_F(LanguageChoice, TheSystemsLanguageTakesOverWhereNoneIsStored) {
  publishLanguage();
  store(nullptr);
  const IPtr<TestLanguage> ofSystem = new TestLanguage("zh-cn");
  publishLocale(ofSystem.get());
  firstLanguageStep();
  EXPECT_THAT(told, ElementsAre("application zh-cn"));
  EXPECT_EQ(code(), "") << "without the translator service nobody hands it on";
}

TEST_F(LanguageChoice, TheTranslatorServicePutsTheSystemsLanguageInForce) {
  publishLanguage();
  store(nullptr);
  const IPtr<TestLanguage> ofSystem = new TestLanguage("de");
  publishLocale(ofSystem.get());
  publishTranslators();
  firstLanguageStep();
  EXPECT_EQ(code(), "de");
  EXPECT_THAT(told, ElementsAre("application de", "component de"));
}

TEST_F(LanguageChoice, TheSystemIsNotAskedWhereALanguageIsChosen) {
  publishLanguage();
  store("fr");
  const IPtr<TestLanguage> ofSystem = new TestLanguage("de");
  publishLocale(ofSystem.get());
  firstLanguageStep();
  EXPECT_THAT(told, ElementsAre("application fr"));
}

TEST_F(LanguageChoice, ADocumentCountsWhereItHasALanguage) {
  publishXml("IOroDOMXml");
  publishLanguage();
  const IPtr<TestLanguage> ofSystem = new TestLanguage("de");
  publishLocale(ofSystem.get());
  const auto step = [this](const std::string& language) {
    folder_.write("own.iniml", "<OroDataStore><section name=\"Fonts and Languages\">" + language +
                                   "</section></OroDataStore>");
    store_->SetReader(new KelDataXMLReader(base("own.iniml"), false));
    language_->setLanguage(KelCString(""));
    told.clear();
    firstLanguageStep();
    return told;
  };
  EXPECT_THAT(step("<value name=\"Other\" type=\"text_latin1\">fr</value>"),
              ElementsAre("application de"));
  EXPECT_THAT(step("<value name=\"Language\" type=\"text_latin1\"></value>"),
              ElementsAre("application de"));
  EXPECT_THAT(step("<value name=\"Language\" type=\"text_latin1\">fr</value>"),
              ElementsAre("application fr"));
}

TEST_F(LanguageChoice, ASystemWithoutALanguageLeavesEnglish) {
  publishLanguage();
  publishLocale(nullptr);
  firstLanguageStep();
  EXPECT_EQ(code(), "en");
  EXPECT_THAT(told, ElementsAre("application en"));
}

TEST_F(LanguageChoice, ALanguageOfTheSystemThatIsEmptyBecomesEnglish) {
  publishLanguage();
  const IPtr<TestLanguage> ofSystem = new TestLanguage("");
  publishLocale(ofSystem.get());
  firstLanguageStep();
  EXPECT_STREQ(ofSystem->getLanguage().c_str(), "en");
  EXPECT_EQ(code(), "");
}

TEST_F(LanguageChoice, ComponentsAreToldBetweenTheApplicationAndTheOtherTranslators) {
  publishLanguage();
  publishTranslators();
  setValue("Application/Language", "de");
  broker_.setClassObject(kFirstClass, new ToldComponent("first"));
  broker_.setClassObject(kSecondClass, new ToldComponent("second"));
  setValue("I18N/b", kSecond);
  setValue("I18N/a", kFirst);
  firstLanguageStep();
  EXPECT_THAT(told, ElementsAre("application de", "second de", "first de", "component de"));
}

TEST_F(LanguageChoice, ASecondRunOfTheStepTellsTheNewLanguage) {
  publishLanguage();
  setValue("Application/Language", "de");
  firstLanguageStep();
  setValue("Application/Language", "fr");
  firstLanguageStep();
  EXPECT_THAT(told, ElementsAre("application de", "application fr"));
}

TEST_F(LanguageChoice, AnEntryThatNamesNoSuchClassIsPassedOver) {
  broker_.setClassObject(kFirstClass, new ToldComponent("first"));
  broker_.setClassObject(kSecondClass, new ToldTranslator("not one"));
  setValue("I18N/a", "no id");
  setValue("I18N/b", kSecond);
  setValue("I18N/c", "{33333333-0003-0003-0303-030303030303}");
  setValue("I18N/d/e", kFirst);
  setValue("I18N/f", kFirst);
  initComponentLanguages(language_.get());
  EXPECT_THAT(told, ElementsAre("first "));
}

TEST_F(LanguageChoice, AnObjectIsDroppedAtOnce) {
  const IPtr<ToldComponent> component = new ToldComponent("first");
  broker_.setClassObject(kFirstClass, component.get());
  setValue("I18N/a", kFirst);
  initComponentLanguages(language_.get());
  EXPECT_EQ(component->refCount(), 2) << "here and by the broker";
}

TEST_F(LanguageChoice, WithoutASectionOrARegistryNobodyIsTold) {
  initComponentLanguages(language_.get());
  tests::FakeBroker bare;
  initComponentLanguages(language_.get());
  oroSetBroker(&broker_);
  EXPECT_THAT(told, IsEmpty());
}

TEST(LanguageInterfaces, OperationsStandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IKelLocale::systemLanguage), 1);
  EXPECT_EQ(tests::slotNumber(&IOroCompLangInitializer::initLanguage), 1);
}

}  // namespace

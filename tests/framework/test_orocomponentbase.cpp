#include "components/kit/orocomponentbase.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "components/kit/entrypoint.h"
#include "framework/orodynamiclibrary.h"
#include "framework/oroobjectbroker.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroExternalTranslator.h"
#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "orobasictypes/testaccess.h"
#include "tests/framework/fakes.h"
#include "tests/framework/libs/testids.h"
#include "tests/framework/testlibrary.h"

namespace {

using tests::FakeObject;
using tests::idOf;

constexpr GUID kComponent = idOf(0xC0);
constexpr GUID kNew = idOf(1);
constexpr GUID kShared = idOf(2);
constexpr GUID kNone = idOf(3);

IOroUnknown* makeNone() { return nullptr; }

constexpr OroClassEntry kClasses[] = {
    {kNew, FakeObject::className(), OroSharing::eachNew, oroMake<FakeObject>},
    {kShared, FakeObject::className(), OroSharing::shared, oroMake<FakeObject>},
    {kNone, "KelNone", OroSharing::shared, makeNone},
};

int started = 0;
int stopping = 0;
IOroObjBroker* brokerAtStart = nullptr;

const OroComponentRecord kRecord{"base", kComponent, kClasses,
                                 [] {
                                   ++started;
                                   brokerAtStart = oroBroker();
                                 },
                                 [] { ++stopping; }};

// A component in a module that had no broker before: this program.
class ComponentBase : public testing::Test {
 protected:
  ComponentBase() {
    started = 0;
    stopping = 0;
    FakeObject::alive = 0;
  }
  ~ComponentBase() override { testaccess::resetModule(); }

  int32_t ask(const GUID& classId) { return component_.getClassObject(classId, &object_); }

  OroObjectBroker broker_{nullptr};
  OroComponentBase component_{kRecord};
  IOroUnknown* object_ = nullptr;
};

TEST_F(ComponentBase, StartMakesBrokerAndIdentityKnownFirst) {
  component_.initialise(&broker_);
  EXPECT_EQ(started, 1);
  EXPECT_EQ(brokerAtStart, &broker_);
  EXPECT_STREQ(oroModuleIdentity().componentName.text(), "base");
  EXPECT_EQ(oroModuleIdentity().componentId, kComponent);
  component_.setGroupName(KelCString("alpha"));
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "alpha");
}

// A translator that remembers what it was told.
class FileTranslator : public OroTrivialTranslator<>, public IOroExternalTranslator {
 public:
  static constexpr const char* className() { return "FileTranslator"; }
  using Offers = OroOffers<FileTranslator, IOroTranslator, IOroExternalTranslator>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool setBaseName(const OroPath& path) override {
    baseName = path.toNarrow();
    return true;
  }
  bool setLanguage(IOroLanguageID* language) override {
    languages.push_back(language);
    return true;
  }

  std::string baseName;
  std::vector<IOroLanguageID*> languages;
};

class Language : public IOroLanguageID {
 public:
  static constexpr const char* className() { return "Language"; }
  using Offers = OroOffers<Language, IOroLanguageID>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const KelCString& getLanguage() override { return code_; }
  void setLanguage(const KelCString&) override {}

 private:
  KelCString code_;
};

class Translators : public IOroTranslatorService {
 public:
  static constexpr const char* className() { return "Translators"; }
  using Offers = OroOffers<Translators, IOroTranslatorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IOroTranslator* createTranslator(const KelCString& kind, const GUID& id) override {
    made.push_back(std::string(kind.c_str()) + (id == kComponent ? " of the component" : ""));
    return translator.get();
  }
  IOroTranslator* getTranslator(const GUID&) override { return nullptr; }
  IOroLanguageID* getLanguageId() override { return language.get(); }
  void listTranslators(OroArray<GUID>&) override {}
  OroString& translateText(OroString& out, const char*) override { return out; }
  OroString& translateQualified(OroString& out, const char*) override { return out; }

  IPtr<IOroTranslator> translator;
  IPtr<IOroLanguageID> language;
  std::vector<std::string> made;
};

class LanguageDirectory : public IOroDirService {
 public:
  static constexpr const char* className() { return "LanguageDirectory"; }
  using Offers = OroOffers<LanguageDirectory, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const OroPath& getDir(const char* name) override { return path_ = OroPath("Q:").joined(name); }
  void setDir(const char*, const OroPath&) override {}

 private:
  OroPath path_;
};

class ComponentTranslations : public ComponentBase {
 protected:
  ComponentTranslations() {
    testaccess::resetDirPath();
    broker_.registerService(KelCString::borrow("IOroTranslatorService"), service_.get());
    broker_.registerService(KelCString::borrow("IOroDirService"), new LanguageDirectory);
    service_->translator = files_.get();
  }
  ~ComponentTranslations() override { testaccess::resetDirPath(); }
  void start(const OroComponentRecord& record) { OroComponentBase(record).initialise(&broker_); }

  static constexpr OroComponentRecord kSpeaking{
      .name = "base", .id = kComponent, .classes = {}, .translations = "points"};

  IPtr<Translators> service_ = new Translators;
  IPtr<FileTranslator> files_ = new FileTranslator;
};

TEST_F(ComponentTranslations, AreReadFromFilesOfTheNameInTheRecord) {
  start(kSpeaking);
  EXPECT_EQ(service_->made, std::vector<std::string>{"XLIFF of the component"});
  EXPECT_EQ(files_->baseName, "Q:\\language\\points");
  EXPECT_TRUE(files_->languages.empty()) << "none is chosen yet; the service will tell";
}

TEST_F(ComponentTranslations, AreOfTheLanguageInForce) {
  service_->language = new Language;
  start(kSpeaking);
  EXPECT_EQ(files_->languages, std::vector<IOroLanguageID*>{service_->language.get()});
}

TEST_F(ComponentTranslations, ARecordWithoutThemMakesNoTranslator) {
  start(kRecord);
  EXPECT_TRUE(service_->made.empty());
}

TEST_F(ComponentTranslations, AServiceWithoutThisKindIsNoFailure) {
  service_->translator = nullptr;
  start(kSpeaking);
  service_->translator = new OroTrivialTranslator<>;
  start(kSpeaking);
  EXPECT_EQ(service_->made.size(), 2u);
}

TEST_F(ComponentBase, TranslationsWithoutAServiceAreNoFailure) {
  OroComponentBase({.name = "base", .id = kComponent, .classes = {}, .translations = "points"})
      .initialise(&broker_);
  EXPECT_EQ(oroModuleIdentity().componentId, kComponent);
}

TEST_F(ComponentBase, SecondComponentOfTheModuleKnowsItsGroupToo) {
  component_.initialise(&broker_);
  component_.setGroupName(KelCString("alpha"));
  OroComponentBase second(kRecord);
  second.initialise(&broker_);
  second.setGroupName(KelCString("beta"));
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "beta");
}

TEST_F(ComponentBase, NameOfTheGroupIsKeptAsACopy) {
  component_.initialise(&broker_);
  char text[] = "alpha";
  component_.setGroupName(KelCString::borrow(text));
  text[0] = 'x';
  EXPECT_STREQ(oroModuleIdentity().groupName.text(), "alpha");
}

TEST_F(ComponentBase, EndIsToldOnceAndOnlyAfterAStart) {
  component_.shutDown();
  EXPECT_EQ(stopping, 0);
  component_.initialise(&broker_);
  component_.shutDown();
  component_.shutDown();
  EXPECT_EQ(stopping, 1);
}

TEST_F(ComponentBase, RecordNeedsNoCalls) {
  const OroComponentRecord record{"bare", kComponent, {}};
  OroComponentBase bare(record);
  bare.initialise(&broker_);
  bare.shutDown();
  EXPECT_EQ(bare.getClassObject(kNew, &object_), 0);
}

TEST_F(ComponentBase, NewObjectsComeUncountedAndBelongToTheCaller) {
  EXPECT_EQ(ask(kNew), 1);
  IOroUnknown* const first = object_;
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->refCount(), 0);
  EXPECT_EQ(ask(kNew), 1);
  EXPECT_NE(object_, first);
  for (IOroUnknown* const each : {first, object_}) IPtr<IOroUnknown>(each).get();
  EXPECT_EQ(FakeObject::alive, 0);
}

TEST_F(ComponentBase, SharedObjectIsOneAndTheComponentsOwn) {
  EXPECT_EQ(ask(kShared), 2);
  IOroUnknown* const first = object_;
  EXPECT_EQ(first->refCount(), 1);
  { const IPtr<IOroUnknown> passing(first); }
  EXPECT_EQ(FakeObject::alive, 1);
  EXPECT_EQ(ask(kShared), 2);
  EXPECT_EQ(object_, first);
}

TEST_F(ComponentBase, SharedObjectsOutliveTheEndOfWorkButNotTheComponent) {
  auto* const component = new OroComponentBase(kRecord);
  component->initialise(&broker_);
  component->getClassObject(kShared, &object_);
  component->shutDown();
  EXPECT_EQ(FakeObject::alive, 1);
  delete component;
  EXPECT_EQ(FakeObject::alive, 0);
}

TEST_F(ComponentBase, UnknownClassesAndFailuresGiveNull) {
  for (const GUID& id : {kNone, idOf(99)}) {
    object_ = &component_;
    EXPECT_EQ(ask(id), 0);
    EXPECT_EQ(object_, nullptr);
  }
  EXPECT_EQ(component_.getClassObject(kNew, nullptr), 0);
}

TEST_F(ComponentBase, AnswersToItsNamesAlone) {
  EXPECT_NE(oroQuery<IOroComponent>(&component_), nullptr);
  EXPECT_NE(oroQuery<IOroCompInternal>(&component_), nullptr);
  EXPECT_EQ(oroQuery<IOroObserver>(&component_), nullptr);
  EXPECT_STREQ(component_.getClassName(), "OroComponentBase");
  EXPECT_EQ(component_.refCount(), 0);
}

TEST(EntryPointOfTheKit, FillsBothOutputsAndRefusesNull) {
  OroDynamicLibrary library;
  ASSERT_TRUE(library.load(tests::testLibrary("fw_good"), OroString()));
  const auto entry = reinterpret_cast<decltype(&EntryPoint)>(library.symbol("EntryPoint"));
  ASSERT_NE(entry, nullptr);
  int32_t version = 0;
  IOroComponent* component = nullptr;
  EXPECT_EQ(entry(nullptr, &component), 0);
  EXPECT_EQ(entry(&version, nullptr), 0);
  EXPECT_EQ(component, nullptr);
  EXPECT_EQ(entry(&version, &component), 1);
  EXPECT_EQ(version, 100);
  ASSERT_NE(component, nullptr);
  EXPECT_EQ(component->refCount(), 1);
  { const IPtr<IOroComponent> passing(component); }  // must not end it
  delete static_cast<IOroUnknown*>(component);
  library.unload();
}

}  // namespace

#include "services/helpservice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/basic/gendatastore.h"
#include "framework/kelregistry.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IHelpVolume.h"
#include "interfaces/IHelpVolumeV2.h"
#include "interfaces/IOroDirService.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/testaccess.h"
#include "platform/files.h"
#include "platform/text.h"
#include "services/testaccess.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr GUID kVolumeClass = {
    0x60EE8CA4, 0x39F8, 0x4CF1, {0xAB, 0x33, 0x8A, 0x2C, 0xAB, 0x41, 0x2B, 0x51}};
constexpr GUID kViewerClass = {
    0x0C9D5C8B, 0x341E, 0x4B42, {0x8F, 0xF2, 0x13, 0xCC, 0x34, 0xA4, 0xF3, 0x93}};
constexpr const char* kCommandDone = "Document/GenCmdDone";

std::string narrow(const OroString& text) { return text.toNarrow(); }

// What happened, one text after the other.
std::vector<std::string>& log() {
  static std::vector<std::string> texts;
  return texts;
}

// A volume that makes an address of its file's name, its topic and the form of the question.
template <class Self, class... More>
class VolumeBase : public IHelpVolume, public More... {
 public:
  using Offers = OroOffers<Self, IHelpVolume, More...>;
  void queryInterface(const char* name, void* out) override {
    Offers::query(static_cast<Self&>(*this), name, out);
  }
  const char* getClassName() const override { return Self::className(); }
  ~VolumeBase() override { log().push_back("gone " + name_); }

  void open(const OroPath& path) override {
    const IPtr<IHelpVolume> self(this);
    path_ = narrow(path);
    name_ = narrow(path.fileName());
  }
  int32_t unusedSlot2() override { return 0; }
  void topicAddress(OroString& out, const KelCString& topic) override {
    if (!topic.isEmpty()) out = OroString((name_ + "#" + topic.c_str()).c_str());
  }
  const std::string& path() const { return path_; }

 protected:
  std::string path_;
  std::string name_;
};

class OldVolume : public VolumeBase<OldVolume> {
 public:
  static constexpr const char* className() { return "OldVolume"; }
};

class Volume : public VolumeBase<Volume, IHelpVolumeV2> {
 public:
  static constexpr const char* className() { return "Volume"; }
  void topicAddressV2(OroString& out, const KelCString& topic) override {
    if (!topic.isEmpty()) out = OroString((name_ + "?" + topic.c_str()).c_str());
  }
};

class Viewer : public IHelpViewer {
 public:
  static constexpr const char* className() { return "Viewer"; }
  using Offers = OroOffers<Viewer, IHelpViewer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  ~Viewer() override { log().push_back("viewer gone"); }
  void show(const OroString& text) override { log().push_back("show " + narrow(text)); }
};

class Stranger : public IOroUnknown {
 public:
  static constexpr const char* className() { return "Stranger"; }
  using Offers = OroOffers<Stranger>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

// Makes a new object for each request.
class MakingBroker : public tests::FakeBroker {
 public:
  std::map<GUID, std::function<IOroUnknown*()>> makers;
  int32_t createObject(const GUID& classId, const KelCString& interfaceName, void** out) override {
    const auto maker = makers.find(classId);
    if (maker == makers.end()) return 0;
    maker->second()->queryInterface(interfaceName.c_str(), out);
    return 1;
  }
};

class Directories : public IOroDirService {
 public:
  static constexpr const char* className() { return "Directories"; }
  using Offers = OroOffers<Directories, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const OroPath& getDir(const char* name) override { return paths[name]; }
  void setDir(const char* name, const OroPath& path) override { paths[name] = path; }
  std::map<std::string, OroPath> paths;
};

class HelpFiles : public IFileUtil {
 public:
  static constexpr const char* className() { return "Files"; }
  using Offers = OroOffers<HelpFiles, IFileUtil>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool isFile(const OroPath& path) override { return platform::isFile(path.wideText()); }
  bool removeFile(const OroPath&) override { return false; }
  bool renameFile(const OroPath&, const OroPath&) override { return true; }
  bool fileDate(const OroPath&, IFileDate&) override { return false; }
  void listFiles(const OroPath&, OroArray<OroPath>&, const OroString&, int32_t, int32_t) override {}
  bool isDirectory(const OroPath&) override { return false; }
  bool makeDirectories(const OroPath&) override { return false; }
  bool removeDirectory(const OroPath&, bool) override { return false; }
};

class Help : public testing::Test {
 protected:
  Help() {
    testaccess::resetDirPath();
    for (const char* name : {"exe", "workingdir"}) {
      std::filesystem::create_directories(folder_.path() / name / "Help");
      directories_->paths[name] =
          OroPath(OroString(platform::fromSystemPath((folder_.path() / name).string()).c_str()));
    }
    publish("IOroRegistry", registry_.get());
    publish("IDataStore", store_.get());
    publish("IOroDirService", directories_.get());
    publish("IFileUtil", files_.get());
    broker_.makers[kVolumeClass] = [] { return new Volume; };
    broker_.makers[kViewerClass] = [] { return new Viewer; };
    log().clear();
  }
  ~Help() override { testaccess::resetDirPath(); }

  void publish(const char* name, IOroUnknown* object) {
    broker_.registerService(KelCString::borrow(name), object);
  }
  void setValue(const std::string& key, const char* value) {
    KelCString owned(key.c_str());
    registry_->setValue(owned, KelCString(value));
  }
  void writeFile(const char* directory, const char* name) {
    folder_.write(std::filesystem::path(directory) / "Help" / name, "help");
  }
  // A volume with its file beside the executable.
  void addVolume(const std::string& name, const char* file) {
    setValue("HELP/chm/" + name, file);
    writeFile("exe", file);
  }
  // From now on the volumes stay in made_, in the order of their making.
  void noteVolumes() {
    broker_.makers[kVolumeClass] = [this] {
      made_.emplace_back(new Volume);
      return made_.back().get();
    };
  }
  void load() {
    help_->loadVolumes();
    help_->createViewer();
  }
  std::vector<IHelpVolume*> volumes() {
    OroArray<IHelpVolume*> list;
    list.add(nullptr);
    help_->volumes(list);
    return {list.begin(), list.end()};
  }
  std::vector<std::string> shown(const char* name, const char* topic) {
    log().clear();
    help_->showTopic(KelCString(name), KelCString(topic));
    return log();
  }
  std::vector<std::string> shownV2(const char* name, const char* topic) {
    log().clear();
    help_->showTopicV2(KelCString(name), KelCString(topic));
    return log();
  }
  std::string applied(const char* topic) {
    KelCString out("before");
    help_->applyTopicOverride(out, KelCString(topic));
    return out.c_str();
  }
  void setOverride(const char* text, bool append) {
    help_->setTopicOverride(KelCString(text), append);
  }
  void declareEvent() {
    store_->CreateDirectory("Document");
    store_->CreateVoid(kCommandDone, 0);
  }

  tests::TempFolder folder_;
  MakingBroker broker_;
  IPtr<KelRegistry> registry_ = new KelRegistry;
  IPtr<GenDataStore> store_ = new GenDataStore;
  IPtr<Directories> directories_ = new Directories;
  IPtr<HelpFiles> files_ = new HelpFiles;
  std::vector<IPtr<IHelpVolume>> made_;
  IPtr<HelpService> help_ = new HelpService;
};

// --- The viewer

TEST_F(Help, ShowsNothingBeforeThereIsAViewer) {
  addVolume("manual", "manual.chm");
  help_->loadVolumes();
  EXPECT_THAT(shown("manual", "start"), IsEmpty());
  EXPECT_THAT(shownV2("manual", "start"), IsEmpty());
  help_->createViewer();
  EXPECT_THAT(shown("manual", "start"), ElementsAre("show manual.chm#start"));
}

TEST_F(Help, WithoutAClassForItThereIsNoViewer) {
  addVolume("manual", "manual.chm");
  broker_.makers.erase(kViewerClass);
  load();
  EXPECT_THAT(shown("manual", "start"), IsEmpty());
}

TEST_F(Help, ANewViewerTakesThePlaceOfTheOldOne) {
  help_->createViewer();
  help_->createViewer();
  EXPECT_THAT(log(), ElementsAre("viewer gone"));
  broker_.makers.erase(kViewerClass);
  addVolume("manual", "manual.chm");
  load();
  EXPECT_THAT(shown("manual", "start"), IsEmpty()) << "the old one went, and no other came";
}

// --- The table

TEST_F(Help, OpensTheFileBesideTheExecutable) {
  addVolume("manual", "manual.chm");
  help_->loadVolumes();
  ASSERT_EQ(volumes().size(), 1u);
  auto* const volume = oroQueryClass<Volume>(volumes()[0]);
  EXPECT_EQ(volume->path(), narrow(directories_->paths["exe"].joined("Help").joined("manual.chm")));
  EXPECT_EQ(volume->refCount(), 1);
}

TEST_F(Help, OpensTheFileBelowTheWorkingDirectoryWhereThereIsNoOther) {
  setValue("HELP/chm/manual", "manual.chm");
  writeFile("workingdir", "manual.chm");
  help_->loadVolumes();
  ASSERT_EQ(volumes().size(), 1u);
  EXPECT_EQ(oroQueryClass<Volume>(volumes()[0])->path(),
            narrow(directories_->paths["workingdir"].joined("Help").joined("manual.chm")));
}

TEST_F(Help, TheFileBesideTheExecutableWins) {
  addVolume("manual", "manual.chm");
  writeFile("workingdir", "manual.chm");
  help_->loadVolumes();
  EXPECT_EQ(oroQueryClass<Volume>(volumes()[0])->path(),
            narrow(directories_->paths["exe"].joined("Help").joined("manual.chm")));
}

TEST_F(Help, AVolumeWithoutAFileIsPassedOver) {
  setValue("HELP/chm/absent", "absent.chm");
  setValue("HELP/chm/nameless", "");
  addVolume("manual", "manual.chm");
  std::filesystem::create_directory(folder_.path() / "exe" / "Help" / "folder.chm");
  setValue("HELP/chm/folder", "folder.chm");
  help_->loadVolumes();
  EXPECT_EQ(volumes().size(), 1u);
}

TEST_F(Help, WithoutAClassForThemThereAreNoVolumes) {
  addVolume("manual", "manual.chm");
  broker_.makers.erase(kVolumeClass);
  load();
  EXPECT_THAT(volumes(), IsEmpty());
  EXPECT_THAT(shown("manual", "start"), IsEmpty());
}

TEST_F(Help, AnObjectThatIsNoVolumeIsNotTaken) {
  addVolume("manual", "manual.chm");
  const IPtr<Stranger> stranger(new Stranger);
  broker_.makers[kVolumeClass] = [&] { return stranger.get(); };
  help_->loadVolumes();
  EXPECT_THAT(volumes(), IsEmpty());
}

TEST_F(Help, WithoutServicesThereIsNothing) {
  const IPtr<HelpService> alone(new HelpService);
  {
    tests::FakeBroker empty;
    alone->loadVolumes();
    alone->createViewer();
    alone->showTopic(KelCString("manual"), KelCString("start"));
    OroArray<IHelpVolume*> list;
    alone->volumes(list);
    EXPECT_EQ(list.count(), 0);
  }
  oroSetBroker(&broker_);
}

TEST_F(Help, WithoutTheRegistrySectionThereIsNothing) {
  load();
  EXPECT_THAT(volumes(), IsEmpty());
}

TEST_F(Help, ListsTheVolumesInTheOrderOfTheirNames) {
  addVolume("zebra", "z.chm");
  addVolume("apple", "a.chm");
  addVolume("Mole", "m.chm");
  help_->loadVolumes();
  std::vector<std::string> files;
  for (IHelpVolume* volume : volumes()) {
    OroString address;
    volume->topicAddress(address, KelCString("t"));
    files.push_back(narrow(address));
  }
  EXPECT_THAT(files, ElementsAre("m.chm#t", "a.chm#t", "z.chm#t"));
}

TEST_F(Help, ARouteIsAFurtherNameOfAVolume) {
  addVolume("manual", "manual.chm");
  setValue("HELP/sym_name/manual", "MAN");
  setValue("HELP/route_to/guide", "MAN");
  setValue("HELP/route_to/book", "MAN");
  load();
  ASSERT_EQ(volumes().size(), 3u);
  EXPECT_EQ(volumes()[0], volumes()[1]);
  EXPECT_EQ(volumes()[0], volumes()[2]);
  EXPECT_EQ(volumes()[0]->refCount(), 3);
  EXPECT_THAT(shown("guide", "start"), ElementsAre("show manual.chm#start"));
  EXPECT_THAT(shown("manual", "start"), ElementsAre("show manual.chm#start"));
}

TEST_F(Help, ASymbolOfNoVolumeLeadsNowhere) {
  addVolume("manual", "manual.chm");
  setValue("HELP/sym_name/absent", "ABS");
  setValue("HELP/route_to/guide", "ABS");
  setValue("HELP/route_to/book", "NOBODY");
  load();
  EXPECT_EQ(volumes().size(), 1u);
  EXPECT_THAT(shown("guide", "start"), IsEmpty());
  EXPECT_THAT(shown("book", "start"), IsEmpty());
}

TEST_F(Help, OfOneSymbolTheLaterVolumeCounts) {
  addVolume("first", "first.chm");
  addVolume("second", "second.chm");
  setValue("HELP/sym_name/second", "MAN");
  setValue("HELP/sym_name/first", "MAN");
  setValue("HELP/route_to/guide", "MAN");
  load();
  EXPECT_THAT(shown("guide", "start"), ElementsAre("show first.chm#start"));
}

TEST_F(Help, ARouteTakesANameFromItsVolumeWhichStaysReferenced) {
  addVolume("first", "first.chm");
  addVolume("second", "second.chm");
  setValue("HELP/sym_name/first", "MAN");
  setValue("HELP/route_to/second", "MAN");
  noteVolumes();
  help_->loadVolumes();
  ASSERT_EQ(made_.size(), 2u);
  EXPECT_THAT(volumes(), ElementsAre(made_[0].get(), made_[0].get()));
  EXPECT_EQ(made_[0]->refCount(), 3);
  EXPECT_EQ(made_[1]->refCount(), 2) << "the volume that lost its name lives on";
  made_[1]->release();  // what the table keeps for good
}

TEST_F(Help, ASecondLoadReplacesTheVolumesWithoutGivingThemBack) {
  noteVolumes();
  addVolume("manual", "manual.chm");
  help_->loadVolumes();
  help_->loadVolumes();
  ASSERT_EQ(made_.size(), 2u);
  EXPECT_THAT(volumes(), ElementsAre(made_[1].get()));
  EXPECT_EQ(made_[0]->refCount(), 2);
  EXPECT_EQ(made_[1]->refCount(), 2);
  made_[0]->release();  // what the table keeps for good
}

TEST_F(Help, GivesItsVolumesBackAtItsEnd) {
  addVolume("manual", "manual.chm");
  setValue("HELP/sym_name/manual", "MAN");
  setValue("HELP/route_to/guide", "MAN");
  help_->loadVolumes();
  log().clear();
  help_ = nullptr;
  EXPECT_THAT(log(), ElementsAre("gone manual.chm"));
}

// --- Topics

TEST_F(Help, AnUnknownNameAndAnEmptyAddressShowNothing) {
  addVolume("manual", "manual.chm");
  load();
  EXPECT_THAT(shown("absent", "start"), IsEmpty());
  EXPECT_THAT(shown("Manual", "start"), IsEmpty());
  EXPECT_THAT(shown("manual", ""), IsEmpty());
  EXPECT_THAT(shownV2("manual", ""), IsEmpty());
}

TEST_F(Help, TheLaterFormAsksTheLaterInterface) {
  addVolume("manual", "manual.chm");
  load();
  EXPECT_THAT(shownV2("manual", "start"), ElementsAre("show manual.chm?start"));
  EXPECT_THAT(shownV2("absent", "start"), IsEmpty());
}

TEST_F(Help, AVolumeWithoutTheLaterInterfaceShowsNothingInTheLaterForm) {
  broker_.makers[kVolumeClass] = [] { return new OldVolume; };
  addVolume("manual", "manual.chm");
  load();
  EXPECT_THAT(shownV2("manual", "start"), IsEmpty());
  EXPECT_THAT(shown("manual", "start"), ElementsAre("show manual.chm#start"));
}

TEST_F(Help, ATopicStaysWithoutAnOverride) {
  EXPECT_EQ(applied("start"), "start");
  setOverride("", true);
  EXPECT_EQ(applied("start"), "start");
  EXPECT_EQ(applied(""), "");
}

TEST_F(Help, AnOverrideReplacesTheTopicOrStandsBehindIt) {
  setOverride("align", false);
  EXPECT_EQ(applied("start"), "align");
  EXPECT_EQ(applied(""), "align");
  setOverride("_align", true);
  EXPECT_EQ(applied("start"), "start_align");
  EXPECT_EQ(applied(""), "_align");
  KelCString out;
  help_->topicOverride(out);
  EXPECT_STREQ(out.c_str(), "_align");
}

TEST_F(Help, TheOutputMayBeTheTopic) {
  setOverride("_align", true);
  KelCString topic("start");
  help_->applyTopicOverride(topic, topic);
  EXPECT_STREQ(topic.c_str(), "start_align");
}

TEST_F(Help, AnOverrideLastsUntilTheCommandIsDone) {
  declareEvent();
  help_->loadVolumes();
  setOverride("align", false);
  EXPECT_EQ(applied("start"), "align");
  EXPECT_TRUE(store_->Fire(nullptr, kCommandDone));
  EXPECT_EQ(applied("start"), "start");
  KelCString out("before");
  help_->topicOverride(out);
  EXPECT_STREQ(out.c_str(), "");
}

TEST_F(Help, AnyEventEndsAnOverride) {
  setOverride("_align", true);
  help_->OnVoidFired("Other/Event");
  EXPECT_EQ(applied("start"), "start");
}

TEST_F(Help, ListensFromTheLoadToItsEnd) {
  declareEvent();
  setOverride("align", false);
  store_->Fire(nullptr, kCommandDone);
  EXPECT_EQ(applied("start"), "align") << "not yet loaded";
  help_->loadVolumes();
  help_ = nullptr;
  EXPECT_TRUE(store_->Fire(nullptr, kCommandDone)) << "nobody who has gone is told";
}

TEST_F(Help, OtherChangesDoNotEndAnOverride) {
  setOverride("align", false);
  help_->OnBlobChanged("a", nullptr, 0);
  help_->OnIntExChanged("a", 1, 2);
  help_->OnOroStringChanged("a", OroString());
  help_->OnStringChanged("a", "");
  help_->OnFloatChanged("a", 1);
  help_->OnIntChanged("a", 1);
  EXPECT_EQ(applied("start"), "align");
}

TEST_F(Help, KnowsTheHomePage) {
  const OroString& address = help_->defaultWebAddress();
  EXPECT_EQ(narrow(address), COWL_EXPECTED_HOME_PAGE);
  EXPECT_EQ(&help_->defaultWebAddress(), &address);
}

// --- The object

TEST_F(Help, IsOneObjectForTheProcess) {
  testaccess::resetHelpService();
  HelpService* const help = getHelpService();
  EXPECT_EQ(getHelpService(), help);
  EXPECT_EQ(help->refCount(), 1);
  testaccess::resetHelpService();
}

TEST_F(Help, AnswersForItsClassAndItsRoles) {
  HelpService* const help = help_.get();
  EXPECT_EQ(oroQueryClass<HelpService>(help), help);
  EXPECT_EQ(oroQuery<IHelpService>(help), static_cast<IHelpService*>(help));
  EXPECT_EQ(oroQuery<IHelpServiceV2>(help), static_cast<IHelpServiceV2*>(help));
  EXPECT_EQ(oroQuery<IHelpServiceV3>(help), static_cast<IHelpServiceV3*>(help));
  EXPECT_EQ(oroQuery<IOroDataReceiver>(help), static_cast<IOroDataReceiver*>(help));
  EXPECT_EQ(oroQuery<IOroUnknown>(help), static_cast<IOroUnknown*>(help));
}

TEST(HelpSlots, StandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IHelpService::createViewer), 1);
  EXPECT_EQ(tests::slotNumber(&IHelpService::loadVolumes), 2);
  EXPECT_EQ(tests::slotNumber(&IHelpService::volumes), 3);
  EXPECT_EQ(tests::slotNumber(&IHelpService::showTopic), 4);
  EXPECT_EQ(tests::slotNumber(&IHelpService::defaultWebAddress), 5);
  // The later forms share the table of the first, whose destructor takes two places.
  constexpr int before = 5 + 2;
  EXPECT_EQ(tests::slotNumber(&IHelpServiceV2::setTopicOverride), before + 1);
  EXPECT_EQ(tests::slotNumber(&IHelpServiceV2::topicOverride), before + 2);
  EXPECT_EQ(tests::slotNumber(&IHelpServiceV2::applyTopicOverride), before + 3);
  EXPECT_EQ(tests::slotNumber(&IHelpServiceV3::showTopicV2), before + 3 + 1);
  EXPECT_EQ(tests::slotNumber(&IHelpVolume::open), 1);
  EXPECT_EQ(tests::slotNumber(&IHelpVolume::topicAddress), 3);
  EXPECT_EQ(tests::slotNumber(&IHelpVolumeV2::topicAddressV2), 1);
  EXPECT_EQ(tests::slotNumber(&IHelpViewer::show), 1);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::isFile), 1);
}

}  // namespace

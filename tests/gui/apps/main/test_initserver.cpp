#include "gui/apps/main/initserver.h"

#include <gtest/gtest.h>

#include <string>

#include "gui/apps/main/oroappmain.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IOroAppMainHook.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/text.h"
#include "tests/gui/apps/main/appworld.h"
#include "tests/gui/apps/main/double.h"
#include "tests/testpaths.h"

namespace {

// Says where the libraries lie and how the one there behaves.
class OddLibrary : public IOroAppMainHook {
 public:
  std::filesystem::path folder = tests::testLibsDir() / "oddinitserver";
  const char* behaviour = "";

  void beforeEnvironment(IOroObjBroker*, IOroClassRegistration*, IOroComponentManager*) override {
    SPtr<IOroDirService> directories;
    const OroString text(platform::fromSystemPath(folder.string()).c_str());
    directories->setDir("components", OroPath(text));
    SPtr<Velmora::IOroRegistry> registry;
    KelCString key("TEST/InitServer");
    registry->setValue(key, KelCString(behaviour));
  }
};

class InitServer : public testing::Test {
 protected:
  int32_t start(const char* behaviour) {
    library_.behaviour = behaviour;
    const auto arguments = tests::argumentsOf({"cowl"});
    return application_.init(1, arguments.data(), &library_);
  }
  std::string shown() { return platform::toUtf8Lossy(world_.boxText()); }

  tests::AppWorld world_;
  OddLibrary library_;
  OroAppMain application_;
};

TEST_F(InitServer, IsLoadedFromTheDirectoryOfComponents) {
  EXPECT_EQ(start(""), 0);
  EXPECT_STREQ(application_.errorText(), "No Error");
  EXPECT_EQ(tests::registryText("TEST/Notes"), "registration;read;finish;");
  EXPECT_EQ(shown(), "");
}

TEST_F(InitServer, ThatIsNotThereIsTheLoadersErrorAlone) {
  library_.folder /= "nowhere";
  EXPECT_EQ(start(""), 1);
  EXPECT_STREQ(application_.errorText(), "Init server load failed");
  const std::string begin = "ERROR:\nFatal error: Could not load this DLL: ";
  EXPECT_EQ(shown().substr(0, begin.size()), begin);
  EXPECT_NE(shown().find("initserver"), std::string::npos);
  EXPECT_EQ(shown().find("ERROR", 1), std::string::npos);
  EXPECT_EQ(application_.run(), 1);
}

TEST_F(InitServer, MustGiveANewObject) {
  EXPECT_EQ(start("shared"), 1);
  EXPECT_STREQ(application_.errorText(), "Init server load failed");
  EXPECT_EQ(shown(), "ERROR:\nFatal error: could not obtain init server object; error code was 2");
}

TEST_F(InitServer, ThatRefusesIsReportedWithItsCode) {
  EXPECT_EQ(start("refuses"), 1);
  EXPECT_EQ(shown(), "ERROR:\nFatal error: could not obtain init server object; error code was -7");
}

constexpr const char* kNoInterface =
    "ERROR:\nFatal error: could not obtain the required interface on the init server object";

TEST_F(InitServer, ANullObjectHasNoInterface) {
  EXPECT_EQ(start("null object"), 1);
  EXPECT_STREQ(application_.errorText(), "Init server load failed");
  EXPECT_EQ(shown(), kNoInterface);
}

TEST_F(InitServer, AnObjectOfAnotherKindHasNoInterface) {
  EXPECT_EQ(start("stranger"), 1);
  EXPECT_EQ(shown(), kNoInterface);
}

TEST_F(InitServer, ThatCannotReadItsDescriptionEndsTheStartSilently) {
  EXPECT_EQ(start("no description"), 1);
  EXPECT_STREQ(application_.errorText(), " Application description read failed");
  EXPECT_EQ(tests::registryText("TEST/Notes"), "registration;read;");
  EXPECT_EQ(shown(), "");
}

// A manager that takes no library.
struct ClosedManager : tests::Double<ClosedManager, IOroComponentManager> {
  static constexpr const char* className() { return "ClosedManager"; }
  bool getComponent(const GUID&, const KelCString&, IOroComponent**) override {
    ADD_FAILURE() << "asked for a component that it did not take";
    return false;
  }
  bool registerContainer(const GUID&, const KelCString&, IOroComponentContainer*) override {
    return false;
  }
  int32_t setLibraryPath(const GUID& id, const KelCString& group, const OroString&) override {
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(group.isEmpty());
    return 3001;
  }
  void setBroker(IOroObjBroker*) override {}
  int32_t getLastStatus() override { return 3001; }
};

TEST_F(InitServer, WhoseLibraryIsNotTakenIsReportedWithItsPathAndTheCode) {
  application_.initEssential();
  library_.beforeEnvironment(nullptr, nullptr, nullptr);
  ClosedManager manager;
  EXPECT_EQ(loadInitServer(&manager), nullptr);
  OroPath path(oroDirPath("components"));
  path.append(OroString("initserver"));
  EXPECT_EQ(shown(), "ERROR:\nFatal error: could not register init server component (" +
                         platform::toUtf8Lossy(path.wideText()) + "); error code was 3001");
}

TEST_F(InitServer, AFailureUndoesNothing) {
  EXPECT_EQ(start("shared"), 1);
  EXPECT_NE(application_.objectBroker(), nullptr);
  EXPECT_NE(tests::registryText("MAIN_ARGV0"), "<absent>");
}

}  // namespace

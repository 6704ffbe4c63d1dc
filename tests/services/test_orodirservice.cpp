#include "services/orodirservice.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "platform/process.h"
#include "services/testaccess.h"
#include "tests/services/servicetest.h"
#include "tests/support/slotnumber.h"

namespace {

using platform::KnownFolder;

constexpr const char16_t* kPlugins = u"SOFTWARE\\Velmora\\Plugins";

class DirServiceTest : public tests::ServiceTest {
 protected:
  DirServiceTest() { setValue("PRODUCT_INFO/createDefaultDirs", "0"); }

  // The directory, with this test's folder and the executable's directory by name.
  std::string dir(const char* name) { return shortened(directories_->getDir(name)); }
  // What the settings hold, in the same form.
  std::string stored(const char* setting) {
    return shortened(store_->GetOroString(setting, nullptr));
  }
  std::string storedDir(const char* name) {
    return stored((std::string("DefaultFileNameDirectory/") + name).c_str());
  }
  std::string shortened(const OroString& text) const {
    const std::string path = tests::narrow(text);
    const std::string own = tests::narrow(base());
    const std::string executable = tests::narrow(executableDir());
    if (path.rfind(own, 0) == 0) return "OWN" + path.substr(own.size());
    if (path.rfind(executable, 0) == 0) return "EXE" + path.substr(executable.size());
    return path;
  }
  static OroPath executableDir() {
    return OroPath(OroString(platform::executablePath(260).c_str())).parent();
  }
  void storeText(const char* directory, const char* setting, const char* text) {
    store_->CreateDirectory(directory);
    store_->CreateOroString(setting, 256, OroString(text), 0);
  }

  IPtr<OroDirService> directories_ = new OroDirService;
};

// --- The computed names.

TEST_F(DirServiceTest, TheExecutableItsLibrariesAndItsSettingsShareADirectory) {
  EXPECT_EQ(dir("exe"), "EXE");
  EXPECT_EQ(dir("bin"), "EXE");
  EXPECT_EQ(dir("config"), "EXE");
  EXPECT_EQ(dir("language"), "EXE\\lang");
  EXPECT_TRUE(isThere(directories_->getDir("exe")));
}

TEST_F(DirServiceTest, AskingForExeCreatesTheSetting) {
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/exe"));
  dir("exe");
  EXPECT_EQ(storedDir("exe"), "EXE");
  EXPECT_EQ(store_->GetCapacity("DefaultFileNameDirectory/exe", nullptr), 256);
  EXPECT_EQ(store_->GetFlags("DefaultFileNameDirectory/exe"), 1u);
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/temp"));
}

TEST_F(DirServiceTest, AnEarlierSettingWinsOverTheExecutablesPlace) {
  storeText("DefaultFileNameDirectory", "DefaultFileNameDirectory/exe", "D:\\tools\\");
  EXPECT_EQ(dir("exe"), "D:\\tools");
  EXPECT_EQ(dir("language"), "D:\\tools\\lang");
  EXPECT_EQ(storedDir("exe"), "D:\\tools\\");
}

TEST_F(DirServiceTest, AnEmptySettingOfTheExecutablesPlaceIsTakenAsWell) {
  storeText("DefaultFileNameDirectory", "DefaultFileNameDirectory/exe", "");
  EXPECT_EQ(dir("exe"), "C:");
  EXPECT_EQ(dir("language"), "lang");
  EXPECT_EQ(storedDir("exe"), "");
}

TEST_F(DirServiceTest, TheExecutablesDirectoryIsTakenOnce) {
  EXPECT_EQ(dir("exe"), "EXE");
  directories_->setDir("exe", OroPath("D:\\tools"));
  EXPECT_EQ(storedDir("exe"), "D:\\tools");
  EXPECT_EQ(dir("exe"), "EXE");
  const IPtr<OroDirService> another = new OroDirService;
  EXPECT_EQ(shortened(another->getDir("config")), "EXE");
}

TEST_F(DirServiceTest, WithoutSettingsTheExecutablesDirectoryIsStillKnown) {
  tests::FakeBroker bare;
  EXPECT_EQ(dir("exe"), "EXE");
  EXPECT_EQ(dir("components"), "EXE");
  EXPECT_EQ(dir("reports"), "C:");
  directories_->setDir("reports", OroPath("D:\\r"));
  EXPECT_EQ(dir("reports"), "C:");
}

TEST_F(DirServiceTest, ComponentsLieBesideTheExecutableUnlessTheSettingsSayOtherwise) {
  EXPECT_EQ(dir("components"), "EXE");
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/components"));
  directories_->setDir("components", OroPath("D:\\parts"));
  EXPECT_EQ(dir("components"), "D:\\parts");
}

TEST_F(DirServiceTest, AnEmptyComponentsSettingIsTheFallback) {
  storeText("DefaultFileNameDirectory", "DefaultFileNameDirectory/components", "");
  EXPECT_EQ(dir("components"), "C:");
}

TEST_F(DirServiceTest, FoldersOfTheSystem) {
  nameProduct("Scan", "7.5");
  EXPECT_EQ(dir("home"), "OWN\\profile");
  EXPECT_EQ(dir("userconfig"), "OWN\\appData\\Velmora\\Velmora Scan 7.5");
  EXPECT_EQ(dir("publicconfig"), "OWN\\commonAppData");
  EXPECT_EQ(dir("installoptions"), "OWN\\commonDocuments\\Velmora");
}

TEST_F(DirServiceTest, FoldersOfAnotherBrand) {
  nameProduct("Scan", "7.5");
  setValue("ALT_PRODUCT_INFO/altProductName", "Other Scan");
  setValue("ALT_PRODUCT_INFO/altCompanyFolder", "Other");
  EXPECT_EQ(dir("home"), "OWN\\profile");
  EXPECT_EQ(dir("userconfig"), "OWN\\appData\\Other\\Other Scan");
  EXPECT_EQ(dir("publicconfig"), "OWN\\commonAppData");
  EXPECT_EQ(dir("installoptions"), "OWN\\commonDocuments\\Other\\Other Scan");
}

TEST_F(DirServiceTest, ProductFoldersWithoutAProductAreTheFallback) {
  EXPECT_EQ(dir("userconfig"), "C:");
  EXPECT_EQ(dir("installoptions"), "C:");
  EXPECT_EQ(dir("home"), "OWN\\profile");
}

TEST_F(DirServiceTest, TheWorkingDirectoryIsThatOfTheFirstRequest) {
  const std::u16string before = platform::currentDirectory(1024);
  EXPECT_EQ(std::u16string(directories_->getDir("workingdir").wideText()),
            OroPath(OroString(before.c_str())).wideText());
  ASSERT_TRUE(platform::setCurrentDirectory(base().toOsPath().wideText()));
  const OroPath after(directories_->getDir("workingdir"));
  const IPtr<OroDirService> another = new OroDirService;
  const OroPath ofAnother(another->getDir("workingdir"));
  ASSERT_TRUE(platform::setCurrentDirectory(before));
  EXPECT_TRUE(after == OroPath(OroString(before.c_str())));
  EXPECT_TRUE(ofAnother == after);
}

TEST_F(DirServiceTest, PythonIsASettingOfItsOwn) {
  EXPECT_EQ(dir("python"), "C:");
  storeText("Directories", "Directories/python", "D:/snakes/");
  EXPECT_EQ(dir("python"), "D:\\snakes");
}

TEST_F(DirServiceTest, WithoutThatSettingPythonIsTheDefaultOne) {
  nameProduct();
  EXPECT_EQ(dir("python"), "c:\\python");
}

// --- The common directory of the installation.

TEST_F(DirServiceTest, TheCommonDirectoryIsInTheProgramsFolderAtLast) {
  EXPECT_EQ(dir("installcommon"), "C:\\Program Files\\Velmora\\Common");
  EXPECT_EQ(dir("support"), "C:\\Program Files\\Velmora\\Common\\Support\\V7");
}

TEST_F(DirServiceTest, TheSystemsRegistryNamesTheCommonDirectory) {
  setMachineValue(kPlugins, u"PluginPath", u"D:\\Shared\\");
  EXPECT_EQ(dir("installcommon"), "D:\\Shared");
  EXPECT_EQ(dir("support"), "D:\\Shared\\Support\\V7");
}

TEST_F(DirServiceTest, TheSettingsNameTheCommonDirectoryFirst) {
  setMachineValue(kPlugins, u"PluginPath", u"D:\\Shared");
  storeText("Directories", "Directories/Common Directory", "E:\\Mine");
  EXPECT_EQ(dir("installcommon"), "E:\\Mine");
  EXPECT_EQ(dir("support"), "E:\\Mine\\Support\\V7");
}

TEST_F(DirServiceTest, TheCommonDirectoryIsWrittenBackIntoAnExistingSettingOnly) {
  setMachineValue(kPlugins, u"PluginPath", u"F:");
  dir("installcommon");
  EXPECT_FALSE(store_->Exists("Directories/Common Directory"));
  storeText("Directories", "Directories/Common Directory", "");
  EXPECT_EQ(dir("installcommon"), "F:");
  EXPECT_EQ(stored("Directories/Common Directory"), "F:\\");
}

TEST_F(DirServiceTest, AnEmptyRegistryValueNamesNoCommonDirectory) {
  setMachineValue(kPlugins, u"PluginPath", u"");
  storeText("Directories", "Directories/Common Directory", "");
  EXPECT_EQ(dir("installcommon"), "C:");
  EXPECT_EQ(dir("support"), "\\Support\\V7");
  EXPECT_EQ(stored("Directories/Common Directory"), "");
}

// --- The names that the settings hold.

TEST_F(DirServiceTest, AnUnknownNameIsTheFallback) {
  EXPECT_EQ(dir("nobody's"), "C:");
  EXPECT_EQ(dir(""), "C:");
  EXPECT_EQ(dir(nullptr), "C:");
  EXPECT_EQ(dir("EXE"), "C:");
  nameProduct();
  EXPECT_EQ(dir("nobody's"), "C:");
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/nobody's"));
}

TEST_F(DirServiceTest, ANameThatIsSetIsFound) {
  directories_->setDir("reports", OroPath("D:\\my reports"));
  EXPECT_EQ(dir("reports"), "D:\\my reports");
  directories_->setDir("reports", OroPath("E:\\"));
  EXPECT_EQ(dir("reports"), "E:");
  EXPECT_EQ(storedDir("reports"), "E:\\");
  EXPECT_EQ(store_->GetFlags("DefaultFileNameDirectory/reports"), 1u);
}

TEST_F(DirServiceTest, ANameThatIsSetBeatsItsDefault) {
  nameProduct();
  directories_->setDir("reports", OroPath("D:\\my reports"));
  EXPECT_EQ(dir("macros"), "OWN\\commonDocuments\\Velmora\\Velmora Scan 7.5\\macros");
  EXPECT_EQ(dir("reports"), "D:\\my reports");
}

TEST_F(DirServiceTest, SettingADirectoryDoesNotFillTheDefaults) {
  nameProduct();
  directories_->setDir("reports", OroPath("D:\\my reports"));
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/temp"));
  directories_->setDirAfterDefaults("plots", OroPath("D:\\plots"));
  EXPECT_TRUE(store_->Exists("DefaultFileNameDirectory/temp"));
  EXPECT_EQ(dir("plots"), "D:\\plots");
  directories_->setDirAfterDefaults("macros", OroPath("D:\\macros"));
  EXPECT_EQ(dir("macros"), "D:\\macros");
}

TEST_F(DirServiceTest, ComputedNamesDoNotFollowTheSettings) {
  nameProduct();
  for (const char* name : {"exe", "bin", "config", "language", "home", "userconfig", "publicconfig",
                           "installoptions", "support", "workingdir", "installcommon"}) {
    const std::string before = dir(name);
    directories_->setDir(name, OroPath("D:\\elsewhere"));
    EXPECT_EQ(dir(name), before) << name;
    EXPECT_EQ(storedDir(name), "D:\\elsewhere") << name;
  }
}

TEST_F(DirServiceTest, ALongPathIsCutInTheSettings) {
  const std::string longPath = "D:\\" + std::string(300, 'x');
  directories_->setDir("reports", OroPath(longPath.c_str()));
  EXPECT_EQ(dir("reports"), longPath.substr(0, 256));
}

TEST_F(DirServiceTest, ASetWithoutANameIsIgnored) {
  directories_->setDir(nullptr, OroPath("D:\\x"));
  EXPECT_FALSE(store_->DirectoryExists("DefaultFileNameDirectory"));
}

TEST_F(DirServiceTest, AReferenceStaysGoodAndShowsTheNewPath) {
  directories_->setDir("reports", OroPath("D:\\one"));
  const OroPath& reports = directories_->getDir("reports");
  for (int i = 0; i < 200; ++i) {
    const KelCString name = KelCString::fromTextAndInt("name", i);
    directories_->setDir(name.text(), OroPath("D:\\many"));
    directories_->getDir(name.text());
  }
  EXPECT_EQ(shortened(reports), "D:\\one");
  directories_->setDir("reports", OroPath("D:\\two"));
  EXPECT_EQ(shortened(reports), "D:\\one");
  EXPECT_EQ(&directories_->getDir("reports"), &reports);
  EXPECT_EQ(shortened(reports), "D:\\two");
}

TEST_F(DirServiceTest, TheFallbackIsNotKeptForTheName) {
  const OroPath& missing = directories_->getDir("reports");
  EXPECT_EQ(&directories_->getDir("macros"), &missing);
  directories_->setDir("reports", OroPath("D:\\one"));
  EXPECT_EQ(dir("reports"), "D:\\one");
  EXPECT_EQ(shortened(missing), "C:");
}

// --- The defaults.

class DefaultDirsTest : public DirServiceTest {
 protected:
  DefaultDirsTest() { nameProduct("Scan", "7.5"); }

  static std::string documents(const char* below) {
    return std::string("OWN\\commonDocuments\\Velmora\\Velmora Scan 7.5") + below;
  }

  tests::EnvironmentGuard temp_{"TEMP", "T:\\temp"};
  tests::EnvironmentGuard tmp_{"TMP", "T:\\tmp"};
};

TEST_F(DefaultDirsTest, EachNameHasItsDefault) {
  directories_->initDefaults();
  for (const char* name :
       {"components", "bin", "exe", "install", "pdf", "spectrum", "fonts", "config", "options"}) {
    EXPECT_EQ(storedDir(name), "EXE") << name;
  }
  EXPECT_EQ(storedDir("language"), "EXE\\lang");
  EXPECT_EQ(storedDir("import"), "EXE\\import");
  EXPECT_EQ(storedDir("plugins"), "EXE\\plugins");
  EXPECT_EQ(storedDir("help"), "EXE\\help");
  EXPECT_EQ(storedDir("common"), documents(""));
  for (const char* name : {"data", "files", "batchinput", "batchoutput"}) {
    EXPECT_EQ(storedDir(name), documents("\\data")) << name;
  }
  EXPECT_EQ(storedDir("macros"), documents("\\macros"));
  EXPECT_EQ(storedDir("snapshots"), documents("\\snapshots"));
  EXPECT_EQ(storedDir("captures"), documents("\\captures"));
  EXPECT_EQ(storedDir("reports"), documents("\\reports"));
  EXPECT_EQ(storedDir("logs"), documents("\\logs"));
  EXPECT_EQ(storedDir("pdf3d"), documents("\\pdf"));
  EXPECT_EQ(storedDir("sample_data"), documents("\\Sample Data"));
  EXPECT_EQ(storedDir("studies"), documents("\\studies"));
  EXPECT_EQ(storedDir("study_templates"), documents("\\study_templates"));
  EXPECT_EQ(storedDir("templates"), documents("\\report_templates"));
  EXPECT_EQ(storedDir("themes"), documents("\\themes"));
  EXPECT_EQ(storedDir("textures"), documents("\\textures"));
  EXPECT_EQ(storedDir("ribbon_layout"), documents("\\Ribbon Layout"));
  EXPECT_EQ(storedDir("wysiwygreport_template"), documents("\\wysiwygreport_templates"));
  EXPECT_EQ(storedDir("python"), "c:\\python");
  EXPECT_EQ(storedDir("temp"), "T:\\temp\\Velmora");
  EXPECT_EQ(storedDir("CommonImportDirectory"), "C:\\Program Files\\Velmora\\Common\\import");
}

TEST_F(DefaultDirsTest, TheSettingsStandInTheirOrder) {
  directories_->initDefaults();
  OroArray<const char*> paths;
  ASSERT_TRUE(store_->CollectPaths("DefaultFileNameDirectory", paths));
  const char* const order[] = {"exe",
                               "components",
                               "bin",
                               "install",
                               "pdf",
                               "spectrum",
                               "fonts",
                               "config",
                               "options",
                               "language",
                               "import",
                               "plugins",
                               "help",
                               "common",
                               "data",
                               "files",
                               "batchinput",
                               "batchoutput",
                               "macros",
                               "snapshots",
                               "captures",
                               "reports",
                               "logs",
                               "pdf3d",
                               "sample_data",
                               "studies",
                               "study_templates",
                               "templates",
                               "themes",
                               "textures",
                               "ribbon_layout",
                               "wysiwygreport_template",
                               "python",
                               "temp",
                               "CommonImportDirectory"};
  ASSERT_EQ(paths.count(), static_cast<int32_t>(std::size(order)));
  for (int32_t i = 1; i <= paths.count(); ++i) {
    EXPECT_EQ(std::string(paths[i]), std::string("DefaultFileNameDirectory/") + order[i - 1]);
  }
}

TEST_F(DefaultDirsTest, TheSettingsAreTextsThatAreSavedButNotJournalled) {
  directories_->initDefaults();
  for (const char* name : {"components", "reports", "python", "temp", "CommonImportDirectory"}) {
    const std::string setting = std::string("DefaultFileNameDirectory/") + name;
    EXPECT_EQ(store_->GetCapacity(setting.c_str(), nullptr), 256) << name;
    EXPECT_EQ(store_->GetFlags(setting.c_str()), 1u) << name;
  }
}

TEST_F(DefaultDirsTest, AMissingNameFillsTheDefaults) {
  EXPECT_EQ(dir("reports"), documents("\\reports"));
  EXPECT_EQ(storedDir("macros"), documents("\\macros"));
}

TEST_F(DefaultDirsTest, ComponentsFollowTheDefaultOnceItIsThere) {
  directories_->initDefaults();
  store_->SetOroString(nullptr, "DefaultFileNameDirectory/components", OroString("D:\\parts"));
  EXPECT_EQ(dir("components"), "D:\\parts");
}

TEST_F(DefaultDirsTest, NothingIsFilledWithoutTheProductsName) {
  removeValue("PRODUCT_INFO/appName");
  directories_->initDefaults();
  EXPECT_FALSE(store_->DirectoryExists("DefaultFileNameDirectory"));
  EXPECT_EQ(dir("reports"), "C:");
}

TEST_F(DefaultDirsTest, NothingIsFilledWhenTheTempDirectoryIsThere) {
  storeText("DefaultFileNameDirectory", "DefaultFileNameDirectory/temp", "T:\\mine");
  directories_->initDefaults();
  EXPECT_FALSE(store_->Exists("DefaultFileNameDirectory/reports"));
  EXPECT_EQ(dir("reports"), "C:");
  EXPECT_EQ(dir("temp"), "T:\\mine");
}

TEST_F(DefaultDirsTest, WithoutAVersionTheDocumentsAreTheFallback) {
  removeValue("PRODUCT_INFO/displayVersion");
  directories_->initDefaults();
  EXPECT_EQ(storedDir("common"), "C:\\");
  EXPECT_EQ(storedDir("reports"), "C:\\reports");
}

TEST_F(DefaultDirsTest, TheTemporaryDirectoryComesFromTheEnvironment) {
  const struct {
    std::optional<std::string> temp;
    std::optional<std::string> tmp;
    const char* expected;
  } rows[] = {{"T:\\temp", "T:\\tmp", "T:\\temp\\Velmora"},
              {std::nullopt, "T:/tmp/", "T:\\tmp\\Velmora"},
              {"", "T:\\tmp", "T:\\tmp\\Velmora"},
              {std::nullopt, std::nullopt, ".\\Velmora"}};
  for (const auto& row : rows) {
    const tests::EnvironmentGuard temp("TEMP", row.temp);
    const tests::EnvironmentGuard tmp("TMP", row.tmp);
    store_->Clear();
    directories_->initDefaults();
    EXPECT_EQ(storedDir("temp"), row.expected);
  }
}

TEST_F(DefaultDirsTest, TheImportDirectoryIsTheFirstThatExists) {
  const OroPath shared = base("shared");
  setMachineValue(kPlugins, u"PluginPath", shared.wideText());
  shared.joined("import").makeDirectory(true);
  directories_->initDefaults();
  EXPECT_EQ(storedDir("CommonImportDirectory"), "OWN\\shared\\import");
}

TEST_F(DefaultDirsTest, TheImportDirectoryBesideTheExecutableKeepsItsDots) {
  setMachineValue(kPlugins, u"PluginPath", base("shared").wideText());
  const OroPath apps = base("apps\\cowl");
  apps.makeDirectory(true);
  base("apps\\Common\\import").makeDirectory(true);
  directories_->setDir("exe", apps);
  directories_->initDefaults();
  EXPECT_EQ(storedDir("CommonImportDirectory"), "OWN\\apps\\cowl\\..\\Common\\import");
}

TEST_F(DefaultDirsTest, AFileIsNoImportDirectory) {
  setMachineValue(kPlugins, u"PluginPath", base().wideText());
  folder_.write("import", "a file");
  directories_->initDefaults();
  EXPECT_EQ(storedDir("CommonImportDirectory"), "C:\\Program Files\\Velmora\\Common\\import");
}

TEST_F(DefaultDirsTest, NoDirectoryIsMadeWhenTheRegistrySaysSo) {
  directories_->initDefaults();
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(DefaultDirsTest, TheDirectoriesMostUsedAreMade) {
  removeValue("PRODUCT_INFO/createDefaultDirs");
  const tests::EnvironmentGuard temp("TEMP", folder_.file("temp").string());
  directories_->initDefaults();
  const OroPath documents = base("commonDocuments\\Velmora\\Velmora Scan 7.5");
  for (const char* name : {"data", "snapshots", "captures", "reports", "macros", "logs",
                           "Sample Data", "themes", "textures"}) {
    EXPECT_TRUE(isThere(documents.joined(name))) << name;
  }
  EXPECT_TRUE(isThere(base("temp\\Velmora")));
  for (const char* name : {"studies", "pdf", "report_templates", "Ribbon Layout"}) {
    EXPECT_FALSE(isThere(documents.joined(name))) << name;
  }
  EXPECT_FALSE(isThere(base("profile")));
  EXPECT_FALSE(isThere(base("appData")));
}

TEST_F(DefaultDirsTest, ItIsTheDirectoryInTheSettingsThatIsMade) {
  removeValue("PRODUCT_INFO/createDefaultDirs");
  const tests::EnvironmentGuard temp("TEMP", folder_.file("temp").string());
  directories_->setDir("reports", base("my reports"));
  directories_->initDefaults();
  EXPECT_TRUE(isThere(base("my reports")));
  EXPECT_FALSE(isThere(base("commonDocuments\\Velmora\\Velmora Scan 7.5\\reports")));
}

TEST_F(DefaultDirsTest, DefaultsAreFilledOnce) {
  directories_->initDefaults();
  store_->RemoveItem("DefaultFileNameDirectory/reports");
  directories_->initDefaults();
  EXPECT_EQ(dir("reports"), "C:");
  store_->RemoveItem("DefaultFileNameDirectory/temp");
  EXPECT_EQ(dir("reports"), documents("\\reports"));
}

TEST_F(DirServiceTest, ItAnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQuery<IOroDirService>(directories_.get()), directories_.get());
  EXPECT_EQ(oroQueryClass<OroDirService>(directories_.get()), directories_.get());
}

TEST(IOroDirServiceTest, OperationsStandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IOroDirService::getDir), 1);
  EXPECT_EQ(tests::slotNumber(&IOroDirService::setDir), 2);
}

}  // namespace

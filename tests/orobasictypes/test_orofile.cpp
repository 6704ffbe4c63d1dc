#include "orobasictypes/orofile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "base/basic/keldatastore.h"
#include "interfaces/IOroDirService.h"
#include "orobasictypes/orofiletags.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/testaccess.h"
#include "platform/process.h"
#include "platform/temporaryfolder.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakebroker.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using testing::MatchesRegex;

TEST(OroFileTags, HaveTheirNumbers) {
  using namespace orofiletags;
  EXPECT_EQ(kRoot, 0x4B454C);
  EXPECT_EQ(kPoint, 0x10000);
  EXPECT_EQ(kText, 0x10003);
  EXPECT_EQ(kMatrix, 0x10004);
  EXPECT_EQ(kOroString, 0x10005);
  EXPECT_EQ(kId, 0x10008);
  EXPECT_EQ(kDoublePair, 0x10009);
  EXPECT_EQ(kFloatPair, 0x10010);
  EXPECT_EQ(kObject, 0xB0002);
  EXPECT_EQ(kStringObject, 0xB0003);
}

// Temporary names.

class DirService : public IOroDirService {
 public:
  static constexpr const char* className() { return "DirService"; }
  const OroPath& getDir(const char* name) override { return dirs[name]; }
  void setDir(const char* name, const OroPath& path) override { dirs[name] = path; }
  std::map<std::string, OroPath> dirs;

  using Offers = OroOffers<DirService, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};

class TemporaryNames : public testing::Test {
 protected:
  TemporaryNames() { testaccess::resetDirPath(); }
  ~TemporaryNames() override { testaccess::resetDirPath(); }
  void setTemp(const char16_t* path) {
    auto* const store = new KelDataStore(true, 50, 3000);
    broker_.registerService(KelCString("IDataStore"), static_cast<IDataStore*>(store));
    store->CreateDirectory("Directories");
    store->CreateOroString("Directories/Temp Directory", 100, OroString(path), 0);
  }
  void setService(const char16_t* path) {
    auto* const service = new DirService;
    broker_.registerService(KelCString("IOroDirService"), service);
    service->setDir("temp", OroPath(OroString(path)));
  }
  static std::u16string name() {
    OroPath path;
    oroMakeTempName(path);
    return path.wideText();
  }
  // The folder of a new name; its leaf must have the right form.
  static std::u16string folder() {
    const std::u16string path = name();
    const size_t separator = path.rfind(u'\\');
    const std::u16string wide = path.substr(separator + 1);
    const std::string leaf(wide.begin(), wide.end());
    char process[16];
    std::snprintf(process, sizeof process, "%08x", platform::processId());
    EXPECT_EQ(leaf.substr(0, 13), std::string("oro-") + process + "-");
    EXPECT_THAT(leaf.substr(13), testing::EndsWith("-temp"));
    EXPECT_EQ(leaf.size(), 26u);
    EXPECT_EQ(leaf.find_first_not_of("0123456789abcdef", 13), 21u);
    return path.substr(0, separator);
  }

  tests::FakeBroker broker_;
};

TEST_F(TemporaryNames, TheSettingComesFirst) {
  setTemp(u"d:\\my temp");
  setService(u"e:\\other");
  EXPECT_EQ(folder(), u"d:\\my temp");
}

TEST_F(TemporaryNames, AnEmptySettingLeavesItToTheDirectoryService) {
  setTemp(u"");
  setService(u"e:\\other");
  EXPECT_EQ(folder(), u"e:\\other");
}

TEST_F(TemporaryNames, WithoutTheStoreTheDirectoryServiceDecides) {
  setService(u"e:\\other");
  EXPECT_EQ(folder(), u"e:\\other");
}

TEST_F(TemporaryNames, WithNeitherItIsTheFolderOfTheSystem) {
  EXPECT_EQ(folder(), platform::temporaryFolder());
  EXPECT_TRUE(oroAccess(OroString(platform::temporaryFolder().c_str()), 6));
}

TEST_F(TemporaryNames, ASeparatorAtTheEndOfTheFolderIsNotDoubled) {
  setTemp(u"d:\\temp\\");
  EXPECT_EQ(folder(), u"d:\\temp");
}

TEST_F(TemporaryNames, TheRootIsAFolderToo) {
  setTemp(u"\\");
  EXPECT_EQ(name().find(u"\\oro-"), 0u);
}

TEST_F(TemporaryNames, TheClockMakesNamesDiffer) {
  const std::u16string first = name();
  std::u16string second = name();
  for (int i = 0; i < 100000 && second == first; ++i) second = name();
  EXPECT_NE(first, second);
}

// Calls of the system.

class FileCalls : public testing::Test {
 protected:
  OroPath path(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  bool exists(const char* name) const { return std::filesystem::exists(folder_.file(name)); }
  tests::TempFolder folder_;
};

TEST_F(FileCalls, AccessAsksForExistenceAndRights) {
  folder_.write("a", "x");
  EXPECT_TRUE(oroAccess(path("a"), 0));
  EXPECT_TRUE(oroAccess(path("a"), 4));
  EXPECT_TRUE(oroAccess(path("a"), 6));
  EXPECT_FALSE(oroAccess(path("absent"), 0));
  EXPECT_FALSE(oroAccess(path("absent"), 4));
}

TEST_F(FileCalls, OpeningTakesModesOfUpTo255Characters) {
  const std::filesystem::path name(u"caf\u00E9 \u03B1\u65E5");
  std::FILE* file = oroOpenFile(path(name), "wb");
  ASSERT_NE(file, nullptr);
  std::fclose(file);
  EXPECT_EQ(oroOpenFile(path("absent"), "rb"), nullptr);
  const std::string longest = "rb" + std::string(253, ' ');
  EXPECT_EQ(oroOpenFile(path(name), (longest + ' ').c_str()), nullptr);
  file = oroOpenFile(path(name), longest.c_str());
  ASSERT_NE(file, nullptr);
  std::fclose(file);
}

TEST_F(FileCalls, UnlinkingRemovesFilesAlone) {
  folder_.write("a", "x");
  folder_.write("d/b", "x");
  EXPECT_TRUE(oroUnlink(path("a")));
  EXPECT_FALSE(exists("a"));
  EXPECT_FALSE(oroUnlink(path("a")));
  EXPECT_FALSE(oroUnlink(path("d")));
  EXPECT_TRUE(exists("d/b"));
}

TEST_F(FileCalls, StatTellsSizeAndKind) {
  folder_.write("d/a", "12345");
  platform::FileStatus status = {};
  ASSERT_TRUE(oroStat(path("d/a"), status));
  EXPECT_EQ(status.size, 5);
  EXPECT_FALSE(status.isDirectory);
  ASSERT_TRUE(oroStat(path("d"), status));
  EXPECT_TRUE(status.isDirectory);
  EXPECT_FALSE(oroStat(path("absent"), status));
}

TEST_F(FileCalls, OneFileUnderTwoNamesIsTheSame) {
  folder_.write("a", "1");
  folder_.write("b", "1");
  EXPECT_TRUE(oroIsSameFile(path("a"), path("a")));
  EXPECT_TRUE(oroIsSameFile(path("a"), path("./a")));
  EXPECT_FALSE(oroIsSameFile(path("a"), path("b")));
  EXPECT_FALSE(oroIsSameFile(path("absent"), path("absent")));
  EXPECT_FALSE(oroIsSameFile(path("."), path("."))) << "a folder is no file";
}

TEST_F(FileCalls, ATreeIsCopiedWithAllItHolds) {
  folder_.write("from/a", "one");
  folder_.write("from/d/b", std::string(200000, 'b'));
  folder_.write(std::filesystem::path(u"from/d/e/caf\u00E9"), "");
  std::filesystem::create_directories(folder_.file("from/empty"));
  ASSERT_TRUE(oroCopyDirectory(path("from"), path("new/to")));
  EXPECT_EQ(folder_.read("new/to/a"), "one");
  EXPECT_EQ(folder_.read("new/to/d/b"), std::string(200000, 'b'));
  EXPECT_EQ(folder_.read(std::filesystem::path(u"new/to/d/e/caf\u00E9")), "");
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file("new/to/empty")));
  EXPECT_EQ(folder_.read("from/a"), "one");
}

TEST_F(FileCalls, ACopyOverwritesAndKeepsWhatElseIsThere) {
  folder_.write("from/a", "new");
  folder_.write("to/a", "old and longer");
  folder_.write("to/b", "stays");
  ASSERT_TRUE(oroCopyDirectory(path("from"), path("to")));
  EXPECT_EQ(folder_.read("to/a"), "new");
  EXPECT_EQ(folder_.read("to/b"), "stays");
}

TEST_F(FileCalls, WhatIsNoDirectoryIsNotCopied) {
  folder_.write("file", "x");
  EXPECT_FALSE(oroCopyDirectory(path("absent"), path("to")));
  EXPECT_FALSE(oroCopyDirectory(path("file"), path("to")));
  EXPECT_FALSE(exists("to"));
}

TEST_F(FileCalls, TheFirstFailureEndsACopyAndWhatWasCopiedStays) {
  folder_.write("from/d/b", "x");
  folder_.write("from/z", "x");
  folder_.write("to/d", "a file in the place of a directory");
  EXPECT_FALSE(oroCopyDirectory(path("from"), path("to")));
  EXPECT_FALSE(exists("to/z")) << "directories come first";
  tests::TestDisk disk;
  disk.refuseFrom(1);
  EXPECT_FALSE(oroCopyDirectory(path("from"), path("full")));
  EXPECT_EQ(folder_.read("full/d/b"), "x");
}

// Where the user may make none there is nothing to leave out.
TEST_F(FileCalls, LinksAreLeftOutOfACopy) {
  folder_.write("outside/a", "x");
  folder_.write("from/a", "one");
  std::error_code refused;
  std::filesystem::create_symlink(folder_.file("outside/a"), folder_.file("from/file"), refused);
  for (const char* target : {"outside", "from"}) {
    const auto link = folder_.file("from") / (std::string("link to ") + target);
    std::filesystem::create_directory_symlink(folder_.file(target), link, refused);
  }
  ASSERT_TRUE(oroCopyDirectory(path("from"), path("to")));
  EXPECT_EQ(folder_.read("to/a"), "one");
  const std::filesystem::directory_iterator copied(folder_.file("to"));
  EXPECT_EQ(std::distance(begin(copied), end(copied)), 1);
}

TEST_F(FileCalls, ACopyOntoItselfHarmsNothing) {
  folder_.write("from/a", "content");
  EXPECT_TRUE(oroCopyDirectory(path("from"), path("from")));
  EXPECT_EQ(folder_.read("from/a"), "content");
}

TEST_F(FileCalls, ACopyIntoItselfEnds) {
  folder_.write("from/a", "content");
  folder_.write("from/d/b", "x");
  EXPECT_TRUE(oroCopyDirectory(path("from"), path("from/d")));
  EXPECT_EQ(folder_.read("from/d/a"), "content");
  EXPECT_EQ(folder_.read("from/d/d/b"), "x");
  EXPECT_FALSE(exists("from/d/d/d"));
}

}  // namespace

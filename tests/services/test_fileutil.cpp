#include "services/fileutil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "interfaces/IFileDate.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "tests/blackbox/directorylink.h"
#include "tests/support/slotnumber.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr const char16_t* kName = u"caf\u00E9 \u03B1\u65E5";  // in no code page

class RecordedDate : public IFileDate {
 public:
  static constexpr const char* className() { return "RecordedDate"; }
  using Offers = OroOffers<RecordedDate, IFileDate>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void setDay(int32_t day) override { calls.push_back("day " + std::to_string(day)); }
  void setMonth(int32_t month) override { calls.push_back("month " + std::to_string(month)); }
  void setYear(int32_t year) override { calls.push_back("year " + std::to_string(year)); }
  std::vector<std::string> calls;
};

class Files : public testing::Test {
 protected:
  static OroPath pathOf(const std::filesystem::path& path) {
    return OroPath(OroString(path.u16string().c_str()));
  }
  OroPath base() const { return pathOf(folder_.path()); }
  OroPath path(const std::filesystem::path& name) const { return pathOf(folder_.file(name)); }
  bool exists(const std::filesystem::path& name) const {
    return std::filesystem::exists(folder_.file(name));
  }
  void makeFolder(const std::filesystem::path& name) const {
    std::filesystem::create_directories(folder_.file(name));
  }
  // Holds the link; it must go before the folder does.
  [[nodiscard]] std::unique_ptr<tests::DirectoryLink> link(const char* target,
                                                           const char* name) const {
    auto made = std::make_unique<tests::DirectoryLink>(folder_.file(target), folder_.file(name));
    EXPECT_TRUE(made->isThere());
    return made;
  }

  std::vector<std::u16string> listed(const OroPath& directory, int32_t mode, int32_t recurse = 0,
                                     const OroString& pattern = OroString()) {
    OroArray<OroPath> out;
    files_->listFiles(directory, out, pattern, recurse, mode);
    std::vector<std::u16string> names;
    for (const OroPath& name : out) names.emplace_back(name.wideText());
    return names;
  }

  tests::TempFolder folder_;
  IPtr<IFileUtil> files_ = new FileUtil;
};

// --- Questions

TEST_F(Files, AFileIsWhatIsThereAndIsNoDirectory) {
  folder_.write("file", "x");
  folder_.write(kName, "");
  makeFolder("d");
  EXPECT_TRUE(files_->isFile(path("file")));
  EXPECT_TRUE(files_->isFile(path(kName)));
  EXPECT_FALSE(files_->isFile(path("d")));
  EXPECT_FALSE(files_->isFile(path("absent")));
  EXPECT_FALSE(files_->isFile(path("file").joined("below")));
  EXPECT_FALSE(files_->isFile(OroPath()));
  EXPECT_FALSE(files_->isFile(OroPath("")));
}

TEST_F(Files, ADirectoryIsOneWithASeparatorAtItsEndToo) {
  folder_.write("file", "x");
  makeFolder(kName);
  EXPECT_TRUE(files_->isDirectory(base()));
  EXPECT_TRUE(files_->isDirectory(path(kName)));
  EXPECT_FALSE(files_->isDirectory(path("file")));
  EXPECT_FALSE(files_->isDirectory(path("absent")));
  EXPECT_FALSE(files_->isDirectory(OroPath()));
  for (const char16_t* separator : {u"\\", u"/"}) {
    const std::u16string ending = std::u16string(path(kName).wideText()) + separator;
    // A text that is not owned keeps its separator.
    EXPECT_TRUE(files_->isDirectory(OroPath(OroString(ending.c_str(), nullptr))));
    const std::u16string file = std::u16string(path("absent").wideText()) + separator;
    EXPECT_FALSE(files_->isDirectory(OroPath(OroString(file.c_str(), nullptr))));
  }
}

TEST_F(Files, TheRootOfAFileSystemIsADirectory) {
  const OroPath root = pathOf(folder_.path().root_path());  // "\", or "C:"
  EXPECT_TRUE(files_->isDirectory(root));
  EXPECT_FALSE(files_->isFile(root));
}

// --- Single files

TEST_F(Files, RemovesFilesAlone) {
  folder_.write(kName, "x");
  makeFolder("d");
  EXPECT_TRUE(files_->removeFile(path(kName)));
  EXPECT_FALSE(exists(kName));
  EXPECT_FALSE(files_->removeFile(path(kName)));
  EXPECT_FALSE(files_->removeFile(path("d")));
  EXPECT_TRUE(exists("d"));
  EXPECT_FALSE(files_->removeFile(OroPath()));
}

TEST_F(Files, RenamingGivesFalseOnSuccess) {
  folder_.write("a", "content");
  EXPECT_FALSE(files_->renameFile(path("a"), path(kName)));
  EXPECT_FALSE(exists("a"));
  EXPECT_EQ(folder_.read(kName), "content");
  EXPECT_TRUE(files_->renameFile(path("a"), path("b"))) << "is not there any more";
  EXPECT_TRUE(files_->renameFile(path(kName), path("absent").joined("b")));
  EXPECT_TRUE(files_->renameFile(OroPath(), path("b")));
}

TEST_F(Files, RenamingReplacesNothing) {
  folder_.write("a", "new");
  folder_.write("b", "old");
  makeFolder("d");
  EXPECT_TRUE(files_->renameFile(path("a"), path("b")));
  EXPECT_TRUE(files_->renameFile(path("a"), path("d")));
  EXPECT_EQ(folder_.read("a"), "new");
  EXPECT_EQ(folder_.read("b"), "old");
}

TEST_F(Files, RenamesDirectories) {
  folder_.write("d/file", "x");
  EXPECT_FALSE(files_->renameFile(path("d"), path("e")));
  EXPECT_EQ(folder_.read("e/file"), "x");
}

TEST_F(Files, TheDateOfAFileIsTheDayOfItsLastChange) {
  using namespace std::chrono;
  folder_.write(kName, "x");
  const sys_days day = 2024y / February / 29d;
  std::filesystem::last_write_time(folder_.file(kName), file_clock::from_sys(day + seconds(86399)));
  const IPtr<RecordedDate> date(new RecordedDate);
  ASSERT_TRUE(files_->fileDate(path(kName), *date));
  EXPECT_THAT(date->calls, ElementsAre("day 29", "month 2", "year 2024"));
}

TEST_F(Files, WhatIsNotThereHasNoDate) {
  const IPtr<RecordedDate> date(new RecordedDate);
  EXPECT_FALSE(files_->fileDate(path("absent"), *date));
  EXPECT_FALSE(files_->fileDate(OroPath(), *date));
  EXPECT_THAT(date->calls, IsEmpty());
}

// --- Lists

class FileLists : public Files {
 protected:
  FileLists() {
    folder_.write("a.txt", "");
    folder_.write("B.TXT", "");
    folder_.write("c.dat", "");
    folder_.write(std::filesystem::path("d.txt") / kName, "");
    folder_.write("d.txt/e/f.txt", "");
  }
};

TEST_F(FileLists, TheModeSaysWhatIsListed) {
  EXPECT_THAT(listed(base(), 1), UnorderedElementsAre(u"a.txt", u"B.TXT", u"c.dat"));
  EXPECT_THAT(listed(base(), 2), ElementsAre(u"d.txt"));
  EXPECT_THAT(listed(base(), 3), UnorderedElementsAre(u"a.txt", u"B.TXT", u"c.dat", u"d.txt"));
  EXPECT_THAT(listed(base(), 4), UnorderedElementsAre(u"a.txt", u"B.TXT", u"c.dat", u"d.txt"));
  for (const int32_t mode : {0, 5, 8, -1}) EXPECT_THAT(listed(base(), mode), IsEmpty()) << mode;
}

TEST_F(FileLists, SubdirectoriesAreSearchedForTheValueOneAlone) {
  const std::u16string deep = std::u16string(u"d.txt\\") + kName;
  EXPECT_THAT(listed(base(), 1, 1),
              UnorderedElementsAre(u"a.txt", u"B.TXT", u"c.dat", deep, u"d.txt\\e\\f.txt"));
  EXPECT_THAT(listed(base(), 2, 1), UnorderedElementsAre(u"d.txt", u"d.txt\\e"));
  for (const int32_t recurse : {0, 2, -1, 257}) {
    EXPECT_THAT(listed(base(), 2, recurse), ElementsAre(u"d.txt")) << recurse;
  }
}

TEST_F(FileLists, APatternLimitsNamesWhateverTheirCase) {
  EXPECT_THAT(listed(base(), 1, 0, OroString("*.TXT")), UnorderedElementsAre(u"a.txt", u"B.TXT"));
  EXPECT_THAT(listed(base(), 3, 0, OroString("[B-D].*")),
              UnorderedElementsAre(u"B.TXT", u"c.dat", u"d.txt"));
  EXPECT_THAT(listed(base(), 1, 0, OroString("nothing")), IsEmpty());
  EXPECT_THAT(listed(base(), 1, 0, OroString("")), testing::SizeIs(3)) << "an empty one does not";
}

// The name alone is matched, and a directory is searched whatever its name.
TEST_F(FileLists, APatternDoesNotKeepASearchOutOfADirectory) {
  EXPECT_THAT(listed(base(), 1, 1, OroString("f*")), ElementsAre(u"d.txt\\e\\f.txt"));
  EXPECT_THAT(listed(base(), 1, 1, OroString("d*f*")), IsEmpty());
}

TEST_F(FileLists, ResultsAreAppended) {
  OroArray<OroPath> out;
  out.add(OroPath("before"));
  files_->listFiles(base(), out, OroString(), 0, 2);
  files_->listFiles(path("absent"), out, OroString(), 1, 4);
  files_->listFiles(path("a.txt"), out, OroString(), 1, 4);
  files_->listFiles(OroPath(), out, OroString(), 1, 4);
  ASSERT_EQ(out.count(), 2);
  EXPECT_TRUE(out[1] == OroPath("before"));
  EXPECT_TRUE(out[2] == OroPath("d.txt"));
}

TEST_F(FileLists, TheDirectoryMayBeAnItemOfTheList) {
  OroArray<OroPath> out;
  out.add(base());
  files_->listFiles(out[1], out, OroString(), 1, 4);
  EXPECT_EQ(out.count(), 1 + 7);
}

TEST_F(FileLists, ResultsBeginBehindTheDirectoryHoweverItIsWritten) {
  const std::u16string ending = std::u16string(base().wideText()) + u"\\";
  EXPECT_THAT(listed(OroPath(OroString(ending.c_str(), nullptr)), 2, 1),
              UnorderedElementsAre(u"d.txt", u"d.txt\\e"));
  std::u16string slashes = ending;
  std::replace(slashes.begin(), slashes.end(), u'\\', u'/');
  OroPath written;
  static_cast<OroString&>(written) = OroString(slashes.c_str());  // not made canonical
  EXPECT_THAT(listed(written, 2, 1), UnorderedElementsAre(u"d.txt", u"d.txt\\e"));
}

TEST_F(FileLists, ALinkIsListedAsWhatItLeadsToAndNotSearched) {
  const auto back = link("", "d.txt/back");
  const auto away = link("d.txt/e", "link");
  EXPECT_THAT(listed(base(), 2, 1),
              UnorderedElementsAre(u"d.txt", u"d.txt\\e", u"d.txt\\back", u"link"));
  EXPECT_THAT(listed(path("link"), 1), ElementsAre(u"f.txt")) << "but where the search starts";
}

// --- Making directories

TEST_F(Files, MakesADirectoryWhoseParentsExist) {
  EXPECT_TRUE(files_->makeDirectories(path(kName)));
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file(kName)));
}

TEST_F(Files, MakesMissingParents) {
  makeFolder("a");
  const std::filesystem::path deep = std::filesystem::path("a/b") / kName / "d";
  EXPECT_TRUE(files_->makeDirectories(path(deep)));
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file(deep)));
}

TEST_F(Files, MakingWhatIsThereFails) {
  makeFolder("a");
  folder_.write("file", "x");
  EXPECT_FALSE(files_->makeDirectories(path("a")));
  EXPECT_FALSE(files_->makeDirectories(path("file")));
  EXPECT_FALSE(files_->makeDirectories(path("file").joined("below")));
  EXPECT_FALSE(files_->makeDirectories(path("file").joined("below").joined("deeper")));
  EXPECT_FALSE(files_->makeDirectories(OroPath()));
}

TEST_F(Files, MakesDirectoriesBelowTheWorkingDirectory) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  EXPECT_TRUE(files_->makeDirectories(OroPath("one\\two\\three")));
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file("one/two/three")));
}

TEST_F(Files, ParentsAreMadeOneForOneBehindDoubledSeparators) {
  OroPath doubled = path("a");
  doubled.append(OroString("\\b"));
  EXPECT_TRUE(files_->makeDirectories(doubled));
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file("a/b")));
}

// --- Removing directories

TEST_F(Files, RemovesAnEmptyDirectory) {
  makeFolder(kName);
  folder_.write("full/file", "x");
  folder_.write("file", "x");
  EXPECT_TRUE(files_->removeDirectory(path(kName), false));
  EXPECT_FALSE(exists(kName));
  EXPECT_FALSE(files_->removeDirectory(path("full"), false));
  EXPECT_TRUE(exists("full/file"));
  EXPECT_FALSE(files_->removeDirectory(path("file"), false));
  EXPECT_FALSE(files_->removeDirectory(path("file"), true));
  EXPECT_TRUE(exists("file"));
  EXPECT_FALSE(files_->removeDirectory(path("absent"), false));
  EXPECT_FALSE(files_->removeDirectory(path("absent"), true));
  EXPECT_FALSE(files_->removeDirectory(OroPath(), true));
}

TEST_F(Files, RemovesADirectoryWithAllThatIsInIt) {
  folder_.write("d/file", "x");
  folder_.write(std::filesystem::path("d") / kName / kName, "x");
  folder_.write("d/e/f/g/.hidden", "x");
  folder_.write("beside", "x");
  EXPECT_TRUE(files_->removeDirectory(path("d"), true));
  EXPECT_FALSE(exists("d"));
  EXPECT_TRUE(exists("beside"));
}

TEST_F(Files, WhatALinkLeadsToIsNeverRemoved) {
  folder_.write("outside/file", "x");
  makeFolder("outside/empty");
  folder_.write("d/e/file", "x");
  const auto full = link("outside", "d/e/full");
  const auto empty = link("outside/empty", "d/e/link");
  const bool removed = files_->removeDirectory(path("d"), true);
  EXPECT_TRUE(exists("outside/file"));
  EXPECT_TRUE(exists("outside/empty"));
  EXPECT_FALSE(exists("d/e/file")) << "the rest goes";
  EXPECT_EQ(removed, !exists("d"));
}

TEST_F(Files, OfALinkTheLinkAloneIsRemoved) {
  folder_.write("outside/file", "x");
  makeFolder("empty");
  const auto full = link("outside", "link");
  const auto empty = link("empty", "other");
  const bool removed = files_->removeDirectory(path("link"), true);
  EXPECT_EQ(removed, !full->isThere());
  const bool otherRemoved = files_->removeDirectory(path("other"), false);
  EXPECT_EQ(otherRemoved, !empty->isThere());
  EXPECT_TRUE(exists("outside/file"));
  EXPECT_TRUE(exists("empty"));
}

// --- The object

TEST_F(Files, AnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQuery<IFileUtil>(files_.get()), files_.get());
  EXPECT_NE(oroQueryClass<FileUtil>(files_.get()), nullptr);
}

TEST(FileSlots, StandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IFileUtil::isFile), 1);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::removeFile), 2);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::renameFile), 3);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::fileDate), 4);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::listFiles), 5);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::isDirectory), 6);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::makeDirectories), 7);
  EXPECT_EQ(tests::slotNumber(&IFileUtil::removeDirectory), 8);
  EXPECT_EQ(tests::slotNumber(&IFileDate::setDay), 1);
  EXPECT_EQ(tests::slotNumber(&IFileDate::setMonth), 2);
  EXPECT_EQ(tests::slotNumber(&IFileDate::setYear), 3);
}

}  // namespace

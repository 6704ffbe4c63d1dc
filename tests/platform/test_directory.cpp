#include "platform/directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "tests/blackbox/directorylink.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

using platform::DirectoryIterator;
using platform::EntryKind;
using Entries = std::map<std::u16string, EntryKind>;

class Directories : public testing::Test {
 protected:
  std::u16string text(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  static Entries entriesOf(const std::u16string& path) {
    Entries entries;
    DirectoryIterator entry(path);
    for (; entry.isPresent(); entry.next()) entries[entry.name()] = entry.kind();
    EXPECT_FALSE(entry.failed());
    return entries;
  }

  tests::TempFolder folder_;
};

TEST_F(Directories, EntriesHaveANameAndAKind) {
  folder_.write("d/file.txt", "x");
  folder_.write("d/below/deeper", "x");
  folder_.write(std::filesystem::path(u"d/caf\u00E9 \u03B1\u65E5"), "");
  folder_.write("d/.hidden", "");
  const Entries expected = {{u"file.txt", EntryKind::file},
                            {u"below", EntryKind::directory},
                            {u"caf\u00E9 \u03B1\u65E5", EntryKind::file},
                            {u".hidden", EntryKind::file}};
  EXPECT_EQ(entriesOf(text("d")), expected);
  EXPECT_EQ(entriesOf(text("d") + u"\\"), expected);
}

TEST_F(Directories, AnEmptyDirectoryHasNoEntry) {
  std::filesystem::create_directory(folder_.file("d"));
  EXPECT_EQ(entriesOf(text("d")), Entries());
}

TEST_F(Directories, ManyEntriesComeOnceEach) {
  std::filesystem::create_directory(folder_.file("d"));
  for (int i = 0; i < 500; ++i) folder_.write("d/" + std::to_string(i), "");
  EXPECT_EQ(entriesOf(text("d")).size(), 500u);
}

TEST_F(Directories, WhatIsNoDirectoryFails) {
  folder_.write("file", "x");
  for (const std::u16string& path : {text("absent"), text("file"), std::u16string()}) {
    DirectoryIterator entry(path);
    EXPECT_FALSE(entry.isPresent());
    EXPECT_TRUE(entry.failed());
  }
}

TEST_F(Directories, ALinkIsNoDirectoryThoughItLeadsToOne) {
  folder_.write("target/file", "x");
  std::filesystem::create_directory(folder_.file("d"));
  const tests::DirectoryLink link(folder_.file("target"), folder_.file("d/link"));
  ASSERT_TRUE(link.isThere());
  EXPECT_EQ(entriesOf(text("d")), (Entries{{u"link", EntryKind::link}}));
}

TEST_F(Directories, ATreeIsRemovedWithAllThatIsInIt) {
  folder_.write("d/file", "x");
  folder_.write(std::filesystem::path(u"d/caf\u00E9/\u03B1\u65E5"), "x");
  folder_.write("beside", "x");
  EXPECT_TRUE(platform::removeTree(text("d") + u"\\"));
  EXPECT_FALSE(platform::removeTree(text("d")));
  EXPECT_FALSE(platform::removeTree(text("beside")));
  EXPECT_FALSE(platform::removeTree(u""));
  EXPECT_TRUE(std::filesystem::exists(folder_.file("beside")));
}

}  // namespace

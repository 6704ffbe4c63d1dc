// Names that only Linux has: any bytes in a file name, and no drives.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/files.h"
#include "platform/sharedlibrary.h"
#include "platform/streams.h"
#include "platform/text.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

TEST(LinuxPaths, BackslashesGoOutAsSlashes) {
  EXPECT_EQ(platform::toSystemPath(u"\\usr\\share/x"), "/usr/share/x");
  EXPECT_EQ(platform::toSystemPath(u"a\\\u00E9"), "a/\xC3\xA9");
  EXPECT_EQ(platform::toSystemPath(u"\\"), "/");
}

TEST(LinuxPaths, DriveNamesNothing) {
  for (const auto path : {u"C:", u"c:\\x", u"Z:x"}) EXPECT_EQ(platform::toSystemPath(path), "");
  EXPECT_EQ(platform::toSystemPath(u"1:\\x"), "1:/x");
  EXPECT_EQ(platform::toSystemPath(u"\u00E9:"), "\xC3\xA9:");
  EXPECT_EQ(platform::toSystemPath(u"ab:\\x"), "ab:/x");
}

TEST(LinuxPaths, NothingIsEverMadeUnderADrive) {
  const tests::TempFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  for (const std::u16string path : {u"C:\\x", u"C:", u"c:x"}) {
    EXPECT_EQ(platform::makeDirectory(path), platform::MakeDirectory::failed);
    EXPECT_EQ(platform::openFile(path, "wb"), nullptr);
    EXPECT_FALSE(platform::pathExists(path));
    EXPECT_FALSE(platform::setCurrentDirectory(path));
    EXPECT_EQ(platform::fileSize(path), -1);
    platform::MappedFile file;
    EXPECT_FALSE(file.open(path));
    std::string error;
    EXPECT_EQ(platform::openLibrary(path, platform::LibrarySearch::plain, &error), nullptr);
    EXPECT_TRUE(error.starts_with("0x2:")) << error;
    folder.write("source", "x");
    EXPECT_FALSE(platform::renameFile(u"source", path));
    EXPECT_TRUE(platform::removeFile(u"source"));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  std::filesystem::current_path(before);
}

TEST(LinuxPaths, EveryFileNameSurvives) {
  const tests::TempFolder folder;
  const std::string names[] = {"caf\xE9", "\x80\xFF", "ok\xC3\xA9\xC3", "\xED\xA0\x80", "a b\n"};
  for (const std::string& name : names) {
    const std::u16string path = tests::textOf(folder.path()) + u"\\" + platform::fromSystem(name);
    std::FILE* const stream = platform::openFile(path, "wb");
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / name));
    EXPECT_TRUE(platform::isFile(tests::textOf(folder.path() / name)));
    EXPECT_TRUE(platform::removeFile(path));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(LinuxPaths, DevicesAreNoPlainFiles) {
  EXPECT_TRUE(platform::pathExists(u"\\dev\\null"));
  EXPECT_FALSE(platform::isFile(u"\\dev\\null"));
  EXPECT_EQ(platform::fileSize(u"\\dev\\zero"), -1);
  platform::MappedFile file;
  EXPECT_FALSE(file.open(u"\\dev\\zero"));
}

TEST(LinuxStreams, LineBufferWritesWithEachLine) {
  const tests::TempFolder folder;
  std::FILE* const stream = platform::openFile(tests::textOf(folder.file("log")), "w");
  ASSERT_NE(stream, nullptr);
  platform::setLineBuffered(stream);
  std::fputs("<log>\n", stream);
  EXPECT_EQ(folder.read("log"), "<log>\n");
  std::fputs("half a line", stream);
  EXPECT_EQ(folder.read("log"), "<log>\n");
  std::fclose(stream);
}

}  // namespace

#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "platform/streams.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

using platform::MakeDirectory;

// Latin, Greek, Han and a character outside the first plane.
constexpr const char16_t* strangeName = u"caf\u00E9 \u03B1\u65E5\U0001F600";

class Files : public testing::Test {
 protected:
  std::u16string text(const std::filesystem::path& name) const {
    return tests::textOf(folder_.file(name));
  }
  bool writeBytes(const std::u16string& path, std::string_view bytes) {
    std::FILE* const stream = platform::openFile(path, "wb");
    const bool written = platform::writeStream(stream, bytes);
    return stream != nullptr && std::fclose(stream) == 0 && written;
  }

  tests::TempFolder folder_;
};

TEST_F(Files, DirectoryIsMadeOnce) {
  EXPECT_EQ(platform::makeDirectory(text(strangeName)), MakeDirectory::created);
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file(strangeName)));
  EXPECT_EQ(platform::makeDirectory(text(strangeName)), MakeDirectory::exists);
}

TEST_F(Files, MakingADirectoryTellsExistingFromImpossible) {
  folder_.write("file", "");
  EXPECT_EQ(platform::makeDirectory(text("file")), MakeDirectory::exists);
  EXPECT_EQ(platform::makeDirectory(text("missing") + u"\\below"), MakeDirectory::failed);
  EXPECT_EQ(platform::makeDirectory(u""), MakeDirectory::failed);
  EXPECT_EQ(platform::makeDirectory(u"."), MakeDirectory::exists);
  EXPECT_EQ(platform::makeDirectory(u"\\"), MakeDirectory::exists);
}

TEST_F(Files, CurrentDirectoryIsReadInTheBackslashForm) {
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directory(folder_.file(strangeName));
  ASSERT_TRUE(platform::setCurrentDirectory(text(strangeName)));
  const std::u16string current = platform::currentDirectory(1000);
  const int length = static_cast<int>(current.size());
  EXPECT_EQ(platform::currentDirectory(length + 1), current);
  EXPECT_EQ(platform::currentDirectory(length), u"") << "no room for the terminator";
  EXPECT_EQ(platform::currentDirectory(0), u"");
  EXPECT_EQ(platform::currentDirectory(-5), u"");
  EXPECT_TRUE(current.ends_with(strangeName));
  EXPECT_EQ(current.find(u'/'), current.npos);
  EXPECT_FALSE(platform::setCurrentDirectory(text("missing")));
  EXPECT_EQ(platform::currentDirectory(1000), current);
  std::filesystem::current_path(before);
}

TEST_F(Files, KindsAreToldApart) {
  folder_.write("file", "x");
  const std::u16string file = text("file");
  const std::u16string folder = tests::textOf(folder_.path());
  const std::u16string missing = text("missing");
  EXPECT_TRUE(platform::pathExists(file) && platform::pathExists(folder));
  EXPECT_TRUE(platform::isFile(file));
  EXPECT_FALSE(platform::isDirectory(file));
  EXPECT_TRUE(platform::isDirectory(folder));
  EXPECT_FALSE(platform::isFile(folder));
  EXPECT_FALSE(platform::pathExists(missing) || platform::isFile(missing) ||
               platform::isDirectory(missing));
  EXPECT_FALSE(platform::pathExists(u""));
}

TEST_F(Files, PathWithAZeroInsideNamesNothing) {
  folder_.write("file", "x");
  std::u16string path = text("file");
  path += u'\0';
  path += u"tail";
  EXPECT_FALSE(platform::pathExists(path));
  EXPECT_EQ(platform::openFile(path, "rb"), nullptr);
  EXPECT_FALSE(platform::removeFile(path));
  EXPECT_TRUE(std::filesystem::exists(folder_.file("file")));
}

TEST_F(Files, StreamsOpenByAnyName) {
  ASSERT_TRUE(writeBytes(text(strangeName), "a\r\n\0b" + std::string(1, '\0')));
  EXPECT_TRUE(std::filesystem::exists(folder_.file(strangeName)));
  std::FILE* const stream = platform::openFile(text(strangeName), "rb");
  ASSERT_NE(stream, nullptr);
  char bytes[8] = "";
  EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, stream), 4u);
  EXPECT_STREQ(bytes, "a\r\n");
  std::fclose(stream);
}

TEST_F(Files, StreamsDoNotOpenOnDirectoriesOrNothing) {
  EXPECT_EQ(platform::openFile(tests::textOf(folder_.path()), "rb"), nullptr);
  EXPECT_EQ(platform::openFile(tests::textOf(folder_.path()), "wb"), nullptr);
  EXPECT_EQ(platform::openFile(text("missing"), "rb"), nullptr);
  EXPECT_EQ(platform::openFile(text("missing") + u"\\file", "wb"), nullptr);
  EXPECT_EQ(platform::openFile(u"", "rb"), nullptr);
}

TEST_F(Files, RemovalTakesFilesAndEmptyDirectories) {
  folder_.write("folder/file", "x");
  EXPECT_FALSE(platform::removeFile(text("folder")));
  EXPECT_FALSE(platform::removeDirectory(text("folder"))) << "not empty";
  EXPECT_FALSE(platform::removeDirectory(text("folder/file")));
  EXPECT_TRUE(platform::removeFile(text("folder/file")));
  EXPECT_FALSE(platform::removeFile(text("folder/file")));
  EXPECT_TRUE(platform::removeDirectory(text("folder")));
  EXPECT_FALSE(platform::pathExists(text("folder")));
}

TEST_F(Files, RenamingReplacesTheTarget) {
  folder_.write("new", "new bytes");
  folder_.write(strangeName, "old bytes");
  EXPECT_TRUE(platform::renameFile(text("new"), text(strangeName)));
  EXPECT_EQ(folder_.read(strangeName), "new bytes");
  EXPECT_FALSE(platform::pathExists(text("new")));
}

TEST_F(Files, FailedRenamingLeavesTheTarget) {
  folder_.write("old", "old bytes");
  EXPECT_FALSE(platform::renameFile(text("missing"), text("old")));
  EXPECT_EQ(folder_.read("old"), "old bytes");
  EXPECT_FALSE(platform::renameFile(text("old"), text("missing") + u"\\file"));
  EXPECT_EQ(folder_.read("old"), "old bytes");
}

TEST_F(Files, RenamingToAFreeNameReplacesNothing) {
  folder_.write("new", "new");
  folder_.write("old", "old");
  std::filesystem::create_directory(folder_.file("d"));
  EXPECT_FALSE(platform::renameToFreeName(text("new"), text("old")));
  EXPECT_FALSE(platform::renameToFreeName(text("new"), text("d")));
  EXPECT_FALSE(platform::renameToFreeName(text("missing"), text("free")));
  EXPECT_EQ(folder_.read("old"), "old");
  EXPECT_TRUE(platform::renameToFreeName(text("new"), text(strangeName)));
  EXPECT_EQ(folder_.read(strangeName), "new");
  EXPECT_TRUE(platform::renameToFreeName(text("d"), text("e")));
  EXPECT_TRUE(std::filesystem::is_directory(folder_.file("e")));
}

TEST_F(Files, TemporaryNamesLieBesideTheTargetAndDiffer) {
  const std::u16string folder = tests::textOf(folder_.path()) + u"\\";
  std::set<std::u16string> names;
  for (int i = 0; i < 500; ++i) {
    const std::u16string name = platform::temporaryNameBeside(folder + u"target");
    EXPECT_TRUE(name.starts_with(folder));
    EXPECT_EQ(name.find(u'\\', folder.size()), name.npos);
    EXPECT_FALSE(platform::pathExists(name));
    names.insert(name);
  }
  EXPECT_EQ(names.size(), 500u);
}

TEST_F(Files, TemporaryNameFitsWhereTheTargetFits) {
  const std::u16string target = tests::textOf(folder_.path()) + u"\\" + std::u16string(200, u'x');
  const std::u16string name = platform::temporaryNameBeside(target);
  EXPECT_LT(name.size(), target.size());
  EXPECT_TRUE(writeBytes(name, "x"));
  EXPECT_EQ(platform::temporaryNameBeside(u"bare").find(u'\\'), std::u16string::npos);
  EXPECT_TRUE(platform::temporaryNameBeside(u"a/b").starts_with(u"a/~"));
}

TEST_F(Files, SizeIsInBytes) {
  folder_.write("file", std::string(70000, 'x'));
  folder_.write("empty", "");
  EXPECT_EQ(platform::fileSize(text("file")), 70000);
  EXPECT_EQ(platform::fileSize(text("empty")), 0);
  EXPECT_EQ(platform::fileSize(text("missing")), -1);
  EXPECT_EQ(platform::fileSize(tests::textOf(folder_.path())), -1);
}

TEST_F(Files, FlushToDiskWritesWhatTheStreamHolds) {
  std::FILE* const stream = platform::openFile(text("file"), "wb");
  ASSERT_NE(stream, nullptr);
  std::fputs("pending", stream);
  EXPECT_TRUE(platform::flushToDisk(stream));
  EXPECT_EQ(folder_.read("file"), "pending");
  std::fclose(stream);
}

TEST_F(Files, MappingShowsTheBytes) {
  std::string bytes(100'001, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7);
  folder_.write(strangeName, bytes);
  platform::MappedFile file;
  ASSERT_TRUE(file.open(text(strangeName)));
  EXPECT_TRUE(file.isOpen());
  EXPECT_EQ(file.size(), bytes.size());
  EXPECT_TRUE(file.bytes() == bytes);
  file.close();
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(file.bytes(), "");
  EXPECT_TRUE(platform::removeFile(text(strangeName))) << "a closed mapping holds no file";
}

TEST_F(Files, MappingOfAnEmptyFileIsOpenAndEmpty) {
  folder_.write("empty", "");
  platform::MappedFile file;
  EXPECT_TRUE(file.open(text("empty")));
  EXPECT_EQ(file.bytes(), "");
  EXPECT_NE(file.data(), nullptr);
}

TEST_F(Files, MappingAnotherFileLetsTheFirstGo) {
  folder_.write("first", "first");
  folder_.write("second", "second");
  platform::MappedFile file;
  ASSERT_TRUE(file.open(text("first")));
  ASSERT_TRUE(file.open(text("second")));
  EXPECT_EQ(file.bytes(), "second");
  EXPECT_FALSE(file.open(text("missing")));
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(file.size(), 0u);
}

TEST_F(Files, OnlyPlainFilesAreMapped) {
  platform::MappedFile file;
  EXPECT_FALSE(file.open(text("missing")));
  EXPECT_FALSE(file.open(tests::textOf(folder_.path())));
  EXPECT_FALSE(file.open(u""));
}

}  // namespace

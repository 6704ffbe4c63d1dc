#include "platform/descriptor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/hooks.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

using platform::SeekFrom;

class Descriptors : public testing::Test {
 protected:
  ~Descriptors() override {
    if (descriptor_ >= 0) platform::closeDescriptor(descriptor_);
  }
  int open(const std::filesystem::path& name, unsigned mode) {
    if (descriptor_ >= 0) platform::closeDescriptor(descriptor_);
    descriptor_ = platform::openDescriptor(tests::textOf(folder_.file(name)), mode);
    return descriptor_;
  }
  std::string read(size_t bytes) {
    std::string text(bytes, '.');
    const int64_t got = platform::readDescriptor(descriptor_, text.data(), bytes);
    text.resize(got < 0 ? 0 : static_cast<size_t>(got));
    return text;
  }
  int64_t write(const std::string& text) {
    return platform::writeDescriptor(descriptor_, text.data(), text.size());
  }

  tests::TempFolder folder_;
  int descriptor_ = -1;
};

TEST_F(Descriptors, ReadingStopsAtTheEnd) {
  folder_.write("a", "abc");
  ASSERT_GE(open("a", platform::openRead), 0);
  EXPECT_EQ(read(2), "ab");
  EXPECT_EQ(read(2), "c");
  EXPECT_EQ(read(2), "");
  EXPECT_LT(write("x"), 0);
}

TEST_F(Descriptors, CreatingAndTruncatingAreAskedFor) {
  EXPECT_LT(open("a", platform::openWrite), 0);
  ASSERT_GE(open("a", platform::openWrite | platform::openCreate), 0);
  EXPECT_EQ(write("abc"), 3);
  EXPECT_EQ(read(1), "") << "it only writes";
  ASSERT_GE(open("a", platform::openWrite | platform::openCreate), 0);
  EXPECT_EQ(write("X"), 1);
  EXPECT_EQ(folder_.read("a"), "Xbc");
  ASSERT_GE(open("a", platform::openRead | platform::openWrite | platform::openTruncate), 0);
  EXPECT_EQ(folder_.read("a"), "");
  EXPECT_EQ(write("abc"), 3);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, 1, SeekFrom::start), 1);
  EXPECT_EQ(read(9), "bc");
}

TEST_F(Descriptors, AppendingIgnoresThePosition) {
  folder_.write("a", "abc");
  ASSERT_GE(open("a", platform::openWrite | platform::openAppend), 0);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, 0, SeekFrom::start), 0);
  EXPECT_EQ(write("d"), 1);
  EXPECT_EQ(folder_.read("a"), "abcd");
}

TEST_F(Descriptors, CutsAFile) {
  folder_.write("a", "abcdef");
  ASSERT_GE(open("a", platform::openWrite | platform::openAppend), 0);
  EXPECT_TRUE(platform::truncateDescriptor(descriptor_, 2));
  EXPECT_EQ(write("X"), 1);
  EXPECT_EQ(folder_.read("a"), "abX");
  ASSERT_GE(open("a", platform::openRead), 0);
  EXPECT_FALSE(platform::truncateDescriptor(descriptor_, 0));
}

TEST_F(Descriptors, PositionsAreOf64BitsAndCountFromThreePlaces) {
  folder_.write("a", "abc");
  ASSERT_GE(open("a", platform::openRead), 0);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, -1, SeekFrom::end), 2);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, -1, SeekFrom::current), 1);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, 0x123456789A, SeekFrom::start), 0x123456789A);
  EXPECT_EQ(platform::seekDescriptor(descriptor_, -1, SeekFrom::start), -1);
}

TEST_F(Descriptors, DirectoriesAndAbsentFilesDoNotOpen) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_EQ(open("folder", platform::openRead), -1);
  EXPECT_EQ(open("absent", platform::openRead), -1);
  EXPECT_EQ(platform::openDescriptor(u"", platform::openRead), -1);
}

TEST_F(Descriptors, NamesOfAnyScriptOpen) {
  const std::filesystem::path name(u"caf\u00E9 \u03B1\u65E5");
  folder_.write(name, "x");
  ASSERT_GE(open(name, platform::openRead), 0);
  EXPECT_EQ(read(9), "x");
}

TEST_F(Descriptors, ClosingTwiceFails) {
  folder_.write("a", "");
  const int descriptor = open("a", platform::openRead);
  descriptor_ = -1;
  EXPECT_TRUE(platform::closeDescriptor(descriptor));
  char byte = 0;
  EXPECT_LT(platform::readDescriptor(descriptor, &byte, 1), 0);
  EXPECT_FALSE(platform::closeDescriptor(descriptor));
}

TEST_F(Descriptors, AFullDiskTakesAPartOrNothing) {
  ASSERT_GE(open("a", platform::openWrite | platform::openCreate), 0);
  platform::HookGuard<size_t(size_t)> guard(platform::diskRoomHook,
                                            [](size_t bytes) { return bytes / 2; });
  EXPECT_EQ(write("abcd"), 2);
  EXPECT_LT(write("x"), 0);
  EXPECT_EQ(write(""), 0);
  EXPECT_EQ(folder_.read("a"), "ab");
}

}  // namespace

#include "platform/filestream.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "platform/hooks.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

using platform::SeekFrom;

class FileStreams : public testing::Test {
 protected:
  ~FileStreams() override {
    if (stream_ != nullptr) std::fclose(stream_);
  }
  std::FILE* open(const char* mode) {
    stream_ = platform::openFile(tests::textOf(folder_.file("a")), mode);
    return stream_;
  }

  tests::TempFolder folder_;
  std::FILE* stream_ = nullptr;
};

TEST_F(FileStreams, PositionsAreOf64BitsAndCountFromThreePlaces) {
  folder_.write("a", "abc");
  ASSERT_NE(open("rb"), nullptr);
  EXPECT_TRUE(platform::seekStream(stream_, -1, SeekFrom::end));
  EXPECT_EQ(platform::tellStream(stream_), 2);
  EXPECT_TRUE(platform::seekStream(stream_, -1, SeekFrom::current));
  EXPECT_EQ(std::fgetc(stream_), 'b');
  EXPECT_TRUE(platform::seekStream(stream_, 0x123456789A, SeekFrom::start));
  EXPECT_EQ(platform::tellStream(stream_), 0x123456789A);
  EXPECT_FALSE(platform::seekStream(stream_, -1, SeekFrom::start));
}

TEST_F(FileStreams, CommittedDataIsInTheFile) {
  ASSERT_NE(open("w+bc"), nullptr);
  EXPECT_EQ(platform::writeBlock(stream_, "abc", 3), 3u);
  EXPECT_TRUE(platform::flushCommitting(stream_));
  EXPECT_EQ(folder_.read("a"), "abc");
}

TEST_F(FileStreams, WhatCannotBeWrittenIsNotCommitted) {
  folder_.write("a", "abc");
  ASSERT_NE(open("rb"), nullptr);
  EXPECT_EQ(platform::writeBlock(stream_, "x", 1), 0u);
  EXPECT_EQ(folder_.read("a"), "abc");
}

TEST_F(FileStreams, AFullDiskTakesAPart) {
  ASSERT_NE(open("wb"), nullptr);
  platform::HookGuard<size_t(size_t)> guard(platform::diskRoomHook,
                                            [](size_t bytes) { return bytes / 2; });
  EXPECT_EQ(platform::writeBlock(stream_, "abcd", 4), 2u);
  EXPECT_EQ(platform::writeBlock(stream_, "x", 1), 0u);
  EXPECT_EQ(std::fflush(stream_), 0);
  EXPECT_EQ(folder_.read("a"), "ab");
}

}  // namespace

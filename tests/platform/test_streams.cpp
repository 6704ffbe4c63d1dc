#include "platform/streams.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"

namespace {

class Streams : public testing::Test {
 protected:
  std::FILE* open(const char* mode) {
    stream_ = platform::openFile(tests::textOf(folder_.file("log")), mode);
    return stream_;
  }
  ~Streams() override {
    if (stream_ != nullptr) std::fclose(stream_);
  }

  tests::TempFolder folder_;
  std::FILE* stream_ = nullptr;
};

TEST_F(Streams, BytesAreSeenAtOnce) {
  ASSERT_NE(open("wb"), nullptr);
  EXPECT_TRUE(platform::writeStream(stream_, "<log>\n"));
  EXPECT_EQ(folder_.read("log"), "<log>\n");
  EXPECT_TRUE(platform::writeStream(stream_, "x"));
  EXPECT_EQ(folder_.read("log"), "<log>\nx");
}

TEST_F(Streams, BytesAreNoFormatAndMayHoldZeros) {
  ASSERT_NE(open("wb"), nullptr);
  const std::string bytes("100%s %n\0\xC3\xA9", 11);
  EXPECT_TRUE(platform::writeStream(stream_, bytes));
  EXPECT_EQ(folder_.read("log"), bytes);
}

TEST_F(Streams, LineBufferTakesLinesOfAnyLength) {
  ASSERT_NE(open("wb"), nullptr);
  platform::setLineBuffered(stream_);
  const std::string longLine = std::string(1000, 'x') + "\n";
  EXPECT_TRUE(platform::writeStream(stream_, longLine));
  EXPECT_TRUE(platform::writeStream(stream_, "short\n"));
  EXPECT_EQ(folder_.read("log"), longLine + "short\n");
}

TEST_F(Streams, StreamThatTakesNothingGivesFalse) {
  folder_.write("log", "");
  ASSERT_NE(open("rb"), nullptr);
  EXPECT_FALSE(platform::writeStream(stream_, "x"));
  EXPECT_FALSE(platform::writeStream(nullptr, "x"));
}

TEST(StandardStreams, TakeBytesAsTheyAre) {
  testing::internal::CaptureStdout();
  EXPECT_TRUE(platform::writeStandardOutput("out %d \xE2\x82\xAC\n"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "out %d \xE2\x82\xAC\n");
  testing::internal::CaptureStderr();
  EXPECT_TRUE(platform::writeStandardError("err %d\n"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err %d\n");
}

}  // namespace

// Binary files on pipes, which have no positions, and on streams that fail at reading, which not
// every C library notes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "orobasictypes/binio.h"
#include "platform/files.h"
#include "platform/posix/posixgate.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/tempfolder.h"

namespace {

class BinPipes : public testing::Test {
 protected:
  BinPipes() {
    int ends[2] = {-1, -1};
    EXPECT_EQ(pipe(ends), 0);
    // What waits for more fails here and does not wait for ever.
    for (const int end : ends) fcntl(end, F_SETFL, O_NONBLOCK);
    far_[0] = ends[0];
    far_[1] = ends[1];
  }
  ~BinPipes() override {
    for (const int end : far_) {
      if (end >= 0) close(end);
    }
  }
  // The end becomes the stream's.
  std::FILE* stream(int end) {
    std::FILE* const made = fdopen(std::exchange(far_[end], -1), end == 0 ? "rb" : "wb");
    std::setvbuf(made, nullptr, _IONBF, 0);
    return made;
  }
  void send(const std::string& bytes) {
    ASSERT_EQ(write(far_[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  std::string received() {
    std::string bytes(1000, '\0');
    bytes.resize(
        static_cast<size_t>(std::max<ssize_t>(read(far_[0], bytes.data(), bytes.size()), 0)));
    return bytes;
  }

 private:
  int far_[2] = {-1, -1};  // the reading and the writing one, -1 when it is a stream's
};

// What came first is there before the rest is.
TEST_F(BinPipes, AnInputTakesNoMoreThanItIsAskedFor) {
  BinInputFile input(stream(0));
  EXPECT_TRUE(input.IsGood());
  EXPECT_EQ(input.GetSize(), 0);
  EXPECT_EQ(input.Tell(), -1);
  send(std::string("\0\0\0\1\0\2", 6));
  int32_t first = 0;
  int16_t second = 0;
  EXPECT_TRUE(input.Read(&first, 1)) << "without waiting for what nobody has sent yet";
  EXPECT_TRUE(input.Read(&second, 1));
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  send("\7");
  EXPECT_TRUE(input.ReadBytes(&first, 1));
  EXPECT_TRUE(input.IsGood());
  EXPECT_TRUE(input.Close());
}

TEST_F(BinPipes, AnInputCannotSeekOrPeek) {
  BinInputFile input(stream(0));
  send("1234567890");
  EXPECT_FALSE(input.Seek(0, true));
  EXPECT_FALSE(input.Seek(0, false));
  EXPECT_EQ(input.PeekInt32(), -1);
  char rest[6];
  EXPECT_TRUE(input.ReadBytes(rest, 6)) << "what was to be peeked at is gone";
  EXPECT_EQ(std::string(rest, 6), "567890");
}

TEST_F(BinPipes, AnOutputHandsOverAtAFlushAndAtTheClose) {
  BinOutputFile output(stream(1));
  EXPECT_EQ(output.Tell(), -1);
  ASSERT_TRUE(output.WriteBytes("abc", 3));
  EXPECT_EQ(received(), "");
  EXPECT_TRUE(output.Flush()) << "a pipe has no disk to wait for";
  EXPECT_EQ(received(), "abc");
  ASSERT_TRUE(output.WriteBytes("de", 2));
  EXPECT_FALSE(output.SeekFlushed(0, true));
  EXPECT_FALSE(output.Seek(0, false));
  EXPECT_EQ(output.Tell(), -1);
  EXPECT_TRUE(output.IsGood());
  EXPECT_TRUE(output.FlushAndClose());
  EXPECT_EQ(received(), "de");
}

class BinReadErrors : public testing::Test {
 protected:
  std::FILE* writing() const {
    return platform::openFile(tests::textOf(folder_.file("a")).wideText(), "wb");
  }
  tests::TempFolder folder_;
  char byte_ = 'x';
};

TEST_F(BinReadErrors, MakeAnInputBad) {
  BinInputFile input(writing());
  EXPECT_TRUE(input.IsGood());
  EXPECT_FALSE(input.ReadBytes(&byte_, 1));
  EXPECT_FALSE(input.IsGood());
  EXPECT_TRUE(input.Seek(0, true));
  EXPECT_FALSE(input.IsGood()) << "once bad, always bad";
}

TEST_F(BinReadErrors, MakeAnOutputBad) {
  BinOutputFile output(writing());
  ASSERT_TRUE(output.WriteBytes("abc", 3));
  ASSERT_TRUE(output.SeekFlushed(0, true));
  EXPECT_TRUE(output.IsGood());
  EXPECT_EQ(output.ReadBack(&byte_, 1), 0);
  EXPECT_EQ(byte_, 'x');
  EXPECT_FALSE(output.IsGood());
}

}  // namespace

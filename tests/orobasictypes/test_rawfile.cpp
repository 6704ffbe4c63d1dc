#include "orobasictypes/rawfile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "platform/files.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/tempfolder.h"

namespace {

class RawFile : public testing::Test {
 protected:
  ~RawFile() override { close(); }
  std::FILE* reading(const std::string& bytes) {
    folder_.write("a", bytes);
    return open("rb");
  }
  std::FILE* writing() { return open("wb"); }
  std::string written() {
    close();
    return folder_.read("a");
  }

  tests::TempFolder folder_;

 private:
  std::FILE* open(const char* mode) {
    close();
    stream_ = platform::openFile(tests::textOf(folder_.file("a")).wideText(), mode);
    return stream_;
  }
  void close() {
    if (stream_ != nullptr) std::fclose(stream_);
    stream_ = nullptr;
  }
  std::FILE* stream_ = nullptr;
};

TEST_F(RawFile, ReadsValuesInBothByteOrders) {
  const std::string bytes = "\x01\x02\x03\x04\x05\x06\x07\x08";
  uint16_t two = 0;
  uint32_t four = 0;
  uint64_t eight = 0;
  EXPECT_TRUE(oroRead(reading(bytes), &two));
  EXPECT_TRUE(oroRead(reading(bytes), &four));
  EXPECT_TRUE(oroRead(reading(bytes), &eight));
  EXPECT_EQ(two, 0x0201);
  EXPECT_EQ(four, 0x04030201u);
  EXPECT_EQ(eight, 0x0807060504030201u);
  EXPECT_TRUE(oroReadSwapped(reading(bytes), &two));
  EXPECT_TRUE(oroReadSwapped(reading(bytes), &four));
  EXPECT_TRUE(oroReadSwapped(reading(bytes), &eight));
  EXPECT_EQ(two, 0x0102);
  EXPECT_EQ(four, 0x01020304u);
  EXPECT_EQ(eight, 0x0102030405060708u);
}

TEST_F(RawFile, ReadsFloatsAndSignedValues) {
  double number = 0;
  int16_t negative = 0;
  std::FILE* stream = reading(std::string("\xFE\xFF\0\0\0\0\0\0\xF8\x3F", 10));
  EXPECT_TRUE(oroRead(stream, &negative));
  EXPECT_TRUE(oroRead(stream, &number));
  EXPECT_EQ(negative, -2);
  EXPECT_EQ(number, 1.5);
  float single = 0;
  EXPECT_TRUE(oroReadSwapped(reading(std::string("\x3F\xC0\0\0", 4)), &single));
  EXPECT_EQ(single, 1.5f);
}

TEST_F(RawFile, AValueThatDoesNotComeWholeKeepsAllItsBytes) {
  for (const bool swapped : {false, true}) {
    uint64_t value = 0x1122334455667788;
    std::FILE* const stream = reading("1234567");
    EXPECT_FALSE(swapped ? oroReadSwapped(stream, &value) : oroRead(stream, &value));
    EXPECT_EQ(value, 0x1122334455667788u);
  }
}

TEST_F(RawFile, AnArrayStopsAtTheFirstValueThatFails) {
  std::array<uint32_t, 4> values = {7, 7, 7, 7};
  EXPECT_FALSE(oroRead(reading(std::string("\1\0\0\0\2\0\0\0\3\0", 10)), values.data(), 4));
  EXPECT_EQ(values, (std::array<uint32_t, 4>{1, 2, 7, 7}));
  values.fill(7);
  EXPECT_FALSE(oroReadSwapped(reading(std::string("\0\0\0\1\0\0\0\2\0\0", 10)), values.data(), 4));
  EXPECT_EQ(values, (std::array<uint32_t, 4>{1, 2, 7, 7}));
}

TEST_F(RawFile, LongArraysGoThroughWhole) {
  std::vector<uint16_t> values(3000);
  for (size_t i = 0; i < values.size(); ++i) values[i] = static_cast<uint16_t>(i * 7919);
  ASSERT_TRUE(oroWriteSwapped(writing(), values.data(), 3000));
  const std::string bytes = written();
  ASSERT_EQ(bytes.size(), 6000u);
  EXPECT_EQ(bytes.substr(2, 2), "\x1E\xEF");
  std::vector<uint16_t> read(3000);
  EXPECT_TRUE(oroReadSwapped(reading(bytes), read.data(), 3000));
  EXPECT_EQ(read, values);
}

TEST_F(RawFile, ACountOfNothingIsTrueAndTouchesNothing) {
  uint32_t value = 7;
  EXPECT_TRUE(oroRead(reading(""), &value, 0));
  EXPECT_TRUE(oroRead(reading(""), &value, -1));
  std::FILE* const stream = writing();
  EXPECT_TRUE(oroWrite(stream, &value, 0));
  EXPECT_TRUE(oroWriteSwapped(stream, &value, -1));
  EXPECT_TRUE(oroWriteSized(stream, &value, 0, 3));
  EXPECT_EQ(written(), "");
  EXPECT_EQ(value, 7u);
}

TEST_F(RawFile, WritesFixedWidthsInBothByteOrders) {
  std::FILE* const stream = writing();
  const uint16_t two = 0x0102;
  const int32_t four = 0x03040506;
  const uint64_t eight = 0x0708090A0B0C0D0E;
  EXPECT_TRUE(oroWrite(stream, &two) && oroWrite(stream, &four) && oroWrite(stream, &eight));
  EXPECT_TRUE(oroWriteSwapped(stream, &two) && oroWriteSwapped(stream, &four) &&
              oroWriteSwapped(stream, &eight));
  EXPECT_EQ(written(),
            "\x02\x01\x06\x05\x04\x03\x0E\x0D\x0C\x0B\x0A\x09\x08\x07"
            "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E");
}

TEST_F(RawFile, WritesTheLowBytesByASize) {
  const uint64_t value = 0x0102030405060708;
  const std::string low = "\x08\x07\x06\x05\x04\x03\x02\x01";
  for (int width = 1; width <= 8; ++width) {
    EXPECT_TRUE(oroWriteSized(writing(), &value, width));
    EXPECT_EQ(written(), low.substr(0, static_cast<size_t>(width)));
    EXPECT_TRUE(oroWriteSizedSwapped(writing(), &value, width));
    const std::string bytes = written();
    EXPECT_EQ(std::string(bytes.rbegin(), bytes.rend()), low.substr(0, static_cast<size_t>(width)));
  }
}

TEST_F(RawFile, ArraysByASizeAreWrittenElementByElement) {
  const std::array<int32_t, 2> values = {0x010203, -2};
  EXPECT_TRUE(oroWriteSized(writing(), values.data(), 2, 3));
  EXPECT_EQ(written(), "\x03\x02\x01\xFE\xFF\xFF");
  EXPECT_TRUE(oroWriteSizedSwapped(writing(), values.data(), 2, 3));
  EXPECT_EQ(written(), "\x01\x02\x03\xFF\xFF\xFE");
}

TEST_F(RawFile, ASizeAboveTheTypeFillsUpWithTheSign) {
  const int16_t negative = -2;
  const uint16_t positive = 0xFFFE;
  EXPECT_TRUE(oroWriteSizedSwapped(writing(), &negative, 4));
  EXPECT_EQ(written(), "\xFF\xFF\xFF\xFE");
  EXPECT_TRUE(oroWriteSizedSwapped(writing(), &positive, 4));
  EXPECT_EQ(written(), std::string("\0\0\xFF\xFE", 4));
}

TEST_F(RawFile, SizesOutsideOneToEightAreRefused) {
  const uint64_t value = 1;
  std::FILE* const stream = writing();
  for (const int width : {0, 9, -1, std::numeric_limits<int>::max()}) {
    EXPECT_FALSE(oroWriteSized(stream, &value, width));
    EXPECT_FALSE(oroWriteSizedSwapped(stream, &value, 1, width));
  }
  EXPECT_EQ(written(), "");
}

TEST_F(RawFile, AStreamThatDoesNotTakeOrGiveGivesFalse) {
  uint32_t value = 7;
  EXPECT_FALSE(oroRead(writing(), &value));
  EXPECT_FALSE(oroWrite(reading("x"), &value));
  EXPECT_FALSE(oroWriteSized(reading("x"), &value, 2));
  EXPECT_FALSE(oroRead(static_cast<std::FILE*>(nullptr), &value));
  EXPECT_FALSE(oroWriteSwapped(static_cast<std::FILE*>(nullptr), &value));
  EXPECT_FALSE(oroWriteSized(static_cast<std::FILE*>(nullptr), &value, 2));
  EXPECT_EQ(value, 7u);
}

}  // namespace

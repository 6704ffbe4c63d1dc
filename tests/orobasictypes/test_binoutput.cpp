#include "orobasictypes/binoutput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <limits>
#include <string>
#include <vector>

#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::FlipScrambler;
using tests::MemoryOutput;
using tests::ScramblerGuard;

template <class T>
std::string bytesOf(T value, int width = sizeof(T)) {
  MemoryOutput output;
  EXPECT_TRUE(output.Write(&value, width, 1));
  EXPECT_TRUE(output.FlushBuffer());
  return output.bytes;
}

// Writes so many values, some at a time, and tells the sizes in which they went out.
template <class T>
std::vector<int64_t> flushesOf(int64_t count, int64_t perCall) {
  MemoryOutput output;
  const std::vector<T> values(static_cast<size_t>(perCall), T(3));
  for (int64_t i = 0; i < count; i += perCall) EXPECT_TRUE(output.Write(values.data(), perCall));
  return output.written;
}

TEST(BinOutput, OperationsOfTheMediumStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&BinOutput::Flush), 3) << "behind the two places of the destructor";
  EXPECT_EQ(tests::slotNumber(&BinOutput::Reopen), 4);
  EXPECT_EQ(tests::slotNumber(&BinOutput::WriteRaw), 5);
  EXPECT_EQ(tests::slotNumber(&BinOutput::ReadRaw), 6);
  EXPECT_EQ(tests::slotNumber(&BinOutput::Tell), 7);
  EXPECT_EQ(tests::slotNumber(&BinOutput::Seek), 8);
  EXPECT_EQ(tests::slotNumber(&BinOutput::IsGood), 9);
  EXPECT_EQ(tests::slotNumber(&BinOutput::Close), 10);
}

TEST(BinOutput, TheMostSignificantByteGoesFirst) {
  EXPECT_EQ(bytesOf<uint8_t>(0x81), "\x81");
  EXPECT_EQ(bytesOf<int8_t>(-2), "\xFE");
  EXPECT_EQ(bytesOf<uint16_t>(0x8102), "\x81\x02");
  EXPECT_EQ(bytesOf<int16_t>(-2), "\xFF\xFE");
  EXPECT_EQ(bytesOf<uint32_t>(0x81020304), "\x81\x02\x03\x04");
  EXPECT_EQ(bytesOf<int32_t>(-2), "\xFF\xFF\xFF\xFE");
  EXPECT_EQ(bytesOf<uint64_t>(0x8102030405060708), "\x81\x02\x03\x04\x05\x06\x07\x08");
  EXPECT_EQ(bytesOf<float>(-2.5f), std::string("\xC0\x20\0\0", 4));
  EXPECT_EQ(bytesOf<double>(2.5), std::string("\x40\x04\0\0\0\0\0\0", 8));
}

TEST(BinOutput, NarrowFieldsTakeTheLowBytes) {
  EXPECT_EQ(bytesOf<uint32_t>(0x81020304, 3), "\x02\x03\x04");
  EXPECT_EQ(bytesOf<int32_t>(-2, 1), "\xFE");
  EXPECT_EQ(bytesOf<uint64_t>(0x8102030405060708, 5), "\x04\x05\x06\x07\x08");
  EXPECT_EQ(bytesOf<uint64_t>(0x8102030405060708, 7), "\x02\x03\x04\x05\x06\x07\x08");
}

TEST(BinOutput, WideFieldsAreFilledWithTheSignOrWithZeros) {
  EXPECT_EQ(bytesOf<int16_t>(-2, 5), "\xFF\xFF\xFF\xFF\xFE");
  EXPECT_EQ(bytesOf<int8_t>(3, 6), std::string("\0\0\0\0\0\3", 6));
  EXPECT_EQ(bytesOf<uint16_t>(0xFFFE, 4), std::string("\0\0\xFF\xFE", 4));
  EXPECT_EQ(bytesOf<int32_t>(std::numeric_limits<int32_t>::min(), 8),
            std::string("\xFF\xFF\xFF\xFF\x80\0\0\0", 8));
}

TEST(BinOutput, FloatsOfTheOtherWidthAreConverted) {
  EXPECT_EQ(bytesOf<double>(-2.5, 4), std::string("\xC0\x20\0\0", 4));
  EXPECT_EQ(bytesOf<float>(2.5f, 8), std::string("\x40\x04\0\0\0\0\0\0", 8));
  EXPECT_EQ(bytesOf<double>(1e300, 4), std::string("\x7F\x80\0\0", 4));
  EXPECT_EQ(bytesOf<double>(-1e300, 4), std::string("\xFF\x80\0\0", 4));
}

TEST(BinOutput, FloatsOfTheirOwnWidthKeepTheirBits) {
  EXPECT_EQ(bytesOf(-0.0), std::string("\x80\0\0\0\0\0\0\0", 8));
  EXPECT_EQ(bytesOf(std::bit_cast<double>(0x7FF4010203040506u)),
            "\x7F\xF4\x01\x02\x03\x04\x05\x06");
}

TEST(BinOutput, OtherWidthsAreRefusedAndNothingIsTouched) {
  MemoryOutput output;
  const int32_t integer = 7;
  const float number = 7;
  for (const int width : {0, -1, 9}) EXPECT_FALSE(output.Write(&integer, width, 1));
  for (const int width : {0, 1, 2, 3, 5, 6, 7, 9}) EXPECT_FALSE(output.Write(&number, width, 1));
  EXPECT_EQ(output.CurrentPosition(), 0);
}

// The buffer of 1024 bytes is flushed before storing when fewer than 256 are free.
TEST(BinOutput, SmallWritesGoOutInPiecesOfWhatFitsTheirSize) {
  EXPECT_THAT(flushesOf<uint8_t>(5000, 1), Each(769));
  EXPECT_THAT(flushesOf<int16_t>(5000, 1), Each(770));
  EXPECT_THAT(flushesOf<int32_t>(5000, 1), Each(772));
  EXPECT_THAT(flushesOf<double>(5000, 1), Each(776));
  EXPECT_THAT(flushesOf<double>(5000, 3), Each(792));
  EXPECT_THAT(flushesOf<int32_t>(5000, 1), testing::SizeIs(25));
}

TEST(BinOutput, Pending768DoNotFlushAnd769Do) {
  const std::array<uint8_t, 1024> bytes = {};
  MemoryOutput output;
  ASSERT_TRUE(output.Write(bytes.data(), 768));
  ASSERT_TRUE(output.Write(bytes.data(), 1));
  EXPECT_THAT(output.written, IsEmpty());
  ASSERT_TRUE(output.Write(bytes.data(), 1));
  EXPECT_THAT(output.written, ElementsAre(769));
  EXPECT_EQ(output.CurrentPosition(), 770);
}

TEST(BinOutput, AnExactlyFullBufferGoesOutAtOnce) {
  const std::array<double, 384> numbers = {};
  MemoryOutput output;
  ASSERT_TRUE(output.Write(numbers.data(), 128));
  EXPECT_THAT(output.written, ElementsAre(1024));
  ASSERT_TRUE(output.Write(numbers.data(), 300));
  EXPECT_THAT(output.written, ElementsAre(1024, 1024, 1024));
  EXPECT_EQ(output.Tell(), 3072);
  EXPECT_EQ(output.CurrentPosition(), 3072 + 352);
  const std::array<uint8_t, 672> bytes = {};
  ASSERT_TRUE(output.Write(bytes.data(), 300));
  ASSERT_TRUE(output.Write(bytes.data(), 372));
  EXPECT_EQ(output.written.size(), 4u);
}

TEST(BinOutput, BehindAFewBytesAnArrayGoesOutInWholeElements) {
  const std::array<double, 300> numbers = {};
  const int32_t integer = 1;
  MemoryOutput output;
  ASSERT_TRUE(output.Write(&integer, 1));
  ASSERT_TRUE(output.Write(numbers.data(), 300));
  EXPECT_THAT(output.written, ElementsAre(1020, 1024));
  EXPECT_EQ(output.CurrentPosition(), 2404);
}

TEST(BinOutput, BytesFillTheBufferWithoutTheRuleOf256) {
  const std::string bytes(3000, 'x');
  MemoryOutput output;
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 1000));
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 23));
  EXPECT_THAT(output.written, IsEmpty());
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 1));
  EXPECT_THAT(output.written, ElementsAre(1024));
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 3000));
  EXPECT_THAT(output.written, ElementsAre(1024, 1024, 1024));
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 0));
  ASSERT_TRUE(output.FlushBuffer());
  EXPECT_EQ(output.bytes, std::string(4024, 'x'));
}

TEST(BinOutput, ACountOfNothingFlushesNothing) {
  const std::array<uint8_t, 900> bytes = {};
  MemoryOutput output;
  ASSERT_TRUE(output.WriteBytes(bytes.data(), 900));
  EXPECT_TRUE(output.Write(bytes.data(), 0));
  EXPECT_TRUE(output.Write(bytes.data(), -1));
  EXPECT_TRUE(output.Write(bytes.data(), 3, 0));
  EXPECT_THAT(output.written, IsEmpty());
}

TEST(BinOutput, FlushingNothingIsTrueAndAsksNothing) {
  const ScramblerGuard guard(new FlipScrambler);
  MemoryOutput output;
  EXPECT_TRUE(output.FlushBuffer());
  EXPECT_THAT(output.written, IsEmpty());
  EXPECT_EQ(output.tells, 0);
}

TEST(BinOutput, AFailedFlushLosesWhatWasPending) {
  MemoryOutput output;
  const int32_t value = 1;
  ASSERT_TRUE(output.Write(&value, 1));
  output.takes = false;
  EXPECT_FALSE(output.FlushBuffer());
  EXPECT_EQ(output.CurrentPosition(), 0);
  output.takes = true;
  EXPECT_TRUE(output.FlushBuffer());
  EXPECT_EQ(output.bytes, "");
}

TEST(BinOutput, APartThatWasTakenCountsAsTaken) {
  MemoryOutput output;
  output.mostAtOnce = 1;
  const int32_t value = 0x01020304;
  ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_TRUE(output.FlushBuffer());
  EXPECT_EQ(output.bytes, "\x01");
}

// For want of room the buffer is flushed without a look at the result; only a full one tells.
TEST(BinOutput, AWriteFailsOnlyWhenAFullBufferWasNotTaken) {
  const std::array<uint8_t, 1024> bytes = {};
  MemoryOutput output;
  output.takes = false;
  ASSERT_TRUE(output.Write(bytes.data(), 800));
  EXPECT_TRUE(output.Write(bytes.data(), 1));
  EXPECT_THAT(output.written, ElementsAre(800));
  EXPECT_EQ(output.CurrentPosition(), 1);
  EXPECT_FALSE(output.IsGood());
  EXPECT_FALSE(output.Write(bytes.data(), 1023));
  EXPECT_FALSE(output.WriteBytes(bytes.data(), 1024));
}

// Whichever way a buffer goes out, a medium that is full is bad, and what it took before stays.
TEST(BinOutput, AMediumThatRefusesAtAnyWriteIsTold) {
  const auto write = [](MemoryOutput& output) {
    const std::vector<double> numbers(300, 2.5);
    const std::string bytes(3000, 'x');
    for (int32_t i = 0; i < 500; ++i) output.Write(&i, 1);
    output.Write(numbers.data(), 300);
    output.WriteBytes(bytes.data(), 3000);
    output.SeekFlushed(4, true);
    output.Write(numbers.data(), 1);
    char back[8];
    output.ReadBack(back, 8);
    output.SeekFlushed(0, false);
    output.Write(numbers.data(), 100);
    return output.FlushAndClose();
  };
  MemoryOutput whole;
  ASSERT_TRUE(write(whole));
  ASSERT_GT(whole.written.size(), 8u);
  for (size_t n = 0; n <= whole.written.size(); ++n) {
    MemoryOutput output;
    output.refusesFrom = n;
    const bool closed = write(output);
    const bool complete = n == whole.written.size();
    EXPECT_EQ(closed && output.IsGood(), complete) << n;
    EXPECT_EQ(output.bytes == whole.bytes, complete) << n;
    EXPECT_EQ(output.closes, 1) << n;
    if (!complete) {
      EXPECT_GT(output.written.size(), n) << "it was asked and refused";
    }
  }
}

TEST(BinOutput, TheBaseHasNothingToFlushOrReopen) {
  MemoryOutput output;
  const int32_t value = 1;
  ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_FALSE(output.Flush());
  EXPECT_FALSE(output.Reopen());
  EXPECT_THAT(output.written, IsEmpty());
}

TEST(BinOutput, WritingNeverCallsTheFlushOfTheMedium) {
  class Counting : public MemoryOutput {
   public:
    bool Flush() override {
      ++flushes;
      return true;
    }
    int flushes = 0;
  };
  Counting output;
  const std::string bytes(5000, 'x');
  for (int i = 0; i < 1000; ++i) output.Write(&i, 1);
  output.WriteBytes(bytes.data(), 5000);
  output.SeekFlushed(0, true);
  char byte = 0;
  output.ReadBack(&byte, 1);
  output.FlushAndClose();
  EXPECT_EQ(output.flushes, 0);
}

TEST(BinOutput, ThePositionIsTheMediumsPlusWhatIsPending) {
  MemoryOutput output;
  const int32_t value = 1;
  ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_EQ(output.Tell(), 0);
  EXPECT_EQ(output.CurrentPosition(), 4);
  EXPECT_TRUE(output.Seek(0, true));
  EXPECT_THAT(output.written, IsEmpty()) << "a plain seek flushes nothing";
  EXPECT_EQ(output.CurrentPosition(), 4);
}

TEST(BinOutput, AFlushedSeekWritesFirstAndSeeksInAnyCase) {
  MemoryOutput output;
  const int32_t value = 0x01020304;
  ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_TRUE(output.SeekFlushed(1, true));
  EXPECT_EQ(output.bytes, "\x01\x02\x03\x04");
  EXPECT_EQ(output.CurrentPosition(), 1);
  EXPECT_TRUE(output.SeekFlushed(-1, false));
  EXPECT_EQ(output.CurrentPosition(), 3);
  EXPECT_FALSE(output.SeekFlushed(-1, true));
  ASSERT_TRUE(output.Write(&value, 1));
  output.takes = false;
  EXPECT_FALSE(output.SeekFlushed(2, true));
  EXPECT_EQ(output.CurrentPosition(), 2);
}

TEST(BinOutput, ReadingBackFlushesAndReadsAtThePositionOfTheMedium) {
  MemoryOutput output;
  output.bytes = "0123456789";
  const int16_t value = 0x4142;
  ASSERT_TRUE(output.Write(&value, 1));
  char back[4] = {};
  EXPECT_EQ(output.ReadBack(back, 3), 3);
  EXPECT_EQ(std::string(back, 3), "234");
  EXPECT_EQ(output.bytes, "AB23456789");
  EXPECT_EQ(output.ReadBack(back, 4), 4);
  EXPECT_EQ(output.ReadBack(back, 4), 1);
  EXPECT_EQ(output.ReadBack(back, 4), 0);
}

TEST(BinOutput, FlushingAndClosingDoesBoth) {
  MemoryOutput output;
  const int32_t value = 1;
  ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_TRUE(output.FlushAndClose());
  EXPECT_EQ(output.closes, 1);
  EXPECT_EQ(output.bytes.size(), 4u);
  MemoryOutput full;
  full.takes = false;
  ASSERT_TRUE(full.Write(&value, 1));
  EXPECT_FALSE(full.FlushAndClose());
  EXPECT_EQ(full.closes, 1);
}

TEST(BinOutput, EachFlushIsScrambledAtThePositionOfTheMedium) {
  std::vector<FlipScrambler::Call> calls;
  const ScramblerGuard guard(new FlipScrambler(&calls));
  MemoryOutput output;
  std::vector<int32_t> values(400);
  for (int32_t i = 0; i < 400; ++i) values[static_cast<size_t>(i)] = i;
  for (const int32_t value : values) ASSERT_TRUE(output.Write(&value, 1));
  EXPECT_EQ(output.tells, 2) << "one question for each flush";
  ASSERT_TRUE(output.FlushBuffer());
  EXPECT_THAT(calls,
              ElementsAre(FlipScrambler::Call{'s', 0, 772}, FlipScrambler::Call{'s', 772, 772},
                          FlipScrambler::Call{'s', 1544, 56}));
  InstallScrambler(nullptr);
  MemoryOutput plain;
  plain.Write(values.data(), 400);
  plain.FlushBuffer();
  EXPECT_EQ(FlipScrambler::flipped(output.bytes), plain.bytes);
}

TEST(BinOutput, WhatIsReadBackIsUnscrambled) {
  std::vector<FlipScrambler::Call> calls;
  const ScramblerGuard guard(new FlipScrambler(&calls));
  MemoryOutput output;
  output.WriteBytes("abcdef", 6);
  ASSERT_TRUE(output.SeekFlushed(2, true));
  char back[3];
  ASSERT_EQ(output.ReadBack(back, 3), 3);
  EXPECT_EQ(std::string(back, 3), "cde");
  EXPECT_THAT(calls, ElementsAre(FlipScrambler::Call{'s', 0, 6}, FlipScrambler::Call{'u', 2, 3}));
}

TEST(BinOutput, MarksAndWidthsAreKept) {
  MemoryOutput output;
  EXPECT_EQ(output.GetFileVersion(), 0);
  output.SetFileVersion(7);
  EXPECT_EQ(output.GetFileVersion(), 7);
  EXPECT_FALSE(output.GetFirstFlag() || output.GetSecondFlag() || output.GetThirdFlag());
  output.SetSecondFlag(true);
  EXPECT_FALSE(output.GetFirstFlag());
  EXPECT_TRUE(output.GetSecondFlag());
  output.SetFirstFlag(true);
  output.SetThirdFlag(true);
  output.SetSecondFlag(false);
  EXPECT_TRUE(output.GetFirstFlag());
  EXPECT_FALSE(output.GetSecondFlag());
  EXPECT_TRUE(output.GetThirdFlag());
  EXPECT_TRUE(output.SetWordWidth64());
  EXPECT_FALSE(output.SetWordWidth32());
  EXPECT_EQ(output.GetWordWidth(), 64);
}

}  // namespace

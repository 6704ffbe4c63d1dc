#include "orobasictypes/bininput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::FlipScrambler;
using tests::MemoryInput;
using tests::ScramblerGuard;

std::string someBytes(size_t count) {
  std::string bytes(count, '\0');
  for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 37 + i / 256);
  return bytes;
}

template <class T>
T readOne(const std::string& bytes, int width = sizeof(T)) {
  MemoryInput input(bytes);
  T value{};
  EXPECT_TRUE(input.Read(&value, width, 1));
  EXPECT_EQ(input.Tell(), width);
  return value;
}

TEST(BinInput, OperationsOfTheMediumStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&BinInput::ReadRaw), 3) << "behind the two places of the destructor";
  EXPECT_EQ(tests::slotNumber(&BinInput::Tell), 4);
  EXPECT_EQ(tests::slotNumber(&BinInput::Seek), 5);
  EXPECT_EQ(tests::slotNumber(&BinInput::IsGood), 6);
  EXPECT_EQ(tests::slotNumber(&BinInput::Close), 7);
}

TEST(BinInput, TheMostSignificantByteComesFirst) {
  const std::string bytes = "\x81\x02\x03\x04\x05\x06\x07\x08";
  EXPECT_EQ(readOne<uint8_t>(bytes), 0x81);
  EXPECT_EQ(readOne<int8_t>(bytes), -0x7F);
  EXPECT_EQ(readOne<uint16_t>(bytes), 0x8102);
  EXPECT_EQ(readOne<int16_t>(bytes), -0x7EFE);
  EXPECT_EQ(readOne<uint32_t>(bytes), 0x81020304u);
  EXPECT_EQ(readOne<int32_t>(bytes), static_cast<int32_t>(0x81020304u));
  EXPECT_EQ(readOne<uint64_t>(bytes), 0x8102030405060708u);
  EXPECT_EQ(readOne<float>(std::string("\xC0\x20\0\0", 4)), -2.5f);
  EXPECT_EQ(readOne<double>(std::string("\x40\x04\0\0\0\0\0\0", 8)), 2.5);
}

TEST(BinInput, NarrowSignedFieldsKeepTheirSign) {
  const std::string bytes = "\xFE\xDC\xBA\x98\x76\x54\x32\x10";
  EXPECT_EQ(readOne<int32_t>(bytes, 1), -2);
  EXPECT_EQ(readOne<int32_t>(bytes, 2), -0x124);
  EXPECT_EQ(readOne<int32_t>(bytes, 3), -0x12346);
  EXPECT_EQ(readOne<int16_t>(bytes, 1), -2);
  EXPECT_EQ(readOne<int32_t>("\x7F\xFF\xFF", 3), 0x7FFFFF);
}

TEST(BinInput, NarrowUnsignedFieldsAreFilledWithZeros) {
  const std::string bytes = "\xFE\xDC\xBA\x98\x76\x54\x32\x10";
  EXPECT_EQ(readOne<uint32_t>(bytes, 1), 0xFEu);
  EXPECT_EQ(readOne<uint32_t>(bytes, 3), 0xFEDCBAu);
  EXPECT_EQ(readOne<uint64_t>(bytes, 5), 0xFEDCBA9876u);
  EXPECT_EQ(readOne<uint64_t>(bytes, 6), 0xFEDCBA987654u);
  EXPECT_EQ(readOne<uint64_t>(bytes, 7), 0xFEDCBA98765432u);
}

TEST(BinInput, OfWideFieldsTheLowBytesAreKept) {
  const std::string bytes = "\x01\x02\x03\x04\x05\x06\xFE\xDC";
  EXPECT_EQ(readOne<uint8_t>(bytes, 8), 0xDC);
  EXPECT_EQ(readOne<int8_t>(bytes, 7), -2);
  EXPECT_EQ(readOne<uint16_t>(bytes, 8), 0xFEDC);
  EXPECT_EQ(readOne<int32_t>(bytes, 5), 0x02030405);
}

TEST(BinInput, FloatsOfTheOtherWidthAreConverted) {
  EXPECT_EQ(readOne<double>(std::string("\xC0\x20\0\0", 4), 4), -2.5);
  EXPECT_EQ(readOne<float>(std::string("\x40\x04\0\0\0\0\0\0", 8), 8), 2.5f);
  constexpr float infinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(readOne<float>(std::string("\x7E\x37\xE4\x3C\x88\0\x75\x9C", 8), 8), infinity);
  EXPECT_EQ(readOne<float>(std::string("\xFE\x37\xE4\x3C\x88\0\x75\x9C", 8), 8), -infinity);
  EXPECT_EQ(readOne<float>(std::string("\x7F\xF0\0\0\0\0\0\0", 8), 8), infinity);
  EXPECT_TRUE(std::isnan(readOne<float>(std::string("\x7F\xF8\0\0\0\0\0\1", 8), 8)));
}

TEST(BinInput, FloatsOfTheirOwnWidthKeepTheirBits) {
  const double zero = readOne<double>(std::string("\x80\0\0\0\0\0\0\0", 8));
  EXPECT_EQ(std::bit_cast<uint64_t>(zero), 0x8000000000000000u);
  const double payload = readOne<double>("\x7F\xF4\x01\x02\x03\x04\x05\x06");
  EXPECT_EQ(std::bit_cast<uint64_t>(payload), 0x7FF4010203040506u);
  const float single = readOne<float>("\x7F\xA1\x02\x03");
  EXPECT_EQ(std::bit_cast<uint32_t>(single), 0x7FA10203u);
}

TEST(BinInput, OtherWidthsAreRefusedAndNothingIsTouched) {
  MemoryInput input(someBytes(64));
  int32_t integer = 7;
  double number = 7;
  for (const int width : {0, -1, 9, 1000}) EXPECT_FALSE(input.Read(&integer, width, 1));
  for (const int width : {0, 1, 2, 3, 5, 6, 7, 9}) EXPECT_FALSE(input.Read(&number, width, 1));
  EXPECT_FALSE(input.Read(&integer, 9, 0));
  EXPECT_EQ(integer, 7);
  EXPECT_EQ(number, 7);
  EXPECT_THAT(input.asked, IsEmpty());
}

TEST(BinInput, ACountOfNothingIsTrueAndAsksNothing) {
  MemoryInput input("");
  int32_t value = 7;
  EXPECT_TRUE(input.Read(&value, 0));
  EXPECT_TRUE(input.Read(&value, -5));
  EXPECT_TRUE(input.Read(&value, 3, 0));
  EXPECT_TRUE(input.ReadBytes(&value, 0));
  EXPECT_EQ(value, 7);
  EXPECT_THAT(input.asked, IsEmpty());
  EXPECT_EQ(input.tells, 0);
}

TEST(BinInput, TheMediumIsAskedForNoMoreThanIsNeededAndForAKibibyteAtMost) {
  MemoryInput input(someBytes(10000));
  std::array<double, 400> numbers;
  ASSERT_TRUE(input.Read(numbers.data(), 3));
  ASSERT_TRUE(input.Read(numbers.data(), 300));
  EXPECT_THAT(input.asked, ElementsAre(24, 1024, 1024, 352));
  input.asked.clear();
  std::array<int32_t, 700> integers;
  ASSERT_TRUE(input.Read(integers.data(), 3, 700));
  EXPECT_THAT(input.asked, ElementsAre(1024, 2, 1024, 2, 48));
}

TEST(BinInput, WithoutAScramblerNoPositionIsAsked) {
  MemoryInput input(someBytes(10000));
  std::array<uint16_t, 3000> values;
  ASSERT_TRUE(input.Read(values.data(), 3000));
  EXPECT_EQ(input.tells, 0);
}

TEST(BinInput, AValueThatComesInPiecesIsCompletedByItsMissingBytes) {
  MemoryInput input(someBytes(64));
  input.mostAtOnce = 3;
  std::array<uint32_t, 2> values;
  ASSERT_TRUE(input.Read(values.data(), 2));
  EXPECT_EQ(values[0], 0x00254A6Fu);
  EXPECT_EQ(values[1], 0x94B9DE03u);
  EXPECT_THAT(input.asked, ElementsAre(8, 1, 4, 1));
}

// However the medium cuts its bytes, the values are the same.
TEST(BinInput, AnyCutsOfTheMediumGiveTheSameValues) {
  const std::string bytes = someBytes(5003);
  for (const int width : {1, 2, 3, 4, 5, 6, 7, 8}) {
    const int64_t count = 5000 / width;
    std::vector<uint64_t> whole(static_cast<size_t>(count));
    MemoryInput(bytes).Read(whole.data(), width, count);
    for (const int64_t most : {1, 2, 3, 5, 7, 100, 1023}) {
      MemoryInput input(bytes);
      input.mostAtOnce = most;
      std::vector<uint64_t> values(static_cast<size_t>(count));
      ASSERT_TRUE(input.Read(values.data(), width, count));
      ASSERT_EQ(values, whole) << width << " " << most;
      ASSERT_EQ(input.Tell(), count * width);
    }
  }
}

TEST(BinInput, AReadThatEndsInsideAnElementKeepsThoseBeforeAndTouchesNotThatOne) {
  for (size_t size = 0; size < 40; ++size) {
    MemoryInput input(std::string(size, '\1'));
    std::array<double, 5> numbers;
    numbers.fill(7);
    std::array<int32_t, 5> triples;
    triples.fill(7);
    EXPECT_FALSE(input.Read(numbers.data(), 5));
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 7.0), 5 - static_cast<int>(size / 8));
    MemoryInput again(std::string(std::min<size_t>(size, 14), '\1'));
    EXPECT_FALSE(again.Read(triples.data(), 3, 5));
    EXPECT_EQ(std::count(triples.begin(), triples.end(), 7),
              5 - static_cast<int>(std::min<size_t>(size, 14) / 3));
  }
}

TEST(BinInput, BytesAreReadAsTheyAre) {
  const std::string bytes = someBytes(3000);
  MemoryInput input(bytes);
  std::string read(3000, '.');
  EXPECT_TRUE(input.ReadBytes(read.data(), 3000));
  EXPECT_EQ(read, bytes);
  EXPECT_THAT(input.asked, ElementsAre(1024, 1024, 952));
  EXPECT_FALSE(input.ReadBytes(read.data(), 1));
}

TEST(BinInput, AMediumThatGivesMoreThanAskedOrLessThanNothingHarmsNobody) {
  class Liar : public MemoryInput {
   public:
    using MemoryInput::MemoryInput;
    int64_t ReadRaw(void* buffer, int64_t count) override {
      MemoryInput::ReadRaw(buffer, count);
      return answer;
    }
    int64_t answer = 0;
  };
  Liar input(someBytes(100));
  std::array<uint32_t, 4> values = {};
  input.answer = -1;
  EXPECT_FALSE(input.Read(values.data(), 2));
  input.answer = INT64_MAX;
  EXPECT_TRUE(input.Read(values.data(), 2));
  EXPECT_EQ(values[2], 0u);
}

TEST(BinInput, PeekingTakesNothing) {
  MemoryInput input("\x81\x02\x03\x04\x05");
  EXPECT_EQ(input.PeekInt32(), static_cast<int32_t>(0x81020304u));
  EXPECT_EQ(input.Tell(), 0);
  uint8_t byte = 0;
  ASSERT_TRUE(input.Read(&byte, 1));
  EXPECT_EQ(input.PeekInt32(), 0x02030405);
  EXPECT_EQ(input.Tell(), 1);
}

TEST(BinInput, AFailedPeekIsAllOnesAndSeeksNothingBack) {
  MemoryInput atEnd("\x01\x02\x03");
  EXPECT_EQ(atEnd.PeekInt32(), -1);
  EXPECT_EQ(atEnd.Tell(), 3);
  MemoryInput fixed("\x01\x02\x03\x04");
  fixed.seeks = false;
  EXPECT_EQ(fixed.PeekInt32(), -1);
  MemoryInput ones("\xFF\xFF\xFF\xFF");
  EXPECT_EQ(ones.PeekInt32(), -1);
  EXPECT_EQ(ones.Tell(), 0);
}

TEST(BinInput, TheFirstToSayDecidesTheWordWidth) {
  MemoryInput narrow("");
  EXPECT_EQ(narrow.GetWordWidth(), 0);
  EXPECT_TRUE(narrow.SetWordWidth32());
  EXPECT_FALSE(narrow.SetWordWidth64());
  EXPECT_FALSE(narrow.SetWordWidth32());
  EXPECT_EQ(narrow.GetWordWidth(), 32);
  MemoryInput wide("");
  EXPECT_TRUE(wide.SetWordWidth64());
  EXPECT_FALSE(wide.SetWordWidth32());
  EXPECT_EQ(wide.GetWordWidth(), 64);
}

TEST(BinInput, EachChunkIsUnscrambledAtItsOwnPosition) {
  std::vector<FlipScrambler::Call> calls;
  const std::string bytes = someBytes(3100);
  const ScramblerGuard guard(new FlipScrambler(&calls));
  MemoryInput input(FlipScrambler::flipped(bytes));
  std::vector<uint8_t> head(100);
  ASSERT_TRUE(input.Read(head.data(), 100));
  std::vector<uint32_t> values(1000);
  ASSERT_TRUE(input.Read(values.data(), 3, 1000));
  EXPECT_THAT(calls,
              ElementsAre(FlipScrambler::Call{'u', 0, 100}, FlipScrambler::Call{'u', 100, 1024},
                          FlipScrambler::Call{'u', 1124, 2}, FlipScrambler::Call{'u', 1126, 1024},
                          FlipScrambler::Call{'u', 2150, 2}, FlipScrambler::Call{'u', 2152, 948}));
  EXPECT_EQ(input.tells, 6);
  std::vector<uint32_t> plain(1000);
  InstallScrambler(nullptr);
  MemoryInput(bytes.substr(100)).Read(plain.data(), 3, 1000);
  EXPECT_EQ(values, plain);
}

TEST(BinInput, NothingIsUnscrambledWhereNothingCame) {
  std::vector<FlipScrambler::Call> calls;
  const ScramblerGuard guard(new FlipScrambler(&calls));
  MemoryInput input("");
  uint8_t byte = 7;
  EXPECT_FALSE(input.Read(&byte, 1));
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_EQ(byte, 7);
}

TEST(Scrambler, OperationsStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&BinIO_Scrambler::Scramble), 3);
  EXPECT_EQ(tests::slotNumber(&BinIO_Scrambler::Unscramble), 4);
}

TEST(Scrambler, InstallingDeletesTheOneBeforeUnlessItIsTheSame) {
  int alive = 0;
  auto* const first = new FlipScrambler(nullptr, &alive);
  InstallScrambler(first);
  InstallScrambler(first);
  EXPECT_EQ(alive, 1);
  InstallScrambler(new FlipScrambler(nullptr, &alive));
  EXPECT_EQ(alive, 1);
  InstallScrambler(nullptr);
  EXPECT_EQ(alive, 0);
  InstallScrambler(nullptr);
}

TEST(Scrambler, DirectCallsOfTheMediumAreNotScrambled) {
  const ScramblerGuard guard(new FlipScrambler);
  MemoryInput input("abc");
  char bytes[3];
  EXPECT_EQ(input.ReadRaw(bytes, 3), 3);
  EXPECT_EQ(std::string(bytes, 3), "abc");
  tests::MemoryOutput output;
  EXPECT_EQ(output.WriteRaw("abc", 3), 3);
  EXPECT_EQ(output.bytes, "abc");
}

}  // namespace

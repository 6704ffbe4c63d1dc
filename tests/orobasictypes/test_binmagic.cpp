#include "orobasictypes/binmagic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/kelcstring.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/assertionlist.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::MemoryInput;

constexpr BinMagic header(0x315E97, 0xD6);
const std::string headerBytes = "\x31\x5E\x97\xD6";

TEST(BinMagic, IsMadeOfAnIdentifierAndAVersion) {
  EXPECT_EQ(header.GetValue(), 0x315E97D6);
  EXPECT_EQ(header.GetId(), 0x315E97);
  EXPECT_EQ(header.GetVersion(), 0xD6);
  EXPECT_EQ(BinMagic().GetValue(), 0);
}

TEST(BinMagic, ARawValueIsNotShifted) {
  const BinMagic raw(0x315E97D6);
  EXPECT_EQ(raw.GetId(), 0x315E97);
  EXPECT_EQ(raw.GetVersion(), 0xD6);
  EXPECT_TRUE(raw == header);
}

TEST(BinMagic, TheVersionIsNotCutToItsByte) { EXPECT_EQ(BinMagic(1, 0x203).GetValue(), 0x303); }

TEST(BinMagic, ANegativeIdentifierIsTheWholeValue) {
  const BinMagic negative(-5, 3);
  EXPECT_EQ(negative.GetValue(), -5);
  EXPECT_EQ(negative.GetId(), -1);
  EXPECT_EQ(negative.GetVersion(), -1);
  EXPECT_EQ(BinMagic(INT32_MIN).GetVersion(), -1);
}

TEST(BinMagic, TheTextIsIdentifierBlankVersion) {
  EXPECT_EQ(BinMagic(12, 3).GetText(), "12 3");
  EXPECT_EQ(BinMagic(-5, 3).GetText(), "-1 -1");
}

TEST(BinMagic, IsWrittenAs32Bits) {
  tests::MemoryOutput output;
  EXPECT_TRUE(header.Write(output));
  output.FlushBuffer();
  EXPECT_EQ(output.bytes, headerBytes);
}

TEST(BinMagic, ReadAssertsThatItIsTheExpectedOne) {
  tests::AssertionList assertions;
  MemoryInput input(headerBytes + headerBytes);
  BinMagic magic;
  EXPECT_TRUE(magic.Read(input, header));
  EXPECT_THAT(assertions.take(), IsEmpty());
  EXPECT_TRUE(magic.Read(input, BinMagic(1, 2)));
  EXPECT_THAT(assertions.take(), ElementsAre("magic_ == magic orobasictypes/binio"));
  EXPECT_TRUE(magic == header) << "what was read stays";
}

TEST(BinMagic, MatchingDoesNotAssert) {
  tests::AssertionList assertions;
  MemoryInput input(headerBytes + headerBytes);
  BinMagic magic;
  EXPECT_TRUE(magic.ReadMatch(input, header));
  EXPECT_FALSE(magic.ReadMatch(input, BinMagic(0x315E97, 0xD5)));
  EXPECT_TRUE(magic == header);
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST(BinMagic, MatchingTheIdentifierIgnoresTheVersionAndKeepsWhatWasRead) {
  MemoryInput input(headerBytes + headerBytes);
  BinMagic sameId(0x315E97, 1);
  EXPECT_TRUE(sameId.ReadMatchId(input));
  EXPECT_TRUE(sameId == header);
  BinMagic other(0x315E96, 0xD6);
  EXPECT_FALSE(other.ReadMatchId(input));
  EXPECT_TRUE(other == header);
}

TEST(BinMagic, NegativeValuesMatchByTheirBits) {
  MemoryInput input("\xFF\xFF\xFF\x01\xFF\xFF\xFE\x01");
  BinMagic magic(-200);
  EXPECT_TRUE(magic.ReadMatchId(input)) << "FFFFFF38 and FFFFFF01";
  EXPECT_FALSE(magic.ReadMatchId(input));
}

TEST(BinMagic, AtTheEndOfTheInputTheHeldValueStays) {
  tests::AssertionList assertions;
  MemoryInput input("\x31\x5E\x97");
  BinMagic magic = header;
  EXPECT_FALSE(magic.ReadMatch(input, header));
  EXPECT_FALSE(magic.ReadMatchId(input));
  EXPECT_FALSE(magic.Read(input, header));
  EXPECT_THAT(assertions.take(), IsEmpty()) << "it holds the expected value already";
  EXPECT_FALSE(magic.Read(input, BinMagic(1, 1)));
  EXPECT_THAT(assertions.take(), ElementsAre("magic_ == magic orobasictypes/binio"));
  EXPECT_TRUE(magic == header);
}

}  // namespace

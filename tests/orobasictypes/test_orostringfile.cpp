// A whole OroString in a binary file.
#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/texts.h"

namespace {

using tests::MemoryInput;
using tests::MemoryOutput;

std::string written(const OroString& text) {
  MemoryOutput output;
  EXPECT_TRUE(text.write(output));
  EXPECT_TRUE(output.FlushBuffer());
  return output.bytes;
}

TEST(OroStringFile, UnitsAreWrittenAloneMostSignificantByteFirst) {
  EXPECT_EQ(written(OroString(u"A\u20AC")), std::string("\0A\x20\xAC", 4));
  EXPECT_EQ(written(OroString(u"\xD83D\xDE00")), std::string("\xD8\x3D\xDE\0", 4));
  EXPECT_EQ(written(OroString(u"")), "");
  EXPECT_EQ(written(OroString()), "");
}

TEST(OroStringFile, TheWholeFileIsTheText) {
  MemoryInput input(std::string("\0A\x20\xAC\0", 5));
  OroString text;
  EXPECT_TRUE(text.read(input));
  EXPECT_EQ(tests::units(text), u"A\u20AC");
  EXPECT_EQ(input.Tell(), 4) << "half a unit is left";
}

TEST(OroStringFile, BehindOtherValuesTheRestIsTheText) {
  MemoryInput input(std::string("xx\0A\x20\xAC\0", 7));
  char head[2];
  ASSERT_TRUE(input.ReadBytes(head, 2));
  OroString text(u"old");
  EXPECT_TRUE(text.read(input));
  EXPECT_EQ(tests::units(text), u"A\u20AC");
  EXPECT_EQ(input.Tell(), 6);
  EXPECT_TRUE(text.read(input)) << "half a unit is none";
  EXPECT_TRUE(text.isEmpty());
}

TEST(OroStringFile, BehindTheEndIsNothing) {
  MemoryInput input(std::string("\0A", 2));
  ASSERT_TRUE(input.Seek(10, true));
  OroString text(u"old");
  EXPECT_TRUE(text.read(input));
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(input.Tell(), 10);
}

TEST(OroStringFile, ReadingTakesAsManyBytesAsItIsTold) {
  MemoryInput input(std::string("\0A\0B\0C", 6));
  OroString text;
  EXPECT_TRUE(text.read(input, 4));
  EXPECT_EQ(tests::units(text), u"AB");
  EXPECT_TRUE(text.read(input, 1));
  EXPECT_EQ(tests::units(text), u"");
  EXPECT_EQ(input.Tell(), 4) << "half a unit is left";
  EXPECT_TRUE(text.read(input, -7));
  EXPECT_TRUE(text.isEmpty());
}

TEST(OroStringFile, NothingLeftIsAnEmptyText) {
  MemoryInput input("");
  OroString text(u"old");
  EXPECT_TRUE(text.read(input));
  EXPECT_TRUE(text.isEmpty());
  EXPECT_FALSE(text.isNull());
}

TEST(OroStringFile, AUnitOfZeroEndsTheText) {
  MemoryInput input(std::string("\0A\0\0\0B", 6));
  OroString text;
  EXPECT_TRUE(text.read(input));
  EXPECT_EQ(tests::units(text), u"A");
  EXPECT_EQ(input.Tell(), 6);
}

TEST(OroStringFile, UnitsThatDoNotComeLeaveTheText) {
  MemoryInput input(std::string("\0A\0", 3));
  OroString text(u"old");
  EXPECT_FALSE(text.read(input, 8));
  EXPECT_EQ(tests::units(text), u"old");
}

TEST(OroStringFile, MoreThanATextOrTheFileHoldsIsRefusedBeforeAnythingIsMade) {
  for (const std::string& bytes : {std::string(), std::string("\0A", 2)}) {
    MemoryInput input(bytes);
    OroString text(u"old");
    EXPECT_FALSE(text.read(input, 0x7FFFFFFE));
    EXPECT_FALSE(text.read(input, INT64_MAX));
    EXPECT_EQ(tests::units(text), u"old");
    EXPECT_TRUE(input.asked.empty());
  }
}

TEST(OroStringFile, LongTextsComeBack) {
  std::u16string units;
  for (int i = 0; i < 100000; ++i) units += static_cast<char16_t>(1 + i % 65535);
  const OroString text(units.c_str());
  MemoryInput input(written(text));
  OroString read;
  EXPECT_TRUE(read.read(input));
  EXPECT_EQ(tests::units(read), units);
}

}  // namespace

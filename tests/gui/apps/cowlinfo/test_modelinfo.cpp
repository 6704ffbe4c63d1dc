#include "gui/apps/cowlinfo/modelinfo.h"

#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/oropath.h"
#include "tests/tempfolder.h"

namespace {

// Bytes, most significant first.
std::string number(uint64_t value, int bytes) {
  std::string out;
  for (int i = bytes - 1; i >= 0; --i) out += static_cast<char>(value >> (8 * i) & 0xFF);
  return out;
}

// An element with a size of 4 bytes.
std::string element(uint32_t tag, int version, const std::string& body) {
  return number(tag, 3) + number(static_cast<uint64_t>(version), 1) + number(body.size() + 8, 4) +
         body;
}

std::string root(const std::string& body) { return element(0x4B454C, 0, body); }

class ModelInfoTest : public testing::Test {
 protected:
  InfoReport look(const std::string& bytes) {
    folder_.write("model", bytes);
    return modelInfo(OroPath(OroString(folder_.file("model").u16string().c_str())));
  }
  // The lines behind the first.
  std::string tree(const std::string& bytes) {
    const InfoReport report = look(bytes);
    EXPECT_TRUE(report.good()) << report.problems.front();
    return report.lines.substr(report.lines.find('\n') + 1);
  }

  tests::TempFolder folder_;
};

TEST_F(ModelInfoTest, AnEmptyModelIsItsRoot) {
  const InfoReport report = look(root(""));
  EXPECT_TRUE(report.good());
  EXPECT_NE(report.lines.find("model: model file, version 0, 8 bytes\n"), std::string::npos)
      << report.lines;
}

TEST_F(ModelInfoTest, ShowsTheValuesOfTheCommonElements) {
  EXPECT_EQ(tree(root(element(0x10000, 0,
                              number(0x3FF0000000000000, 8) + number(0x4000000000000000, 8) +
                                  number(0x4008000000000000, 8)) +
                      element(0x10003, 0, "abc") +
                      element(0x10005, 0, number(0x4100E9, 3).insert(0, 1, '\0')) +
                      element(0x10010, 0, number(0x3F800000, 4) + number(0x40000000, 4)))),
            "  0x010000 point, version 0, 24 bytes: (1, 2, 3)\n"
            "  0x010003 text, version 0, 3 bytes: \"abc\"\n"
            "  0x010005 wide text, version 0, 4 bytes: \"A\xC3\xA9\"\n"
            "  0x010010 two floats, version 0, 8 bytes: (1, 2)\n");
}

TEST_F(ModelInfoTest, ShowsWhatIsInAnObjectBehindItsIdAndItsValues) {
  const std::string id = number(0x1DBFCAD903384923, 8) + number(0xA329EAEA81063FF0, 8);
  EXPECT_EQ(tree(root(element(0xB0002, 5, id + number(7, 4) + element(0x10003, 0, "x")))),
            "  0x0B0002 object, version 5, 29 bytes: {1DBFCAD9-0338-4923-A329-EAEA81063FF0}\n"
            "    4 bytes of values\n"
            "    0x010003 text, version 0, 1 byte: \"x\"\n");
}

TEST_F(ModelInfoTest, ElementsOfUnknownTagsAreNested) {
  EXPECT_EQ(tree(root(element(0x123456, 2, element(0x1, 0, "") + element(0x2, 0, "\x01")))),
            "  0x123456, version 2, 17 bytes\n"
            "    0x000001, version 0, 0 bytes\n"
            "    0x000002, version 0, 1 byte\n");
}

TEST_F(ModelInfoTest, SizesOfEightBytesAreRead) {
  const std::string text = number(0x10003, 3) + number(0, 1) + number(14, 8) + "ab";
  const std::string bytes = number(0x4B454C, 3) + number(1, 1) + number(12 + text.size(), 8) + text;
  EXPECT_EQ(tree(bytes), "  0x010003 text, version 0, 2 bytes: \"ab\"\n");
}

TEST_F(ModelInfoTest, ARootThatWasNeverClosedIsShownAndTold) {
  std::string bytes = root(element(0x10003, 0, "a"));
  bytes.replace(4, 4, number(0, 4));
  const InfoReport report = look(bytes);
  EXPECT_NE(report.lines.find("\"a\""), std::string::npos);
  ASSERT_EQ(report.problems.size(), 1u);
  EXPECT_EQ(report.problems[0], "the file was cut off while it was written");
}

TEST_F(ModelInfoTest, WhatIsNoModelFileIsSaid) {
  for (const std::string& bytes :
       {std::string(), std::string("K"), std::string("KEL"), std::string("1 2 3\n"),
        number(0x4B454C, 3) + number(2, 1) + number(8, 4), number(0x4B454C, 3) + number(1, 1)}) {
    const InfoReport report = look(bytes);
    EXPECT_FALSE(report.good()) << bytes.size();
    EXPECT_EQ(report.lines, "") << bytes.size();
  }
}

TEST_F(ModelInfoTest, ABrokenElementIsToldWithItsOffsetAndTheRestIsShown) {
  std::string bytes = root(element(0x10003, 0, "a") + element(0x10003, 0, "b"));
  bytes.replace(8 + 9 + 4, 4, number(5, 4));
  const InfoReport report = look(bytes);
  EXPECT_NE(report.lines.find("\"a\""), std::string::npos);
  ASSERT_EQ(report.problems.size(), 1u);
  EXPECT_EQ(report.problems[0], "at offset 17 there is no whole element");
}

TEST_F(ModelInfoTest, AFileCutAnywhereEndsInAnError) {
  const std::string id = number(0x1DBFCAD903384923, 8) + number(0xA329EAEA81063FF0, 8);
  const std::string bytes =
      root(element(0xB0002, 5, id + element(0x10003, 0, "x")) + element(0x10000, 0, "12"));
  for (size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(look(bytes.substr(0, size)).good()) << size;
  }
}

TEST_F(ModelInfoTest, AnyDamagedByteEndsInATreeOrAnError) {
  const std::string id = number(0x1DBFCAD903384923, 8) + number(0xA329EAEA81063FF0, 8);
  const std::string bytes =
      root(element(0xB0002, 5, id + element(0x10003, 0, "x")) + element(0x10005, 0, "1234"));
  for (size_t at = 0; at < bytes.size(); ++at) {
    for (const char value : {'\0', '\xFF', '\x7F'}) {
      std::string damaged = bytes;
      damaged[at] = value;
      const InfoReport report = look(damaged);
      EXPECT_FALSE(report.good() && report.lines.empty()) << at;
    }
  }
}

TEST_F(ModelInfoTest, NestingWithoutEndIsCounted) {
  std::string nested = element(0x10003, 0, "x");
  for (int i = 0; i < 3000; ++i) nested = element(0x22, 0, nested);
  const InfoReport report = look(root(nested));
  EXPECT_TRUE(report.good());
  EXPECT_NE(report.lines.find("  1 element more\n"), std::string::npos);
}

TEST_F(ModelInfoTest, ElementsWithoutNumberAreCounted) {
  std::string many;
  for (int i = 0; i < kMostModelElements + 5; ++i) many += element(0x22, 0, "");
  EXPECT_NE(look(root(many)).lines.find("  5 elements more\n"), std::string::npos);
}

TEST_F(ModelInfoTest, TextsCannotWriteToTheTerminal) {
  EXPECT_EQ(tree(root(element(0x10003, 0, "\x1b[2J"))),
            "  0x010003 text, version 0, 4 bytes: \"\\x1b[2J\"\n");
}

TEST_F(ModelInfoTest, AFileThatIsNotThereIsSaid) {
  const InfoReport report = modelInfo(OroPath("absent.cwl"));
  ASSERT_EQ(report.problems.size(), 1u);
  EXPECT_EQ(report.problems[0], "the file cannot be opened");
}

}  // namespace

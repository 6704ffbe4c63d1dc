#include "components/points/pointtextparser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/components/pointclouds.h"
#include "tests/support/countingmanager.h"

namespace {

struct Parsed {
  std::vector<OroVector> positions;
  std::vector<PointColor> colors;
  int decimals = 0;
  bool hasColors = false;
  bool good = false;
  int64_t line = 0;
  std::string problem;
};

Parsed parse(const std::string& text, size_t block = std::string::npos) {
  tests::ManagedMemory memory;
  memory.manager->logs = false;
  Parsed result;
  PointCloud cloud;
  PointTextParser parser(cloud);
  for (size_t at = 0; at < text.size();) {
    const size_t size = std::min(block, text.size() - at);
    if (!parser.feed(text.data() + at, size)) break;
    at += size;
  }
  result.good = parser.finish();
  result.line = parser.line();
  if (parser.problem() != nullptr) result.problem = parser.problem();
  result.positions = tests::positionsOf(cloud);
  result.colors = tests::colorsOf(cloud);
  result.hasColors = cloud.hasColors();
  result.decimals = cloud.decimals;
  return result;
}

TEST(PointTextParser, ReadsCoordinatesWithAndWithoutColours) {
  const Parsed plain = parse("1 2 3\n-4.5 5e3 .25\n");
  ASSERT_TRUE(plain.good);
  ASSERT_EQ(plain.positions.size(), 2u);
  EXPECT_EQ(plain.positions[1], (OroVector{-4.5, 5000, 0.25}));
  EXPECT_FALSE(plain.hasColors);

  const Parsed colored = parse("1 2 3 84 0 255\n");
  ASSERT_TRUE(colored.good);
  EXPECT_EQ(colored.colors[0], (PointColor{84, 0, 255}));
}

TEST(PointTextParser, TakesEachSeparatorAndLineEnd) {
  const char* const texts[] = {"1 2 3",        "1\t2\t3",    "1,2,3",     "1;2;3",
                               "1 , 2 ,\t3",   " 1  2  3  ", "1 2 3\n",   "1 2 3\r\n",
                               "1 2 3 # note", "1 2 3#note", "+1 +2 +3\n"};
  for (const char* text : texts) {
    const Parsed parsed = parse(text);
    EXPECT_TRUE(parsed.good) << text << ": " << parsed.problem;
    ASSERT_EQ(parsed.positions.size(), 1u) << text;
    EXPECT_EQ(parsed.positions[0], (OroVector{1, 2, 3})) << text;
  }
}

TEST(PointTextParser, PassesOverCommentsEmptyLinesAndTheByteOrderMark) {
  const Parsed parsed = parse("\xEF\xBB\xBF# points\n\n  \t\r\n   # more\n1 2 3\n\n");
  ASSERT_TRUE(parsed.good) << parsed.problem;
  EXPECT_EQ(parsed.positions.size(), 1u);
}

TEST(PointTextParser, RefusesWhatIsNoPointAndTellsTheLine) {
  const char* const lines[] = {"1 2",          "1",
                               "x y z",        "1 2 z",
                               "1,,2,3",       ",1,2,3",
                               "1 2 3,",       "1 2 3x",
                               "1 2 3 4",      "1 2 3 4 5",
                               "1 2 3 4 5 #6", "1 2 3 4 5 256",
                               "1 2 3 -1 5 6", "1 2 3 4 5 6 7",
                               "1 2 3 4 5 6x", "1 2 3 0.5 5 6",
                               "1.2.3 4",      "1-2-3",
                               "1 2 3 4-5 6",  "1 2 3 4 5+6",
                               "1 2\r3",       "1 2 3\r4 5 6",
                               "nan 2 3",      "1 inf 3",
                               "1e999 2 3",    "+-1 2 3",
                               "++1 2 3",      "1 2 3 ; # nothing behind",
                               "1 2\xC2\xA0 3"};
  for (const char* line : lines) {
    const Parsed parsed = parse("7 8 9\n# fine\n" + std::string(line) + "\n1 2 3\n");
    EXPECT_FALSE(parsed.good) << line;
    EXPECT_EQ(parsed.line, 3) << line;
    EXPECT_FALSE(parsed.problem.empty()) << line;
    EXPECT_EQ(parsed.positions.size(), 1u) << line;
  }
}

TEST(PointTextParser, RefusesALineWithABinaryZero) {
  const std::string text("1 2 3\n1 2\0 3\n", 13);
  const Parsed parsed = parse(text);
  EXPECT_FALSE(parsed.good);
  EXPECT_EQ(parsed.line, 2);
}

TEST(PointTextParser, RefusesAMixOfColouredAndPlainPoints) {
  EXPECT_EQ(parse("1 2 3 4 5 6\n1 2 3\n").line, 2);
  EXPECT_EQ(parse("1 2 3\n1 2 3 4 5 6\n").line, 2);
}

TEST(PointTextParser, GathersNoEndlessLine) {
  const std::string longest(PointTextParser::kLongestLine - 5, ' ');
  EXPECT_TRUE(parse(longest + "1 2 3\n").good);
  for (const size_t block : {size_t{64}, size_t{1000}, std::string::npos}) {
    const Parsed parsed = parse("1 2 3\n" + longest + "1  2 3\n1 2 3\n", block);
    EXPECT_FALSE(parsed.good) << block;
    EXPECT_EQ(parsed.line, 2) << block;
    const Parsed unfinished = parse("1 2 3\n" + std::string(1 << 20, '1'), block);
    EXPECT_FALSE(unfinished.good) << block;
    EXPECT_EQ(unfinished.line, 2) << block;
  }
}

TEST(PointTextParser, GivesTheSameResultWhereverTheBlocksEnd) {
  const std::string text = "1.25 2.50 3.75 1 2 3\r\n# note\n\n-4.00 5 6 7 8 9\r\n10 11 12 13 14 15";
  const Parsed whole = parse(text);
  ASSERT_TRUE(whole.good);
  for (size_t block = 1; block <= text.size(); ++block) {
    const Parsed parts = parse(text, block);
    ASSERT_TRUE(parts.good) << block << ": " << parts.problem;
    EXPECT_EQ(parts.positions, whole.positions) << block;
    EXPECT_EQ(parts.colors, whole.colors) << block;
    EXPECT_EQ(parts.line, whole.line) << block;
  }
}

TEST(PointTextParser, KeepsTheDigitsThatTheFileWasWrittenWith) {
  EXPECT_EQ(parse("1.25 2.5 3\n").decimals, 2);
  EXPECT_EQ(parse("1 2 3\n").decimals, 0);
  EXPECT_EQ(parse("1e3 2.5 3\n").decimals, PointCloud::kShortest);
  EXPECT_EQ(parse("0.1234567890123456789 2 3\n").decimals, PointCloud::kShortest);
  EXPECT_EQ(parse("# none\n").decimals, PointCloud::kShortest);
}

TEST(PointTextParser, SurvivesEveryDamageOfOneByte) {
  const std::string text = "1.5 2.5 3.5 10 20 30\n4 5 6 40 50 60\n";
  for (size_t at = 0; at < text.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string damaged = text;
      damaged[at] = static_cast<char>(byte);
      const Parsed parsed = parse(damaged, 7);
      EXPECT_LE(parsed.positions.size(), 3u);
      EXPECT_EQ(parsed.good, parsed.problem.empty());
      EXPECT_TRUE(!parsed.hasColors || parsed.colors.size() == parsed.positions.size());
    }
    EXPECT_LE(parse(text.substr(0, at)).positions.size(), 2u);
  }
}

TEST(PointTextParser, SurvivesRandomBytes) {
  std::mt19937 random(1);
  const std::string letters = "0123456789.,;+-eE #\r\n\tx";
  for (int round = 0; round < 2000; ++round) {
    std::string text(random() % 200, '\0');
    for (char& c : text) c = letters[random() % letters.size()];
    const Parsed whole = parse(text);
    const Parsed parts = parse(text, 1 + random() % 20);
    EXPECT_EQ(whole.good, parts.good) << text;
    EXPECT_EQ(whole.line, parts.line) << text;
    EXPECT_EQ(whole.positions, parts.positions) << text;
  }
}

}  // namespace

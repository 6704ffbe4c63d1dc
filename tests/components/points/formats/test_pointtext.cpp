// The text formats: lines of numbers as such, as a table (csv) and as scans (pts).

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "components/points/formats/csvreader.h"
#include "components/points/formats/pointtextreader.h"
#include "components/points/formats/pointtextwriter.h"
#include "components/points/formats/ptsreader.h"
#include "tests/components/points/formats/pointdamage.h"
#include "tests/components/points/formats/pointmedia.h"

namespace {

using tests::Cloud;
using tests::Loaded;

Loaded parse(const std::string& text, size_t piece = SIZE_MAX) {
  return tests::load<PointTextReader>(text, piece);
}

class PlainWriter : public PointTextWriter {
 public:
  explicit PlainWriter(const PointWriteOptions& options)
      : PointTextWriter(PointTextKind::plain, options) {}
};

class CsvWriter : public PointTextWriter {
 public:
  explicit CsvWriter(const PointWriteOptions& options)
      : PointTextWriter(PointTextKind::csv, options) {}
};

class PtsWriter : public PointTextWriter {
 public:
  explicit PtsWriter(const PointWriteOptions& options)
      : PointTextWriter(PointTextKind::pts, options) {}
};

std::string written(const Cloud& cloud, int decimals = PointWriteOptions::kAsRead) {
  PointWriteOptions options;
  options.decimals = decimals;
  return tests::save<PlainWriter>({cloud}, options).bytes;
}

TEST(PointText, ReadsCoordinatesWithAndWithoutColours) {
  const Loaded plain = parse("1 2 3\n-4.5 5e3 .25\n");
  ASSERT_TRUE(plain.good);
  EXPECT_EQ(plain.clouds[0].xyz, (std::vector<double>{1, 2, 3, -4.5, 5000, 0.25}));
  EXPECT_TRUE(plain.clouds[0].colors.empty());

  const Loaded colored = parse("1 2 3 84 0 255\n");
  ASSERT_TRUE(colored.good);
  EXPECT_EQ(colored.clouds[0].colors[0], (PointColor{84, 0, 255}));
}

TEST(PointText, TakesColoursWithZerosInFront) {
  const Loaded parsed = parse("1 2 3 007 0000255 00\n");
  ASSERT_TRUE(parsed.good) << parsed.told();
  EXPECT_EQ(parsed.clouds[0].colors[0], (PointColor{7, 255, 0}));
}

TEST(PointText, TakesEachSeparatorAndLineEnd) {
  const char* const texts[] = {"1 2 3",      "1\t2\t3",      "1,2,3",      "1;2;3",
                               "1 , 2 ,\t3", " 1  2  3  ",   "1 2 3\n",    "1 2 3\r\n",
                               "1 2 3\r",    "1 2 3 # note", "1 2 3#note", "+1 +2 +3\n"};
  for (const char* text : texts) {
    const Loaded parsed = parse(text);
    EXPECT_TRUE(parsed.good) << text << ": " << parsed.told();
    EXPECT_EQ(parsed.clouds[0].xyz, (std::vector<double>{1, 2, 3})) << text;
  }
}

TEST(PointText, PassesOverCommentsEmptyLinesAndTheByteOrderMark) {
  const Loaded parsed = parse("\xEF\xBB\xBF# points\n\n  \t\r\n   # more\n1 2 3\n\n");
  ASSERT_TRUE(parsed.good) << parsed.told();
  EXPECT_EQ(parsed.clouds[0].xyz.size(), 3u);
}

TEST(PointText, AFileWithoutPointsIsACloudWithoutPoints) {
  for (const char* text : {"", "\n\n", "# nothing\n"}) {
    const Loaded parsed = parse(text);
    ASSERT_TRUE(parsed.good);
    ASSERT_EQ(parsed.clouds.size(), 1u);
    EXPECT_TRUE(parsed.clouds[0].xyz.empty());
  }
}

TEST(PointText, NamesTheLineThatIsNoPoint) {
  const struct {
    const char* line;
    const char* problem;
  } rows[] = {
      {"1", "a point needs three coordinates"},
      {"1 2", "a point needs three coordinates"},
      {"1 2 # 3", "a point needs three coordinates"},
      {"a 2 3", "a coordinate is no number"},
      {"1 2 3x", "a coordinate is no number"},
      {"1,,2,3", "a coordinate is no number"},
      {"1 2\xC2\xA0 3", "a coordinate is no number"},
      {"1 2\r3", "a coordinate is no number"},
      {"nan 2 3", "a coordinate is no number"},
      {"1 inf 3", "a coordinate is no number"},
      {"1e999 2 3", "a coordinate is no number"},
      {"+-1 2 3", "a coordinate is no number"},
      {"++1 2 3", "a coordinate is no number"},
      {"0x1 2 3", "a coordinate is no number"},
      {"1 2 3 4", "a colour needs three values"},
      {"1 2 3 4 5", "a colour needs three values"},
      {"1 2 3 4 5 256", "a colour value is no whole number from 0 to 255"},
      {"1 2 3 4 5 -6", "a colour value is no whole number from 0 to 255"},
      {"1 2 3 4 5+6", "a colour value is no whole number from 0 to 255"},
      {"1 2 3 4.5 5 6", "a colour value is no whole number from 0 to 255"},
      {"1 2 3 4 5 6 7", "there is more behind the colour"},
      {"1 2 3 4 5 6.5", "there is more behind the colour"},
      {"1 2 3 ; # nothing behind", "a separator has nothing behind it"},
      {"1 2 3,", "a separator has nothing behind it"},
  };
  for (const auto& row : rows) {
    const Loaded parsed = parse("7 8 9\n# fine\n" + std::string(row.line) + "\n1 2 3\n");
    EXPECT_FALSE(parsed.good) << row.line;
    EXPECT_EQ(parsed.told(), std::string("line 3: ") + row.problem) << row.line;
  }
  EXPECT_EQ(parse(std::string("1 2 3\n1 2\0 3\n", 13)).told(), "line 2: a coordinate is no number");
}

TEST(PointText, RefusesAMixOfColouredAndPlainPoints) {
  const char* told = "line 2: some points have a colour and some have none";
  EXPECT_EQ(parse("1 2 3 4 5 6\n1 2 3\n").told(), told);
  EXPECT_EQ(parse("1 2 3\n1 2 3 4 5 6\n").told(), told);
}

TEST(PointText, GathersNoEndlessLine) {
  const std::string longest(PointTextReader::kLongestLine - 5, ' ');
  EXPECT_TRUE(parse(longest + "1 2 3\n").good);
  for (const size_t piece : {size_t{64}, size_t{1000}, SIZE_MAX}) {
    EXPECT_EQ(parse("1 2 3\n" + longest + "1  2 3\n1 2 3\n", piece).told(),
              "line 2: the line is too long");
    EXPECT_EQ(parse("1 2 3\n" + std::string(1 << 20, '1'), piece).told(),
              "line 2: the line is too long");
  }
}

TEST(PointText, GivesTheSameResultWhereverTheBlocksEnd) {
  const std::string text = "1.25 2.50 3.75 1 2 3\r\n# note\n\n-4.00 5 6 7 8 9\r\n10 11 12 13 14 15";
  const Loaded whole = parse(text);
  ASSERT_TRUE(whole.good);
  for (size_t piece = 1; piece <= text.size(); ++piece) {
    const Loaded parts = parse(text, piece);
    ASSERT_TRUE(parts.good) << piece << ": " << parts.told();
    EXPECT_TRUE(parts.clouds[0].samePoints(whole.clouds[0])) << piece;
  }
}

TEST(PointText, KeepsTheDigitsThatTheFileWasWrittenWith) {
  EXPECT_EQ(parse("1.25 2.5 3\n").clouds[0].decimals, 2);
  EXPECT_EQ(parse("1 2 3\n").clouds[0].decimals, 0);
  EXPECT_EQ(parse("1e3 2.5 3\n").clouds[0].decimals, PointCloudHead::kShortest);
  EXPECT_EQ(parse("0.1234567890123456789 2 3\n").clouds[0].decimals, PointCloudHead::kShortest);
  EXPECT_EQ(parse("# none\n").clouds[0].decimals, PointCloudHead::kShortest);
  const std::string text = "637177.98 849393.90 411.00\n1.50 -0.05 3.00\n";
  EXPECT_EQ(written(parse(text).clouds[0]), text);
}

TEST(PointText, SurvivesEveryDamageOfOneByte) {
  tests::expectDamageIsHarmless<PointTextReader>("1.5 2.5 3.5 10 20 30\n4 5 6 40 50 60\n");
  tests::expectDamageIsHarmless<CsvReader>("x,y,z,red,green,blue,\"a\"\n1,2,3,4,5,6,7\n");
  tests::expectDamageIsHarmless<PtsReader>("2\n1 2 3 0.5 10 20 30\n4 5 6 -7 40 50 60\n");
}

TEST(PointText, SurvivesRandomBytes) {
  std::mt19937 random(1);
  const std::string letters = "0123456789.,;+-eE #\r\n\tx\"";
  for (int round = 0; round < 2000; ++round) {
    std::string text(random() % 200, '\0');
    for (char& c : text) c = letters[random() % letters.size()];
    const Loaded whole = parse(text);
    const Loaded parts = parse(text, 1 + random() % 20);
    EXPECT_EQ(whole.told(), parts.told()) << text;
    EXPECT_EQ(whole.clouds.empty(), parts.clouds.empty()) << text;
    tests::load<CsvReader>("x,y,z\n" + text);
    tests::load<PtsReader>("3\n" + text);
  }
}

TEST(PointText, WritesTheNumberOfDecimalsThatIsAskedFor) {
  Cloud cloud;
  cloud.xyz = {637177.30, -0.05, 411};
  EXPECT_EQ(written(cloud, 2), "637177.30 -0.05 411.00\n");
  cloud.xyz = {1, -2, 3};
  EXPECT_EQ(written(cloud, 0), "1 -2 3\n");
  cloud.colors = {{84, 0, 255}};
  EXPECT_EQ(written(cloud, 1), "1.0 -2.0 3.0 84 0 255\n");
}

TEST(PointText, FallsBackOnTheShortestFormThatIsExact) {
  Cloud cloud;
  cloud.xyz = {0.125, 1, 1};
  EXPECT_EQ(written(cloud, 2), "0.125 1.00 1.00\n");
  cloud.xyz = {0.1, 1e300, 1};
  EXPECT_EQ(written(cloud), "0.1 1e+300 1\n");
  cloud.xyz = {123456.75, 0, 0};
  EXPECT_EQ(written(cloud, 15), "123456.75 0.000000000000000 0.000000000000000\n");
  cloud.xyz = {0.5, 0, 0};
  EXPECT_EQ(written(cloud, 99), "0.5 0 0\n");
  cloud.xyz = {-0.0, 0, 1};
  EXPECT_EQ(written(cloud, 2), "-0 0.00 1.00\n");
}

TEST(PointText, EveryCoordinateReadsBackAsTheSameDouble) {
  std::mt19937_64 random(2);
  Cloud cloud;
  for (int i = 0; i < 90000; ++i) {
    double value;
    do {
      value = i % 2 == 0 ? std::bit_cast<double>(random())
                         : static_cast<double>(static_cast<int64_t>(random() % 2000000000)) / 100;
    } while (!(value - value == 0));
    cloud.xyz.push_back(value);
  }
  const double most = std::numeric_limits<double>::max();
  cloud.xyz.insert(cloud.xyz.end(), {std::numeric_limits<double>::denorm_min(), most, -most});
  for (const int decimals : {-1, 0, 2, 9, 15}) {
    const Loaded loaded = parse(written(cloud, decimals));
    ASSERT_TRUE(loaded.good) << loaded.told();
    EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << decimals;
  }
}

TEST(PointText, TheWidestNumbersAndColoursFitTheirRoom) {
  Cloud cloud;
  const double longest = -2.2250738585072014e-308;
  cloud.xyz = {longest, longest, longest, -9007199.254740991, -9007199.254740991, longest};
  cloud.colors = {{255, 255, 255}, {255, 255, 255}};
  for (const int decimals : {-1, 9, 15}) {
    EXPECT_TRUE(parse(written(cloud, decimals)).clouds[0].samePoints(cloud));
  }
}

TEST(PointText, SeveralCloudsAreJoinedAndThatIsSaid) {
  const Cloud cloud = tests::spreadCloud(2, true);
  const tests::Saved saved = tests::save<PlainWriter>({cloud, cloud});
  EXPECT_EQ(tests::shown(saved.notes),
            "The file F cannot keep objects apart: 2 of them were joined into one\n");
  EXPECT_EQ(parse(saved.bytes).clouds[0].colors.size(), 4u);
}

TEST(PointText, EachKindGivesBackTheSamePoints) {
  for (const bool colors : {false, true}) {
    for (const int count : {0, 1, 1024, 3000}) {
      const Cloud cloud = tests::spreadCloud(count, colors);
      const Loaded plain = parse(tests::save<PlainWriter>({cloud}).bytes);
      const Loaded table = tests::load<CsvReader>(tests::save<CsvWriter>({cloud}).bytes);
      const Loaded scan = tests::load<PtsReader>(tests::save<PtsWriter>({cloud}).bytes);
      for (const Loaded& loaded : {plain, table, scan}) {
        ASSERT_TRUE(loaded.good) << loaded.told();
        EXPECT_EQ(tests::shown(loaded.notes), "");
        EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << count;
      }
    }
  }
}

TEST(PointText, AFullDiskEndsTheWriting) {
  const Cloud cloud = tests::spreadCloud(100000, true);
  EXPECT_FALSE(tests::save<PlainWriter>({cloud}, {}, 300000).good);
  EXPECT_FALSE(tests::save<CsvWriter>({cloud}, {}, 300000).good);
  EXPECT_FALSE(tests::save<PtsWriter>({cloud}, {}, 300000).good);
}

Loaded table(const std::string& text) { return tests::load<CsvReader>(text); }

TEST(CsvTable, WritesNamesAndCommas) {
  Cloud cloud;
  cloud.xyz = {1, 2.5, 3};
  EXPECT_EQ(tests::save<CsvWriter>({cloud}).bytes, "x,y,z\n1,2.5,3\n");
  cloud.colors = {{4, 5, 6}};
  EXPECT_EQ(tests::save<CsvWriter>({cloud}).bytes, "x,y,z,red,green,blue\n1,2.5,3,4,5,6\n");
}

TEST(CsvTable, ColumnsAreFoundByName) {
  const char* const texts[] = {
      "x,y,z,red,green,blue\n1,2,3,4,5,6\n",
      "# points\n\n\"B\";\"G\";\"R\";\"Z\";\"Y\";\"X\"\r\n6;5;4;3;2;1\r\n",
      "X\tname\tY\tZ\tr\tg\tb\n1\t\"a\tb\"\t2\t3\t4\t5\t6",
      "time, x , y , z , red , green , blue\n,\" 1\", 2 ,3,4,5,6\n",
      "1,2,3,4,5,6\n",
  };
  for (const char* text : texts) {
    const Loaded loaded = table(text);
    ASSERT_TRUE(loaded.good) << text << loaded.told();
    EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{1, 2, 3})) << text;
    EXPECT_EQ(loaded.clouds[0].colors, (std::vector<PointColor>{{4, 5, 6}})) << text;
  }
}

TEST(CsvTable, ColumnsThatAreNotKeptAreNamed) {
  EXPECT_EQ(tests::shown(table("x,y,z,intensity,red,x\n1,2,3,4,5,6\n").notes),
            "The file F holds attributes of 1 points that are not kept: intensity, x, red\n");
}

TEST(CsvTable, LinesThatAreNoPointsAreRefused) {
  const struct {
    const char* text;
    const char* told;
  } rows[] = {
      {"x,y\n1,2\n", "line 1: the first line names no columns x, y and z"},
      {"nan,1,2\n", "line 1: the first line names no columns x, y and z"},
      {"x,y,z\nx,y,z\n", "line 2: a coordinate is no number"},
      {"x,y,z\n1,2\n", "line 2: the line has another number of columns than the first"},
      {"x,y,z\n1,2,3,\n", "line 2: the line has another number of columns than the first"},
      {"x,y,z\n1,,3\n", "line 2: a coordinate is no number"},
      {"x,y,z\n1,2 2,3\n", "line 2: a coordinate is no number"},
      {"x,y,z\n1,inf,3\n", "line 2: a coordinate is no number"},
      {"x,y,z,r,g,b\n1,2,3,4,5,256\n", "line 2: a colour value is no whole number from 0 to 255"},
      {"x,y,z,r,g,b\n1,2,3,4,5,\n", "line 2: a colour value is no whole number from 0 to 255"},
      {"1,2,3\nx,y,z\n", "line 2: a coordinate is no number"},
  };
  for (const auto& row : rows) EXPECT_EQ(table(row.text).told(), row.told) << row.text;
}

Loaded scan(const std::string& text) { return tests::load<PtsReader>(text); }

TEST(PtsScan, WritesTheCountFirst) {
  Cloud cloud;
  cloud.xyz = {1, 2.5, 3};
  cloud.colors = {{4, 5, 6}};
  EXPECT_EQ(tests::save<PtsWriter>({cloud}).bytes, "1\n1 2.5 3 4 5 6\n");
}

TEST(PtsScan, ReadsThreeFourSixAndSevenColumns) {
  const struct {
    const char* text;
    bool colors;
    const char* notes;
  } rows[] = {
      {"2\n1 2 3\n4 5 6\n", false, ""},
      {"2\n1 2 3 -100\n4 5 6 0.5\n", false,
       "The file F holds attributes of 2 points that are not kept: intensity\n"},
      {"2\r\n1 2 3 7 8 9\r\n4 5 6 7 8 9\r\n", true, ""},
      {" 2 # points\n1 2 3 1 7 8 9\n\n4,5,6,1,7,8,9", true,
       "The file F holds attributes of 2 points that are not kept: intensity\n"},
      {"1 2 3\n4 5 6\n", false, ""},
  };
  for (const auto& row : rows) {
    const Loaded loaded = scan(row.text);
    ASSERT_TRUE(loaded.good) << row.text << loaded.told();
    EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{1, 2, 3, 4, 5, 6})) << row.text;
    EXPECT_EQ(loaded.clouds[0].colors, row.colors ? (std::vector<PointColor>{{7, 8, 9}, {7, 8, 9}})
                                                  : std::vector<PointColor>());
    EXPECT_EQ(tests::shown(loaded.notes), row.notes) << row.text;
  }
}

TEST(PtsScan, EachCountBeginsACloud) {
  const Loaded loaded = scan("2\n1 2 3\n4 5 6\n0\n1\n1 2 3 4 5 6\n");
  ASSERT_TRUE(loaded.good) << loaded.told();
  ASSERT_EQ(loaded.clouds.size(), 3u);
  EXPECT_EQ(loaded.clouds[0].xyz.size(), 6u);
  EXPECT_EQ(loaded.clouds[1].xyz.size(), 0u);
  EXPECT_EQ(loaded.clouds[2].colors.size(), 1u);
}

TEST(PtsScan, LinesThatAreNoPointsAreRefused) {
  const struct {
    const char* text;
    const char* told;
  } rows[] = {
      {"2\n1 2 3\n      ", "line 3: the file ends before its last point"},
      {"1\n1 2 3\n1 2 3\n", "line 3: the file holds more points than it announces"},
      {"0\n1 2 3\n", "line 2: the file holds more points than it announces"},
      {"2\n1 2 3\n1       ", "line 3: a point needs three coordinates"},
      {"-1\n1 2 3\n", "line 1: the number of points is no whole number"},
      {"2\n1 2 3\n1 2 3 4\n", "line 3: the line has another number of columns than the first"},
      {"1\n1 2 3 x\n", "line 2: x is no number"},
      {"1\n1 2 nan 4\n", "line 2: a coordinate is no number"},
      {"1\n1 2 3 4 5\n", "line 2: a colour needs three values"},
      {"1\n1 2 3 4 5 6 256\n", "line 2: a colour value is no whole number from 0 to 255"},
      {"1\n1 2 3 4 5 6 7 8\n", "line 2: there is more behind the colour"},
      {"1000000\n1 2 3\n", "byte 0: the file is too short for the 1000000 points it announces"},
      {"99999999999999999\n1 2 3\n", "byte 0: the file holds too many points"},
      {"99999999999999999999999\n", "line 1: a point needs three coordinates"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(scan(row.text).told(), row.told) << row.text;
    EXPECT_LE(scan(row.text).roomAsked, 2);
  }
}

// Of nothing at all is left a file without points.
TEST(PtsScan, FilesThatAreCutAreRefused) {
  tests::expectCutsFail<PtsReader>(tests::save<PtsWriter>({tests::spreadCloud(5, true)}).bytes, 1);
}

}  // namespace

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>

#include "components/points/formats/pcdreader.h"
#include "components/points/formats/pcdwriter.h"
#include "tests/components/points/formats/pointdamage.h"
#include "tests/components/points/formats/pointmedia.h"

namespace {

using tests::bytesOf;
using tests::Cloud;
using tests::Loaded;
using tests::Saved;

Loaded loadPcd(const std::string& bytes) { return tests::load<PcdReader>(bytes); }

Saved savePcd(const std::vector<Cloud>& clouds, bool binary = true, int real = 0) {
  PointWriteOptions options;
  options.pcdBinary = binary;
  options.realBytes = real;
  return tests::save<PcdWriter>(clouds, options);
}

std::string header(const std::string& fields, const std::string& sizes, const std::string& types,
                   const std::string& counts, int points, const std::string& form) {
  const std::string count = std::to_string(points);
  return "# .PCD v.7 - Point Cloud Data file format\nVERSION .7\nFIELDS " + fields + "\nSIZE " +
         sizes + "\nTYPE " + types + "\n" + (counts.empty() ? "" : "COUNT " + counts + "\n") +
         "WIDTH " + count + "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS " + count + "\nDATA " +
         form + "\n";
}

std::string plain(int points, const std::string& form) {
  return header("x y z", "4 4 4", "F F F", "1 1 1", points, form);
}

TEST(Pcd, BothFormsGiveBackTheSamePoints) {
  for (const bool binary : {false, true}) {
    for (const bool colors : {false, true}) {
      for (const int count : {0, 1, 1023, 1024, 1025, 30000}) {
        const Cloud cloud = tests::spreadCloud(count, colors);
        const Saved saved = savePcd({cloud}, binary);
        ASSERT_TRUE(saved.good);
        EXPECT_EQ(saved.progress, count);
        EXPECT_TRUE(saved.notes.empty());
        const Loaded loaded = loadPcd(saved.bytes);
        ASSERT_TRUE(loaded.good) << loaded.told();
        EXPECT_EQ(tests::shown(loaded.notes), "");
        EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << binary << " " << count;
      }
    }
  }
}

TEST(Pcd, TheBytesAreThoseOfTheFormat) {
  Cloud cloud;
  cloud.xyz = {1, 2, 3};
  cloud.colors = {{10, 20, 30}};
  const std::string lines =
      "# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\nFIELDS x y z rgb\nSIZE 4 4 4 4\n"
      "TYPE F F F U\nCOUNT 1 1 1 1\nWIDTH 1\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 1\n";
  EXPECT_EQ(savePcd({cloud}).bytes,
            lines + "DATA binary\n" + bytesOf<float>({1, 2, 3}) + std::string("\x1E\x14\x0A\0", 4));
  cloud.xyz[0] = 0.1;
  cloud.colors.clear();
  EXPECT_EQ(savePcd({cloud}, false).bytes,
            "# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\nFIELDS x y z\nSIZE 8 8 8\n"
            "TYPE F F F\nCOUNT 1 1 1\nWIDTH 1\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 1\n"
            "DATA ascii\n0.1 2 3\n");
  cloud.colors = {{1, 2, 3}};
  const std::string text = savePcd({cloud}, false).bytes;
  EXPECT_EQ(text.substr(text.size() - 14), "0.1 2 3 66051\n");
}

TEST(Pcd, FieldsStandInAnyOrderAndHaveAnyType) {
  const std::string start =
      header("normal z rgba x _ y", "4 2 4 8 1 4", "F I U F U I", "3 1 1 1 5 1", 2, "binary");
  auto record = [](int16_t z, double x, int32_t y) {
    return bytesOf<float>({1, 2, 3}) + bytesOf<int16_t>({z}) + "\x03\x02\x01\xFF" +
           bytesOf<double>({x}) + std::string(5, 'p') + bytesOf<int32_t>({y});
  };
  const Loaded loaded = loadPcd(start + record(-7, 0.1, -70000) + record(8, 9, 10));
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{0.1, -70000, -7, 9, 10, 8}));
  EXPECT_EQ(loaded.clouds[0].colors, (std::vector<PointColor>{{1, 2, 3}, {1, 2, 3}}));
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds attributes of 2 points that are not kept: normal\n");

  const Loaded text = loadPcd(
      header("normal z rgba x _ y", "4 2 4 8 1 4", "F I U F U I", "3 1 1 1 5 1", 1, "ascii") +
      "1 2 3 -7 66051 0.1 0 0 0 0 0 -70000\r\n");
  ASSERT_TRUE(text.good) << text.told();
  EXPECT_EQ(text.clouds[0].xyz, (std::vector<double>{0.1, -70000, -7}));
  EXPECT_EQ(text.clouds[0].colors, (std::vector<PointColor>{{1, 2, 3}}));
}

TEST(Pcd, EveryTypeOfACoordinateIsRead) {
  const struct {
    const char* size;
    const char* type;
    std::string bytes;
    double value;
  } rows[] = {
      {"1", "I", bytesOf<int8_t>({-5}), -5},
      {"1", "U", bytesOf<uint8_t>({250}), 250},
      {"2", "I", bytesOf<int16_t>({-500}), -500},
      {"2", "U", bytesOf<uint16_t>({65000}), 65000},
      {"4", "I", bytesOf<int32_t>({-70000}), -70000},
      {"4", "U", bytesOf<uint32_t>({4000000000}), 4e9},
      {"4", "F", bytesOf<float>({0.5f}), 0.5},
      {"8", "F", bytesOf<double>({0.1}), 0.1},
  };
  for (const auto& row : rows) {
    const Loaded loaded = loadPcd(header("x y z", std::string("1 1 ") + row.size,
                                         std::string("U U ") + row.type, "", 1, "binary") +
                                  "\x01\x02" + row.bytes);
    ASSERT_TRUE(loaded.good) << row.type << row.size << loaded.told();
    EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{1, 2, row.value}));
  }
}

TEST(Pcd, PackedColoursMayBeFloats) {
  const std::string start = header("x y z rgb", "4 4 4 4", "F F F F", "1 1 1 1", 1, "ascii");
  for (const char* color : {"4.0e-41", "16711680", "9.14811e-39"}) {
    EXPECT_TRUE(loadPcd(start + "1 2 3 " + color + "\n").good) << color;
  }
  EXPECT_EQ(loadPcd(start + "1 2 3 16711935\n").clouds[0].colors[0], (PointColor{255, 0, 255}));
  const float packed = std::bit_cast<float>(0x00123456u);
  char text[64];
  std::snprintf(text, sizeof text, "1 2 3 %.9g\n", static_cast<double>(packed));
  EXPECT_EQ(loadPcd(start + text).clouds[0].colors[0], (PointColor{0x12, 0x34, 0x56}));
  EXPECT_EQ(loadPcd(start + "1 2 3 red\n").told(), "line 12: red is no number");
}

TEST(Pcd, WhatIsNotKeptIsNamed) {
  std::string text =
      "VERSION 0.7\nFIELDS x y z intensity\nSIZE 4 4 4 4\nTYPE F F F F\nWIDTH 2\nHEIGHT 2\n"
      "VIEWPOINT 1 0 0 1 0 0 0\nDATA ascii\n1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n";
  EXPECT_EQ(tests::shown(loadPcd(text).notes),
            "The file F holds attributes of 4 points that are not kept: intensity\n"
            "The file F holds data that is not kept: viewpoint, 2 rows of 2\n");
  EXPECT_EQ(tests::shown(loadPcd(plain(1, "binary") + std::string(12, '\0') + "12345").notes),
            "The file F has 5 bytes behind its last point; they are passed over\n");
}

TEST(Pcd, FourBytesThatWereAskedForAreALossWithFigures) {
  Cloud cloud;
  cloud.xyz = {637177.98, 0.5, 3};
  EXPECT_EQ(tests::shown(savePcd({cloud}, true, 4).notes),
            "Coordinates were rounded to fit the file F: 1 of them, by up to 0.02\n");
  EXPECT_EQ(savePcd({cloud, cloud}, true, 8).notes.size(), 1u);  // joined
}

TEST(Pcd, HeadersThatAreNoneAreRefusedWithTheirLine) {
  const std::string rest = "WIDTH 1\nHEIGHT 1\nDATA ascii\n1 2 3\n";
  const struct {
    std::string text;
    const char* told;
  } rows[] = {
      {"", "line 1: the file ends inside its header"},
      {"ply\n", "line 1: \"ply\" is no line of a PCD header"},
      {"VERSION .7\nVERSION .7\n", "line 2: \"VERSION\" stands twice in the header"},
      {"FIELDS x y z\nCOLUMNS x y z\n", "line 2: \"COLUMNS\" stands twice in the header"},
      {"FIELDS x y z\nSIZE 4 4\n", "line 2: \"SIZE\" is no line of a PCD header"},
      {"SIZE 4 4 4\n", "line 1: \"SIZE\" is no line of a PCD header"},
      {"FIELDS x y z\nSIZE 4 3 4\n", "line 2: the field \"y\" has no size or type that is known"},
      {"FIELDS x y z\nTYPE F F D\n", "line 2: the field \"z\" has no size or type that is known"},
      {"FIELDS x y z\nCOUNT 1 0 1\n", "line 2: the field \"y\" has no size or type that is known"},
      {"FIELDS x y z\nCOUNT 1 99999999999 1\n",
       "line 2: the field \"y\" has no size or type that is known"},
      {"WIDTH -1\n", "line 1: the number of points is no whole number"},
      {"WIDTH 1 2\n", "line 1: the number of points is no whole number"},
      {rest, "line 3: the header has no \"FIELDS\""},
      {"FIELDS x y z\n" + rest, "line 4: the header has no \"SIZE\""},
      {"FIELDS x y z\nSIZE 4 4 4\n" + rest, "line 5: the header has no \"TYPE\""},
      {"FIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nDATA ascii\n", "line 4: the header has no \"WIDTH\""},
      {"FIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nWIDTH 1\nDATA ascii\n",
       "line 5: the header has no \"HEIGHT\""},
      {"FIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nPOINTS 2\n" + rest,
       "line 7: width and height do not make the number of points"},
      {"FIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nWIDTH 9000000000000000000\nHEIGHT 3\nDATA ascii\n",
       "line 6: width and height do not make the number of points"},
      {"FIELDS x y a\nSIZE 4 4 4\nTYPE F F F\n" + rest,
       "line 6: the file has no fields x, y and z"},
      {"FIELDS x y z\nSIZE 4 4 8\nTYPE F F I\n" + rest,
       "line 6: the file has no fields x, y and z"},
      {"FIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nWIDTH 1\nHEIGHT 1\nDATA binary_compressed\n",
       "line 6: the points are compressed (binary_compressed), which is not read"},
      {"DATA hex\n", "line 1: the PCD form \"hex\" is not known"},
      {"VERSION " + std::string(70000, 'x') + "\n", "line 1: the line is too long"},
      {"FIELDS x y z big\nSIZE 4 4 4 8\nTYPE F F F F\nCOUNT 1 1 1 65536\n" + rest,
       "line 7: \"COUNT\" is no line of a PCD header"},
  };
  for (const auto& row : rows) {
    const Loaded loaded = loadPcd(row.text);
    EXPECT_EQ(loaded.told(), row.told);
    EXPECT_TRUE(loaded.clouds.empty());
  }
  std::string endless;
  for (int i = 0; i < 2000; ++i) endless += "# note\n";
  EXPECT_EQ(loadPcd(endless).told(), "line 1001: the header is too long");
}

TEST(Pcd, LinesThatAreNoPointsAreRefusedWithTheirLine) {
  const struct {
    const char* line;
    const char* told;
  } rows[] = {
      {"1 2      ", "line 13: the line has too few numbers"},
      {"1 2 3 4", "line 13: the line has too many numbers"},
      {"1 2 3x", "line 13: 3x is no number"},
      {"nan nan nan", "line 13: a coordinate is no finite number"},
      {"1 2 -inf", "line 13: a coordinate is no finite number"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(loadPcd(plain(2, "ascii") + "1 2 3\n" + row.line + "\n").told(), row.told);
  }
}

TEST(Pcd, CoordinatesThatAreNoNumbersAreRefusedWithTheirByte) {
  const std::string start = plain(2, "binary");
  for (const float bad :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    EXPECT_EQ(loadPcd(start + bytesOf<float>({1, 2, 3, 4, bad, 5})).told(),
              "byte " + std::to_string(start.size() + 16) + ": a coordinate is no finite number");
  }
}

TEST(Pcd, CountsBeyondTheFileAskForNoRoom) {
  for (const char* form : {"ascii", "binary"}) {
    for (const int points : {2, 1000000, 2147483646, 2147483647}) {
      const Loaded loaded = loadPcd(plain(points, form) + "1234");
      EXPECT_EQ(loaded.told().rfind("byte ", 0), 0u) << loaded.told();
      EXPECT_EQ(loaded.roomAsked, 0);
      EXPECT_FALSE(tests::load<PcdReader>(plain(points, form), SIZE_MAX, false).good);
    }
  }
}

TEST(Pcd, FilesThatAreCutAreRefused) {
  for (const bool binary : {false, true}) {
    tests::expectCutsFail<PcdReader>(savePcd({tests::spreadCloud(5, true)}, binary).bytes);
  }
}

TEST(Pcd, SurvivesEveryDamageOfOneByte) {
  for (const bool binary : {false, true}) {
    tests::expectDamageIsHarmless<PcdReader>(savePcd({tests::spreadCloud(3, true)}, binary).bytes);
  }
}

TEST(Pcd, BlocksMayEndAnywhere) {
  const Cloud cloud = tests::spreadCloud(50, true);
  for (const bool binary : {false, true}) {
    for (const size_t piece : {1u, 3u, 64u}) {
      const Loaded loaded = tests::load<PcdReader>(savePcd({cloud}, binary).bytes, piece);
      ASSERT_TRUE(loaded.good) << loaded.told();
      EXPECT_TRUE(loaded.clouds[0].samePoints(cloud));
    }
  }
}

TEST(Pcd, AFullDiskEndsTheWriting) {
  for (const bool binary : {false, true}) {
    PointWriteOptions options;
    options.pcdBinary = binary;
    EXPECT_FALSE(tests::save<PcdWriter>({tests::spreadCloud(100000, true)}, options, 300000).good);
  }
}

}  // namespace

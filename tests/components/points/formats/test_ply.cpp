#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "components/points/formats/plyreader.h"
#include "components/points/formats/plywriter.h"
#include "tests/components/points/formats/pointdamage.h"
#include "tests/components/points/formats/pointmedia.h"

namespace {

using tests::bytesOf;
using tests::Cloud;
using tests::Loaded;
using tests::Saved;

Loaded loadPly(const std::string& bytes) { return tests::load<PlyReader>(bytes); }

Saved savePly(const std::vector<Cloud>& clouds, PlyForm form = PlyForm::littleEndian,
              int real = 0) {
  PointWriteOptions options;
  options.plyForm = form;
  options.realBytes = real;
  return tests::save<PlyWriter>(clouds, options);
}

std::string header(const std::string& form, const std::string& lines) {
  return "ply\nformat " + form + " 1.0\n" + lines + "end_header\n";
}

const std::string kXyz = "property float x\nproperty float y\nproperty float z\n";

constexpr PlyForm kForms[] = {PlyForm::ascii, PlyForm::littleEndian, PlyForm::bigEndian};

TEST(Ply, EveryFormGivesBackTheSamePoints) {
  for (const PlyForm form : kForms) {
    for (const bool colors : {false, true}) {
      for (const int count : {0, 1, 2, 1023, 1024, 1025, 30000}) {
        const Cloud cloud = tests::spreadCloud(count, colors);
        const Saved saved = savePly({cloud}, form);
        ASSERT_TRUE(saved.good);
        EXPECT_EQ(saved.progress, count);
        EXPECT_TRUE(saved.notes.empty());
        const Loaded loaded = loadPly(saved.bytes);
        ASSERT_TRUE(loaded.good) << loaded.told();
        EXPECT_EQ(tests::shown(loaded.notes), "");
        ASSERT_EQ(loaded.clouds.size(), 1u);
        EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << static_cast<int>(form) << " " << count;
      }
    }
  }
}

TEST(Ply, ExtremeCoordinatesComeBackToTheLastBit) {
  Cloud cloud;
  using Limits = std::numeric_limits<double>;
  cloud.xyz = {Limits::max(), -Limits::max(), Limits::min(), Limits::denorm_min(),    -0.0,
               0.1,           1.0 / 3,        1e22,          std::nextafter(1.0, 2.0)};
  for (const PlyForm form : kForms) {
    const Loaded loaded = loadPly(savePly({cloud}, form).bytes);
    ASSERT_TRUE(loaded.good) << loaded.told();
    EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << static_cast<int>(form);
  }
}

TEST(Ply, TheBytesAreThoseOfTheFormat) {
  Cloud cloud;
  cloud.xyz = {1, 2, 3};
  cloud.colors = {{10, 20, 30}};
  const std::string lines = "element vertex 1\n" + kXyz +
                            "property uchar red\nproperty uchar green\nproperty uchar blue\n";
  EXPECT_EQ(savePly({cloud}).bytes,
            header("binary_little_endian", lines) + bytesOf<float>({1, 2, 3}) + "\x0A\x14\x1E");
  EXPECT_EQ(savePly({cloud}, PlyForm::bigEndian).bytes,
            header("binary_big_endian", lines) +
                std::string("\x3F\x80\0\0\x40\0\0\0\x40\x40\0\0\x0A\x14\x1E", 15));
  cloud.xyz[0] = 0.1;
  EXPECT_EQ(savePly({cloud}, PlyForm::ascii).bytes,
            "ply\nformat ascii 1.0\nelement vertex 1\nproperty double x\nproperty double y\n"
            "property double z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n"
            "end_header\n0.1 2 3 10 20 30\n");
}

TEST(Ply, CoordinatesTakeFourBytesWhereThatLosesNothing) {
  Cloud cloud;
  cloud.xyz = {0.5, 1024.25, -3};
  EXPECT_NE(savePly({cloud}).bytes.find("property float x"), std::string::npos);
  EXPECT_NE(savePly({cloud}, PlyForm::littleEndian, 8).bytes.find("property double x"),
            std::string::npos);
  cloud.xyz[2] = 0.1;
  EXPECT_NE(savePly({cloud}).bytes.find("property double x"), std::string::npos);
}

TEST(Ply, FourBytesThatWereAskedForAreALossWithFigures) {
  Cloud cloud;
  cloud.xyz = {637177.98, 0.5, 849393.95, 1, 2, 3};
  const Saved saved = savePly({cloud}, PlyForm::littleEndian, 4);
  ASSERT_TRUE(saved.good);
  EXPECT_EQ(tests::shown(saved.notes),
            "Coordinates were rounded to fit the file F: 2 of them, by up to 0.02\n");
  EXPECT_EQ(loadPly(saved.bytes).clouds[0].xyz[0], 637178.0);
}

TEST(Ply, FourBytesThatCannotHoldACoordinateAreRefused) {
  Cloud cloud;
  cloud.xyz = {1e39, 0, 0};
  const Saved saved = savePly({cloud}, PlyForm::littleEndian, 4);
  EXPECT_FALSE(saved.good);
  EXPECT_STREQ(saved.problem, "A coordinate is too large for the form of the file %1");
}

TEST(Ply, SeveralCloudsAreJoinedAndThatIsSaid) {
  const Cloud first = tests::spreadCloud(3, true);
  Cloud second = tests::spreadCloud(2, true);
  Saved saved = savePly({first, second});
  EXPECT_EQ(tests::shown(saved.notes),
            "The file F cannot keep objects apart: 2 of them were joined into one\n");
  EXPECT_EQ(loadPly(saved.bytes).clouds[0].colors.size(), 5u);
  second.colors.clear();
  saved = savePly({first, second});
  EXPECT_TRUE(loadPly(saved.bytes).clouds[0].colors.empty());
  EXPECT_EQ(loadPly(saved.bytes).clouds[0].xyz.size(), 15u);
  EXPECT_EQ(loadPly(savePly({first, Cloud{}}).bytes).clouds[0].colors.size(), 3u);
}

TEST(Ply, PropertiesStandInAnyOrderAndHaveAnyType) {
  const std::string lines =
      "comment made by hand\nobj_info nothing\nelement vertex 2\nproperty uchar blue\n"
      "property short z\nproperty double nx\nproperty uchar red\nproperty int x\n"
      "property uint16 y\nproperty uchar green\n";
  const std::string records = "\x01" + bytesOf<int16_t>({-7}) + bytesOf<double>({0.5}) + "\x02" +
                              bytesOf<int32_t>({-70000}) + bytesOf<uint16_t>({65535}) + "\x03" +  //
                              "\x04" + bytesOf<int16_t>({8}) + bytesOf<double>({0.5}) + "\x05" +
                              bytesOf<int32_t>({9}) + bytesOf<uint16_t>({10}) + "\x06";
  const Loaded loaded = loadPly(header("binary_little_endian", lines) + records);
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{-70000, 65535, -7, 9, 10, 8}));
  EXPECT_EQ(loaded.clouds[0].colors, (std::vector<PointColor>{{2, 3, 1}, {5, 6, 4}}));
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds attributes of 2 points that are not kept: nx\n");
}

TEST(Ply, EveryTypeOfACoordinateIsRead) {
  struct Row {
    const char* name;
    std::string bytes;
    double value;
  };
  const Row rows[] = {
      {"char", bytesOf<int8_t>({-5}), -5},
      {"int8", bytesOf<int8_t>({-5}), -5},
      {"uchar", bytesOf<uint8_t>({250}), 250},
      {"uint8", bytesOf<uint8_t>({250}), 250},
      {"short", bytesOf<int16_t>({-500}), -500},
      {"int16", bytesOf<int16_t>({-500}), -500},
      {"ushort", bytesOf<uint16_t>({65000}), 65000},
      {"uint16", bytesOf<uint16_t>({65000}), 65000},
      {"int", bytesOf<int32_t>({-70000}), -70000},
      {"int32", bytesOf<int32_t>({-70000}), -70000},
      {"uint", bytesOf<uint32_t>({4000000000}), 4e9},
      {"uint32", bytesOf<uint32_t>({4000000000}), 4e9},
      {"float", bytesOf<float>({0.5f}), 0.5},
      {"float32", bytesOf<float>({0.5f}), 0.5},
      {"double", bytesOf<double>({0.1}), 0.1},
      {"float64", bytesOf<double>({0.1}), 0.1},
  };
  for (const Row& row : rows) {
    const std::string lines = "element vertex 1\nproperty uchar x\nproperty " +
                              std::string(row.name) + " y\nproperty uchar z\n";
    const std::string swapped(row.bytes.rbegin(), row.bytes.rend());
    for (const auto& [form, bytes] :
         {std::pair{"binary_little_endian", row.bytes}, std::pair{"binary_big_endian", swapped}}) {
      const Loaded loaded = loadPly(header(form, lines) + "\x01" + bytes + "\x02");
      ASSERT_TRUE(loaded.good) << row.name << loaded.told();
      EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{1, row.value, 2})) << row.name;
    }
  }
}

TEST(Ply, ElementsAroundThePointsArePassedOver) {
  const std::string lines =
      "element camera 2\nproperty double f\nelement patch 2\nproperty list uchar int corners\n"
      "property short kind\nelement vertex 1\n" +
      kXyz +
      "element face 1\nproperty list int8 uint32 vertex_indices\nelement nothing 0\n"
      "property float a\nelement empty 3\n";
  const std::string records = bytesOf<double>({1, 2}) + "\x02" + bytesOf<int32_t>({1, 2}) +
                              bytesOf<int16_t>({3}) + std::string(1, '\0') + bytesOf<int16_t>({3}) +
                              bytesOf<float>({4, 5, 6}) + "\x01" + bytesOf<uint32_t>({0});
  const Loaded loaded = loadPly(header("binary_little_endian", lines) + records);
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{4, 5, 6}));
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds data that is not kept: 2 camera, 2 patch, 1 face, 3 empty\n");

  const Loaded text = loadPly(header("ascii", lines) + "1\n2\n2 1 2 3\n0 3\n4 5 6\n1 0\n");
  ASSERT_TRUE(text.good) << text.told();
  EXPECT_EQ(text.clouds[0].xyz, (std::vector<double>{4, 5, 6}));
}

TEST(Ply, PointsWithListsOfTheirOwnAreRead) {
  const std::string lines =
      "element vertex 2\nproperty float x\nproperty list uchar short ring\nproperty float y\n"
      "property float z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n";
  const std::string records = bytesOf<float>({1}) + "\x02" + bytesOf<int16_t>({7, 8}) +
                              bytesOf<float>({2, 3}) + "\x0A\x0B\x0C" + bytesOf<float>({4}) +
                              std::string(1, '\0') + bytesOf<float>({5, 6}) + "\x0D\x0E\x0F";
  Cloud expected;
  expected.xyz = {1, 2, 3, 4, 5, 6};
  expected.colors = {{10, 11, 12}, {13, 14, 15}};
  const std::string file = header("binary_little_endian", lines) + records;
  const Loaded loaded = loadPly(file);
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_TRUE(loaded.clouds[0].samePoints(expected));
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds attributes of 2 points that are not kept: ring\n");
  const Loaded text =
      loadPly(header("ascii", lines) + "1 2 7 8 2 3 10 11 12\r\n\n 4\t0 5 6 13 14 15  \n");
  ASSERT_TRUE(text.good) << text.told();
  EXPECT_TRUE(text.clouds[0].samePoints(expected));
  tests::expectCutsFail<PlyReader>(file);
}

TEST(Ply, ColoursOfOtherTypesBecomeBytesAndRoundingIsCounted) {
  auto lines = [](const std::string& type) {
    return "element vertex 2\nproperty uchar x\nproperty uchar y\nproperty uchar z\nproperty " +
           type + " red\nproperty " + type + " green\nproperty " + type + " blue\n";
  };
  const std::string at(3, '\1');
  const std::vector<PointColor> expected = {{255, 0, 18}, {255, 0, 128}};
  const Loaded words =
      loadPly(header("binary_little_endian", lines("ushort")) + at +
              bytesOf<uint16_t>({0xFFFF, 0, 0x1234}) + at + bytesOf<uint16_t>({0xFF00, 0, 0x8080}));
  ASSERT_TRUE(words.good) << words.told();
  EXPECT_EQ(words.clouds[0].colors, expected);
  EXPECT_EQ(tests::shown(words.notes),
            "The file F has finer colours: 1 colour values were rounded to 256 steps\n");
  const Loaded shares = loadPly(
      header("binary_little_endian", lines("float")) + at + bytesOf<float>({1, 0, 18.f / 255}) +
      at + bytesOf<float>({1.5f, std::numeric_limits<float>::quiet_NaN(), 0.5f}));
  ASSERT_TRUE(shares.good) << shares.told();
  EXPECT_EQ(shares.clouds[0].colors, expected);
  EXPECT_EQ(tests::shown(shares.notes),
            "The file F has finer colours: 3 colour values were rounded to 256 steps\n");
  const Loaded text =
      loadPly(header("ascii", lines("float")) + "1 1 1 1 0 0.0706\n1 1 1 1 0 0.5019\n");
  ASSERT_TRUE(text.good) << text.told();
  EXPECT_EQ(text.clouds[0].colors, expected);
  EXPECT_EQ(loadPly(header("ascii", lines("int")) + "1 1 1 1 2 3\n1 1 1 1 2 3\n").clouds[0].colors,
            std::vector<PointColor>());
}

TEST(Ply, BytesBehindTheLastPointAreSaid) {
  const Loaded loaded = loadPly(savePly({tests::spreadCloud(3, true)}).bytes + "12345");
  ASSERT_TRUE(loaded.good);
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F has 5 bytes behind its last point; they are passed over\n");
}

TEST(Ply, HeadersThatAreNoneAreRefusedWithTheirLine) {
  const struct {
    std::string text;
    const char* told;
  } rows[] = {
      {"", "line 1: the file ends inside its header"},
      {"plx\n", "line 1: \"plx\" is no line of a PLY header"},
      {"ply\nformat ascii 2.0\n", "line 2: the PLY form \"ascii\" is not known"},
      {"ply\nformat middle_endian 1.0\n", "line 2: the PLY form \"middle_endian\" is not known"},
      {"ply\nformat ascii 1.0\nformat ascii 1.0\n", "line 3: \"format\" is declared twice"},
      {"ply\nelement vertex 0\nend_header\n", "line 3: the PLY form \"\" is not known"},
      {header("ascii", "nonsense 1\n"), "line 3: \"nonsense 1\" is no line of a PLY header"},
      {header("ascii", "\n"), "line 3: \"\" is no line of a PLY header"},
      {header("ascii", "element vertex -1\n"), "line 3: the number of points is no whole number"},
      {header("ascii", "element vertex 1x\n"), "line 3: the number of points is no whole number"},
      {header("ascii", "element vertex 99999999999999999999\n"),
       "line 3: the number of points is no whole number"},
      {header("ascii", "property float x\n"), "line 3: \"property\" is no line of a PLY header"},
      {header("ascii", "element vertex 1\nproperty quad x\n"),
       "line 4: the type \"quad\" of a property is not known"},
      {header("ascii", "element vertex 1\nproperty float x\nproperty int x\n"),
       "line 5: \"x\" is declared twice"},
      {header("ascii", "element vertex 1\nelement vertex 1\n"),
       "line 4: \"vertex\" is declared twice"},
      {header("ascii", "element vertex 1\nproperty float x\nproperty float y\n"),
       "line 6: the file has no element \"vertex\" with x, y and z"},
      {header("ascii", "element face 1\nproperty float x\n"),
       "line 5: the file has no element \"vertex\" with x, y and z"},
      {"ply\ncomment " + std::string(5000, 'x') + "\n", "line 2: the line is too long"},
  };
  for (const auto& row : rows) {
    const Loaded loaded = loadPly(row.text);
    EXPECT_FALSE(loaded.good) << row.told;
    EXPECT_EQ(loaded.told(), row.told);
    EXPECT_TRUE(loaded.clouds.empty());
  }
  std::string endless = "ply\n";
  for (int i = 0; i < 20000; ++i) endless += "comment\n";
  EXPECT_EQ(loadPly(endless).told(), "line 10001: the header is too long");
}

TEST(Ply, LinesThatAreNoPointsAreRefusedWithTheirLine) {
  const std::string start = header("ascii", "element vertex 2\n" + kXyz +
                                                "property uchar red\nproperty uchar green\n"
                                                "property uchar blue\n");
  const struct {
    const char* line;
    const char* told;
  } rows[] = {
      {"1 2            ", "line 12: the line has too few numbers"},
      {"1 2 3 4 5 6 7", "line 12: the line has too many numbers"},
      {"1 a 3 4 5 6", "line 12: a is no number"},
      {"1 2x 3 4 5 6", "line 12: 2x is no number"},
      {"1 1e999 3 4 5 6", "line 12: 1e999 is no number"},
      {"1 nan 3 4 5 6", "line 12: a coordinate is no finite number"},
      {"-inf 2 3 4 5 6", "line 12: a coordinate is no finite number"},
      {"1 2 3 4 5 256", "line 12: a colour value is no whole number from 0 to 255"},
      {"1 2 3 4 -5 6", "line 12: a colour value is no whole number from 0 to 255"},
      {"1 2 3 4 5.5 6", "line 12: a colour value is no whole number from 0 to 255"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(loadPly(start + "1 2 3 4 5 6\n" + row.line + "\n").told(), row.told);
  }
  EXPECT_EQ(loadPly(start + "1 2 3 4 5 6\n            \n").told(),
            "line 13: the file ends before its last point");
}

TEST(Ply, CoordinatesThatAreNoNumbersAreRefusedWithTheirByte) {
  const std::string start = header("binary_little_endian", "element vertex 2000\n" + kXyz);
  std::string records(2000 * 12, '\0');
  for (const float bad :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
        -std::numeric_limits<float>::infinity()}) {
    for (const size_t at : {size_t{0}, size_t{4}, size_t{1500 * 12 + 8}}) {
      std::string damaged = records;
      std::memcpy(&damaged[at], &bad, sizeof bad);
      EXPECT_EQ(loadPly(start + damaged).told(),
                "byte " + std::to_string(start.size() + at) + ": a coordinate is no finite number");
    }
  }
}

TEST(Ply, CountsBeyondTheFileAskForNoRoom) {
  for (const char* form : {"ascii", "binary_little_endian", "binary_big_endian"}) {
    for (const char* count : {"2", "1000000", "2147483646", "2147483647", "9000000000000000000"}) {
      const std::string text =
          header(form, "element vertex " + std::string(count) + "\n" + kXyz) + "123";
      const Loaded loaded = loadPly(text);
      EXPECT_FALSE(loaded.good) << form << count;
      EXPECT_EQ(loaded.told().rfind("byte ", 0), 0u) << loaded.told();
      EXPECT_EQ(loaded.roomAsked, 0);
      EXPECT_TRUE(loaded.clouds.empty());
      // Without a size it is found out on the way.
      const Loaded piped = tests::load<PlyReader>(text, SIZE_MAX, false);
      EXPECT_FALSE(piped.good);
      EXPECT_LE(piped.roomAsked, 0);
    }
  }
  const std::string faces = header("binary_little_endian",
                                   "element face 9000000000000000000\nproperty double a\n"
                                   "element vertex 0\n" +
                                       kXyz);
  EXPECT_EQ(loadPly(faces).told().rfind("byte ", 0), 0u);
  EXPECT_FALSE(tests::load<PlyReader>(faces, SIZE_MAX, false).good);
}

TEST(Ply, BlocksMayEndAnywhere) {
  for (const PlyForm form : kForms) {
    const Cloud cloud = tests::spreadCloud(40, true);
    const std::string bytes = savePly({cloud}, form).bytes;
    for (const size_t piece : {1u, 2u, 3u, 7u, 64u}) {
      const Loaded loaded = tests::load<PlyReader>(bytes, piece);
      ASSERT_TRUE(loaded.good) << loaded.told();
      EXPECT_TRUE(loaded.clouds[0].samePoints(cloud));
    }
  }
}

TEST(Ply, FilesThatAreCutAreRefused) {
  for (const PlyForm form : kForms) {
    tests::expectCutsFail<PlyReader>(savePly({tests::spreadCloud(5, true)}, form).bytes);
  }
}

TEST(Ply, SurvivesEveryDamageOfOneByte) {
  for (const PlyForm form : kForms) {
    tests::expectDamageIsHarmless<PlyReader>(savePly({tests::spreadCloud(3, true)}, form).bytes);
  }
}

TEST(Ply, AFullDiskEndsTheWriting) {
  const Cloud cloud = tests::spreadCloud(100000, true);
  for (const PlyForm form : kForms) {
    PointWriteOptions options;
    options.plyForm = form;
    EXPECT_FALSE(tests::save<PlyWriter>({cloud}, options, 1000).good);
    EXPECT_FALSE(tests::save<PlyWriter>({cloud}, options, 300000).good);
  }
}

}  // namespace

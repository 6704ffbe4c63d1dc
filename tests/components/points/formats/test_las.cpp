#include <gtest/gtest.h>

#include <cmath>

#include "components/points/formats/lasreader.h"
#include "components/points/formats/laswriter.h"
#include "tests/components/points/formats/pointdamage.h"
#include "tests/components/points/formats/pointmedia.h"

namespace {

using tests::Cloud;
using tests::Loaded;
using tests::Saved;

Loaded loadLas(const std::string& bytes) { return tests::load<LasReader>(bytes); }

Saved saveLas(const std::vector<Cloud>& clouds) { return tests::save<LasWriter>(clouds); }

template <class T>
void put(std::string& bytes, size_t at, T value) {
  std::memcpy(&bytes[at], &value, sizeof value);
}

template <class T>
T take(const std::string& bytes, size_t at) {
  T value;
  std::memcpy(&value, &bytes[at], sizeof value);
  return value;
}

// Sizes and places as the makers of the format tell them.
constexpr int kRecordSizes[] = {20, 28, 26, 34, 57, 63, 30, 36, 38};
constexpr int kColorPlaces[] = {-1, -1, 20, 28, -1, 28, -1, 30, 30};
constexpr size_t kHeaderSizes[] = {227, 227, 227, 235, 375};

// A file of two points, (1, 2, 3) and (-1, 200, 70000) in steps of 0.01, with colours of 16 bits.
struct File {
  int version = 2;
  int form = 0;
  int extraBytes = 0;
  std::string between;  // header and points
  uint32_t records = 0;
  double scale = 0.01;
  double offset = 0;
  int returns = 0;

  std::string bytes() const {
    std::string all(kHeaderSizes[version], '\0');
    all.replace(0, 4, "LASF");
    put<uint8_t>(all, 24, 1);
    put<uint8_t>(all, 25, static_cast<uint8_t>(version));
    put<uint16_t>(all, 94, static_cast<uint16_t>(all.size()));
    put<uint32_t>(all, 96, static_cast<uint32_t>(all.size() + between.size()));
    put<uint32_t>(all, 100, records);
    put<uint8_t>(all, 104, static_cast<uint8_t>(form));
    put<uint16_t>(all, 105, static_cast<uint16_t>(kRecordSizes[form] + extraBytes));
    if (version == 4) {
      put<uint64_t>(all, 247, 2);
    } else {
      put<uint32_t>(all, 107, 2);
    }
    for (size_t axis = 0; axis < 3; ++axis) {
      put<double>(all, 131 + 8 * axis, scale);
      put<double>(all, 155 + 8 * axis, offset);
    }
    return all + between + point(1, 2, 3, 0) + point(-1, 200, 70000, 0x1111);
  }

  std::string point(int32_t x, int32_t y, int32_t z, uint16_t color) const {
    std::string record(static_cast<size_t>(kRecordSizes[form] + extraBytes), '\0');
    put(record, 0, x);
    put(record, 4, y);
    put(record, 8, z);
    put(record, 14, static_cast<uint8_t>(returns));
    const int at = kColorPlaces[form];
    for (int i = 0; i < 3 && at >= 0; ++i) {
      put(record, static_cast<size_t>(at + 2 * i), static_cast<uint16_t>(color * (i + 1)));
    }
    return record;
  }
};

TEST(Las, EveryVersionAndPointFormatIsRead) {
  for (int version = 0; version <= 4; ++version) {
    for (int form = 0; form <= 8; ++form) {
      File file;
      file.version = version;
      file.form = form;
      const Loaded loaded = loadLas(file.bytes());
      ASSERT_TRUE(loaded.good) << version << form << loaded.told();
      const Cloud& cloud = loaded.clouds[0];
      EXPECT_EQ(cloud.xyz, (std::vector<double>{0.01, 0.02, 0.03, -0.01, 2, 700}));
      EXPECT_EQ(cloud.decimals, 2);
      ASSERT_TRUE(cloud.grid);
      EXPECT_EQ(cloud.grid->scale[2], 0.01);
      if (kColorPlaces[form] < 0) {
        EXPECT_TRUE(cloud.colors.empty()) << form;
      } else {
        EXPECT_EQ(cloud.colors, (std::vector<PointColor>{{0, 0, 0}, {0x11, 0x22, 0x33}})) << form;
      }
      EXPECT_EQ(tests::shown(loaded.notes), "");
    }
  }
}

TEST(Las, WhatStandsBetweenHeaderAndPointsIsPassedOver) {
  File file;
  file.between = std::string(300000, 'x');
  file.records = 3;
  const Loaded loaded = loadLas(file.bytes());
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_EQ(loaded.clouds[0].xyz[5], 700);
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds data that is not kept: 3 records before the points\n");
}

TEST(Las, AttributesThatAFileReallyHasAreNamed) {
  File file;
  file.form = 5;
  file.version = 3;
  file.extraBytes = 4;
  file.returns = 0x09;  // what a program writes that knows of no returns
  std::string bytes = file.bytes();
  EXPECT_EQ(tests::shown(loadLas(bytes).notes), "");
  const size_t last = bytes.size() - 67;
  bytes[last + 12] = 1;
  bytes[last + 14] = 0x12;
  bytes[last + 15] = 2;
  bytes[last + 16] = 3;
  bytes[last + 17] = 4;
  bytes[last + 18] = 5;
  bytes[last + 20] = 6;
  bytes[last + 34] = 7;
  bytes[last + 63] = 8;
  EXPECT_EQ(tests::shown(loadLas(bytes).notes),
            "The file F holds attributes of 2 points that are not kept: intensity, return number, "
            "classification, "
            "scan angle, user data, point source, GPS time, wave packet, extra bytes\n");
  File newer;
  newer.version = 4;
  newer.form = 8;
  newer.returns = 0x11;
  bytes = newer.bytes();
  EXPECT_EQ(tests::shown(loadLas(bytes).notes), "");
  const size_t point = bytes.size() - 38;
  for (const size_t at : {12, 15, 16, 17, 18, 20, 22, 36}) bytes[point + at] = 1;
  put<uint32_t>(bytes, 243, 2);
  EXPECT_EQ(tests::shown(loadLas(bytes + "late").notes),
            "The file F holds attributes of 2 points that are not kept: intensity, flags, "
            "classification, "
            "user data, scan angle, point source, GPS time, near infrared\n"
            "The file F holds data that is not kept: 2 records behind the points\n");
}

TEST(Las, ChannelsThatStayBelow256AreBytes) {
  File file;
  file.form = 2;
  std::string bytes = file.bytes();
  const size_t last = bytes.size() - 26;
  put<uint16_t>(bytes, last + 20, 200);
  put<uint16_t>(bytes, last + 22, 1);
  put<uint16_t>(bytes, last + 24, 255);
  EXPECT_EQ(loadLas(bytes).clouds[0].colors[1], (PointColor{200, 1, 255}));
  put<uint16_t>(bytes, last - 26 + 24, 256);  // one that does not
  const Loaded wide = loadLas(bytes);
  EXPECT_EQ(wide.clouds[0].colors, (std::vector<PointColor>{{0, 0, 1}, {0, 0, 0}}));
  EXPECT_EQ(tests::shown(wide.notes),
            "The file F has finer colours: 3 colour values were rounded to 256 steps\n");
}

TEST(Las, BytesBehindTheLastPointAreSaid) {
  EXPECT_EQ(tests::shown(loadLas(File().bytes() + "12345").notes),
            "The file F has 5 bytes behind its last point; they are passed over\n");
}

TEST(Las, DecimalGridsGiveTheNumbersThatTextWouldGive) {
  File file;
  file.scale = 0.001;
  file.offset = 637000;
  const Cloud cloud = loadLas(file.bytes()).clouds[0];
  EXPECT_EQ(cloud.xyz, (std::vector<double>{637000.001, 637000.002, 637000.003, 636999.999,
                                            637000.2, 637070}));
  EXPECT_EQ(cloud.decimals, 3);
  for (int32_t raw : {63717798, 84939395, 1, -1, INT32_MAX, INT32_MIN}) {
    const LasGrid grid(0.01, 0);
    EXPECT_EQ(grid.coordinate(raw), std::stod(std::to_string(raw) + "e-2"));
    EXPECT_EQ(grid.raw(grid.coordinate(raw)), raw);
  }
}

TEST(Las, OtherGridsGiveTheProduct) {
  File file;
  file.scale = 0.3;
  file.offset = 1.0 / 3;
  const Cloud cloud = loadLas(file.bytes()).clouds[0];
  EXPECT_EQ(cloud.xyz[1], 2 * 0.3 + 1.0 / 3);
  EXPECT_EQ(cloud.decimals, PointCloudHead::kShortest);
  const LasGrid grid(0.3, 1.0 / 3);
  for (int32_t raw : {0, 5, -100000, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(grid.raw(grid.coordinate(raw)), raw);
  }
}

TEST(Las, AnUnchangedFileKeepsItsGridAndItsPoints) {
  for (const double scale : {0.01, 0.3, 1e-7, -0.5}) {
    File file;
    file.form = 2;
    file.scale = scale;
    file.offset = 1000.5;
    const Cloud cloud = loadLas(file.bytes()).clouds[0];
    const Saved saved = saveLas({cloud});
    ASSERT_TRUE(saved.good);
    EXPECT_TRUE(saved.notes.empty()) << tests::shown(saved.notes);
    EXPECT_EQ(take<double>(saved.bytes, 131), scale);
    EXPECT_EQ(take<double>(saved.bytes, 155), 1000.5);
    EXPECT_EQ(take<int32_t>(saved.bytes, 227 + 26 + 8), 70000);
    const Loaded again = loadLas(saved.bytes);
    EXPECT_TRUE(again.clouds[0].samePoints(cloud));
  }
}

TEST(Las, TheBytesAreThoseOfTheFormat) {
  Cloud cloud;
  cloud.xyz = {1.5, -2, 3, 1.25, 7, 3};
  cloud.colors = {{255, 1, 0}, {2, 3, 4}};
  const std::string bytes = saveLas({cloud}).bytes;
  ASSERT_EQ(bytes.size(), 227u + 2 * 26);
  EXPECT_EQ(bytes.substr(0, 4), "LASF");
  EXPECT_EQ(bytes.substr(24, 2), "\x01\x02");
  EXPECT_EQ(take<uint16_t>(bytes, 94), 227);
  EXPECT_EQ(take<uint32_t>(bytes, 96), 227u);
  EXPECT_EQ(take<uint32_t>(bytes, 100), 0u);
  EXPECT_EQ(take<uint8_t>(bytes, 104), 2);
  EXPECT_EQ(take<uint16_t>(bytes, 105), 26);
  EXPECT_EQ(take<uint32_t>(bytes, 107), 2u);
  EXPECT_EQ(take<uint32_t>(bytes, 111), 2u);
  const double numbers[] = {0.01, 1, 1, 0, 0, 0, 1.5, 1.25, 7, -2, 3, 3};
  for (size_t i = 0; i < 12; ++i) EXPECT_EQ(take<double>(bytes, 131 + 8 * i), numbers[i]) << i;
  EXPECT_EQ(take<int32_t>(bytes, 227), 150);
  EXPECT_EQ(take<int32_t>(bytes, 231), -2);
  EXPECT_EQ(take<uint8_t>(bytes, 227 + 14), 0x09);
  EXPECT_EQ(take<uint16_t>(bytes, 227 + 20), 0xFFFF);
  EXPECT_EQ(take<uint16_t>(bytes, 227 + 22), 0x0101);
  cloud.colors.clear();
  EXPECT_EQ(saveLas({cloud}).bytes.size(), 227u + 2 * 20);
  EXPECT_EQ(saveLas({cloud}).bytes[104], 0);
}

TEST(Las, EveryPointAndColourComesBack) {
  for (const int count : {0, 1, 1024, 5000}) {
    Cloud cloud = tests::spreadCloud(count, true);
    for (double& value : cloud.xyz) value = std::nearbyint(value * 1000) / 1000 + 0.0;
    const Saved saved = saveLas({cloud});
    ASSERT_TRUE(saved.good);
    EXPECT_EQ(saved.progress, count);
    EXPECT_TRUE(saved.notes.empty()) << tests::shown(saved.notes);
    const Loaded loaded = loadLas(saved.bytes);
    ASSERT_TRUE(loaded.good) << loaded.told();
    EXPECT_TRUE(loaded.clouds[0].samePoints(cloud)) << count;
    EXPECT_EQ(tests::shown(loaded.notes), "");
  }
}

TEST(Las, CoordinatesOnNoGridAreRoundedAsLittleAsFitsAndThatIsSaid) {
  Cloud cloud;
  cloud.xyz = {1.0 / 3, 100000 / 3.0, 0, 1, 2, 0};
  const Saved saved = saveLas({cloud});
  ASSERT_TRUE(saved.good);
  EXPECT_EQ(take<double>(saved.bytes, 131), 1e-9);
  EXPECT_EQ(take<double>(saved.bytes, 139), 1e-5);
  EXPECT_EQ(tests::shown(saved.notes),
            "Coordinates were rounded to fit the file F: 2 of them, by up to 3.33e-06\n");
  const Cloud again = loadLas(saved.bytes).clouds[0];
  EXPECT_NEAR(again.xyz[1], cloud.xyz[1], 5e-6);
  EXPECT_NEAR(again.xyz[0], cloud.xyz[0], 5e-10);
}

TEST(Las, PointsThatMovedOffTheirGridGetAnother) {
  Cloud cloud = loadLas(File().bytes()).clouds[0];
  cloud.xyz[0] += 0.005;
  const Saved saved = saveLas({cloud});
  EXPECT_EQ(tests::shown(saved.notes), "");
  EXPECT_EQ(take<double>(saved.bytes, 131), 0.001);
  EXPECT_EQ(take<double>(saved.bytes, 139), 0.01);
  EXPECT_TRUE(loadLas(saved.bytes).clouds[0].samePoints(cloud));
}

TEST(Las, HugeRangesAreRoundedAndInfiniteOnesRefused) {
  Cloud cloud;
  cloud.xyz = {-1e12, 0, 0, 1e12, 5, 1e300};
  const Saved saved = saveLas({cloud});
  ASSERT_TRUE(saved.good);
  const Cloud again = loadLas(saved.bytes).clouds[0];
  EXPECT_NEAR(again.xyz[0], -1e12, 1000);
  EXPECT_NEAR(again.xyz[5], 1e300, 1e291);
  cloud.xyz = {-1e308, 0, 0, 1.5e308, 0, 0};
  EXPECT_FALSE(saveLas({cloud}).good);
  EXPECT_STREQ(saveLas({cloud}).problem, "A coordinate is too large for the form of the file %1");
}

TEST(Las, HeadersThatCannotBeReadAreRefusedByName) {
  const struct {
    size_t at;
    std::string bytes;
    const char* told;
  } rows[] = {
      {0, "PLYF", "byte 0: the file does not begin as a LAS file"},
      {24, "\x02", "byte 24: LAS 2.2 is not read, only 1.0 to 1.4"},
      {25, "\x05", "byte 24: LAS 1.5 is not read, only 1.0 to 1.4"},
      {94, std::string("\xE2\0", 2), "byte 94: the size of the header is wrong"},
      {96, std::string("\x10\0\0\0", 4), "byte 96: the place of the points is wrong"},
      {96, "\xFF\xFF\xFF\xFF", "byte 267: the file ends inside its header"},
      {104, "\x83", "byte 104: the points are compressed (LAZ), which is not read"},
      {104, "\x43", "byte 104: the points are compressed (LAZ), which is not read"},
      {104, "\x09", "byte 104: the point format 9 is not read, only 0 to 8"},
      {105, std::string("\x13\0", 2), "byte 105: the size of a point is wrong"},
      {107, "\xFF\xFF\xFF\xFF", "byte 227: the file holds too many points"},
      {107, std::string("\x03\0\0\0", 4),
       "byte 227: the file is too short for the 3 points it announces"},
      {131, std::string(8, '\0'),
       "byte 131: the scale or the offset of the coordinates is no number"},
      {139, std::string("\0\0\0\0\0\0\xF8\x7F", 8),
       "byte 139: the scale or the offset of the coordinates is no number"},
      {171, std::string("\0\0\0\0\0\0\xF0\x7F", 8),
       "byte 147: the scale or the offset of the coordinates is no number"},
      {131, std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xEF\x7F", 8), ""},
  };
  for (const auto& row : rows) {
    std::string bytes = File().bytes();
    bytes.replace(row.at, row.bytes.size(), row.bytes);
    const Loaded loaded = loadLas(bytes);
    EXPECT_EQ(loaded.told(), row.told);
    EXPECT_EQ(loaded.roomAsked, loaded.good ? 2 : 0);
  }
  File newer;
  newer.version = 4;
  std::string bytes = newer.bytes();
  put<uint64_t>(bytes, 247, UINT64_MAX);
  EXPECT_EQ(loadLas(bytes).told(), "byte 375: the file holds too many points");
}

TEST(Las, CoordinatesBeyondTheRangeAreRefusedWithTheirByte) {
  File file;
  file.scale = 1e308;
  EXPECT_EQ(loadLas(file.bytes()).told(), "byte 231: a coordinate is no finite number");
}

TEST(Las, FilesThatAreCutAreRefused) {
  for (int version : {2, 3, 4}) {
    File file;
    file.version = version;
    file.form = version == 4 ? 7 : 3;
    file.between = "between";
    file.records = 1;
    tests::expectCutsFail<LasReader>(file.bytes());
  }
}

TEST(Las, SurvivesEveryDamageOfOneByte) {
  for (int version : {2, 4}) {
    File file;
    file.version = version;
    file.form = version == 4 ? 8 : 2;
    tests::expectDamageIsHarmless<LasReader>(file.bytes());
  }
}

TEST(Las, BlocksMayEndAnywhere) {
  Cloud cloud = tests::spreadCloud(50, true);
  const std::string bytes = saveLas({cloud}).bytes;
  const Cloud whole = loadLas(bytes).clouds[0];
  for (const size_t piece : {1u, 3u, 64u}) {
    const Loaded loaded = tests::load<LasReader>(bytes, piece);
    ASSERT_TRUE(loaded.good) << loaded.told();
    EXPECT_TRUE(loaded.clouds[0].samePoints(whole));
    EXPECT_TRUE(tests::load<LasReader>(bytes, piece, false).clouds[0].samePoints(whole));
  }
}

TEST(Las, AFullDiskEndsTheWriting) {
  EXPECT_FALSE(tests::save<LasWriter>({tests::spreadCloud(100000, true)}, {}, 300000).good);
}

}  // namespace

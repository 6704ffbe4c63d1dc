#include "components/points/formats/pointformats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "tests/components/points/formats/pointmedia.h"

namespace {

tests::Saved saveAs(const PointFormat& format, const std::vector<tests::Cloud>& clouds) {
  tests::CloudSource source(clouds);
  tests::MemoryPointOutput output;
  PointOutputBuffer buffer(output);
  const auto writer = format.makeWriter({});
  tests::Saved saved;
  saved.good = writer->write(source, buffer);
  saved.bytes = output.written;
  saved.problem = writer->problem();
  return saved;
}

bool loads(const PointFormat& format, const std::string& bytes, tests::CollectingSink& sink) {
  tests::MemoryPointInput input(bytes);
  PointInputBuffer buffer(input);
  return format.makeReader()->read(buffer, sink);
}

TEST(PointFormats, EveryFormatReadsWhatItWritesAndKnowsItsBeginning) {
  tests::Cloud cloud = tests::spreadCloud(100, true);
  for (double& value : cloud.xyz) value = static_cast<double>(static_cast<int>(value));
  for (const PointFormat& format : pointFormats()) {
    const tests::Saved saved = saveAs(format, {cloud});
    ASSERT_TRUE(saved.good) << format.name;
    tests::CollectingSink sink;
    ASSERT_TRUE(loads(format, saved.bytes, sink)) << format.name;
    EXPECT_TRUE(sink.clouds[0].samePoints(cloud)) << format.name;
    EXPECT_EQ(pointFormatBeginning(saved.bytes), format.recognises == nullptr ? nullptr : &format)
        << format.name;
  }
}

// A script can make such numbers; a file with them would not be read again.
TEST(PointFormats, NoFormatIsWrittenWithACoordinateThatIsNoFiniteNumber) {
  for (const double value : {NAN, INFINITY, -INFINITY}) {
    for (const size_t place : {size_t{0}, size_t{4}, size_t{3 * 2047 + 2}}) {
      tests::Cloud cloud = tests::spreadCloud(2048, false);
      cloud.xyz[place] = value;
      for (const PointFormat& format : pointFormats()) {
        const tests::Saved saved = saveAs(format, {tests::spreadCloud(3, false), cloud});
        EXPECT_FALSE(saved.good) << format.name;
        EXPECT_STREQ(saved.problem, "A coordinate is no finite number, so the file %1 is not saved")
            << format.name;
      }
    }
  }
}

TEST(PointFormats, ExtensionsAndTypesBelongToOneFormatEach) {
  std::set<std::string> extensions;
  std::set<PointFileType> types;
  for (const PointFormat& format : pointFormats()) {
    EXPECT_TRUE(types.insert(format.type).second) << format.name;
    EXPECT_EQ(pointFormatOf(format.type), &format);
    EXPECT_FALSE(format.extensions.empty());
    for (const char* extension : format.extensions) {
      EXPECT_TRUE(extensions.insert(extension).second) << extension;
      EXPECT_EQ(pointFormatNamed(extension), &format);
      EXPECT_EQ(pointTypeNamed(extension), format.type);
    }
    for (const char* extension : format.readOnly) {
      EXPECT_TRUE(extensions.insert(extension).second) << extension;
      EXPECT_EQ(pointFormatNamed(extension), &format);
      EXPECT_EQ(pointTypeNamed(extension), PointFileType::unknown);
    }
  }
  EXPECT_EQ(extensions, (std::set<std::string>{"asc", "csv", "cwl", "las", "laz", "pcd", "ply",
                                               "pts", "txt", "xyz"}));
}

TEST(PointFormats, LetterCaseOfAnExtensionDoesNotCount) {
  EXPECT_EQ(pointTypeNamed("PLY"), PointFileType::ply);
  EXPECT_EQ(pointFormatNamed("Laz"), pointFormatNamed("las"));
  EXPECT_EQ(pointFormatNamed(""), nullptr);
  EXPECT_EQ(pointFormatNamed("pl"), nullptr);
  EXPECT_EQ(pointTypeNamed("obj"), PointFileType::unknown);
  EXPECT_EQ(pointFormatOf(PointFileType::unknown), nullptr);
}

TEST(PointFormats, BeginningsOfOtherFilesBelongToNone) {
  for (const char* head : {"", "1 2 3\n", "# a comment\n1 2 3\n", "plyx", "LAS", "x,y,z\n", "{"}) {
    EXPECT_EQ(pointFormatBeginning(head), nullptr) << head;
  }
  EXPECT_EQ(pointFormatBeginning("# .PCD v.7\n")->type, PointFileType::pcd);
  EXPECT_EQ(pointFormatBeginning("# .PCD v.7")->type, PointFileType::pcd);
  EXPECT_EQ(pointFormatBeginning("VERSION .7\nFIELDS")->type, PointFileType::pcd);
  EXPECT_EQ(pointFormatBeginning("ply\r\n")->type, PointFileType::ply);
}

}  // namespace

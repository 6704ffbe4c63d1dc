#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "components/points/formats/cwlreader.h"
#include "components/points/formats/cwltags.h"
#include "components/points/formats/cwlwriter.h"
#include "interfaces/IOroDataModelReader.h"
#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/orofileread.h"
#include "orobasictypes/orofilewrite.h"
#include "tests/components/points/formats/pointdamage.h"
#include "tests/components/points/formats/pointmedia.h"
#include "tests/tempfolder.h"

namespace {

using tests::Cloud;
using tests::Loaded;
using tests::Saved;

Loaded loadCwl(const std::string& bytes) { return tests::load<CwlReader>(bytes); }

Saved saveCwl(const std::vector<Cloud>& clouds) { return tests::save<CwlWriter>(clouds); }

OroPath pathOf(const std::filesystem::path& path) {
  const std::u16string text = path.u16string();
  return OroPath(OroString(text.c_str(), static_cast<int>(text.size())));
}

Cloud richCloud() {
  Cloud cloud = tests::spreadCloud(5000, true);
  cloud.name = OroString(u"Br\u00FCcke \u6A4B", 5);
  cloud.decimals = 3;
  cloud.scale = 0.25;
  cloud.grid = PointGrid{{0.01, 0.02, 0.03}, {1, -2, 1.0 / 3}};
  cloud.selected = {1, 31, 32, 33, 4999, 5000};
  return cloud;
}

void expectSame(const Cloud& cloud, const Cloud& expected) {
  EXPECT_TRUE(cloud.samePoints(expected));
  EXPECT_EQ(cloud.name, expected.name);
  EXPECT_EQ(cloud.decimals, expected.decimals);
  EXPECT_EQ(cloud.scale, expected.scale);
  EXPECT_EQ(cloud.grid, expected.grid);
  EXPECT_EQ(cloud.selected, expected.selected);
}

TEST(Cwl, EverythingOfEveryCloudComesBack) {
  std::vector<Cloud> clouds = {richCloud(), tests::spreadCloud(3, false), Cloud()};
  clouds[1].name = OroString("plain");
  clouds[1].selected = {2};
  clouds.push_back(richCloud());
  clouds.back().selected.clear();
  for (int i = 1; i <= 5000; i += 2) clouds.back().selected.push_back(i);
  const Saved saved = saveCwl(clouds);
  ASSERT_TRUE(saved.good);
  EXPECT_TRUE(saved.notes.empty());
  EXPECT_EQ(saved.progress, 10003);
  for (const bool sized : {true, false}) {
    const Loaded loaded = tests::load<CwlReader>(saved.bytes, 1000, sized);
    ASSERT_TRUE(loaded.good) << loaded.told();
    EXPECT_EQ(tests::shown(loaded.notes), "");
    ASSERT_EQ(loaded.clouds.size(), clouds.size());
    for (size_t i = 0; i < clouds.size(); ++i) expectSame(loaded.clouds[i], clouds[i]);
  }
}

TEST(Cwl, AnEmptyDocumentIsAFile) {
  const Loaded loaded = loadCwl(saveCwl({}).bytes);
  ASSERT_TRUE(loaded.good) << loaded.told();
  EXPECT_TRUE(loaded.clouds.empty());
}

TEST(Cwl, ExtremeCoordinatesComeBackToTheLastBit) {
  using Limits = std::numeric_limits<double>;
  Cloud cloud;
  cloud.xyz = {Limits::max(), -Limits::max(), Limits::min(), Limits::denorm_min(), -0.0, 0.1};
  EXPECT_TRUE(loadCwl(saveCwl({cloud}).bytes).clouds[0].samePoints(cloud));
}

// What the system's own reader of model files finds in it.
TEST(Cwl, IsAModelFileWithTheChunksOfTheContainers) {
  Cloud cloud = richCloud();
  tests::TempFolder folder;
  const OroPath path = pathOf(folder.write("a.cwl", saveCwl({cloud}).bytes));
  OroFileRead<> reader;
  ASSERT_TRUE(reader.Open(path) && reader.IsGood());
  int32_t value = 0;
  int32_t version = 0;
  double number = 0;
  ASSERT_TRUE(reader.BeginElement());
  EXPECT_EQ(reader.GetTag(), static_cast<int32_t>(cwltags::kDocument));
  EXPECT_TRUE(reader.ReadInt32(value));
  EXPECT_EQ(value, 1);
  reader.EndElement();
  ASSERT_TRUE(reader.BeginObject(cwltags::kCloudId, version));
  EXPECT_EQ(version, 1);
  OroString name;
  EXPECT_TRUE(reader.ReadOroString(name));
  EXPECT_EQ(name, cloud.name);
  ASSERT_TRUE(reader.BeginElement());
  EXPECT_EQ(reader.GetTag(), static_cast<int32_t>(cwltags::kForm));
  reader.EndElement();
  ASSERT_TRUE(reader.BeginElement());
  EXPECT_EQ(reader.GetTag(), static_cast<int32_t>(cwltags::kScale));
  EXPECT_TRUE(reader.ReadDouble(number));
  EXPECT_EQ(number, 0.25);
  reader.EndElement();
  for (const uint32_t tag :
       {cwltags::kGrid, cwltags::kColors, cwltags::kPoints, cwltags::kSelection}) {
    ASSERT_TRUE(reader.BeginElement());
    EXPECT_EQ(reader.GetTag(), static_cast<int32_t>(tag));
    reader.EndElement();
  }
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_TRUE(reader.EndObject());
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_TRUE(reader.IsGood());
  reader.Close();
}

// Bytes of a chunk that a container wrote itself.
std::string chunkOf(const BitVector& vector, const tests::TempFolder& folder) {
  const OroPath path = pathOf(folder.file("chunk"));
  {
    BinOutputFile output(path);
    vector.Write(output);
    output.FlushAndClose();
  }
  return folder.read("chunk");
}

TEST(Cwl, SelectionsAreTheChunksThatBitVectorsWrite) {
  tests::TempFolder folder;
  for (const int count : {1, 1000, 1023, 1024, 5000}) {
    for (const int every : {1, 2, 50, 3000}) {
      Cloud cloud = tests::spreadCloud(count, false);
      BitVector vector(count);
      for (int i = 1; i <= count; i += every) {
        cloud.selected.push_back(i);
        vector.Set(i);
      }
      const std::string chunk = chunkOf(vector, folder);
      const std::string bytes = saveCwl({cloud}).bytes;
      ASSERT_GT(bytes.size(), chunk.size());
      EXPECT_EQ(bytes.substr(bytes.size() - chunk.size()), chunk) << count << " " << every;
      EXPECT_EQ(loadCwl(bytes).clouds[0].selected, cloud.selected);
    }
  }
}

// A document that another program wrote with sizes of 32 bits, with elements that nobody knows and
// colours as floats.
TEST(Cwl, DocumentsOfOtherWritersAreRead) {
  tests::TempFolder folder;
  const OroPath path = pathOf(folder.file("a.cwl"));
  {
    OroFileWrite<> writer(1);
    ASSERT_TRUE(writer.Open(path));
    writer.BeginElement(static_cast<int32_t>(cwltags::kDocument), 1);
    writer.WriteInt32(1);
    writer.WriteInt32(77);
    writer.EndElement();
    writer.WriteText(KelCString("who knows"));
    writer.BeginIdElement(GUID{1, 2, 3, {}}, 9);
    writer.EndElement();
    writer.BeginIdElement(cwltags::kCloudId, 1);
    writer.WriteText(KelCString("a remark"));
    writer.BeginElement(static_cast<int32_t>(cwltags::kColors), 1);
    writer.WriteInt32(1);
    writer.WriteInt32(2);
    for (const float channel : {0.f, 0.f, 0.f, 1.f, 0.5f, 0.f}) writer.WriteFloat(channel);
    writer.EndElement();
    writer.BeginElement(static_cast<int32_t>(cwltags::kPoints), 1);
    writer.WriteUInt32(cwltags::kPointArray);
    writer.WriteInt32(1);
    for (const double coordinate : {1.0, 2.0, 3.0}) writer.WriteDouble(coordinate);
    writer.EndElement();
    writer.EndElement();
    ASSERT_TRUE(writer.Close());
  }
  const Loaded loaded = loadCwl(folder.read("a.cwl"));
  ASSERT_TRUE(loaded.good) << loaded.told();
  ASSERT_EQ(loaded.clouds.size(), 1u);
  EXPECT_EQ(loaded.clouds[0].xyz, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(loaded.clouds[0].colors, (std::vector<PointColor>{{255, 128, 0}}));
  EXPECT_TRUE(loaded.clouds[0].name.isEmpty());
  EXPECT_EQ(tests::shown(loaded.notes),
            "The file F holds data that is not kept: 3 elements of other kinds\n"
            "The file F has finer colours: 1 colour values were rounded to 256 steps\n");
}

TEST(Cwl, BytesBehindTheLastPointAreSaid) {
  EXPECT_EQ(tests::shown(loadCwl(saveCwl({tests::spreadCloud(3, true)}).bytes + "12345").notes),
            "The file F has 5 bytes behind its last point; they are passed over\n");
}

// The place of an element's header in a file of one cloud without a name and a grid, with colours
// and two points, one of which is selected.
Cloud smallCloud() {
  Cloud cloud;
  cloud.xyz = {1, 2, 3, 4, 5, 6};
  cloud.colors = {{1, 2, 3}, {4, 5, 6}};
  cloud.selected = {2};
  return cloud;
}

constexpr size_t kDocumentAt = 12;
constexpr size_t kObjectAt = 28;
constexpr size_t kNameAt = kObjectAt + 28;
constexpr size_t kFormAt = kNameAt + 12;
constexpr size_t kScaleAt = kFormAt + 16;
constexpr size_t kColorsAt = kScaleAt + 20;
constexpr size_t kPointsAt = kColorsAt + 32;
constexpr size_t kSelectionAt = kPointsAt + 68;

TEST(Cwl, DamageIsToldWithItsPlace) {
  const std::string whole = saveCwl({smallCloud()}).bytes;
  ASSERT_EQ(whole.size(), kSelectionAt + 36);
  auto at = [](size_t place) { return "byte " + std::to_string(place) + ": "; };
  const struct {
    size_t place;
    std::string bytes;
    std::string told;
  } rows[] = {
      {0, "X", at(0) + "the file does not begin as a model file"},
      {3, "\x02", at(3) + "the version 2 of this part of the document is not known"},
      {4, std::string(8, '\0'), at(4) + "the file ends before its last point"},
      {4, std::string("\0\0\0\0\0\0\0\x0B", 8), at(4) + "an element ends outside of what holds it"},
      {4, "\xFF", at(4) + "an element ends outside of what holds it"},
      {5, "\x01", at(whole.size()) + "the file ends before its last point"},
      {kDocumentAt + 2, "\x08", at(kDocumentAt) + "the model file holds no document of points"},
      {kDocumentAt + 3, "\x02",
       at(kDocumentAt) + "the version 2 of this part of the document is not known"},
      {kDocumentAt + 11, "\x0B", at(kDocumentAt) + "an element ends outside of what holds it"},
      {kDocumentAt + 15, "\x02",
       at(whole.size()) + "the document holds another number of clouds than it announces"},
      {kObjectAt + 3, "\x02",
       at(kObjectAt) + "the version 2 of this part of the document is not known"},
      {kObjectAt + 12, "\x01",
       at(whole.size()) + "the document holds another number of clouds than it announces"},
      {kObjectAt + 5, "\x01", at(kObjectAt) + "an element ends outside of what holds it"},
      {kObjectAt + 11, "\x1B", at(kObjectAt) + "the size of an element is wrong"},
      {kNameAt + 11, "\x0B", at(kNameAt) + "an element ends outside of what holds it"},
      {kFormAt + 11, "\x0F", at(kFormAt) + "the size of an element is wrong"},
      {kScaleAt + 12, "\x7F\xF0", at(kScaleAt + 12) + "a scale is no number"},
      {kColorsAt + 19, "\x02", at(kColorsAt) + "the element does not hold what its kind says"},
      {kColorsAt + 15, std::string(1, '\0'), ""},
      {kPointsAt + 12, "\x01", at(kPointsAt) + "the element does not hold what its kind says"},
      {kPointsAt + 16, "\x7F", at(kPointsAt) + "the element does not hold what its kind says"},
      {kPointsAt + 19, "\x03", at(kPointsAt) + "the element does not hold what its kind says"},
      {kPointsAt + 2, "\x09", at(kSelectionAt) + "an object has no points"},
      {kPointsAt + 28, "\x7F\xF0", at(kPointsAt + 28) + "a coordinate is no finite number"},
      {kSelectionAt + 2, "\x05", at(kSelectionAt) + "the colours stand behind the points"},
      {kSelectionAt + 2, "\x06", at(kSelectionAt) + "the element stands twice in its object"},
      {kSelectionAt + 12, "\x01",
       at(kSelectionAt) + "the element does not hold what its kind says"},
      {kSelectionAt + 16, "\x7F",
       at(kSelectionAt) + "the element does not hold what its kind says"},
      {kSelectionAt + 27, "\x02",
       at(kSelectionAt) + "the element does not hold what its kind says"},
      {kSelectionAt + 35, "\x0C",
       at(kSelectionAt + 32) + "a point is selected that does not exist"},
      {kSelectionAt + 35, "\x01",
       at(kSelectionAt + 32) + "a point is selected that does not exist"},
  };
  for (const auto& row : rows) {
    std::string damaged = whole;
    damaged.replace(row.place, row.bytes.size(), row.bytes);
    EXPECT_EQ(loadCwl(damaged).told(), row.told) << row.place;
  }
}

TEST(Cwl, FilesThatAreCutAreRefused) {
  Cloud cloud = smallCloud();
  cloud.name = OroString("name");
  cloud.grid = PointGrid();
  tests::expectCutsFail<CwlReader>(saveCwl({cloud, cloud}).bytes);
}

TEST(Cwl, SurvivesEveryDamageOfOneByte) {
  Cloud cloud = smallCloud();
  cloud.name = OroString("name");
  cloud.grid = PointGrid();
  tests::expectDamageIsHarmless<CwlReader>(saveCwl({cloud}).bytes);
  cloud = tests::spreadCloud(1100, false);
  cloud.selected = {5, 7};  // as indices
  const std::string bytes = saveCwl({cloud}).bytes;
  for (size_t at = bytes.size() - 40; at < bytes.size(); ++at) {
    for (int value = 0; value < 256; ++value) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(value);
      const Loaded loaded = loadCwl(damaged);
      EXPECT_EQ(loaded.good, loaded.told().empty()) << at << " " << value;
    }
  }
}

TEST(Cwl, AFullDiskEndsTheWriting) {
  const Cloud cloud = tests::spreadCloud(100000, true);
  EXPECT_FALSE(tests::save<CwlWriter>({cloud}, {}, 300000).good);
  EXPECT_FALSE(tests::save<CwlWriter>({cloud}, {}, 1000000).good);
}

}  // namespace

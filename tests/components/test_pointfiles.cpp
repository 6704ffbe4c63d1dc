// Point files of every format through opener, document and saver.

#include "components/points/pointfiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "components/points/pointapplication.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/oropath.h"
#include "services/errorservice.h"
#include "tests/components/pointclouds.h"
#include "tests/components/textlistener.h"
#include "tests/support/countingmanager.h"
#include "tests/tempfolder.h"

namespace {

class PointFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    errors_->addListener(listener_.get());
    memory_.broker.registerService(KelCString::borrow("IOroErrorService"), errors_.get());
  }

  OroPath path(const std::string& name) {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }
  bool load(const std::string& name, PointDocument& document) {
    return loadPointFile(path(name), document);
  }
  bool save(const std::string& name, PointDocument& document) {
    const auto objects = document.objects();
    const std::string extension = name.substr(name.rfind('.') + 1);
    return savePointFile(path(name), pointTypeNamed(extension), {objects.begin(), objects.end()});
  }
  // A document with a cloud of that name.
  IPtr<PointDocument> documentOf(const OroString& name, const std::vector<OroVector>& positions,
                                 const std::vector<PointColor>& colors) {
    IPtr<PointDocument> document(new PointDocument);
    add(*document, name, positions, colors);
    return document;
  }
  void add(PointDocument& document, const OroString& name, const std::vector<OroVector>& positions,
           const std::vector<PointColor>& colors) {
    IPtr<PointCloudData> data(new PointCloudData);
    tests::fill(data->cloud(), positions, colors, 2);
    document.add(new PointObject(name, PointCloudData::classId(), data.get()));
  }
  PointCloud& cloud(PointDocument& document, size_t index = 0) {
    return pointsOf(document.objects().at(index))->cloud();
  }

  // What was reported since the last call, without the folder's name.
  std::string reported() {
    std::string all;
    for (std::string text : listener_->texts) {
      const std::string folder = folder_.path().filename().string();
      const size_t at = text.find(folder);
      const size_t start = at == std::string::npos ? at : text.rfind(' ', at) + 1;
      if (at != std::string::npos) text.erase(start, at + folder.size() + 1 - start);
      all += text + "\n";
    }
    listener_->texts.clear();
    return all;
  }

  tests::TempFolder folder_;
  tests::ManagedMemory memory_;
  IPtr<tests::TextListener> listener_{new tests::TextListener};
  IPtr<ErrorService> errors_{new ErrorService(false, [](int) { std::_Exit(3); })};
};

const std::vector<OroVector> kPositions = {
    {637177.98, 849393.95, 411.19}, {637177.3, 849396.95, -411.25}, {0, 0.01, 1000}};
const std::vector<PointColor> kColors = {{84, 102, 93}, {0, 0, 0}, {255, 1, 254}};

TEST_F(PointFilesTest, EveryFormatBringsPointsAndColoursThroughTheDocument) {
  for (const PointFormat& format : pointFormats()) {
    for (const char* extension : format.extensions) {
      for (const bool colors : {true, false}) {
        const std::string name = std::string("file.") + extension;
        IPtr<PointDocument> document =
            documentOf(OroString("file"), kPositions, colors ? kColors : std::vector<PointColor>());
        ASSERT_TRUE(save(name, *document)) << name << reported();
        IPtr<PointDocument> again(new PointDocument);
        ASSERT_TRUE(load(name, *again)) << name << reported();
        ASSERT_EQ(again->objects().size(), 1u);
        EXPECT_TRUE(again->objects()[0]->name() == "file") << name;
        EXPECT_EQ(tests::positionsOf(cloud(*again)), kPositions) << name;
        EXPECT_EQ(tests::colorsOf(cloud(*again)), colors ? kColors : std::vector<PointColor>())
            << name;
        EXPECT_EQ(reported(), "");
      }
    }
  }
}

TEST_F(PointFilesTest, ALargeCloudCrossesTheBlocksInEveryFormat) {
  std::vector<OroVector> positions;
  std::vector<PointColor> colors;
  for (int i = 0; i < 10000; ++i) {
    positions.emplace_back(i * 0.25, -i, i % 7);
    colors.push_back({static_cast<uint8_t>(i), static_cast<uint8_t>(i / 256), 7});
  }
  IPtr<PointDocument> document = documentOf(OroString("big"), positions, colors);
  for (const PointFormat& format : pointFormats()) {
    const std::string name = std::string("big.") + format.extensions[0];
    ASSERT_TRUE(save(name, *document)) << name << reported();
    IPtr<PointDocument> again(new PointDocument);
    ASSERT_TRUE(load(name, *again)) << name << reported();
    EXPECT_EQ(tests::positionsOf(cloud(*again)), positions) << name;
    EXPECT_EQ(tests::colorsOf(cloud(*again)), colors) << name;
  }
}

TEST_F(PointFilesTest, TheNativeDocumentKeepsNamesSelectionsAndScales) {
  const OroString first(u"Br\u00FCcke", 6);
  IPtr<PointDocument> document = documentOf(first, kPositions, kColors);
  add(*document, OroString("second"), {{1, 2, 3}}, {});
  cloud(*document).selection().Set(2);
  cloud(*document).points().SetScale(0.5);
  cloud(*document, 1).grid = PointGrid{{0.5, 0.5, 0.5}, {1, 2, 3}};
  ASSERT_TRUE(save("all.cwl", *document)) << reported();
  IPtr<PointDocument> again(new PointDocument);
  ASSERT_TRUE(load("all.cwl", *again)) << reported();
  ASSERT_EQ(again->objects().size(), 2u);
  EXPECT_TRUE(again->objects()[0]->name() == first);
  EXPECT_TRUE(again->objects()[1]->name() == "second");
  EXPECT_EQ(tests::selected(cloud(*again).selection()), (std::vector<int32_t>{2}));
  EXPECT_EQ(tests::selected(cloud(*again, 1).selection()), (std::vector<int32_t>{}));
  EXPECT_EQ(cloud(*again).points().GetScale(), 0.5);
  EXPECT_EQ(cloud(*again).decimals, 2);
  EXPECT_EQ(cloud(*again, 1).grid, cloud(*document, 1).grid);
  EXPECT_FALSE(cloud(*again, 1).hasColors());
  EXPECT_EQ(reported(), "");
}

TEST_F(PointFilesTest, ScansOfOneFileAreNumbered) {
  folder_.write("two.pts", "1\n1 2 3\n2\n4 5 6\n7 8 9\n");
  IPtr<PointDocument> document(new PointDocument);
  ASSERT_TRUE(load("two.pts", *document));
  ASSERT_EQ(document->objects().size(), 2u);
  EXPECT_TRUE(document->objects()[0]->name() == "two");
  EXPECT_TRUE(document->objects()[1]->name() == "two 2");
  EXPECT_EQ(cloud(*document, 1).count(), 2);
}

TEST_F(PointFilesTest, LossesAreWarningsWithTheFile) {
  folder_.write("a.ply",
                "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
                "property float z\nproperty float nx\nend_header\n0.1 2 3 4\n");
  IPtr<PointDocument> document(new PointDocument);
  ASSERT_TRUE(load("a.ply", *document));
  EXPECT_EQ(reported(),
            "warning: The file a.ply holds attributes of 1 points that are not kept: nx\n");
  add(*document, OroString("other"), {{1, 2, 3}}, {});
  ASSERT_TRUE(save("b.xyz", *document));
  EXPECT_EQ(reported(),
            "warning: The file b.xyz cannot keep objects apart: 2 of them were joined into one\n");
}

TEST_F(PointFilesTest, ASelectionThatAFormatCannotKeepIsAWarningWithFigures) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, kColors);
  BitVector& selection = cloud(*document).selection();
  selection.Set(1);
  selection.Set(3);
  for (const PointFormat& format : pointFormats()) {
    const std::string name = std::string("a.") + format.extensions[0];
    ASSERT_TRUE(save(name, *document)) << name;
    EXPECT_EQ(reported(), format.type == PointFileType::native
                              ? ""
                              : "warning: The file " + name +
                                    " cannot keep a selection: 2 of 3 points were selected\n");
  }
  IPtr<PointDocument> again(new PointDocument);
  ASSERT_TRUE(load("a.cwl", *again));
  EXPECT_EQ(cloud(*again).selection().CountSet(), 2);
}

TEST_F(PointFilesTest, ASelectionOfAllOrNoneIsNoLoss) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, {});
  ASSERT_TRUE(save("none.xyz", *document));
  for (int32_t point = 1; point <= 3; ++point) cloud(*document).selection().Set(point);
  ASSERT_TRUE(save("all.xyz", *document));
  EXPECT_EQ(reported(), "");
  // All of one cloud are some of the document.
  add(*document, OroString("b"), {{1, 2, 3}}, {});
  ASSERT_TRUE(save("some.xyz", *document));
  EXPECT_EQ(reported(),
            "warning: The file some.xyz cannot keep objects apart: 2 of them were joined into one\n"
            "warning: The file some.xyz cannot keep a selection: 3 of 4 points were selected\n");
}

TEST_F(PointFilesTest, AFileThatIsNotWrittenHasLostNoSelection) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, {});
  cloud(*document).selection().Set(1);
  EXPECT_FALSE(save("absent/a.xyz", *document));
  EXPECT_EQ(reported().find("selection"), std::string::npos);
}

TEST_F(PointFilesTest, AFileThatHoldsAnotherFormatThanItsNameIsRefused) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, kColors);
  for (const char* name : {"a.ply", "a.las", "a.pcd", "a.cwl"}) {
    ASSERT_TRUE(save(name, *document));
    folder_.write("wrong.xyz", folder_.read(name));
    folder_.write(std::string("wrong.") + (std::string(name) == "a.ply" ? "las" : "ply"),
                  folder_.read(name));
  }
  IPtr<PointDocument> empty(new PointDocument);
  EXPECT_FALSE(load("wrong.xyz", *empty));
  EXPECT_FALSE(load("wrong.las", *empty));
  EXPECT_FALSE(load("wrong.ply", *empty));
  EXPECT_EQ(reported(),
            "error: The file wrong.xyz is named as text but holds CWL\n"
            "error: The file wrong.las is named as LAS but holds PLY\n"
            "error: The file wrong.ply is named as PLY but holds CWL\n");
  EXPECT_TRUE(empty->objects().empty());
}

TEST_F(PointFilesTest, CompressedFilesAreRefusedByName) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, kColors);
  ASSERT_TRUE(save("a.las", *document));
  std::string bytes = folder_.read("a.las");
  bytes[104] = static_cast<char>(bytes[104] | 0x80);
  folder_.write("a.laz", bytes);
  IPtr<PointDocument> empty(new PointDocument);
  EXPECT_FALSE(load("a.laz", *empty));
  EXPECT_EQ(reported(),
            "error: a.laz, byte 104: the points are compressed (LAZ), which is not read\n");
  EXPECT_FALSE(save("b.laz", *document));
  EXPECT_EQ(reported(), "error: The type of the file b.laz cannot be saved\n");
}

TEST_F(PointFilesTest, DamageLeavesTheDocumentAsItWas) {
  const IPtr<PointDocument> document = documentOf(OroString("a"), kPositions, kColors);
  for (const PointFormat& format : pointFormats()) {
    const std::string name = std::string("a.") + format.extensions[0];
    ASSERT_TRUE(save(name, *document));
    const std::string bytes = folder_.read(name);
    folder_.write(name, bytes.substr(0, bytes.size() - 8));
    IPtr<PointDocument> empty(new PointDocument);
    EXPECT_FALSE(load(name, *empty)) << name;
    EXPECT_TRUE(empty->objects().empty());
    EXPECT_EQ(reported().rfind("error: " + name + ", ", 0), 0u) << name;
  }
}

TEST_F(PointFilesTest, AFailedSaveLeavesTheOldFile) {
  const IPtr<PointDocument> document =
      documentOf(OroString("a"), {{1e300, 0, 0}, {-1e308, 0, 0}, {1.6e308, 0, 0}}, {});
  folder_.write("a.las", "old");
  EXPECT_FALSE(save("a.las", *document));
  EXPECT_EQ(reported(), "error: A coordinate is too large for the form of the file a.las\n");
  EXPECT_EQ(folder_.read("a.las"), "old");
}

TEST_F(PointFilesTest, SettingsChooseTheForm) {
  IDataStore* store = new KelCustomDataStore;
  memory_.broker.registerService(KelCString::borrow("IDataStore"), store);
  IPtr<PointApplication>(new PointApplication)->prepare();
  const IPtr<PointDocument> document = documentOf(OroString("a"), {{0.1, 2, 3}}, {});
  auto holds = [&](const char* name, const char* text) {
    EXPECT_TRUE(save(name, *document)) << reported();
    EXPECT_NE(folder_.read(name).find(text), std::string::npos) << name << text;
  };
  holds("a.ply", "format binary_little_endian 1.0\n");
  holds("a.ply", "property double x\n");
  holds("a.pcd", "DATA binary\n");
  store->SetInt(nullptr, "Points/PlyForm", 2);
  holds("a.ply", "format binary_big_endian 1.0\n");
  store->SetInt(nullptr, "Points/PlyForm", 0);
  store->SetInt(nullptr, "Points/PcdForm", 0);
  store->SetInt(nullptr, "Points/Decimals", 3);
  holds("a.ply", "end_header\n0.100 2.000 3.000\n");
  holds("a.pcd", "DATA ascii\n0.100 2.000 3.000\n");
  store->SetInt(nullptr, "Points/PlyForm", 1);
  store->SetInt(nullptr, "Points/PcdForm", 1);
  store->SetInt(nullptr, "Points/RealBytes", 4);
  EXPECT_EQ(reported(), "");
  holds("a.ply", "property float x\n");
  holds("a.pcd", "SIZE 4 4 4\n");
  EXPECT_EQ(
      reported(),
      "warning: Coordinates were rounded to fit the file a.ply: 1 of them, by up to 1.49e-09\n"
      "warning: Coordinates were rounded to fit the file a.pcd: 1 of them, by up to 1.49e-09\n");
}

}  // namespace

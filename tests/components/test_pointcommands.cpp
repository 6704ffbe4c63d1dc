// The commands through the table, as scripts call them, on the clouds of a document.

#include "components/points/pointcommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "components/points/pointcloudaccess.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointclouds.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfiletypes.h"
#include "components/points/pointopener.h"
#include "components/points/pointsavedata.h"
#include "components/points/pointsaver.h"
#include "interfaces/ICommandCall.h"
#include "interfaces/IOroProgress.h"
#include "interfaces/IPointBlocks.h"
#include "orobasictypes/oropath.h"
#include "tests/components/pointclouds.h"
#include "tests/support/countingmanager.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::colorsOf;
using tests::positionsOf;

using Numbers = std::map<std::string, std::vector<double>>;
using Texts = std::map<std::string, std::string>;

// Says stop after so many looks.
class Watcher : public IOroProgress {
 public:
  static constexpr const char* className() { return "Watcher"; }
  using Offers = OroOffers<Watcher, IOroProgress>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  explicit Watcher(int looks) : looks_(looks) {}
  bool Update(float) override { return looks_-- > 0; }
  bool IsCancelled() override { return false; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  void startAction(const void*, const OroString&) override {}
  void stopAction(const void*) override {}
  void setAction(const void*, const OroString&) override {}
  void currentAction(OroString&) override {}
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }
  int32_t resolve(int32_t value) override { return value; }

 private:
  int looks_;
};

class PointCommandsTest : public testing::Test {
 protected:
  void SetUp() override {
    memory_.manager->logs = false;
    memory_.broker.registerService(KelCString::borrow("IOroDoc"), document_.get());
    commands_->registerCommands();
    commands_->commandsRegistered();
    document_->makeDocument();
  }

  PointCloud& add(const char* name, const std::vector<OroVector>& positions,
                  const std::vector<PointColor>& colors = {}, int decimals = 0) {
    auto* data = new PointCloudData;
    document_->add(new PointObject(OroString(name), PointCloudData::classId(), data));
    tests::fill(data->cloud(), positions, colors, decimals);
    return data->cloud();
  }
  // Points 0 to count - 1 along x, over several blocks when there are many.
  PointCloud& line(int count, const std::vector<PointColor>& colors = {}) {
    std::vector<OroVector> positions;
    for (int i = 0; i < count; ++i) positions.emplace_back(i, 0, 0);
    return add("line", positions, colors);
  }

  int32_t numberOf(const std::string& name) {
    for (int32_t i = 0; i < commands_->commandCount(); ++i) {
      if (name == commands_->commandName(i)) return i;
    }
    return -1;
  }
  // The message, empty after success; the results stand in results_.
  std::string run(const std::string& name, const Numbers& numbers = {}, const Texts& texts = {},
                  IOroProgress* progress = nullptr) {
    const IPtr<ICommandCall> call(commands_->newCall(numberOf(name)));
    if (!call) return "no such command";
    if (cloud_ && !call->setCloud(cloud_.get())) return call->message().toUtf8();
    for (const auto& [key, values] : numbers) {
      const auto count = static_cast<int32_t>(values.size());
      if (!call->setNumbers(key.c_str(), values.data(), count)) return call->message().toUtf8();
    }
    for (const auto& [key, text] : texts) {
      if (!call->setText(key.c_str(), OroString(text.c_str()))) return call->message().toUtf8();
    }
    results_.clear();
    stopped_ = false;
    const bool done = call->run(progress);
    stopped_ = call->wasStopped();
    for (int32_t i = 0; i < call->resultCount(); ++i) {
      int32_t count = 0;
      const double* const values = call->resultNumbers(i, count);
      results_[call->resultName(i)].assign(values, values + count);
    }
    EXPECT_EQ(done, call->message().isEmpty());
    return call->message().toUtf8();
  }

  // What opens and saves.
  void serveFiles() {
    const auto serve = [&](const char* name, IOroUnknown* object) {
      memory_.broker.registerService(KelCString::borrow(name), object);
    };
    serve("IOroOpenDoc", new PointOpener);
    serve("IOroSaveDoc", new PointSaver);
    serve("IFileSaveData", new PointSaveData);
    serve("IFileTypeService", new PointFileTypes);
  }
  std::string pathOf(const std::string& name) {
    const std::u8string text = folder_.file(name).u8string();
    return {text.begin(), text.end()};
  }

  tests::TempFolder folder_;
  tests::ManagedMemory memory_;
  IPtr<PointCommands> commands_{new PointCommands};
  IPtr<PointDocument> document_{new PointDocument};
  IPtr<IPointCloud> cloud_;
  Numbers results_;
  bool stopped_ = false;
};

TEST_F(PointCommandsTest, TheTableIsInTheOrderOfNamesAndWhole) {
  std::vector<std::string> names;
  for (int32_t i = 0; i < commands_->commandCount(); ++i) {
    names.push_back(commands_->commandName(i));
    OroString help;
    EXPECT_TRUE(commands_->commandHelp(i, help) && !help.isEmpty());
    for (int32_t p = 0; p < commands_->parameterCount(i); ++p) {
      EXPECT_NE(std::string(commands_->parameterName(i, p)), "");
      EXPECT_TRUE(commands_->parameterHelp(i, p, help) && !help.isEmpty());
    }
  }
  EXPECT_THAT(names, ElementsAre("bounds", "crop", "deduplicate", "info", "merge", "open", "rotate",
                                 "save", "scale", "select", "snapshot", "sort", "thin", "to_gray",
                                 "transform", "translate", "voxel_thin"));
}

TEST_F(PointCommandsTest, TheTableIsEmptyBeforeTheCommandsAreRegistered) {
  const IPtr<PointCommands> fresh(new PointCommands);
  EXPECT_EQ(fresh->commandCount(), 0);
  EXPECT_EQ(fresh->newCall(0), nullptr);
}

TEST_F(PointCommandsTest, NumbersThatNameNothingGiveNothing) {
  for (const int32_t wrong : {-1, 1000}) {
    EXPECT_EQ(commands_->commandName(wrong), nullptr);
    OroString help;
    EXPECT_FALSE(commands_->commandHelp(wrong, help));
    EXPECT_EQ(commands_->parameterCount(wrong), 0);
    EXPECT_EQ(commands_->parameterName(0, wrong), nullptr);
    EXPECT_FALSE(commands_->parameterHelp(0, wrong, help));
    EXPECT_EQ(commands_->parameterNumbers(0, wrong), 0);
    EXPECT_FALSE(commands_->parameterRequired(0, wrong));
    EXPECT_EQ(commands_->newCall(wrong), nullptr);
  }
}

TEST_F(PointCommandsTest, RefusesValuesThatDoNotFit) {
  PointCloud& cloud = add("a", {{1, 2, 3}});
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(run("translate"), "translate needs the value by");
  EXPECT_EQ(run("translate", {{"by", {1, 2}}}),
            "The value by of translate takes numbers: 3 of them, not 2");
  EXPECT_EQ(run("translate", {{"by", {1, 2, nan}}}), "The value by of translate is not finite");
  EXPECT_EQ(run("translate", {{"to", {1, 2, 3}}}), "translate has no value named to");
  EXPECT_EQ(run("translate", {}, {{"by", "x"}}), "The value by of translate is made of numbers");
  EXPECT_EQ(run("sort", {{"axis", {1}}}), "The value axis of sort is a text");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(1, 2, 3)));
}

TEST_F(PointCommandsTest, MovesPoints) {
  PointCloud& cloud = add("a", {{1, 2, 3}}, {}, 2);
  EXPECT_EQ(run("translate", {{"by", {10, 20, 30}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(11, 22, 33)));
  EXPECT_EQ(cloud.decimals, 2);
  cloud.grid.emplace();
  EXPECT_EQ(run("scale", {{"factor", {2}}}), "");
  EXPECT_FALSE(cloud.grid.has_value());
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(22, 44, 66)));
  EXPECT_EQ(cloud.decimals, PointCloud::kShortest);
  EXPECT_EQ(run("scale", {{"factor", {1, 0.5, 1}}, {"center", {22, 0, 0}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(22, 22, 66)));
  EXPECT_EQ(run("rotate", {{"angle", {90}}, {"center", {22, 0, 0}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(0, 0, 66)));
  EXPECT_EQ(run("transform", {{"matrix", {1, 0, 0, 5, 0, 1, 0, 6, 0, 0, 2, 0}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(5, 6, 132)));
}

TEST_F(PointCommandsTest, RefusesMovesWithoutSense) {
  add("a", {{1, 2, 3}});
  EXPECT_EQ(run("scale", {{"factor", {1, 2}}}), "A scale takes one factor or three");
  EXPECT_EQ(run("rotate", {{"angle", {1}}, {"axis", {0, 0, 0}}}), "An axis needs a direction");
  EXPECT_EQ(run("transform", {{"matrix", std::vector<double>(13)}}),
            "A matrix has twelve or sixteen numbers");
}

TEST_F(PointCommandsTest, SortsWithColours) {
  PointCloud& cloud =
      add("a", {{3, 1, 0}, {1, 2, 0}, {3, 0, 0}}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  EXPECT_EQ(run("sort", {}, {{"axis", "x"}}), "");
  EXPECT_THAT(positionsOf(cloud),
              ElementsAre(OroVector(1, 2, 0), OroVector(3, 1, 0), OroVector(3, 0, 0)));
  EXPECT_THAT(colorsOf(cloud),
              ElementsAre(PointColor{2, 0, 0}, PointColor{1, 0, 0}, PointColor{3, 0, 0}));
  EXPECT_EQ(run("sort", {{"descending", {1}}}), "");
  EXPECT_THAT(colorsOf(cloud),
              ElementsAre(PointColor{1, 0, 0}, PointColor{3, 0, 0}, PointColor{2, 0, 0}));
  for (const char* wrong : {"", "w", "xx", "xyzx"}) {
    EXPECT_NE(run("sort", {}, {{"axis", wrong}}), "") << wrong;
  }
}

TEST_F(PointCommandsTest, CropsToABoxAndOutOfIt) {
  PointCloud& cloud = add("a", {{0, 0, 0}, {1, 1, 1}, {2, 0, 0}});
  EXPECT_EQ(run("crop", {{"min", {0, 0, 0}}, {"max", {1, 1, 1}}}), "");
  EXPECT_EQ(cloud.count(), 2);
  EXPECT_EQ(results_["before"], std::vector<double>{3});
  EXPECT_EQ(results_["after"], std::vector<double>{2});
  EXPECT_EQ(run("crop", {{"max", {0, 9, 9}}, {"inside", {0}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(1, 1, 1)));
  EXPECT_EQ(run("crop", {{"min", {1, 0, 0}}, {"max", {0, 1, 1}}}),
            "The corner \"min\" of a box lies above its corner \"max\"");
}

TEST_F(PointCommandsTest, KeepsOverManyBlocksWithColoursAndLastPoint) {
  std::vector<PointColor> colors;
  for (int i = 0; i < 5000; ++i) colors.push_back({static_cast<uint8_t>(i), 7, 9});
  PointCloud& cloud = line(5000, colors);
  EXPECT_EQ(run("crop", {{"min", {1500, 0, 0}}}), "");
  ASSERT_EQ(cloud.count(), 3500);
  EXPECT_EQ(positionsOf(cloud).front(), OroVector(1500, 0, 0));
  EXPECT_EQ(positionsOf(cloud).back(), OroVector(4999, 0, 0));
  EXPECT_EQ(colorsOf(cloud).back(), (PointColor{static_cast<uint8_t>(4999), 7, 9}));
  EXPECT_EQ(run("crop", {{"min", {9000, 0, 0}}}), "");
  EXPECT_EQ(cloud.count(), 0);
  EXPECT_EQ(run("crop", {{"min", {9000, 0, 0}}}), "");
}

TEST_F(PointCommandsTest, GrowsAgainAfterItShrank) {
  PointCloud& cloud = line(3000);
  EXPECT_EQ(run("thin", {{"count", {1}}}), "");
  add("more", {{7, 7, 7}, {8, 8, 8}});
  EXPECT_EQ(run("merge"), "");
  EXPECT_THAT(positionsOf(cloud),
              ElementsAre(OroVector(0, 0, 0), OroVector(7, 7, 7), OroVector(8, 8, 8)));
}

TEST_F(PointCommandsTest, SelectsByModes) {
  PointCloud& cloud = line(5);
  auto selected = [&] { return tests::selected(cloud.selection()); };
  EXPECT_EQ(run("select", {{"min", {2, 0, 0}}}), "");
  EXPECT_THAT(selected(), ElementsAre(3, 4, 5));
  EXPECT_EQ(results_["selected"], std::vector<double>{3});
  EXPECT_EQ(run("select", {{"max", {0, 0, 0}}}, {{"mode", "add"}}), "");
  EXPECT_THAT(selected(), ElementsAre(1, 3, 4, 5));
  EXPECT_EQ(run("select", {{"min", {4, 0, 0}}}, {{"mode", "remove"}}), "");
  EXPECT_THAT(selected(), ElementsAre(1, 3, 4));
  EXPECT_EQ(run("select", {{"min", {1, 0, 0}}}, {{"mode", "keep"}}), "");
  EXPECT_THAT(selected(), ElementsAre(3, 4));
  EXPECT_EQ(run("select", {}, {{"mode", "invert"}}), "");
  EXPECT_THAT(selected(), ElementsAre(1, 2, 5));
  EXPECT_EQ(run("bounds", {{"selected", {1}}}), "");
  EXPECT_EQ(results_["max"], (std::vector<double>{4, 0, 0}));
  EXPECT_EQ(run("crop", {{"selected", {1}}}), "");
  EXPECT_EQ(cloud.count(), 3);
  EXPECT_THAT(selected(), ElementsAre(1, 2, 3));
  EXPECT_EQ(run("select", {}, {{"mode", "none"}}), "");
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_EQ(run("select", {}, {{"mode", "all"}}), "");
  EXPECT_THAT(selected(), ElementsAre(1, 2, 3));
  EXPECT_EQ(run("select", {}, {{"mode", "some"}}),
            "The mode some is not known: it is new, add, remove, keep, all, none or invert");
}

TEST_F(PointCommandsTest, ThinsAllCloudsTogetherToTheCount) {
  PointCloud& one = line(3000);
  PointCloud& other = line(1000);
  EXPECT_EQ(run("thin", {{"count", {100}}}), "");
  EXPECT_EQ(one.count(), 75);
  EXPECT_EQ(other.count(), 25);
  EXPECT_EQ(positionsOf(one)[1], OroVector(40, 0, 0));
  EXPECT_EQ(run("thin", {{"count", {10}}, {"seed", {5}}}, {{"method", "random"}}), "");
  EXPECT_EQ(one.count() + other.count(), 10);
  EXPECT_EQ(run("thin", {{"count", {1000}}}), "");
  EXPECT_EQ(one.count() + other.count(), 10);
}

TEST_F(PointCommandsTest, RefusesThinningWithoutSense) {
  line(3);
  EXPECT_NE(run("thin", {{"count", {1.5}}}), "");
  EXPECT_NE(run("thin", {{"count", {-1}}}), "");
  EXPECT_NE(run("thin", {{"count", {1e300}}}), "");
  EXPECT_NE(run("thin", {{"count", {1}}, {"seed", {-1}}}), "");
  EXPECT_EQ(run("thin", {{"count", {1}}}, {{"method", "odd"}}),
            "The method odd is not known: it is even or random");
  EXPECT_EQ(run("voxel_thin", {{"size", {0}}}), "The size of a cube is above 0");
  EXPECT_EQ(run("voxel_thin", {{"size", {1e-300}}}),
            "The cubes are too small for where the points are");
}

TEST_F(PointCommandsTest, RemovesDuplicatesAndThinsByCubes) {
  PointCloud& cloud = add("a", {{1, 1, 1}, {2, 2, 2}, {1, 1, 1}, {2.5, 2.5, 2.5}});
  EXPECT_EQ(run("deduplicate"), "");
  EXPECT_EQ(cloud.count(), 3);
  EXPECT_EQ(run("voxel_thin", {{"size", {2}}}), "");
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(1, 1, 1), OroVector(2.5, 2.5, 2.5)));
}

TEST_F(PointCommandsTest, MergesAllCloudsIntoTheFirst) {
  PointCloud& first = add("a", {{0, 0, 0}}, {{1, 2, 3}}, 1);
  add("b", {{1, 0, 0}}, {{4, 5, 6}}, 2);
  EXPECT_EQ(run("merge"), "");
  EXPECT_EQ(results_["clouds"], std::vector<double>{2});
  EXPECT_THAT(colorsOf(first), ElementsAre(PointColor{1, 2, 3}, PointColor{4, 5, 6}));
  EXPECT_EQ(first.decimals, 2);
  EXPECT_EQ(document_->objects().size(), 2u);  // the world and the first cloud
  add("c", {{2, 0, 0}});
  EXPECT_EQ(run("merge"), "");
  EXPECT_EQ(first.count(), 3);
  EXPECT_FALSE(first.hasColors());
}

TEST_F(PointCommandsTest, TurnsColoursToGray) {
  PointCloud& cloud = add("a", {{0, 0, 0}}, {{255, 0, 0}});
  add("plain", {{0, 0, 0}, {1, 1, 1}});
  EXPECT_EQ(run("to_gray"), "");
  EXPECT_THAT(colorsOf(cloud), ElementsAre(PointColor{77, 77, 77}));
  EXPECT_EQ(results_["points"], std::vector<double>{1});
}

TEST_F(PointCommandsTest, TellsWhatThereIs) {
  EXPECT_EQ(run("info"), "");
  EXPECT_EQ(results_["points"], std::vector<double>{0});
  EXPECT_EQ(results_.count("min"), 0u);
  add("a", {{0, 5, 0}}, {{1, 1, 1}});
  add("b", {{-1, 0, 0}, {2, 2, 2}});
  EXPECT_EQ(run("info"), "");
  EXPECT_EQ(results_["clouds"], std::vector<double>{2});
  EXPECT_EQ(results_["points"], std::vector<double>{3});
  EXPECT_EQ(results_["colored"], std::vector<double>{1});
  EXPECT_EQ(results_["min"], (std::vector<double>{-1, 0, 0}));
  EXPECT_EQ(results_["max"], (std::vector<double>{2, 5, 2}));
}

TEST_F(PointCommandsTest, WorksOnOneCloudWhereOneIsGiven) {
  PointCloud& first = line(10);
  PointCloud& second = line(10);
  const IPtr<PointClouds> clouds(new PointClouds);
  EXPECT_EQ(clouds->count(), 2);
  EXPECT_EQ(clouds->cloud(2), nullptr);
  EXPECT_EQ(clouds->cloud(-1), nullptr);
  cloud_ = clouds->cloud(1);
  EXPECT_EQ(run("thin", {{"count", {4}}}), "");
  EXPECT_EQ(first.count(), 10);
  EXPECT_EQ(second.count(), 4);
}

TEST_F(PointCommandsTest, AStopLeavesAllCloudsAsTheyWere) {
  PointCloud& first = line(4000);
  PointCloud& second = line(4000);
  for (const char* name : {"deduplicate", "crop", "sort", "voxel_thin"}) {
    const IPtr<Watcher> watcher(new Watcher(4));
    Numbers numbers;
    if (name == std::string("crop")) numbers["min"] = {3000, 0, 0};
    if (name == std::string("voxel_thin")) numbers["size"] = {100};
    Texts texts;
    EXPECT_EQ(run(name, numbers, texts, watcher.get()), "The work was stopped") << name;
    EXPECT_TRUE(stopped_) << name;
    EXPECT_EQ(first.count(), 4000) << name;
    EXPECT_EQ(second.count(), 4000) << name;
    EXPECT_EQ(positionsOf(first)[1], OroVector(1, 0, 0)) << name;
  }
}

TEST_F(PointCommandsTest, WhoLooksAtAStorageKeepsItsPoints) {
  line(3000);
  const IPtr<PointClouds> clouds(new PointClouds);
  const IPtr<IPointCloud> cloud(clouds->cloud(0));
  const IPtr<IPointBlocks> blocks(cloud->blocks());
  EXPECT_EQ(run("translate", {{"by", {1, 0, 0}}}), "");
  int64_t first = 0;
  int64_t size = 0;
  ASSERT_EQ(blocks->blockCount(), 3);
  double* const xyz = blocks->positions(1, first, size);
  EXPECT_EQ(first, 1023);
  EXPECT_EQ(size, 1024);
  EXPECT_EQ(xyz[0], 1024);
  EXPECT_EQ(run("thin", {{"count", {2}}}), "");
  EXPECT_EQ(blocks->count(), 3000);
  EXPECT_EQ(xyz[3 * 1023], 2047);
  EXPECT_EQ(cloud->count(), 2);
  const IPtr<IPointBlocks> fresh(cloud->blocks());
  EXPECT_EQ(fresh->blockCount(), 1);
  EXPECT_EQ(fresh->positions(1, first, size), nullptr);
  fresh->positions(0, first, size)[0] = 5;
  EXPECT_EQ(run("bounds"), "");
  EXPECT_EQ(results_["min"], (std::vector<double>{5, 0, 0}));
}

TEST_F(PointCommandsTest, ColoursComeAndGoThroughTheCloud) {
  PointCloud& points = line(2000);
  const IPtr<PointClouds> clouds(new PointClouds);
  const IPtr<IPointCloud> cloud(clouds->cloud(0));
  EXPECT_EQ(IPtr<IPointBlocks>(cloud->blocks())->colors(), nullptr);
  EXPECT_TRUE(cloud->setHasColors(true));
  const IPtr<IPointBlocks> blocks(cloud->blocks());
  uint8_t* const colors = blocks->colors();
  ASSERT_NE(colors, nullptr);
  colors[4 * 1999] = 200;
  EXPECT_EQ(colorsOf(points)[1999], (PointColor{200, 0, 0}));
  EXPECT_EQ(colorsOf(points)[0], (PointColor{0, 0, 0}));
  EXPECT_TRUE(cloud->setHasColors(false));
  EXPECT_FALSE(cloud->hasColors());
  EXPECT_EQ(colors[4 * 1999], 200);
}

TEST_F(PointCommandsTest, TheSelectionIsReadAndWrittenInPieces) {
  line(5);
  const IPtr<PointClouds> clouds(new PointClouds);
  const IPtr<IPointCloud> cloud(clouds->cloud(0));
  const uint8_t flags[3] = {1, 0, 2};
  EXPECT_TRUE(cloud->writeSelection(2, 3, flags));
  EXPECT_EQ(cloud->selectedCount(), 2);
  uint8_t all[5];
  EXPECT_TRUE(cloud->readSelection(0, 5, all));
  EXPECT_THAT(all, ElementsAre(0, 0, 1, 0, 1));
  EXPECT_FALSE(cloud->readSelection(3, 3, all));
  EXPECT_FALSE(cloud->readSelection(-1, 1, all));
  EXPECT_FALSE(cloud->writeSelection(0, INT64_MAX, flags));
}

TEST_F(PointCommandsTest, RefusesPicturesWithoutSense) {
  line(2);
  EXPECT_NE(run("snapshot"), "");
  EXPECT_EQ(run("snapshot", {}, {{"file", "x.png"}, {"view", "below"}}),
            "The view below is not known: it is top, front or side");
  EXPECT_EQ(run("snapshot", {}, {{"file", "x.png"}, {"color", "red"}}),
            "The color red is not known: it is rgb or height");
  EXPECT_EQ(run("snapshot", {{"size", {0, 10}}}, {{"file", "x.png"}}),
            "The edges of a picture are whole numbers from 1 to 16384");
}

TEST_F(PointCommandsTest, APictureIsWrittenUnderAPngNameAlone) {
  line(2);
  for (const char* name : {"a.PNG", "a.b.Png"}) {
    EXPECT_EQ(run("snapshot", {}, {{"file", pathOf(name)}}), "") << name;
    EXPECT_EQ(folder_.read(name).substr(1, 3), "PNG") << name;
  }
  for (const char* name : {"h.jpg", "h.JPG", "h.pngx", "h.png.bmp", "h.apng", "h.", "h", "png"}) {
    EXPECT_THAT(run("snapshot", {}, {{"file", pathOf(name)}}),
                testing::MatchesRegex("Pictures are written as .png files alone, not as .*" +
                                      std::string(name)));
    EXPECT_FALSE(std::filesystem::exists(folder_.file(name))) << name;
  }
}

TEST_F(PointCommandsTest, APictureIsAFileOfItsSize) {
  line(100, std::vector<PointColor>(100, {255, 0, 0}));
  EXPECT_EQ(run("snapshot", {{"size", {300, 200}}}, {{"file", pathOf("a.png")}}), "");
  const std::string bytes = folder_.read("a.png");
  ASSERT_GT(bytes.size(), 100u);
  EXPECT_EQ(bytes.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\1\x2C\0\0\0\xC8", 8));
  EXPECT_EQ(bytes.substr(bytes.size() - 8, 4), "IEND");
}

TEST_F(PointCommandsTest, APictureThatCannotBeWrittenTellsItsFile) {
  line(2);
  const std::string message = run("snapshot", {}, {{"file", pathOf("absent/a.png")}});
  EXPECT_THAT(message, testing::HasSubstr("a.png cannot be made in its folder: "));
  EXPECT_EQ(run("snapshot", {}, {{"file", ""}}), "The name of the file is empty");
}

TEST_F(PointCommandsTest, FilesNeedTheirServices) {
  EXPECT_EQ(run("open", {}, {{"file", "in.xyz"}}), "There is nothing that opens files");
  EXPECT_EQ(run("save", {}, {{"file", "out.xyz"}}), "There is nothing that saves files");
}

TEST_F(PointCommandsTest, AFileThatFailsTellsTheReasonThatIsReported) {
  serveFiles();
  folder_.write("bad.xyz", "1 2 3\n4 five 6\n");
  const size_t before = document_->objects().size();
  EXPECT_THAT(run("open", {}, {{"file", pathOf("absent.xyz")}}),
              testing::MatchesRegex("Cannot open the file .*absent.xyz"));
  EXPECT_THAT(run("open", {}, {{"file", pathOf("bad.xyz")}}),
              testing::MatchesRegex(".*bad.xyz, line 2: .*"));
  EXPECT_EQ(run("open", {}, {{"file", ""}}), "The name of the file is empty");
  EXPECT_EQ(document_->objects().size(), before);
  line(3);
  EXPECT_THAT(run("save", {}, {{"file", pathOf("absent/a.xyz")}}),
              testing::MatchesRegex("Cannot write the file .*a.xyz: .+"));
  EXPECT_THAT(run("save", {}, {{"file", pathOf("a.nonsense")}}),
              testing::MatchesRegex("The type of the file .*a.nonsense cannot be saved"));
  EXPECT_EQ(run("save", {}, {{"file", ""}}), "The name of the file is empty");
}

TEST_F(PointCommandsTest, OneCloudMayBeSavedAlone) {
  serveFiles();
  add("one", {{1, 2, 3}});
  add("two", {{4, 5, 6}});
  EXPECT_EQ(run("save", {}, {{"file", pathOf("both.xyz")}}), "");
  EXPECT_EQ(folder_.read("both.xyz"), "1 2 3\n4 5 6\n");
  const IPtr<PointClouds> clouds(new PointClouds);
  cloud_ = clouds->cloud(1);
  for (const char* const name : {"two.xyz", "two.cwl"}) {
    EXPECT_EQ(run("save", {}, {{"file", pathOf(name)}}), "");
    cloud_ = nullptr;
    EXPECT_EQ(run("open", {}, {{"file", pathOf(name)}}), "");
    EXPECT_THAT(results_["points"], ElementsAre(1));
    cloud_ = clouds->cloud(1);
  }
  EXPECT_EQ(folder_.read("two.xyz"), "4 5 6\n");
}

TEST_F(PointCommandsTest, AStopWhileAFileIsReadAddsNothing) {
  serveFiles();
  std::string text;
  for (int i = 0; i < 100000; ++i) text += std::to_string(i) + " 0 0\n";
  folder_.write("in.xyz", text);
  const size_t before = document_->objects().size();
  for (const int looks : {0, 1, 2}) {
    const IPtr<Watcher> watcher(new Watcher(looks));
    EXPECT_EQ(run("open", {}, {{"file", pathOf("in.xyz")}}, watcher.get()), "The work was stopped");
    EXPECT_TRUE(stopped_);
    EXPECT_EQ(document_->objects().size(), before);
  }
  EXPECT_EQ(run("open", {}, {{"file", pathOf("in.xyz")}}), "");
  EXPECT_THAT(results_["points"], ElementsAre(100000));
}

TEST_F(PointCommandsTest, AStopWhileAFileIsWrittenLeavesTheOlderOne) {
  serveFiles();
  line(50000);
  for (const char* const name : {"a.xyz", "a.ply", "a.las", "a.pcd", "a.cwl"}) {
    folder_.write(name, "older");
    const IPtr<Watcher> watcher(new Watcher(1));
    EXPECT_EQ(run("save", {}, {{"file", pathOf(name)}}, watcher.get()), "The work was stopped");
    EXPECT_TRUE(stopped_);
    EXPECT_EQ(folder_.read(name), "older");
    EXPECT_EQ(run("save", {}, {{"file", pathOf(name)}}), "");
    EXPECT_NE(folder_.read(name), "older");
  }
}

}  // namespace

#include "components/points/pointcommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "tests/components/pointclouds.h"
#include "tests/support/countingmanager.h"

namespace {

using testing::ElementsAre;
using tests::colorsOf;
using tests::positionsOf;

class PointCommandsTest : public testing::Test {
 protected:
  void SetUp() override {
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

  bool run(const char* name, std::vector<double> arguments) {
    return commands_->run(*document_, name, arguments);
  }

  tests::ManagedMemory memory_;
  IPtr<PointCommands> commands_{new PointCommands};
  IPtr<PointDocument> document_{new PointDocument};
};

TEST_F(PointCommandsTest, TheTableIsInTheOrderOfNames) {
  std::string names;
  for (const PointCommand& command : commands_->commands())
    names += std::string(command.name) + " ";
  EXPECT_EQ(names, "crop merge scale sort thin translate ");
}

TEST_F(PointCommandsTest, TranslatesAndScales) {
  PointCloud& cloud = add("a", {{1, 2, 3}}, {{1, 1, 1}}, 2);
  EXPECT_TRUE(run("translate", {10, 20, 30}));
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(11, 22, 33)));
  EXPECT_EQ(cloud.decimals, 2);
  EXPECT_TRUE(run("scale", {2}));
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(22, 44, 66)));
  EXPECT_EQ(cloud.decimals, PointCloud::kShortest);
}

TEST_F(PointCommandsTest, SortsByAnAxisAndKeepsWhatBelongsToThePoints) {
  PointCloud& cloud =
      add("a", {{3, 1, 0}, {1, 2, 0}, {3, 0, 0}}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  cloud.selection().Set(2);
  EXPECT_TRUE(run("sort", {0}));
  EXPECT_THAT(positionsOf(cloud),
              ElementsAre(OroVector(1, 2, 0), OroVector(3, 1, 0), OroVector(3, 0, 0)));
  EXPECT_THAT(colorsOf(cloud),
              ElementsAre(PointColor{2, 0, 0}, PointColor{1, 0, 0}, PointColor{3, 0, 0}));
  EXPECT_THAT(tests::selected(cloud.selection()), ElementsAre(1));
  EXPECT_FALSE(run("sort", {3}));
}

TEST_F(PointCommandsTest, ThinsToTheFirstOfEveryFew) {
  PointCloud& cloud = add("a", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}});
  cloud.selection().SetAll(3);
  EXPECT_TRUE(run("thin", {2}));
  EXPECT_THAT(positionsOf(cloud),
              ElementsAre(OroVector(0, 0, 0), OroVector(2, 0, 0), OroVector(4, 0, 0)));
  EXPECT_THAT(tests::selected(cloud.selection()), ElementsAre(1, 2));
  EXPECT_FALSE(run("thin", {0}));
  EXPECT_FALSE(run("thin", {1.5}));
}

TEST_F(PointCommandsTest, CropsToABoxWithItsBorders) {
  PointCloud& cloud =
      add("a", {{0, 0, 0}, {2, 0, 0}, {1, 1, 1}}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  EXPECT_TRUE(run("crop", {0, 0, 0, 1, 1, 1}));
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(0, 0, 0), OroVector(1, 1, 1)));
  EXPECT_THAT(colorsOf(cloud), ElementsAre(PointColor{1, 0, 0}, PointColor{3, 0, 0}));
  EXPECT_FALSE(run("crop", {1, 0, 0, 0, 1, 1}));
  EXPECT_TRUE(run("crop", {7, 7, 7, 8, 8, 8}));
  EXPECT_EQ(cloud.count(), 0);
}

TEST_F(PointCommandsTest, MergesAllCloudsIntoTheFirst) {
  PointCloud& first = add("a", {{0, 0, 0}}, {{1, 2, 3}}, 1);
  add("b", {{1, 0, 0}}, {{4, 5, 6}}, 2).selection().Set(1);
  EXPECT_TRUE(run("merge", {}));
  EXPECT_THAT(positionsOf(first), ElementsAre(OroVector(0, 0, 0), OroVector(1, 0, 0)));
  EXPECT_THAT(colorsOf(first), ElementsAre(PointColor{1, 2, 3}, PointColor{4, 5, 6}));
  EXPECT_THAT(tests::selected(first.selection()), ElementsAre(2));
  EXPECT_EQ(first.decimals, 2);
  EXPECT_EQ(document_->objects().size(), 2u);  // the world and the first cloud
  add("c", {{2, 0, 0}});
  EXPECT_TRUE(run("merge", {}));
  EXPECT_EQ(first.count(), 3);
  EXPECT_FALSE(first.hasColors());
}

TEST_F(PointCommandsTest, RefusesUnknownNamesAndSenselessArguments) {
  PointCloud& cloud = add("a", {{1, 2, 3}});
  EXPECT_FALSE(run("paint", {}));
  EXPECT_FALSE(run("translate", {1, 2}));
  EXPECT_FALSE(run("translate", {1, 2, std::numeric_limits<double>::quiet_NaN()}));
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(1, 2, 3)));
}

}  // namespace

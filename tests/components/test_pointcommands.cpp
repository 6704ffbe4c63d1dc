#include "components/points/pointcommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"

namespace {

class PointCommandsTest : public testing::Test {
 protected:
  void SetUp() override {
    commands_->registerCommands();
    commands_->commandsRegistered();
    document_->makeDocument();
  }

  PointCloud& add(const char* name, PointCloud cloud) {
    auto* data = new PointCloudData(std::move(cloud));
    document_->add(new PointObject(OroString(name), PointCloudData::classId(), data));
    return data->cloud();
  }

  bool run(const char* name, std::vector<double> arguments) {
    return commands_->run(*document_, name, arguments);
  }

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
  PointCloud& cloud = add("a", {{{1, 2, 3}}, {{1, 1, 1}}, 2});
  EXPECT_TRUE(run("translate", {10, 20, 30}));
  EXPECT_EQ(cloud.positions[0], (PointPosition{11, 22, 33}));
  EXPECT_TRUE(run("scale", {2}));
  EXPECT_EQ(cloud.positions[0], (PointPosition{22, 44, 66}));
}

TEST_F(PointCommandsTest, SortsByAnAxisAndKeepsColoursWithTheirPoints) {
  PointCloud& cloud =
      add("a", {{{3, 1, 0}, {1, 2, 0}, {3, 0, 0}}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, 0});
  EXPECT_TRUE(run("sort", {0}));
  EXPECT_EQ(cloud.positions, (std::vector<PointPosition>{{1, 2, 0}, {3, 1, 0}, {3, 0, 0}}));
  EXPECT_EQ(cloud.colors[0].red, 2);
  EXPECT_EQ(cloud.colors[2].red, 3);
  EXPECT_FALSE(run("sort", {3}));
}

TEST_F(PointCommandsTest, ThinsToTheFirstOfEveryFew) {
  PointCloud& cloud = add("a", {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}}, {}, 0});
  EXPECT_TRUE(run("thin", {2}));
  EXPECT_EQ(cloud.positions, (std::vector<PointPosition>{{0, 0, 0}, {2, 0, 0}, {4, 0, 0}}));
  EXPECT_FALSE(run("thin", {0}));
  EXPECT_FALSE(run("thin", {1.5}));
}

TEST_F(PointCommandsTest, CropsToABoxWithItsBorders) {
  PointCloud& cloud = add("a", {{{0, 0, 0}, {1, 1, 1}, {2, 0, 0}}, {}, 0});
  EXPECT_TRUE(run("crop", {0, 0, 0, 1, 1, 1}));
  EXPECT_EQ(cloud.size(), 2u);
  EXPECT_FALSE(run("crop", {1, 0, 0, 0, 1, 1}));
}

TEST_F(PointCommandsTest, MergesAllCloudsIntoTheFirst) {
  PointCloud& first = add("a", {{{0, 0, 0}}, {{1, 2, 3}}, 1});
  add("b", {{{1, 0, 0}}, {{4, 5, 6}}, 2});
  EXPECT_TRUE(run("merge", {}));
  EXPECT_EQ(first.size(), 2u);
  EXPECT_EQ(first.colors[1], (PointColor{4, 5, 6}));
  EXPECT_EQ(first.decimals, 2);
  EXPECT_EQ(document_->objects().size(), 2u);  // the world and the first cloud
  add("c", {{{2, 0, 0}}, {}, 0});
  EXPECT_TRUE(run("merge", {}));
  EXPECT_EQ(first.size(), 3u);
  EXPECT_FALSE(first.hasColors());
}

TEST_F(PointCommandsTest, RefusesUnknownNamesAndSenselessArguments) {
  PointCloud& cloud = add("a", {{{1, 2, 3}}, {}, 0});
  EXPECT_FALSE(run("paint", {}));
  EXPECT_FALSE(run("translate", {1, 2}));
  EXPECT_FALSE(run("translate", {1, 2, std::numeric_limits<double>::quiet_NaN()}));
  EXPECT_EQ(cloud.positions[0], (PointPosition{1, 2, 3}));
}

}  // namespace

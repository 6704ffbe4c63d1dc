#include "components/points/pointcloud.h"

#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "components/points/pointarrayfactory.h"
#include "components/points/pointextrainfo.h"
#include "tests/components/pointclouds.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/countingmanager.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::colorsOf;
using tests::fill;
using tests::positionsOf;

class PointCloudTest : public testing::Test {
 protected:
  tests::ManagedMemory memory_;
};

TEST_F(PointCloudTest, TakesPointsBlockByBlock) {
  PointCloud cloud;
  std::vector<OroVector> all;
  for (const int count : {0, 1, 255, 256, 257, 2000, 1024}) {
    std::vector<OroVector> more;
    for (int i = 0; i < count; ++i) more.emplace_back(all.size() + more.size(), -0.5 * i, 7);
    fill(cloud, more);
    all.insert(all.end(), more.begin(), more.end());
    ASSERT_EQ(positionsOf(cloud), all);
  }
  EXPECT_FALSE(cloud.hasColors());
  double xyz[9];
  cloud.positions(1023, 3, xyz);
  EXPECT_EQ(xyz[0], 1022);
  EXPECT_EQ(xyz[6], 1024);
}

TEST_F(PointCloudTest, ReadsOriginsThatHaveNoBlock) {
  PointCloud cloud;
  fill(cloud, std::vector<OroVector>(3000));
  EXPECT_EQ(memory_.manager->allocations, 0);
  EXPECT_EQ(positionsOf(cloud), std::vector<OroVector>(3000));
}

TEST_F(PointCloudTest, TakesColoursFromTheFirstPointOrNever) {
  PointCloud colored;
  fill(colored, {{1, 2, 3}}, {{1, 2, 3}});
  fill(colored, {{4, 5, 6}}, {{7, 8, 255}});
  EXPECT_THAT(colorsOf(colored), ElementsAre(PointColor{1, 2, 3}, PointColor{7, 8, 255}));
  EXPECT_TRUE(colored.points().HasPackedColors());
  float floats[3];
  colored.points().GetColorF(2, floats);
  EXPECT_EQ(floats[2], 1.0F);
  PointCloud plain;
  fill(plain, {{1, 2, 3}});
  fill(plain, {{1, 2, 3}}, {{7, 8, 9}});
  EXPECT_FALSE(plain.hasColors());
  PointColor color{5, 5, 5};
  plain.colors(1, 1, &color);
  EXPECT_EQ(color, PointColor());
  colored.dropColors();
  EXPECT_FALSE(colored.hasColors());
}

TEST_F(PointCloudTest, ReadsFloatColoursOverPackedOnesAsTheyAre) {
  const float color[3] = {0.1F, 0.2F, 0.3F};  // not to be had with 8 bits
  const IPtr<OroVectorArray> written(new OroVectorArray);
  written->Add(1, 2, 3);
  written->SetExtraInfo(new PointExtraInfo);
  written->SetColor(1, color);
  tests::MemoryOutput output;
  ASSERT_TRUE(written->WriteColors(output, 1, nullptr));
  ASSERT_TRUE(output.FlushBuffer());

  PointCloud cloud;
  fill(cloud, {{1, 2, 3}}, {{7, 8, 9}});
  ASSERT_TRUE(cloud.points().HasPackedColors());
  tests::MemoryInput input(output.bytes);
  EXPECT_EQ(cloud.points().ReadColors(input), 1);
  EXPECT_FALSE(cloud.points().HasPackedColors());
  float found[3] = {};
  EXPECT_TRUE(cloud.points().GetColorF(1, found));
  EXPECT_THAT(found, testing::ElementsAreArray(color));
}

TEST_F(PointCloudTest, KeepsTheLastPointToo) {
  PointCloud cloud;
  fill(cloud, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  cloud.selection().SetAll(3);
  BitVector mask;
  mask.Set(1);
  mask.Set(3);
  mask.Set(9);
  cloud.keep(mask);
  EXPECT_THAT(positionsOf(cloud), ElementsAre(OroVector(1, 0, 0), OroVector(3, 0, 0)));
  EXPECT_THAT(colorsOf(cloud), ElementsAre(PointColor{1, 0, 0}, PointColor{3, 0, 0}));
  EXPECT_THAT(tests::selected(cloud.selection()), ElementsAre(1, 2));
  cloud.keep(BitVector());
  EXPECT_EQ(cloud.count(), 0);
}

TEST_F(PointCloudTest, RefusesMoreThanCanBeCounted) {
  PointCloud cloud;
  fill(cloud, {{1, 2, 3}});
  const double xyz[3] = {};
  EXPECT_FALSE(cloud.add(xyz, nullptr, INT32_MAX));
  EXPECT_EQ(cloud.count(), 1);
  cloud.reserve(INT32_MAX);
  EXPECT_EQ(cloud.points().GetCapacity(), 1024);
  cloud.reserve(5000);
  EXPECT_EQ(cloud.points().GetCapacity(), 5120);
}

// ---------------------------------------------------------------------------------------------

class PointColors : public testing::Test {
 protected:
  static constexpr float kRed[3] = {1, 0, 0};
  static constexpr float kGreen[3] = {0, 1, 0};
  static constexpr float kMixed[3] = {0.25F, 0.5F, 0.75F};

  static IPtr<PointExtraInfo> make(int32_t points) {
    IPtr<PointExtraInfo> info(new PointExtraInfo);
    for (int32_t i = 0; i <= points; ++i) {
      const float color[3] = {static_cast<float>(i) / 255, 0, 1};
      info->SetColorF(i, color);
    }
    return info;
  }
  // The reds, as bytes.
  static std::vector<int> redsOf(IOroPointExtraInfo& info) {
    std::vector<int> reds;
    for (int32_t i = 0; i < info.GetCount(); ++i) reds.push_back(info.GetPackedColor(i) & 0xFF);
    return reds;
  }

  tests::ManagedMemory memory_;  // for the index arrays
};

TEST_F(PointColors, AreNoneUntilSomebodyWantsThem) {
  const IPtr<PointExtraInfo> info(new PointExtraInfo);
  EXPECT_FALSE(info->HasColors());
  EXPECT_EQ(info->GetCount(), 0);
  info->SetCount(5);
  EXPECT_EQ(info->GetCount(), 0) << "no places without colours";
  info->SetCapacity(3);
  EXPECT_TRUE(info->HasColors());
  EXPECT_EQ(info->GetCount(), 3);
  info->SetCount(5);
  EXPECT_EQ(info->GetCount(), 6) << "place 0 is one of them";
  info->SetCapacity(2);
  EXPECT_EQ(info->GetCount(), 6);
  info->ClearColors();
  EXPECT_FALSE(info->HasColors());
  EXPECT_TRUE(info->CanDiscard());
  EXPECT_TRUE(info->Validate());
}

TEST_F(PointColors, KeepFloatsAsTheyAre) {
  const IPtr<PointExtraInfo> info(new PointExtraInfo);
  const float beyond[3] = {-0.5F, 1.5F, 0.1F};
  info->SetColorF(2, beyond);
  float floats[3];
  info->GetColorF(2, floats);
  EXPECT_THAT(floats, ElementsAre(-0.5F, 1.5F, 0.1F));
  const double doubles[3] = {0.25, 0.5, 1};
  info->SetColorD(1, doubles);
  double got[3];
  info->GetColorD(1, got);
  EXPECT_THAT(got, ElementsAre(0.25, 0.5, 1));
  info->GetColorF(0, floats);
  EXPECT_THAT(floats, ElementsAre(0, 0, 0)) << "places between are black";
  info->GetColorF(-1, floats);
  info->GetColorF(99, floats);
  EXPECT_THAT(floats, ElementsAre(0, 0, 0));
  EXPECT_EQ(info->GetPackedColor(2), PointColor({0, 255, 26}).packed());
  info->SetColorF(-1, beyond);
  EXPECT_EQ(info->GetCount(), 3);
}

TEST_F(PointColors, ArePackedWithoutLossOfEightBits) {
  const IPtr<PointExtraInfo> info = make(255);
  std::vector<uint32_t> before;
  for (int32_t i = 0; i <= 255; ++i) before.push_back(info->GetPackedColor(i));
  const uint32_t* const packed = info->GetPackedArray();
  for (int32_t i = 0; i <= 255; ++i) {
    EXPECT_EQ(packed[i], before[static_cast<size_t>(i)]);
    EXPECT_EQ(packed[i], PointColor({static_cast<uint8_t>(i), 0, 255}).packed());
    float color[3];
    info->GetColorF(i, color);
    EXPECT_EQ(color[0], static_cast<float>(i) / 255);
  }
  EXPECT_EQ(PointColor({1, 2, 3}).packed(), 0xFF030201);
  EXPECT_EQ(PointColor::unpacked(0xFF030201), (PointColor{1, 2, 3}));
  info->SetColorF(300, kMixed);
  EXPECT_EQ(info->GetPackedColor(300), PointColor({64, 128, 191}).packed());
}

TEST_F(PointColors, MoveInBothForms) {
  for (const bool isPacked : {false, true}) {
    const IPtr<PointExtraInfo> info = make(5);
    if (isPacked) info->GetPackedArray();
    EXPECT_THAT(redsOf(*info), ElementsAre(0, 1, 2, 3, 4, 5));
    info->CopyColor(1, 4);
    info->CopyColor(2, 99);
    EXPECT_THAT(redsOf(*info), ElementsAre(0, 4, 2, 3, 4, 5));
    info->Remove(2, 2);
    EXPECT_THAT(redsOf(*info), ElementsAre(0, 4, 4, 5));
    info->Insert(1, 2);
    EXPECT_THAT(redsOf(*info), ElementsAre(0, 0, 0, 4, 4, 5));
    info->Remove(5, 9);
    info->Remove(9, 1);
    info->Insert(9, 1);
    EXPECT_THAT(redsOf(*info), ElementsAre(0, 0, 0, 4, 4));
    EXPECT_TRUE(info->Validate());
  }
}

TEST_F(PointColors, FollowMapsAndMasks) {
  const IPtr<PointExtraInfo> info = make(4);
  OroMM::IntArray index(9);
  index.Set(1, 3);
  index.Set(2, 1);
  index.Set(3, 2);
  index.Set(4, 4);
  info->Permute(index, 1, 4);
  EXPECT_THAT(redsOf(*info), ElementsAre(0, 3, 1, 2, 4)) << "place p takes what stood at index[p]";
  info->Reorder(index, 4);
  EXPECT_THAT(redsOf(*info), ElementsAre(0, 1, 2, 3, 4)) << "what is at i goes to map[i]";
  BitVector mask;
  for (const int32_t b : {0, 2, 4, 77}) mask.Set(b);
  info->Compact(mask);
  EXPECT_THAT(redsOf(*info), ElementsAre(0, 2, 4));
  index.Set(2, -7);
  info->Permute(index, 1, 3);
  EXPECT_THAT(redsOf(*info), ElementsAre(0, 0, 0, 4)) << "places that nobody set are black";
}

TEST_F(PointColors, AreComparedByPoints) {
  const IPtr<PointExtraInfo> a = make(3);
  const IPtr<PointExtraInfo> b = make(3);
  b->GetPackedArray();
  b->SetColorF(0, kGreen);
  EXPECT_TRUE(a->Equals(b.get(), 3)) << "place 0 is no point";
  b->SetColorF(3, kGreen);
  EXPECT_FALSE(a->Equals(b.get(), 3));
  EXPECT_TRUE(a->Equals(b.get(), 2));
  EXPECT_FALSE(a->Equals(nullptr, 0));
  EXPECT_FALSE(a->Equals(IPtr<PointExtraInfo>(new PointExtraInfo).get(), 0));
}

TEST_F(PointColors, AreCopiedAndSwapped) {
  const IPtr<PointExtraInfo> a = make(2);
  const IPtr<PointExtraInfo> b(new PointExtraInfo);
  b->SetColorF(1, kRed);
  b->GetPackedArray();
  const IPtr<IOroPointExtraInfo> copy(a->Clone());
  EXPECT_TRUE(copy->Equals(a.get(), 2));
  a->SetColorF(1, kGreen);
  EXPECT_FALSE(copy->Equals(a.get(), 2));
  a->Swap(b.get());
  EXPECT_THAT(redsOf(*a), ElementsAre(0, 255));
  EXPECT_THAT(redsOf(*b), ElementsAre(0, 0, 2));
  a->Swap(nullptr);
  a->Assign(nullptr);
  EXPECT_THAT(redsOf(*a), ElementsAre(0, 255));
  a->Assign(b.get());
  EXPECT_THAT(redsOf(*a), ElementsAre(0, 0, 2));
}

TEST_F(PointColors, MakeArraysForTheirChunks) {
  const IPtr<PointArrayFactory> factory(new PointArrayFactory);
  const IPtr<IRealPArray> byHeader(factory->MakeFromChunk(0x0B916B00, 1024));
  const IPtr<IRealPArray> byId(factory->MakeFromChunk(0xB916B, 1024));
  ASSERT_TRUE(byHeader && byId);
  EXPECT_STREQ(byHeader->getClassName(), "OroVectorArray");
  EXPECT_EQ(byId->GetCount(), 0);
  EXPECT_EQ(factory->MakeFromChunk(0x315E97D6, 1024), nullptr);
  EXPECT_EQ(factory->MakeFromChunk(-1, 1024), nullptr);
}

}  // namespace

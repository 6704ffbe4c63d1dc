#include "orobasictypes/realparray.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interfaces/IRealPArrayFactory.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oromatrix.h"
#include "orobasictypes/orovectorarray.h"
#include "orobasictypes/pointcolorobserver.h"
#include "orobasictypes/vertexarrayrpa.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/orobasictypes/numeric/notfinite.h"
#include "tests/orobasictypes/numeric/plainpoints.h"
#include "tests/support/assertionlist.h"
#include "tests/support/countingmanager.h"
#include "tests/support/fakeheap.h"
#include "tests/support/slotnumber.h"

namespace {

using OroMM::IntArray;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::bitsOf;
using tests::EndlessInput;
using tests::FakeExtraInfo;
using tests::MemoryInput;
using tests::MemoryOutput;
using tests::PlainPoints;
using tests::setBits;

using Points = std::vector<OroVector>;
using Color = FakeExtraInfo::Color;

using tests::infinity;
using tests::nan;

class PointArray : public testing::Test {
 protected:
  static IPtr<PlainPoints> make(const Points& points) { return new PlainPoints(points); }
  // Gives the array colours of its own.
  static FakeExtraInfo& addColors(RealPArray& array, const std::vector<Color>& colors) {
    auto* const info = new FakeExtraInfo;
    info->colors = colors;
    info->hasColors = true;
    array.SetExtraInfo(info);
    return *info;
  }

  struct NoneIsLeft {
    ~NoneIsLeft() { EXPECT_EQ(FakeExtraInfo::living, 0); }
  };

  NoneIsLeft none_;  // outlives the broker
  tests::ManagedMemory memory_;
};

template <class Operation>
int slotOf(Operation operation) {
  return tests::slotNumber(operation);
}

TEST_F(PointArray, HasTheOperationsOfItsInterfaceInTheirPlaces) {
  using I = IRealPArray;
  EXPECT_EQ(slotOf(&I::GetCount), 1);
  EXPECT_EQ(slotOf(&I::Clear), 2);
  EXPECT_EQ(slotOf(&I::Reserve), 3);
  EXPECT_EQ(slotOf(&I::Clone), 4);
  EXPECT_EQ(slotOf(static_cast<int32_t (I::*)(const OroVector&)>(&I::Add)), 5);
  EXPECT_EQ(slotOf(&I::AddF), 6);
  EXPECT_EQ(slotOf(&I::AddD), 7);
  EXPECT_EQ(slotOf(static_cast<int32_t (I::*)(double, double, double)>(&I::Add)), 8);
  EXPECT_EQ(slotOf(&I::SetCount), 9);
  EXPECT_EQ(slotOf(static_cast<bool (I::*)(int32_t, const OroVector&)>(&I::Set)), 10);
  EXPECT_EQ(slotOf(&I::SetF), 11);
  EXPECT_EQ(slotOf(&I::SetExisting), 12);
  EXPECT_EQ(slotOf(static_cast<bool (I::*)(int32_t, double, double, double)>(&I::Set)), 13);
  EXPECT_EQ(slotOf(static_cast<void (I::*)(int32_t, OroVector&) const>(&I::Get)), 14);
  EXPECT_EQ(slotOf(static_cast<void (I::*)(int32_t, float*) const>(&I::Get)), 15);
  EXPECT_EQ(slotOf(&I::unusedSlot16), 16);
  EXPECT_EQ(slotOf(static_cast<void (I::*)(int32_t, double&, double&, double&) const>(&I::Get)),
            17);
  EXPECT_EQ(slotOf(&I::SetHasColors), 18);
  EXPECT_EQ(slotOf(&I::GetColorF), 19);
  EXPECT_EQ(slotOf(&I::GetColorD), 20);
  EXPECT_EQ(slotOf(&I::GetColor), 21);
  EXPECT_EQ(slotOf(&I::HasColors), 22);
  using Masked = void (I::*)(OroVector&, OroVector&, const BitVector&) const;
  EXPECT_EQ(slotOf(static_cast<Masked>(&I::GetBounds)), 23);
  EXPECT_EQ(slotOf(static_cast<void (I::*)(OroVector&, OroVector&) const>(&I::GetBounds)), 24);
  EXPECT_EQ(slotOf(&I::GetBoundsExtra), 25);
  EXPECT_EQ(slotOf(&I::Read), 26);
  EXPECT_EQ(slotOf(static_cast<bool (I::*)(BinOutput&, const BitVector&)>(&I::Write)), 27);
  EXPECT_EQ(slotOf(static_cast<bool (I::*)(BinOutput&)>(&I::Write)), 28);
  EXPECT_EQ(slotOf(&I::NewLike), 29);
}

TEST_F(PointArray, HasItsOwnOperationsBehindThoseOfTheProgress) {
  using R = RealPArray;
  const int last = slotOf(&ProgressCallbackBase::GetProgress);
  EXPECT_EQ(slotOf(&R::Remove), last + 1);
  EXPECT_EQ(slotOf(&R::Insert), last + 2);
  EXPECT_EQ(slotOf(&R::RemoveLast), last + 3);
  EXPECT_EQ(slotOf(&R::Materialize), last + 4);
  EXPECT_EQ(slotOf(&R::GetCapacity), last + 5);
  EXPECT_EQ(slotOf(&R::AddUntil), last + 6);
  EXPECT_EQ(slotOf(&R::AddPointF), last + 7);
  EXPECT_EQ(slotOf(&R::AddPointD), last + 8);
  EXPECT_EQ(slotOf(&R::ColorsToGray), last + 9);
  EXPECT_EQ(slotOf(static_cast<bool (R::*)(int32_t, const float*)>(&R::SetColor)), last + 10);
  EXPECT_EQ(slotOf(&R::SetColorNotify), last + 11);
  EXPECT_EQ(slotOf(static_cast<bool (R::*)(int32_t, double, double, double)>(&R::SetColor)),
            last + 12);
  EXPECT_EQ(slotOf(&R::SetPointF), last + 13);
  EXPECT_EQ(slotOf(&R::SetPointD), last + 14);
  EXPECT_EQ(slotOf(&R::GetVector), last + 15);
  EXPECT_EQ(slotOf(&R::GetFloat4), last + 16);
  EXPECT_EQ(slotOf(&R::GetPointF), last + 17);
  EXPECT_EQ(slotOf(&R::GetPointD), last + 18);
  EXPECT_EQ(slotOf(&R::GetPointGrayF), last + 19);
  EXPECT_EQ(slotOf(&R::GetPointGrayD), last + 20);
  EXPECT_EQ(slotOf(&R::ScaleColors), last + 21);
  EXPECT_EQ(slotOf(static_cast<RealPArray* (R::*)(bool) const>(&R::Clone)), last + 22);
  EXPECT_EQ(slotOf(&R::Sort), last + 23);
  EXPECT_EQ(slotOf(&R::NewArray), last + 24);
  EXPECT_EQ(slotOf(&R::GetScale), last + 25);
  EXPECT_EQ(slotOf(&R::SetScale), last + 26);
  EXPECT_EQ(slotOf(&R::Compress), last + 27);
}

TEST_F(PointArray, KeepsTheColoursBehindAnInterfaceOfFixedPlaces) {
  using I = IOroPointExtraInfo;
  EXPECT_EQ(slotOf(&I::Clone), 1);
  EXPECT_EQ(slotOf(&I::HasColors), 2);
  EXPECT_EQ(slotOf(&I::SetCapacity), 3);
  EXPECT_EQ(slotOf(&I::ClearColors), 4);
  EXPECT_EQ(slotOf(&I::SetColorD), 5);
  EXPECT_EQ(slotOf(&I::SetColorF), 6);
  EXPECT_EQ(slotOf(&I::GetColorD), 8);
  EXPECT_EQ(slotOf(&I::GetColorF), 9);
  EXPECT_EQ(slotOf(&I::GetPackedColor), 10);
  EXPECT_EQ(slotOf(&I::GetCount), 11);
  EXPECT_EQ(slotOf(&I::Equals), 12);
  EXPECT_EQ(slotOf(&I::CopyColor), 13);
  EXPECT_EQ(slotOf(&I::SetCount), 14);
  EXPECT_EQ(slotOf(&I::CanDiscard), 15);
  EXPECT_EQ(slotOf(&I::Remove), 16);
  EXPECT_EQ(slotOf(&I::Insert), 17);
  EXPECT_EQ(slotOf(&I::Swap), 19);
  EXPECT_EQ(slotOf(&I::Assign), 20);
  EXPECT_EQ(slotOf(&I::Permute), 21);
  EXPECT_EQ(slotOf(&I::Compact), 22);
  EXPECT_EQ(slotOf(&I::Reorder), 23);
  EXPECT_EQ(slotOf(&I::Validate), 24);
  EXPECT_EQ(slotOf(&I::GetPackedArray), 25);
  EXPECT_EQ(slotOf(&IRealPArrayFactory::MakeFromChunk), 1);
}

TEST_F(PointArray, AnswersForItsNames) {
  const IPtr<OroVectorArray> cloud(new OroVectorArray);
  for (const char* const name : {"OroVectorArray", "RealPArray", "IRealPArray", "IOroUnknown"}) {
    void* found = nullptr;
    cloud->queryInterface(name, &found);
    EXPECT_NE(found, nullptr) << name;
  }
  EXPECT_EQ(oroQueryClass<RealPArray>(cloud.get()), static_cast<RealPArray*>(cloud.get()));
  EXPECT_EQ(oroQuery<IRealPArray>(cloud.get()), static_cast<IRealPArray*>(cloud.get()));
  EXPECT_STREQ(cloud->getClassName(), "OroVectorArray");
  void* found = &found;
  cloud->queryInterface("ProgressCallbackBase", &found);
  EXPECT_EQ(found, nullptr);
}

TEST_F(PointArray, AssertsWhatAStorageClassDoesNotOffer) {
  struct Line {
    int32_t value;
    std::string text;
  };
  static std::vector<Line> lines;
  lines.clear();
  kelSetAssertCallback(
      [](void*, const char* expression, const char* file, int32_t line) {
        lines.push_back({line, std::string(expression) + "|" + file});
      },
      nullptr);
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  const float position[3] = {1, 2, 3};
  MemoryInput input("");
  MemoryOutput output;
  EXPECT_EQ(points->AddF(position), 0);
  EXPECT_FALSE(points->Insert(1, OroVector()));
  EXPECT_FALSE(points->RemoveLast(1));
  EXPECT_FALSE(points->SetF(1, position));
  EXPECT_FALSE(points->Remove(1));
  EXPECT_FALSE(points->Materialize());
  EXPECT_EQ(points->GetCapacity(), 0);
  EXPECT_FALSE(points->Write(output, BitVector()));
  EXPECT_FALSE(points->Read(input));
  kelSetAssertCallback(nullptr, nullptr);
  std::vector<int32_t> numbers;
  for (const Line& line : lines) {
    numbers.push_back(line.value);
    EXPECT_EQ(line.text, "|orobasictypes/realparray");
  }
  EXPECT_THAT(numbers, ElementsAre(204, 246, 253, 267, 736, 760, 767, 864, 871));
  EXPECT_EQ(points->points(), (Points{{1, 2, 3}}));
}

TEST_F(PointArray, GivesPositionsInSeveralForms) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}, {0.1, -4, 1e300}});
  float floats[3];
  points->Get(1, floats);
  EXPECT_THAT(floats, ElementsAre(1, 2, 3));
  double x = 0;
  double y = 0;
  double z = 0;
  points->Get(2, x, y, z);
  EXPECT_EQ(OroVector(x, y, z), OroVector(0.1, -4, 1e300));
  EXPECT_EQ(points->GetVector(2), OroVector(0.1, -4, 1e300));
  const OroFloat4 four = points->GetFloat4(1);
  EXPECT_EQ(four.x, 1);
  EXPECT_EQ(four.z, 3);
  EXPECT_EQ(four.w, 1);
  EXPECT_EQ(points->GetFloat4(2).x, 0.1F);
  points->AddUntil(5);
  EXPECT_EQ(points->GetCount(), 5);
  EXPECT_EQ(points->GetVector(5), OroVector());
  points->AddUntil(2);
  EXPECT_EQ(points->GetCount(), 5);
}

TEST_F(PointArray, HasAScaleForItsUsers) {
  const IPtr<PlainPoints> points = make({});
  EXPECT_EQ(points->GetScale(), 1.0);
  points->SetScale(0.25);
  EXPECT_EQ(points->GetScale(), 0.25);
}

// ---------------------------------------------------------------------------------------------

TEST_F(PointArray, GetsColoursFromAComponent) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}, {4, 5, 6}});
  EXPECT_FALSE(points->HasColors());
  EXPECT_FALSE(points->SetHasColors(true)) << "nobody offers any";
  EXPECT_FALSE(points->SetColor(1, 1, 0, 0));
  const IPtr<FakeExtraInfo> published(new FakeExtraInfo);
  published->colors.resize(9);
  published->hasColors = true;
  memory_.broker.registerService(KelCString::borrow("IOroPointExtraInfo"), published.get());
  EXPECT_TRUE(points->SetHasColors(true));
  ASSERT_NE(points->ExtraInfo(), nullptr);
  EXPECT_NE(points->ExtraInfo(), published.get()) << "a published one is everybody's";
  auto* const own = static_cast<FakeExtraInfo*>(points->ExtraInfo());
  EXPECT_EQ(own->refCount(), 1);
  EXPECT_THAT(own->take(), ElementsAre("ClearColors", "SetCount 0", "SetCapacity 2"));
  EXPECT_TRUE(points->HasColors());
  EXPECT_FALSE(points->SetHasColors(true)) << "they are on already";
  EXPECT_TRUE(points->SetHasColors(false));
  EXPECT_EQ(points->ExtraInfo(), nullptr);
  EXPECT_FALSE(points->SetHasColors(false));
}

// A broker whose class for the colours makes a new object for each request.
class MakingBroker : public tests::FakeBroker {
 public:
  int32_t getService(const KelCString& name, void** out) override {
    if (name == "IOroPointExtraInfo") {
      made = new FakeExtraInfo;
      *out = static_cast<IOroPointExtraInfo*>(made);
      return 1;
    }
    return FakeBroker::getService(name, out);
  }
  FakeExtraInfo* made = nullptr;
};

TEST_F(PointArray, OwnsColoursThatWereMadeForIt) {
  MakingBroker broker;
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  EXPECT_TRUE(points->SetColor(1, 0.5, 0.25, 1));
  EXPECT_EQ(points->ExtraInfo(), broker.made);
  EXPECT_EQ(broker.made->refCount(), 1);
  EXPECT_THAT(broker.made->take(), ElementsAre("SetCapacity 1", "SetColorD 1"));
  oroSetBroker(&memory_.broker);
}

TEST_F(PointArray, KeepsAnExtraInfoThatMayNotGo) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  FakeExtraInfo& info = addColors(*points, {{}, {1, 0, 0}});
  info.canDiscard = false;
  EXPECT_TRUE(points->SetHasColors(false));
  EXPECT_EQ(points->ExtraInfo(), &info);
  EXPECT_THAT(info.take(), ElementsAre("ClearColors"));
  EXPECT_FALSE(points->HasColors());
  EXPECT_TRUE(points->SetHasColors(true));
  EXPECT_THAT(info.take(), ElementsAre("SetCapacity 1"));
}

TEST_F(PointArray, ReadsColoursOnlyWhereThereAreSome) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  float floats[3] = {7, 7, 7};
  double doubles[3] = {7, 7, 7};
  double r = 7;
  double g = 7;
  double b = 7;
  EXPECT_FALSE(points->GetColorF(1, floats));
  EXPECT_FALSE(points->GetColorD(1, doubles));
  EXPECT_FALSE(points->GetColor(1, r, g, b));
  EXPECT_THAT(floats, ElementsAre(7, 7, 7));
  EXPECT_THAT(doubles, ElementsAre(7, 7, 7));
  addColors(*points, {{}, {0.25, 0.5, 1}});
  EXPECT_TRUE(points->GetColorF(1, floats));
  EXPECT_TRUE(points->GetColorD(1, doubles));
  EXPECT_TRUE(points->GetColor(1, r, g, b));
  EXPECT_THAT(floats, ElementsAre(0.25, 0.5, 1));
  EXPECT_THAT(doubles, ElementsAre(0.25, 0.5, 1));
  EXPECT_EQ(OroVector(r, g, b), OroVector(0.25, 0.5, 1));
}

TEST_F(PointArray, AddsAndSetsPointsWithTheirColours) {
  const IPtr<PlainPoints> points = make({});
  EXPECT_EQ(points->AddPointF({1, 2, 3, 9, 1, 1, 1, 1}), 1);
  EXPECT_TRUE(points->SetPointF(1, {1, 2, 3, 9, 1, 1, 1, 1}));
  EXPECT_TRUE(points->SetPointD(1, {1, 2, 3, 9, 1, 1, 1}));
  EXPECT_EQ(points->ExtraInfo(), nullptr) << "an array without colours stays without";
  FakeExtraInfo& info = addColors(*points, {});
  EXPECT_EQ(points->AddPointF({4, 5, 6, 9, 0.5, 0.25, 1, 1}), 2);
  EXPECT_EQ(points->AddPointD({7, 8, 9.5, 1, 0.125, 0, 1}), 3);
  EXPECT_THAT(info.take(), ElementsAre("SetColorF 2", "SetColorD 3"));
  EXPECT_TRUE(points->SetPointF(1, {10, 11, 12, 0, 1, 0, 0, 0}));
  EXPECT_TRUE(points->SetPointD(2, {13, 14, 15, 0, 0, 1, 0}));
  EXPECT_EQ(points->points(), (Points{{10, 11, 12}, {13, 14, 15}, {7, 8, 9.5}}));
  EXPECT_THAT(info.colors,
              ElementsAre(Color{}, Color{1, 0, 0}, Color{0, 1, 0}, Color{0.125, 0, 1}));
  const IPtr<OroVectorArray> full(new OroVectorArray);
  full->SetCount(INT32_MAX);
  FakeExtraInfo& none = addColors(*full, {});
  EXPECT_EQ(full->AddPointF({4, 5, 6, 9, 0.5, 0.25, 1, 1}), 0);
  EXPECT_EQ(full->AddPointD({7, 8, 9.5, 1, 0.125, 0, 1}), 0);
  EXPECT_THAT(none.take(), IsEmpty()) << "no point, no colour";
}

TEST_F(PointArray, GivesRecordsOfPositionAndColour) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  OroPointF f;
  OroPointD d;
  f.r = d.r = 7;
  points->GetPointF(1, f);
  points->GetPointD(1, d);
  EXPECT_EQ(f.r, 0);
  EXPECT_EQ(d.r, 0);
  EXPECT_EQ(f.w, 1);
  EXPECT_EQ(f.a, 1);
  EXPECT_EQ(d.w, 1);
  points->GetPointGrayF(1, f);
  EXPECT_EQ(f.w, 0);
  addColors(*points, {{}, {1, 0, 0}});
  points->GetPointF(1, f);
  EXPECT_EQ(f.x, 1);
  EXPECT_EQ(f.y, 2);
  EXPECT_EQ(f.z, 3);
  EXPECT_EQ(f.r, 1);
  EXPECT_EQ(f.g, 0);
  points->GetPointGrayF(1, f);
  EXPECT_EQ(f.w, 0.3F);
  EXPECT_EQ(f.r, 1);
  points->GetPointGrayD(1, d);
  EXPECT_EQ(d.w, 0.3);
  EXPECT_EQ(d.x, 1);
}

TEST_F(PointArray, MakesGraysInDoublesOfTheStoredFloats) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}, {4, 5, 6}});
  const Color color{0.1F, 0.7F, 0.3F};
  FakeExtraInfo& info = addColors(*points, {color, color, {0.9F, 0.2F, 0.6F}});
  OroPointF f;
  OroPointD d;
  points->GetPointGrayF(1, f);
  points->GetPointGrayD(1, d);
  EXPECT_EQ(d.w, 0.3 * double{color.r} + 0.59 * double{color.g} + 0.11 * double{color.b});
  EXPECT_EQ(f.w, static_cast<float>(d.w));
  EXPECT_TRUE(points->ColorsToGray());
  const auto gray =
      static_cast<float>(0.59 * double{color.g} + 0.3 * double{color.r} + 0.11 * double{color.b});
  EXPECT_EQ(info.colors[0], color) << "place 0 is no point";
  EXPECT_EQ(info.colors[1], (Color{gray, gray, gray}));
  EXPECT_EQ(info.colors[2].r, info.colors[2].b);
  EXPECT_FALSE(make({{1, 2, 3}})->ColorsToGray());
}

TEST_F(PointArray, ScalesAllColoursWithoutALimit) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  EXPECT_FALSE(points->ScaleColors(2));
  FakeExtraInfo& info = addColors(*points, {{1, 0, 0}, {0.3F, 0.6F, 0.9F}, {0, 0, 1}});
  EXPECT_TRUE(points->ScaleColors(1.5F));
  EXPECT_THAT(info.colors,
              ElementsAre(Color{1.5, 0, 0}, Color{0.3F * 1.5F, 0.6F * 1.5F, 0.9F * 1.5F},
                          Color{0, 0, 1.5}));
}

class Observer : public PointColorObserver {
 public:
  explicit Observer(const RealPArray& array) : array_(array) {}
  void ColorChanges(int32_t i) override {
    float color[3] = {};
    array_.GetColorF(i, color);
    seen.push_back(color[0]);
    numbers.push_back(i);
  }
  std::vector<float> seen;
  std::vector<int32_t> numbers;

 private:
  const RealPArray& array_;
};

TEST_F(PointArray, TellsItsObserverBeforeAColourChanges) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}, {4, 5, 6}});
  addColors(*points, {{}, {}, {0.5, 0, 0}});
  Observer observer(*points);
  points->SetColorObserver(&observer);
  const float color[3] = {1, 1, 1};
  EXPECT_TRUE(points->SetColorNotify(2, color));
  EXPECT_THAT(observer.numbers, ElementsAre(2));
  EXPECT_THAT(observer.seen, ElementsAre(0.5));
  points->SetColor(1, color);
  EXPECT_THAT(observer.numbers, ElementsAre(2)) << "SetColor tells nobody";
  points->SetColorObserver(nullptr);
  EXPECT_TRUE(points->SetColorNotify(1, color));
}

TEST_F(PointArray, HandsItsExtraInfoOver) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  FakeExtraInfo& info = addColors(*points, {});
  EXPECT_EQ(info.refCount(), 1);
  points->SetExtraInfo(&info);
  EXPECT_EQ(info.refCount(), 1) << "it is the same";
  IOroPointExtraInfo* const taken = points->TakeExtraInfo();
  EXPECT_EQ(taken, &info);
  EXPECT_EQ(taken->refCount(), 1) << "with the reference of the array";
  EXPECT_EQ(points->ExtraInfo(), nullptr);
  taken->release();
  EXPECT_EQ(points->TakeExtraInfo(), nullptr);
}

TEST_F(PointArray, ForwardsTheRestOfTheColours) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  points->RemoveColors(1, 2);
  EXPECT_TRUE(points->ValidateColors());
  FakeExtraInfo& info = addColors(*points, {});
  info.isValid = false;
  points->RemoveColors(1, 2);
  points->InsertColors(3, 4);
  points->CompactColors(BitVector());
  points->ReorderColors(IntArray(), 5);
  EXPECT_FALSE(points->ValidateColors());
  EXPECT_THAT(info.take(), ElementsAre("Remove 1 2", "Insert 3 4", "Compact", "Reorder 5"));
}

TEST_F(PointArray, SwapsWhatBelongsToThePoints) {
  const IPtr<PlainPoints> a = make({{1, 2, 3}});
  const IPtr<PlainPoints> b = make({{4, 5, 6}});
  FakeExtraInfo& info = addColors(*a, {});
  Observer observer(*a);
  a->SetColorObserver(&observer);
  a->SetScale(2);
  a->SetPackedColors(true);
  a->SetRange(100, 200, 5);
  a->RealPArray::Swap(*b);
  EXPECT_EQ(b->ExtraInfo(), &info);
  EXPECT_EQ(a->ExtraInfo(), nullptr);
  EXPECT_EQ(b->GetScale(), 2);
  EXPECT_EQ(b->ColorObserver(), &observer);
  EXPECT_TRUE(b->HasPackedColors());
  EXPECT_FALSE(a->HasPackedColors());
  int32_t from = 0;
  int32_t to = 0;
  uint32_t last = 0;
  a->GetRange(from, to, last);
  EXPECT_EQ(from, 100) << "the progress stays";
}

TEST_F(PointArray, CopiesWithOrWithoutItsColours) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}});
  addColors(*points, {{}, {1, 0, 0}});
  Observer observer(*points);
  points->SetColorObserver(&observer);
  points->SetScale(3);
  points->SetPackedColors(true);
  const IPtr<RealPArray> bare(points->Clone(false));
  const IPtr<IRealPArray> whole(points->Clone());
  EXPECT_EQ(bare->ExtraInfo(), nullptr);
  auto* const copy = oroQueryClass<RealPArray>(whole.get());
  ASSERT_NE(copy, nullptr);
  ASSERT_NE(copy->ExtraInfo(), nullptr);
  EXPECT_NE(copy->ExtraInfo(), points->ExtraInfo());
  EXPECT_EQ(copy->ExtraInfo()->refCount(), 1);
  EXPECT_EQ(copy->GetScale(), 3);
  EXPECT_TRUE(copy->HasPackedColors());
  EXPECT_EQ(copy->ColorObserver(), nullptr);
  EXPECT_TRUE(*copy == *points);
  const IPtr<IRealPArray> fresh(points->NewLike());
  EXPECT_EQ(fresh->GetCount(), 0);
  EXPECT_STREQ(fresh->getClassName(), "PlainPoints");
}

TEST_F(PointArray, AssignsPointByPoint) {
  const IPtr<PlainPoints> from = make({{1, 2, 3}, {4, 5, 6}});
  const IPtr<PlainPoints> to = make({{9, 9, 9}});
  Observer observer(*to);
  to->SetColorObserver(&observer);
  from->SetScale(5);
  from->SetPackedColors(true);
  to->Assign(*from);
  EXPECT_THAT(to->log, ElementsAre("Clear", "Reserve 2", "Add", "Add"));
  EXPECT_EQ(to->points(), from->points());
  EXPECT_EQ(to->GetScale(), 5);
  EXPECT_TRUE(to->HasPackedColors());
  EXPECT_EQ(to->ColorObserver(), nullptr);
  to->SetColorObserver(&observer);
  to->log.clear();
  to->Assign(*to);
  EXPECT_THAT(to->log, IsEmpty());
  EXPECT_EQ(to->ColorObserver(), &observer);
}

TEST_F(PointArray, AssignsColoursByWhoHasSome) {
  const IPtr<PlainPoints> from = make({{1, 2, 3}});
  const IPtr<PlainPoints> to = make({});
  FakeExtraInfo& theirs = addColors(*from, {{}, {1, 0, 0}});
  to->Assign(*from);
  ASSERT_NE(to->ExtraInfo(), nullptr);
  EXPECT_NE(to->ExtraInfo(), &theirs);
  EXPECT_THAT(theirs.take(), ElementsAre("Clone"));
  auto* const mine = static_cast<FakeExtraInfo*>(to->ExtraInfo());
  to->Assign(*from);
  EXPECT_EQ(to->ExtraInfo(), mine);
  EXPECT_THAT(mine->take(), ElementsAre("Assign"));
  from->SetExtraInfo(nullptr);
  to->Assign(*from);
  EXPECT_EQ(to->ExtraInfo(), nullptr);
}

TEST_F(PointArray, ComparesExactly) {
  const Points points = {{1, 2, 3}, {-0.0, 5, 6}};
  const IPtr<PlainPoints> a = make(points);
  const IPtr<PlainPoints> b = make(points);
  EXPECT_TRUE(*a == *a);
  EXPECT_TRUE(*a == *b);
  b->Set(2, 0, 5, 6);
  EXPECT_TRUE(*a == *b) << "zeros are equal";
  b->SetScale(7);
  EXPECT_TRUE(*a == *b) << "the scale does not count";
  b->Set(2, 0, 5, std::nextafter(6, 7));
  EXPECT_FALSE(*a == *b);
  b->Set(2, 0, 5, nan);
  EXPECT_FALSE(*b == *b) << "what is not a number equals nothing";
  EXPECT_FALSE(*a == *make({{1, 2, 3}}));
}

TEST_F(PointArray, ComparesColoursOfBothOrNeither) {
  const IPtr<PlainPoints> a = make({{1, 2, 3}});
  const IPtr<PlainPoints> b = make({{1, 2, 3}});
  FakeExtraInfo& info = addColors(*a, {{}, {1, 0, 0}});
  EXPECT_FALSE(*a == *b);
  EXPECT_FALSE(*b == *a);
  FakeExtraInfo& other = addColors(*b, {{}, {1, 0, 0}});
  EXPECT_TRUE(*a == *b);
  EXPECT_THAT(info.take(), ElementsAre("Equals 1"));
  other.colors[1].g = 1;
  EXPECT_FALSE(*a == *b);
}

TEST_F(PointArray, ShowsItsPointsAsVertices) {
  const IPtr<PlainPoints> points = make({{1, 2, 3}, {4, 5, 6}});
  IPtr<VertexArrayImp> vertices;
  points->MakeVertexArray(vertices);
  ASSERT_TRUE(static_cast<bool>(vertices));
  EXPECT_EQ(vertices.object()->refCount(), 1);
  float floats[3];
  double doubles[3];
  vertices->GetVertexF(2, floats);
  vertices->GetVertexD(1, doubles);
  EXPECT_THAT(floats, ElementsAre(4, 5, 6));
  EXPECT_THAT(doubles, ElementsAre(1, 2, 3));
  const auto* const view = oroQueryClass<VertexArrayRPA>(vertices.get());
  points->Add(7, 8, 9);
  EXPECT_EQ(view->Limit(), 3) << "fixed when it was made";
  vertices->GetVertexD(3, doubles);
  EXPECT_THAT(doubles, ElementsAre(7, 8, 9));
  EXPECT_EQ(points->refCount(), 1) << "not owned";
  EXPECT_EQ(tests::slotNumber(&VertexArrayImp::GetVertexF), 1);
  EXPECT_EQ(tests::slotNumber(&VertexArrayImp::GetVertexD), 2);
}

// ---------------------------------------------------------------------------------------------
// What works on all points, in a storage class of single points and in blocks.

class PointLoops : public PointArray, public testing::WithParamInterface<bool> {
 protected:
  IPtr<RealPArray> cloud(const Points& points) {
    if (!GetParam()) return make(points).get();
    IPtr<OroVectorArray> blocks(new OroVectorArray);
    for (const OroVector& point : points) blocks->Add(point);
    return blocks.get();
  }
  static Points pointsOf(const RealPArray& array) {
    Points all;
    for (int32_t i = 1; i <= array.GetCount(); ++i) all.push_back(array.GetVector(i));
    return all;
  }
};

INSTANTIATE_TEST_SUITE_P(Storage, PointLoops, testing::Bool(),
                         [](const auto& info) { return info.param ? "Blocks" : "SinglePoints"; });

TEST_P(PointLoops, HaveBounds) {
  OroVector min(7, 7, 7);
  OroVector max(7, 7, 7);
  cloud({})->GetBounds(min, max);
  EXPECT_EQ(min, OroVector());
  EXPECT_EQ(max, OroVector());
  cloud({{1, -2, 3}, {4, 5, -6}})->GetBounds(min, max);
  EXPECT_EQ(min, OroVector(1, -2, -6));
  EXPECT_EQ(max, OroVector(4, 5, 3));
}

TEST_P(PointLoops, HaveBoundsThatBeginFarOut) {
  OroVector min;
  OroVector max;
  cloud({{2e42, 5, nan}, {infinity, nan, nan}})->GetBounds(min, max);
  EXPECT_EQ(min, OroVector(1e42, 5, 1e42)) << "beyond the start, and what is no number, counts not";
  EXPECT_EQ(max, OroVector(infinity, 5, -1e42));
}

TEST_P(PointLoops, HaveBoundsOfAMask) {
  const IPtr<RealPArray> points = cloud({{1, 1, 1}, {2, 5, 2}, {3, 3, 9}, {4, 4, 4}});
  OroVector min;
  OroVector max;
  points->GetBounds(min, max, bitsOf({0, 2, 3, 5, 77}));
  EXPECT_EQ(min, OroVector(2, 3, 2));
  EXPECT_EQ(max, OroVector(3, 5, 9));
  points->GetBounds(min, max, BitVector());
  EXPECT_EQ(min, OroVector(1e42, 1e42, 1e42)) << "a mask that selects nothing";
  EXPECT_EQ(max, OroVector(-1e42, -1e42, -1e42));
  cloud({})->GetBounds(min, max, bitsOf({1}));
  EXPECT_EQ(min, OroVector());
  EXPECT_EQ(max, OroVector());
  const BitVector mask = bitsOf({4});
  points->GetBoundsExtra(min, max, &mask);
  EXPECT_EQ(min, OroVector(4, 4, 4));
  points->GetBoundsExtra(min, max, nullptr);
  EXPECT_EQ(min, OroVector(1, 1, 1));
}

TEST_P(PointLoops, HaveBoundsOfAMaskThatBeginFarOut) {
  Points all(20, OroVector(7, 7, 7));
  all[0] = OroVector(2e42, 5, nan);
  all[1] = OroVector(infinity, nan, nan);
  const IPtr<RealPArray> points = cloud(all);
  OroVector min;
  OroVector max;
  points->GetBounds(min, max, bitsOf({1, 2}));
  EXPECT_EQ(min, OroVector(1e42, 5, 1e42));
  EXPECT_EQ(max, OroVector(infinity, 5, -1e42));
  BitVector most;
  most.SetAll(19);
  points->GetBounds(min, max, most);
  EXPECT_EQ(min, OroVector(7, 5, 7));
  EXPECT_EQ(max, OroVector(infinity, 7, 7));
}

TEST_P(PointLoops, HaveALargestCoordinate) {
  EXPECT_EQ(cloud({})->AbsoluteMaximum(), 1e-16);
  EXPECT_EQ(cloud({{1e-17, 0, -1e-17}})->AbsoluteMaximum(), 1e-16);
  EXPECT_EQ(cloud({{1, 2, 3}, {nan, -7, 4}})->AbsoluteMaximum(), 7);
  EXPECT_EQ(cloud({{1, -infinity, 3}})->AbsoluteMaximum(), infinity);
}

TEST_P(PointLoops, AreNotTouchedByTheIdentity) {
  const IPtr<PlainPoints> points = make({{-0.0, 2, 3}});
  points->Transform(OroMatrix());
  EXPECT_THAT(points->log, IsEmpty());
}

TEST_P(PointLoops, AreTranslated) {
  const IPtr<RealPArray> points = cloud({{1, 2, 3}, {0.1, 0.2, infinity}});
  OroMatrix matrix;
  matrix.SetTranslation(OroVector(10, 0.2, -1));
  points->Transform(matrix);
  EXPECT_EQ(pointsOf(*points), (Points{{11, 2.2, 2}, {10.1, 0.2 + 0.2, infinity}}));
}

TEST_P(PointLoops, AreTransformedInTheOrderOfTheRows) {
  const IPtr<RealPArray> points = cloud({{0.1, 0.7, 1e17}, {1e17, -1e17, 3}});
  OroMatrix matrix;
  for (int i = 0; i < 12; ++i) matrix.m[i] = 1;
  points->Transform(matrix);
  const double first = ((0.1 + 0.7) + 1e17) + 1;
  const double second = ((1e17 + -1e17) + 3) + 1;
  EXPECT_EQ(pointsOf(*points), (Points{{first, first, first}, {second, second, second}}));
  const IPtr<RealPArray> far = cloud({{infinity, 1, 2}});
  far->Transform(matrix);
  EXPECT_EQ(far->GetVector(1), OroVector(infinity, infinity, infinity)) << "no fourth row";
}

TEST_P(PointLoops, AreProjectedByAFourthRow) {
  const IPtr<RealPArray> points = cloud({{1, 2, 3}, {2, 3, 0.5}, {5, 7, 1}, {0, 0, 0}});
  OroMatrix matrix;
  matrix.m[14] = 1;
  matrix.m[15] = 0;  // w is z
  points->Transform(matrix);
  const double third = 1.0 / 3;
  const Points moved = pointsOf(*points);
  EXPECT_EQ(moved[0], OroVector(1 * third, 2 * third, 3 * third));
  EXPECT_EQ(moved[1], OroVector(4, 6, 1));
  EXPECT_EQ(moved[2], OroVector(5, 7, 1));
  EXPECT_TRUE(std::isnan(moved[3].x)) << "nobody guards against 0";
}

TEST_P(PointLoops, AreCompressedByAMask) {
  const IPtr<RealPArray> points = cloud({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {5, 0, 0}});
  FakeExtraInfo& info = addColors(*points, {});
  points->Compress(bitsOf({0, 1, 3, 4, 5, 9}));
  EXPECT_EQ(pointsOf(*points), (Points{{1, 0, 0}, {3, 0, 0}, {4, 0, 0}})) << "never the last one";
  EXPECT_THAT(info.take(), IsEmpty()) << "no colour moves";
  points->Compress(BitVector());
  EXPECT_EQ(points->GetCount(), 0);
  const IPtr<RealPArray> one = cloud({{1, 0, 0}});
  one->Compress(bitsOf({1}));
  EXPECT_EQ(one->GetCount(), 0) << "fewer than two points all go";
}

TEST_F(PointArray, IsCompressedThroughSinglePoints) {
  const IPtr<PlainPoints> points = make({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  points->Compress(bitsOf({2, 3}));
  EXPECT_THAT(points->log, ElementsAre("Set 1", "Reserve 1", "SetCount 1"));
  points->log.clear();
  points->Compress(bitsOf({1}));
  EXPECT_THAT(points->log, ElementsAre("Reserve 0", "SetCount 0"));
}

TEST_P(PointLoops, AreSortedDownwards) {
  const IPtr<RealPArray> points =
      cloud({{1, 2, 3}, {3, 0, 0}, {1, 5, 0}, {1, 2, 4}, {-1, 0, 0}, {2, 0, 0}, {1, 2, -4}});
  points->Sort(false, nullptr, nullptr);
  EXPECT_EQ(
      pointsOf(*points),
      (Points{{3, 0, 0}, {2, 0, 0}, {1, 5, 0}, {1, 2, 4}, {1, 2, 3}, {1, 2, -4}, {-1, 0, 0}}));
}

TEST_P(PointLoops, TellWhereSortedPointsStoodBefore) {
  const Points before = {{1, 2, 3}, {3, 0, 0}, {1, 5, 0}, {2, 0, 0}};
  const IPtr<RealPArray> points = cloud(before);
  IntArray index(5000);
  index.Set(4999, 77);
  index.Set(0, 3);
  points->Sort(false, &index, nullptr);
  for (int32_t i = 1; i <= 4; ++i) {
    EXPECT_EQ(points->GetVector(i), before[static_cast<size_t>(index.Get(i)) - 1]);
  }
  EXPECT_EQ(index.Get(0), 0);
  EXPECT_EQ(index.Get(5), 0);
  EXPECT_EQ(index.Get(4999), 0) << "cleared over its whole size";
  EXPECT_EQ(index.Size(), 6144);
  IntArray growing;
  points->Sort(false, &growing, nullptr);
  EXPECT_EQ(growing.Size(), 2048);
  EXPECT_EQ(growing.Get(4), 4);
}

TEST_P(PointLoops, LoseTheirDuplicates) {
  const IPtr<RealPArray> points = cloud({{1, 1, 1}, {2, 2, 2}, {1, 1, 1}});
  BitVector kept = bitsOf({0, 2, 3, 40});
  points->Sort(true, nullptr, &kept);
  EXPECT_EQ(pointsOf(*points), (Points{{2, 2, 2}, {1, 1, 1}}));
  EXPECT_THAT(setBits(kept), ElementsAre(1, 2));
  const IPtr<RealPArray> more = cloud({{5, 0, 0}, {5, 0, 0}, {4, 0, 0}, {4, 0, 0}, {3, 0, 0}});
  more->Sort(true, nullptr, &kept);
  EXPECT_EQ(pointsOf(*more), (Points{{5, 0, 0}, {4, 0, 0}, {3, 0, 0}}));
  EXPECT_THAT(setBits(kept), ElementsAre(1, 3, 5)) << "the places that stayed, once sorted";
  const IPtr<RealPArray> none = cloud({});
  none->Sort(true, nullptr, &kept);
  EXPECT_THAT(setBits(kept), IsEmpty());
  EXPECT_EQ(none->GetCount(), 0);
}

TEST_P(PointLoops, FillTheMaskWhereDuplicatesStay) {
  const IPtr<RealPArray> points = cloud({{1, 1, 1}, {1, 1, 1}});
  BitVector kept = bitsOf({0, 5});
  points->Sort(false, nullptr, &kept);
  EXPECT_THAT(setBits(kept), ElementsAre(1, 2));
  EXPECT_EQ(kept.KnownCount(), 2);
}

// Tells which point is the first one when the colours are brought into order.
class WatchingExtraInfo : public FakeExtraInfo {
 public:
  explicit WatchingExtraInfo(const RealPArray& array) : array_(array) {}
  void Permute(const IntArray&, int32_t, int32_t) override {
    first.push_back(array_.GetVector(1).x);
  }
  std::vector<double> first;

 private:
  const RealPArray& array_;
};

TEST_P(PointLoops, AreSortedBeforeTheirColours) {
  const IPtr<RealPArray> points = cloud({{1, 0, 0}, {2, 0, 0}});
  auto* const info = new WatchingExtraInfo(*points);
  points->SetExtraInfo(info);
  points->Sort(false, nullptr, nullptr);
  EXPECT_THAT(info->first, ElementsAre(2));
}

TEST_P(PointLoops, TakeTheirColoursAlongWhenSorted) {
  const IPtr<RealPArray> points = cloud({{1, 0, 0}, {2, 0, 0}, {1, 0, 0}, {3, 0, 0}});
  FakeExtraInfo& info =
      addColors(*points, {{}, {0.1F, 0, 0}, {0.2F, 0, 0}, {0.3F, 0, 0}, {0.4F, 0, 0}});
  points->Sort(true, nullptr, nullptr);
  EXPECT_THAT(info.take(), ElementsAre("Permute 1 4", "SetCount 3"));
  EXPECT_EQ(info.colors[1].r, 0.4F);
  EXPECT_EQ(info.colors[2].r, 0.2F);
  const IPtr<RealPArray> twice = cloud({{2, 0, 0}, {2, 0, 0}, {1, 0, 0}});
  FakeExtraInfo& second = addColors(*twice, {{}, {1, 0, 0}, {1, 0, 0}, {0, 0, 1}});
  twice->Sort(true, nullptr, nullptr);
  EXPECT_THAT(second.take(), ElementsAre("Permute 1 3", "CopyColor 2 3", "SetCount 2"));
  EXPECT_EQ(second.colors[2], (Color{0, 0, 1}));
  const IPtr<RealPArray> once = cloud({{1, 0, 0}, {2, 0, 0}});
  FakeExtraInfo& third = addColors(*once, {{}, {1, 0, 0}, {0, 0, 1}});
  once->Sort(false, nullptr, nullptr);
  EXPECT_THAT(third.take(), ElementsAre("Permute 1 2"));
  once->Sort(true, nullptr, nullptr);
  EXPECT_THAT(third.take(), ElementsAre("Permute 1 2", "SetCount 2")) << "nothing was removed";
}

TEST_F(PointArray, IsSortedThroughSinglePoints) {
  const IPtr<PlainPoints> points = make({{1, 0, 0}, {2, 0, 0}, {0, 0, 0}});
  points->Sort(true, nullptr, nullptr);
  EXPECT_THAT(points->log, ElementsAre("SetExisting 1", "SetExisting 2", "SetCount 3"));
}

// Equal points, and those that are no numbers, end in the order of the sort's own steps.
TEST_F(PointArray, IsSortedInTheSameStepsWhateverItsStorage) {
  std::mt19937 random(3);
  for (const int32_t count : {2, 5, 6, 7, 40, 511, 512, 513, 514, 1023, 1024, 1025, 5000}) {
    for (const uint32_t values : {1U, 3U, 100000U}) {
      const IPtr<PlainPoints> plain = make({});
      const IPtr<OroVectorArray> blocks(new OroVectorArray);
      for (int32_t i = 0; i < count; ++i) {
        const auto value = [&] {
          const uint32_t drawn = random() % values;
          return values == 3 && drawn == 2 && random() % 8 == 0 ? nan
                                                                : static_cast<double>(drawn) - 1;
        };
        const OroVector point(value(), value(), value());
        plain->Add(point);
        blocks->Add(point);
      }
      IntArray first;
      IntArray second;
      plain->Sort(false, &first, nullptr);
      blocks->Sort(false, &second, nullptr);
      ASSERT_EQ(first.Size(), second.Size());
      for (int32_t i = 0; i <= count; ++i) ASSERT_EQ(first.Get(i), second.Get(i)) << count;
      for (int32_t i = 1; i <= count; ++i) {
        const OroVector a = plain->GetVector(i);
        const OroVector b = blocks->GetVector(i);
        ASSERT_EQ(std::memcmp(&a, &b, sizeof a), 0);
      }
    }
  }
}

// Without room beside them the points are sorted where they lie; nobody sees a difference.
TEST_F(PointArray, IsSortedInTheSameStepsWhereTheHeapHasNoRoom) {
  std::mt19937 random(4);
  Points points(3000);
  for (OroVector& point : points) point = OroVector(random() % 20, random() % 3, 0);
  const IPtr<OroVectorArray> roomy(new OroVectorArray);
  roomy->AddAll(points.data(), 3000);
  IntArray expected;
  roomy->Sort(true, &expected, nullptr);
  for (const size_t limit : {size_t{20000}, size_t{60000}}) {  // no room for keys; none for points
    const IPtr<OroVectorArray> cramped(new OroVectorArray);
    cramped->AddAll(points.data(), 3000);
    IntArray index;
    {
      tests::FakeHeap heap;
      heap.refuseAbove = limit;
      cramped->Sort(true, &index, nullptr);
      EXPECT_GT(*std::max_element(heap.sizes.begin(), heap.sizes.end()), limit);
    }
    EXPECT_TRUE(*cramped == *roomy) << limit;
    for (int32_t i = 0; i <= 3000; ++i) ASSERT_EQ(index.Get(i), expected.Get(i));
  }
}

// ---------------------------------------------------------------------------------------------

std::string bytesOfWords(const std::vector<uint32_t>& words) {
  std::string bytes;
  for (const uint32_t word : words) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(word >> shift & 0xFF);
  }
  return bytes;
}

class ColorChunk : public PointArray {
 protected:
  std::string written(const RealPArray& array, int32_t last, const BitVector* skip = nullptr) {
    MemoryOutput output;
    EXPECT_TRUE(array.WriteColors(output, last, skip));
    EXPECT_TRUE(output.FlushBuffer());
    return output.bytes;
  }

  MakingBroker broker_;
  IPtr<PlainPoints> points_ = make({{1, 2, 3}, {4, 5, 6}});

  ~ColorChunk() override { oroSetBroker(&memory_.broker); }
};

constexpr uint32_t one = 0x3F800000;
constexpr uint32_t half = 0x3F000000;

TEST_F(ColorChunk, IsFlagsAloneWithoutColours) {
  EXPECT_EQ(written(*points_, 2), bytesOfWords({0}));
  points_->SetPackedColors(true);
  EXPECT_EQ(written(*points_, 2), bytesOfWords({0})) << "packed needs an extra info";
  FakeExtraInfo& info = addColors(*points_, {{}, {1, 0, 0}});
  info.hasColors = false;
  EXPECT_EQ(written(*points_, 2), bytesOfWords({2}));
}

TEST_F(ColorChunk, HoldsFloatsFromPlaceZero) {
  addColors(*points_, {{0, 0, 0}, {1, 0.5, 0}, {0, 0, 1}});
  EXPECT_EQ(written(*points_, 2), bytesOfWords({1, 3, 0, 0, 0, one, half, 0, 0, 0, one}));
  EXPECT_EQ(written(*points_, 99), written(*points_, 2)) << "as many as there are";
  EXPECT_EQ(written(*points_, 0), bytesOfWords({1, 1, 0, 0, 0}));
  EXPECT_EQ(written(*points_, -5), bytesOfWords({1, 0}));
}

TEST_F(ColorChunk, LeavesOutWhatTheMaskHas) {
  addColors(*points_, {{0, 0, 0}, {1, 0.5, 0}, {0, 0, 1}});
  BitVector skip = bitsOf({0, 2, 50});
  EXPECT_EQ(written(*points_, 2, &skip), bytesOfWords({1, 1, one, half, 0}));
  skip = bitsOf({1});
  EXPECT_EQ(written(*points_, 2, &skip), bytesOfWords({1, 2, 0, 0, 0, 0, 0, one}));
  const BitVector nothing;
  EXPECT_EQ(written(*points_, 2, &nothing), written(*points_, 2));
}

TEST_F(ColorChunk, HoldsPackedColours) {
  FakeExtraInfo& info = addColors(*points_, {{}, {}, {}});
  info.packed = {1, 0xFF0000FF, 0x12345678};
  points_->SetPackedColors(true);
  EXPECT_EQ(written(*points_, 2), bytesOfWords({3, 3, 1, 0xFF0000FF, 0x12345678}));
  EXPECT_THAT(info.take(), ElementsAre("GetPackedArray")) << "in one go";
  const BitVector nothing;
  written(*points_, 2, &nothing);
  EXPECT_THAT(info.take(), ElementsAre("GetPackedArray"));
  const BitVector skip = bitsOf({1});
  EXPECT_EQ(written(*points_, 2, &skip), bytesOfWords({3, 2, 1, 0x12345678}));
  EXPECT_THAT(info.take(), ElementsAre("GetPackedColor 0", "GetPackedColor 2"));
}

TEST_F(ColorChunk, IsReadIntoColoursOfItsForm) {
  points_->SetPackedColors(true);
  MemoryInput input(bytesOfWords({1, 3, 0, 0, 0, one, half, 0, 0, 0, one}));
  EXPECT_EQ(points_->ReadColors(input), 1);
  ASSERT_NE(broker_.made, nullptr);
  EXPECT_THAT(broker_.made->take(), ElementsAre("SetCapacity 3", "SetColorF 0", "SetColorF 1",
                                                "SetColorF 2", "SetCount 2"));
  EXPECT_THAT(broker_.made->colors, ElementsAre(Color{}, Color{1, 0.5, 0}, Color{0, 0, 1}));
  EXPECT_FALSE(points_->HasPackedColors());
}

TEST_F(ColorChunk, BringsPackedColoursBackToFloats) {
  FakeExtraInfo& info = addColors(*points_, {{}, {}, {}});
  points_->SetPackedColors(true);
  MemoryInput input(bytesOfWords({1, 1, one, half, 0}));
  EXPECT_EQ(points_->ReadColors(input), 1);
  EXPECT_THAT(info.take(),
              ElementsAre("ClearColors", "SetCapacity 1", "SetColorF 0", "SetCount 2"));
  EXPECT_FALSE(points_->HasPackedColors());
}

TEST_F(ColorChunk, IsReadInOneGoWhenItIsPacked) {
  FakeExtraInfo& info = addColors(*points_, {});
  info.packed.resize(3);
  MemoryInput input(bytesOfWords({3, 3, 1, 0xFF0000FF, 0x12345678}));
  EXPECT_EQ(points_->ReadColors(input), 1);
  EXPECT_THAT(info.packed, ElementsAre(1, 0xFF0000FF, 0x12345678));
  EXPECT_THAT(info.take(), ElementsAre("SetCapacity 3", "GetPackedArray", "SetCount 2"));
  EXPECT_TRUE(points_->HasPackedColors());
}

TEST_F(ColorChunk, HoldsFloatsOfNewColoursAfterPackedOnes) {
  addColors(*points_, {{}, {}, {}});
  points_->SetPackedColors(true);
  EXPECT_TRUE(points_->SetHasColors(false));
  EXPECT_TRUE(points_->SetColor(1, 1, 0.5, 0));
  ASSERT_FALSE(points_->HasPackedColors());
  EXPECT_EQ(written(*points_, 1), bytesOfWords({1, 2, 0, 0, 0, one, half, 0}));
}

TEST_F(ColorChunk, ThatIsDamagedLeavesTheFormOfTheColours) {
  for (const bool packed : {false, true}) {
    addColors(*points_, {{}, {}, {}});
    points_->SetPackedColors(packed);
    for (const std::vector<uint32_t>& words :
         {std::vector<uint32_t>{packed ? 1U : 3U}, {packed ? 1U : 3U, 0xFFFFFFFF}}) {
      MemoryInput input(bytesOfWords(words));
      EXPECT_EQ(points_->ReadColors(input), 0);
      EXPECT_EQ(points_->HasPackedColors(), packed);
    }
  }
}

TEST_F(ColorChunk, WithoutColoursStillSettlesTheirNumber) {
  FakeExtraInfo& info = addColors(*points_, {{}, {}, {}, {}, {}});
  for (const uint32_t flags : {0U, 2U, 4U}) {
    MemoryInput input(bytesOfWords({flags, 99}));
    info.colors.resize(5);
    info.take();
    EXPECT_EQ(points_->ReadColors(input), 1);
    EXPECT_THAT(info.take(), ElementsAre("SetCount 2"));
    EXPECT_EQ(input.Tell(), 4) << "nothing more is read";
  }
  info.colors.resize(2);
  MemoryInput input(bytesOfWords({0}));
  EXPECT_EQ(points_->ReadColors(input), 1);
  EXPECT_THAT(info.take(), IsEmpty()) << "the number is right";
}

TEST_F(ColorChunk, ThatIsDamagedIsNotRead) {
  const std::string whole = bytesOfWords({1, 2, 0, 0, 0, one, one, one});
  for (size_t size = 0; size < whole.size(); ++size) {
    MemoryInput input(whole.substr(0, size));
    EXPECT_EQ(make({{1, 2, 3}})->ReadColors(input), 0) << size;
  }
  for (const uint32_t count : {0xFFFFFFFFU, 0x7FFFFFFFU, 3U}) {
    broker_.made = nullptr;
    MemoryInput input(bytesOfWords({1, count, 0, 0, 0, one, one, one}));
    const IPtr<PlainPoints> points = make({{1, 2, 3}});
    EXPECT_EQ(points->ReadColors(input), 0);
    EXPECT_THAT(broker_.made->take(), IsEmpty()) << "nothing of that size is made";
  }
}

TEST_F(ColorChunk, OfAnUnknownMediumMakesRoomAsColoursCome) {
  std::vector<uint32_t> words = {1, 0x7FFFFFFF};
  words.resize(2 + 3 * 1500, half);
  EndlessInput input(bytesOfWords(words));
  EXPECT_EQ(points_->ReadColors(input), 0);
  const std::vector<std::string> log = broker_.made->take();
  EXPECT_EQ(log.front(), "SetCapacity 1024");
  EXPECT_EQ(log.back(), "SetCapacity 2048");
  words[1] = 1500;
  EndlessInput good(bytesOfWords(words));
  EXPECT_EQ(points_->ReadColors(good), 1);
}

TEST_F(ColorChunk, CannotBeReadWhereColoursCannotBeHad) {
  oroSetBroker(&memory_.broker);
  MemoryInput input(bytesOfWords({1, 1, 0, 0, 0}));
  EXPECT_EQ(points_->ReadColors(input), 0);
  MemoryInput none(bytesOfWords({0}));
  EXPECT_EQ(points_->ReadColors(none), 1);
  MemoryInput failing(bytesOfWords({0}));
  failing.good = false;
  EXPECT_EQ(points_->ReadColors(failing), 0);
}

}  // namespace

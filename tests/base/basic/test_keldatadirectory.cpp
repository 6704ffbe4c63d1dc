#include "base/basic/keldatadirectory.h"

#include <gmock/gmock.h>

#include "base/basic/keldataint.h"
#include "base/basic/keldatavoid.h"
#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

class TreeTest : public testing::Test {
 protected:
  // /: x, A: A/i, A/j; A/B: A/B/k
  TreeTest() {
    root.AddDirectory(a);
    a->AddDirectory(b);
    root.AddItem(new KelDataInt("x", 0, 0, 9, 0));
    a->AddItem(i);
    a->AddItem(new KelDataInt("A/j", 0, 0, 9, 0));
    b->AddItem(new KelDataInt("A/B/k", 0, 0, 9, 0));
  }

  KelDataDirectory root{""};
  KelDataDirectory* const a = new KelDataDirectory("A");
  KelDataDirectory* const b = new KelDataDirectory("B");
  KelDataInt* const i = new KelDataInt("A/i", 0, 0, 9, 0);
};

TEST_F(TreeTest, IsNamedByItsSegment) {
  EXPECT_STREQ(root.GetPath(), "");
  EXPECT_STREQ(root.GetName(), "");
  EXPECT_STREQ(b->GetPath(), "B");
  EXPECT_STREQ(b->GetName(), "B");
  KelDataDirectory odd("X/Y");
  EXPECT_STREQ(odd.GetPath(), "X/Y");
  EXPECT_STREQ(odd.GetName(), "Y");
  EXPECT_STREQ(KelDataDirectory(std::string_view()).GetPath(), "");
}

TEST_F(TreeTest, IsFoundUnderInterfaceAndClass) {
  EXPECT_EQ(oroQuery<IKelDataDirectory>(a), a);
  EXPECT_EQ(oroQueryClass<KelDataDirectory>(static_cast<IKelDataDirectory*>(a)), a);
  EXPECT_EQ(oroQuery<IKelDataItem>(a), nullptr);
  EXPECT_STREQ(a->getClassName(), "KelDataDirectory");
}

TEST_F(TreeTest, SearchesAreExactAndCaseSensitive) {
  EXPECT_EQ(root.GetDirectory("A"), a);
  EXPECT_EQ(root.GetDirectory("a"), nullptr);
  EXPECT_EQ(root.GetDirectory("B"), nullptr);
  EXPECT_EQ(root.GetDirectory(nullptr), nullptr);
  EXPECT_EQ(a->GetItem("i"), i);
  EXPECT_EQ(a->GetItem("I"), nullptr);
  EXPECT_EQ(a->GetItem("A/i"), nullptr);
  EXPECT_EQ(a->GetItem(nullptr), nullptr);
}

TEST_F(TreeTest, FindDirectoryTakesExactlySoManyBytes) {
  EXPECT_EQ(root.FindDirectory("ABC", 1), a);
  EXPECT_EQ(root.FindDirectory("A/B", 1), a);
  EXPECT_EQ(root.FindDirectory("A", 0), nullptr);
  EXPECT_EQ(root.FindDirectory("AB", 2), nullptr);
  EXPECT_EQ(root.FindDirectory("A\0B", 3), nullptr);
  EXPECT_EQ(root.FindDirectory("A", -1), nullptr);
  EXPECT_EQ(root.FindDirectory(nullptr, 1), nullptr);
  auto* const longer = new KelDataDirectory("ABC");
  root.AddDirectory(longer);
  EXPECT_EQ(root.FindDirectory("ABC", 3), longer);
  EXPECT_EQ(root.FindDirectory("ABC", 2), nullptr);
}

TEST_F(TreeTest, FirstOfTwoEqualNamesIsFound) {
  root.AddDirectory(new KelDataDirectory("A"));
  EXPECT_EQ(root.GetDirectory("A"), a);
  a->AddItem(new KelDataInt("A/i", 5, 0, 9, 0));
  EXPECT_EQ(a->GetItem("i"), i);
}

TEST_F(TreeTest, RemovingDeletesTheChildWhateverItsCountAndClosesTheGap) {
  i->addRef();
  EXPECT_TRUE(a->RemoveItem(i));
  EXPECT_FALSE(a->RemoveItem(i));
  EXPECT_EQ(a->GetItem("i"), nullptr);
  EXPECT_NE(a->GetItem("j"), nullptr);
  EXPECT_FALSE(root.RemoveDirectory(b));
  EXPECT_TRUE(a->RemoveDirectory(b));
  EXPECT_EQ(a->GetDirectory("B"), nullptr);
  EXPECT_EQ(a->items().count(), 1);
  EXPECT_EQ(a->directories().count(), 0);
}

TEST_F(TreeTest, TakenChildrenPassToTheCaller) {
  EXPECT_TRUE(a->takeItem(i));
  EXPECT_FALSE(a->takeItem(i));
  EXPECT_STREQ(i->GetPath(), "A/i");
  delete i;
  EXPECT_TRUE(a->takeDirectory(b));
  delete b;
}

TEST_F(TreeTest, NullChildrenAreNotAdded) {
  root.AddItem(nullptr);
  root.AddDirectory(nullptr);
  EXPECT_EQ(root.items().count(), 1);
  EXPECT_EQ(root.directories().count(), 1);
}

// Tells when it is deleted.
class Mortal : public KelDataItem {
 public:
  Mortal(const char* path, tests::Log& deaths) : KelDataItem(path, kVoid, 0), deaths_(deaths) {}
  ~Mortal() override { deaths_.push_back(GetPath()); }
  void Notify() override {}

 private:
  tests::Log& deaths_;
};

TEST(KelDataDirectory, DeletesSubdirectoriesBeforeItems) {
  tests::Log deaths;
  {
    KelDataDirectory root("");
    auto* const below = new KelDataDirectory("A");
    root.AddItem(new Mortal("1", deaths));
    root.AddItem(new Mortal("2", deaths));
    root.AddDirectory(below);
    below->AddItem(new Mortal("A/3", deaths));
  }
  EXPECT_THAT(deaths, ElementsAre("A/3", "1", "2"));
}

TEST_F(TreeTest, WalksSubdirectoriesBeforeItems) {
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(root.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("enter ", "enter A", "enter B", "int A/B/k", "leave B",
                                         "int A/i", "int A/j", "leave A", "int x", "leave "));
}

TEST_F(TreeTest, ReadingGoesOnAfterAFailureAndFailsAtTheEnd) {
  RecordingVisitor visitor(IKelDataVisitor::kReading);
  visitor.failing = {"int A/B/k"};
  EXPECT_FALSE(root.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("enter ", "enter A", "enter B", "int A/B/k", "leave B",
                                         "int A/i", "int A/j", "leave A", "int x", "leave "));
}

TEST_F(TreeTest, OtherModesStopAtTheFirstFailureWithoutLeaving) {
  for (const int32_t mode : {IKelDataVisitor::kWriting, 2, -1}) {
    RecordingVisitor visitor(mode);
    visitor.failing = {"int A/i"};
    EXPECT_FALSE(root.Accept(&visitor));
    EXPECT_THAT(visitor.calls,
                ElementsAre("enter ", "enter A", "enter B", "int A/B/k", "leave B", "int A/i"));
  }
}

TEST_F(TreeTest, RefusedDirectoryIsNeitherWalkedNorLeft) {
  RecordingVisitor visitor(IKelDataVisitor::kReading);
  visitor.failing = {"enter A"};
  EXPECT_FALSE(root.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("enter ", "enter A", "int x", "leave "));
  RecordingVisitor refusing(IKelDataVisitor::kReading);
  refusing.failing = {"enter "};
  EXPECT_FALSE(root.Accept(&refusing));
  EXPECT_THAT(refusing.calls, ElementsAre("enter "));
}

TEST_F(TreeTest, FailedLeaveFailsTheDirectory) {
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  visitor.failing = {"leave B"};
  EXPECT_FALSE(root.Accept(&visitor));
  EXPECT_EQ(visitor.calls.back(), "leave B");
}

TEST_F(TreeTest, CopiesLayersBelowExceptOfExemptItems) {
  auto* const k = oroQueryClass<KelDataInt>(b->GetItem("k"));
  i->SetFlags(IKelDataItem::kLayerExempt);
  i->Set(5);
  k->Set(5);
  root.CopyLayers(0, 1);
  EXPECT_TRUE(i->LayersDiffer(0, 1));
  EXPECT_FALSE(k->LayersDiffer(0, 1));
  i->CopyLayer(0, 1);
  EXPECT_FALSE(i->LayersDiffer(0, 1));
}

TEST_F(TreeTest, CopyingIntoTheCurrentLayerTellsReceivers) {
  RecordingReceiver receiver;
  i->AddReceiver(&receiver);
  i->Set(5);
  root.CopyLayers(1, 0);
  EXPECT_THAT(receiver.calls, ElementsAre("int A/i 0"));
}

TEST_F(TreeTest, CollectsThePathsOfSubdirectoriesFirst) {
  a->AddItem(new KelDataVoid("A/event", 0));
  OroArray<const char*> list;
  EXPECT_TRUE(root.CollectPaths(list));
  std::vector<std::string> paths(list.begin(), list.end());
  EXPECT_THAT(paths, ElementsAre("A/B/k", "A/i", "A/j", "A/event", "x"));
}

TEST(KelDataDirectory, CollectsNothingWhereOnlyDirectoriesAre) {
  KelDataDirectory root("");
  auto* const below = new KelDataDirectory("A");
  root.AddDirectory(below);
  root.AddDirectory(new KelDataDirectory("B"));
  OroArray<const char*> list;
  EXPECT_FALSE(root.CollectPaths(list));
  EXPECT_EQ(list.count(), 0);
  below->AddItem(new KelDataInt("A/i", 0, 0, 1, 0));
  EXPECT_TRUE(root.CollectPaths(list));
  EXPECT_EQ(list.count(), 1);
}

TEST(KelDataDirectory, FirstChildMakesRoomForTwentyOneSlots) {
  KelDataDirectory root("");
  auto* const below = new KelDataDirectory("A");
  auto* const item = new KelDataInt("i", 0, 0, 1, 0);
  tests::FakeHeap heap;
  root.AddDirectory(below);
  root.AddItem(item);
  EXPECT_THAT(heap.sizes, ElementsAre(21 * sizeof(void*), 21 * sizeof(void*)));
}

TEST(KelDataDirectory, HoldsManyChildren) {
  KelDataDirectory root("");
  for (int n = 0; n < 1000; ++n) {
    root.AddItem(new KelDataInt(std::to_string(n).c_str(), n, 0, 1000, 0));
    root.AddDirectory(new KelDataDirectory(std::to_string(n)));
  }
  EXPECT_EQ(oroQueryClass<KelDataInt>(root.GetItem("999"))->Get(), 999);
  EXPECT_STREQ(root.GetDirectory("500")->GetName(), "500");
}

TEST(KelDataDirectory, FirstOfEqualNamesIsFoundAmongMany) {
  KelDataDirectory root("");
  KelDataDirectory* twins[3];
  for (KelDataDirectory*& twin : twins) {
    for (int n = 0; n < 40; ++n) root.AddDirectory(new KelDataDirectory(std::to_string(n)));
    root.AddDirectory(twin = new KelDataDirectory("twin"));
    EXPECT_EQ(root.GetDirectory("twin"), twins[0]);
    EXPECT_EQ(root.FindDirectory("twinned", 4), twins[0]);
  }
  EXPECT_EQ(root.GetDirectory("twi"), nullptr);
  EXPECT_EQ(root.FindDirectory("twin\0", 5), nullptr);
  EXPECT_EQ(root.FindDirectory("twin", 0), nullptr);
  EXPECT_TRUE(root.RemoveDirectory(twins[0]));
  EXPECT_EQ(root.GetDirectory("twin"), twins[1]);
  EXPECT_TRUE(root.takeDirectory(twins[2]));
  delete twins[2];
  EXPECT_EQ(root.GetDirectory("twin"), twins[1]);
  EXPECT_TRUE(root.RemoveDirectory(twins[1]));
  EXPECT_EQ(root.GetDirectory("twin"), nullptr);
  auto* const late = new KelDataDirectory("twin");
  root.AddDirectory(late);
  EXPECT_EQ(root.GetDirectory("twin"), late);
}

}  // namespace

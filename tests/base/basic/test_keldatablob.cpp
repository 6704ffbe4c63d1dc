#include "base/basic/keldatablob.h"

#include <gmock/gmock.h>

#include <climits>
#include <cstring>
#include <string>

#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/recordingvisitor.h"
#include "tests/support/fakeheap.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::RecordingReceiver;
using tests::RecordingVisitor;

std::string bytesOf(const KelDataBlob& item) {
  return std::string(static_cast<const char*>(item.Get()), static_cast<size_t>(item.GetSize()));
}

TEST(KelDataBlob, KeepsACopyOfTheBytes) {
  char data[] = {'a', '\0', 'c'};
  KelDataBlob item("a", 3, data, 0);
  std::memset(data, 'x', sizeof data);
  EXPECT_EQ(bytesOf(item), std::string("a\0c", 3));
  item.Set("longer text", 11);
  EXPECT_EQ(bytesOf(item), "longer text");
  EXPECT_EQ(item.GetSize(), 11);
}

TEST(KelDataBlob, EmptyIsNullAndNullDataIsZeros) {
  KelDataBlob item("a", 0, "x", 0);
  EXPECT_EQ(item.Get(), nullptr);
  item.Set(nullptr, 3);
  EXPECT_EQ(bytesOf(item), std::string(3, '\0'));
  item.Set("x", INT_MIN);
  EXPECT_EQ(item.GetSize(), 0);
  EXPECT_EQ(item.Get(), nullptr);
  item.Set(nullptr, 0);
  EXPECT_EQ(item.GetSize(), 0);
}

TEST(KelDataBlob, UpdateComparesSizeAndBytes) {
  KelDataBlob item("a", 3, "abc", 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update("abcd", 3, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Update("abcd", 4, nullptr, false);
  item.Update("abce", 4, nullptr, false);
  item.Update("abce", 4, nullptr, true);
  EXPECT_THAT(receiver.calls, ElementsAre("blob a abcd", "blob a abce", "blob a abce"));
}

TEST(KelDataBlob, NullDataIsNoChangeOfZeros) {
  KelDataBlob item("a", 2, nullptr, 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.Update(nullptr, 2, nullptr, false);
  item.Update("\0\0", 2, nullptr, false);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Update("\0\1", 2, nullptr, false);
  item.Update(nullptr, 2, nullptr, false);
  EXPECT_EQ(receiver.calls.size(), 2u);
}

TEST(KelDataBlob, CopyingAnEqualLayerIntoTheCurrentOneTellsNobody) {
  KelDataBlob item("a", 3, "abc", 0);
  RecordingReceiver receiver;
  item.AddReceiver(&receiver);
  item.CopyLayer(2, 0);
  EXPECT_THAT(receiver.calls, IsEmpty());
  item.Set("abd", 3);
  item.CopyLayer(2, 0);
  EXPECT_THAT(receiver.calls, ElementsAre("blob a abc"));
}

TEST(KelDataBlob, TakesItsOwnBytes) {
  KelDataBlob item("a", 5, "hello", IKelDataItem::kInitialiseAll);
  item.Notify();
  EXPECT_EQ(bytesOf(item), "hello");
  item.Set(static_cast<const char*>(item.Get()) + 1, 4);
  EXPECT_EQ(bytesOf(item), "ello");
  item.Update(static_cast<const char*>(item.Get()) + 1, 2, nullptr, true);
  EXPECT_EQ(bytesOf(item), "ll");
  item.CopyLayer(3, 0);
  EXPECT_EQ(bytesOf(item), "ll");
}

TEST(KelDataBlob, EachLayerHasItsOwnCopy) {
  KelDataBlob item("a", 3, "abc", 0);
  item.Set("xyz", 3);
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  EXPECT_FALSE(item.LayersDiffer(1, 2));
  item.CopyLayer(0, 1);
  EXPECT_FALSE(item.LayersDiffer(0, 1));
  item.Set("xyzz", 4);
  EXPECT_TRUE(item.LayersDiffer(0, 1));
  item.CopyLayer(5, 0);
  item.CopyLayer(0, 5);
  EXPECT_FALSE(item.LayersDiffer(0, 5));
  EXPECT_EQ(bytesOf(item), "xyzz");
}

TEST(KelDataBlob, GivesAllItsMemoryBack) {
  tests::FakeHeap heap;
  {
    KelDataBlob item("a", 3, "abc", IKelDataItem::kInitialiseAll);
    item.Set("longer", 6);
    item.Set("", 0);
    item.Set("again", 5);
  }
  EXPECT_GT(heap.allocations, 0);
  EXPECT_EQ(heap.frees, heap.allocations);
}

TEST(KelDataBlob, SettingTheSameSizeAllocatesNothing) {
  KelDataBlob item("a", 3, "abc", 0);
  tests::FakeHeap heap;
  item.Update("xyz", 3, nullptr, false);
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_EQ(bytesOf(item), "xyz");
}

TEST(KelDataBlob, IsVisitedAsABlob) {
  KelDataBlob item("A/x", 1, "x", 0);
  RecordingVisitor visitor(IKelDataVisitor::kWriting);
  EXPECT_TRUE(item.Accept(&visitor));
  EXPECT_THAT(visitor.calls, ElementsAre("blob A/x"));
}

}  // namespace

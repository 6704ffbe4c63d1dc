#include "interfaces/IOroHeapMemoryUsage.h"
#include "orobasictypes/heapmemoryusage.h"

#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memoryfigures.h"
#include "tests/support/slotnumber.h"

namespace {

void expectFigures(IOroHeapMemoryUsage& usage, uint64_t current, uint64_t mark, uint64_t peak) {
  EXPECT_EQ(usage.GetCurrent(), current);
  EXPECT_EQ(usage.GetMark(), mark);
  EXPECT_EQ(usage.GetPeak(), peak);
}

TEST(HeapMemoryUsage, StartsAtZero) {
  HeapMemoryUsage usage;
  expectFigures(usage, 0, 0, 0);
}

TEST(HeapMemoryUsage, PeakIsTheMostSinceTheMark) {
  HeapMemoryUsage usage;
  usage.Add(100);
  usage.Subtract(40);
  usage.Add(10);
  expectFigures(usage, 70, 0, 100);
  usage.SetMark();
  expectFigures(usage, 70, 70, 0);
  usage.Add(5);
  expectFigures(usage, 75, 70, 5);
  usage.Add(0);
  expectFigures(usage, 75, 70, 5);
}

TEST(HeapMemoryUsage, UseBelowTheMarkMakesAFalsePeakAtTheNextAdd) {
  HeapMemoryUsage usage;
  usage.Add(100);
  usage.SetMark();
  usage.Subtract(50);
  EXPECT_EQ(usage.GetPeak(), 0u) << "Subtract never raises it";
  usage.Add(10);
  expectFigures(usage, 60, 100, uint64_t(0) - 40);
  usage.Subtract(61);
  EXPECT_EQ(usage.GetCurrent(), UINT64_MAX);
}

TEST(HeapMemoryUsage, BlockIsSubtractedWithTheSizeThatTheHeapGave) {
  HeapMemoryUsage usage;
  void* const block = std::calloc(1, 10);
  ASSERT_GE(platform::heapBlockSize(block), 10u);
  usage.Add(1000);
  usage.SubtractBlock(block);
  EXPECT_EQ(usage.GetCurrent(), 1000 - platform::heapBlockSize(block));
  usage.SetMark();
  usage.SubtractBlock(nullptr);
  EXPECT_EQ(usage.GetCurrent(), usage.GetMark());
  std::free(block);
}

TEST(HeapMemoryUsage, BlockIsSubtractedByTheOperationOfADerivedClass) {
  class Derived : public HeapMemoryUsage<> {
   public:
    void Subtract(uint64_t bytes) override { subtracted += bytes; }
    uint64_t subtracted = 0;
  } usage;
  void* const block = std::calloc(1, 10);
  usage.SubtractBlock(block);
  EXPECT_EQ(usage.subtracted, platform::heapBlockSize(block));
  EXPECT_EQ(usage.GetCurrent(), 0u);
  std::free(block);
}

TEST(HeapMemoryUsage, CopyHasTheFiguresAndACountOfItsOwn) {
  HeapMemoryUsage usage;
  usage.Add(100);
  usage.SetMark();
  usage.Add(7);
  usage.addRef();
  HeapMemoryUsage copy(usage);
  expectFigures(copy, 107, 100, 7);
  EXPECT_EQ(copy.refCount(), 0);
  copy.Add(1);
  EXPECT_EQ(usage.GetCurrent(), 107u);
  usage.releaseNoDestroy();
}

TEST(HeapMemoryUsage, AnswersToItsNameAndItsInterface) {
  HeapMemoryUsage usage;
  EXPECT_STREQ(usage.getClassName(), "HeapMemoryUsage");
  EXPECT_EQ(oroQueryClass<HeapMemoryUsage<>>(&usage), &usage);
  EXPECT_EQ(oroQuery<IOroHeapMemoryUsage>(&usage), &usage);
  EXPECT_EQ(oroQuery<IOroUnknown>(&usage), static_cast<IOroUnknown*>(&usage));
}

TEST(HeapMemoryUsage, OperationsAndFieldsStandInOrder) {
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::Add), 1);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::Subtract), 2);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::SubtractBlock), 3);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::SetMark), 4);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::GetCurrent), 5);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::GetMark), 6);
  EXPECT_EQ(tests::slotNumber(&IOroHeapMemoryUsage::GetPeak), 7);
  HeapMemoryUsage usage;
  usage.Add(1);
  usage.SetMark();
  usage.Add(2);
  const auto* const fields = reinterpret_cast<const uint64_t*>(&usage) + 1;
  EXPECT_EQ(fields[0], 3u);
  EXPECT_EQ(fields[1], 1u);
  EXPECT_EQ(fields[2], 2u);
}

TEST(HeapMemoryUsage, OneMutexServesTheWritesOfAllAndNoReading) {
  HeapMemoryUsage first;
  HeapMemoryUsage second;
  kelHeapUsageMutex().lock();
  std::thread reader([&] {
    EXPECT_EQ(first.GetCurrent() + first.GetMark() + first.GetPeak(), 0u);
    EXPECT_FALSE(kelHeapUsageMutex().tryLock());
  });
  reader.join();
  std::thread writers[] = {std::thread([&] { first.Add(1); }), std::thread([&] { second.Add(2); })};
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(first.GetCurrent(), 0u);
  EXPECT_EQ(second.GetCurrent(), 0u);
  kelHeapUsageMutex().unlock();
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(first.GetCurrent(), 1u);
  EXPECT_EQ(second.GetCurrent(), 2u);
}

TEST(HeapMemoryUsage, ThreadsAddAndSubtractAtOnce) {
  HeapMemoryUsage usage;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 1000; ++n) {
        usage.Add(3);
        usage.GetPeak();
        usage.Subtract(2);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(usage.GetCurrent(), 8000u);
}

}  // namespace

// What split arrays and sorts share between threads, the memory manager and the pools; and a
// progress that another thread cancels.
#include <algorithm>
#include <atomic>
#include <numeric>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/applyorder.h"
#include "orobasictypes/progresscallbackbase.h"
#include "orobasictypes/quicksort.h"
#include "tests/support/countingmanager.h"

namespace {

constexpr int threadCount = 4;

// Runs work(i) on each of the threads, which begin together.
template <class Work>
void onThreads(const Work& work) {
  std::atomic<int> waiting = threadCount;
  std::vector<std::thread> threads;
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back([&, i] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      work(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(SplitArrayThreads, AskForTheManagerOnce) {
  const tests::ManagedMemory memory;
  const int32_t references = memory.manager->refCount();
  for (int round = 0; round < 50; ++round) {
    testaccess::resetArrayManager();
    const int requests = memory.broker.serviceRequests;
    onThreads([&](int) {
      const OroMM::IntArray array;
      EXPECT_EQ(OroMM::arrayManager(), memory.manager.get());
    });
    ASSERT_EQ(memory.broker.serviceRequests, requests + 1);
    ASSERT_EQ(memory.manager->refCount(), references + 1);
  }
}

class Copier : public QuickSort_Assign {
 public:
  explicit Copier(std::vector<int32_t>& records) : records_(records) {}
  void Assign(int32_t from, int32_t to) override {
    const int32_t record = from < 0 ? held_ : records_[static_cast<size_t>(from)];
    (to < 0 ? held_ : records_[static_cast<size_t>(to)]) = record;
  }

 private:
  std::vector<int32_t>& records_;
  int32_t held_ = 0;
};

TEST(SortThreads, DoNotMeetInThePools) {
  constexpr int32_t count = 1000;
  const tests::ManagedMemory memory;
  std::vector<int32_t> order(count);
  std::iota(order.begin(), order.end(), 0);
  std::shuffle(order.begin(), order.end(), std::mt19937(5));
  OroMM::IntArray index(count);
  for (int32_t i = 0; i < count; ++i) index.Set(i, order[static_cast<size_t>(i)]);
  onThreads([&](int) {
    const auto compare = [](int32_t a, int32_t b, void*) { return a - b; };
    for (int round = 0; round < 100; ++round) {
      std::vector<int32_t> sorted = order;
      quickSort(sorted.data(), 0, count - 1, compare, nullptr);
      ASSERT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
      Copier copier(sorted);
      applyOrder(index, 0, count - 1, copier);
      ASSERT_EQ(sorted, order);
    }
  });
}

TEST(ProgressThreads, DoNotLoseACancel) {
  ProgressCallbackBase progress;
  std::atomic<bool> ends = false;
  std::thread operation([&] {
    while (!ends) {
      progress.SetShown(false);
      progress.SetShown(true);
    }
  });
  int lost = 0;
  for (int round = 0; round < 100000; ++round) {
    progress.SetCancelled(true);
    if (!progress.IsCancelled()) ++lost;
    progress.SetCancelled(false);
    if (progress.IsCancelled()) ++lost;
  }
  ends = true;
  operation.join();
  EXPECT_EQ(lost, 0);
}

}  // namespace

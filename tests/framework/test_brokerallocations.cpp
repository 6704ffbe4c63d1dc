// Asking for a published service takes no memory, whatever the state of the broker's short cuts.

#include <gtest/gtest.h>

#include <string>

#include "orobasictypes/kelpool.h"
#include "orobasictypes/sptr.h"
#include "tests/framework/brokerfixture.h"
#include "tests/support/countingnew.h"
#include "tests/support/fakeheap.h"

namespace {

using tests::FakeObject;
using tests::IFakeService;

class BrokerAllocations : public tests::BrokerFixture {
 protected:
  // Blocks that `work` takes from anywhere.
  template <class Work>
  static size_t blocksOf(const Work& work) {
    kelPoolShutdown();  // so that no block is at hand
    const tests::FakeHeap heap;
    const size_t before = tests::newCalls;
    work();
    return tests::newCalls - before + static_cast<size_t>(heap.allocations + heap.reallocations);
  }
};

TEST_F(BrokerAllocations, AreSeenByThisTest) {
  EXPECT_GT(blocksOf([] { const KelCString text("a text of its own"); }), 0u);
  EXPECT_GT(blocksOf([] { delete new FakeObject; }), 0u);
}

TEST_F(BrokerAllocations, PublishedServiceTakesNoneAtAnyRequest) {
  broker_->registerService(name("IFakeService"), new FakeObject);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(blocksOf([] { EXPECT_TRUE(SPtr<IFakeService>()); }), 0u) << i;
  }
  const std::string other = "IFakeService";  // the same name elsewhere
  EXPECT_EQ(blocksOf([&] {
              void* found = nullptr;
              EXPECT_EQ(broker_->getService(name(other.c_str()), &found), 1);
            }),
            0u);
}

TEST_F(BrokerAllocations, AbsentServiceTakesNone) {
  EXPECT_EQ(blocksOf([] { EXPECT_FALSE(SPtr<IFakeService>()); }), 0u);
}

}  // namespace

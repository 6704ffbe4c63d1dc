#include "orobasictypes/orofilenesting.h"

#include <atomic>

namespace {

constexpr int32_t nestingStep = 3;
std::atomic<int32_t> depth{0};

}  // namespace

int32_t OroFileNesting::Get() { return depth.load(std::memory_order_relaxed); }

void OroFileNesting::open() {
  ++opened_;
  depth.fetch_add(nestingStep, std::memory_order_relaxed);
}

void OroFileNesting::close() {
  if (opened_ == 0) return;
  --opened_;
  depth.fetch_sub(nestingStep, std::memory_order_relaxed);
}

void OroFileNesting::closeAll() {
  while (opened_ > 0) close();
}

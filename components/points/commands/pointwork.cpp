#include "components/points/commands/pointwork.h"

#include <algorithm>

bool PointWork::step(int64_t done, int64_t whole) {
  if (stopped_) return false;
  if (!listener_ || whole <= 0) return true;
  const double share = std::clamp(static_cast<double>(done) / static_cast<double>(whole), 0.0, 1.0);
  const auto part = static_cast<int>(share * kParts);
  if (part == told_) return true;
  told_ = part;
  stopped_ = !listener_(from_ + (to_ - from_) * share);
  return !stopped_;
}

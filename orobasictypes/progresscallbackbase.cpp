#include "orobasictypes/progresscallbackbase.h"

#include <algorithm>

#include "interfaces/IOroProgress.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t wholeBar = 1000;

// The service lives as long as it is published; operations do not keep it alive.
IOroProgress* findProgress() { return SPtr<IOroProgress>().get(); }

int32_t fromPercent(int32_t percent) {
  return static_cast<int32_t>(std::min<int64_t>(int64_t{percent} * 10, wholeBar));
}

// What is not a number counts as 0.
float limited(float fraction) {
  if (!(fraction > 0)) return 0;
  return std::min(fraction, 1.0F);
}

}  // namespace

ProgressCallbackBase::ProgressCallbackBase() : progress_(findProgress()) {}

void ProgressCallbackBase::SetPercentRange(int32_t from, int32_t to) {
  if (start_ < 0) return;
  if (from >= 0) start_ = fromPercent(from);
  if (to >= 0) end_ = fromPercent(to);
  start_ = std::min(start_, end_);
}

void ProgressCallbackBase::GetPercentRange(int32_t& from, int32_t& to) {
  from = start_ < 0 ? 0 : start_ / 10;
  to = start_ < 0 ? 0 : end_ / 10;
}

void ProgressCallbackBase::SetRange(int32_t from, int32_t to, uint32_t last) {
  start_ = from;
  end_ = to;
  last_ = last;
}

void ProgressCallbackBase::GetRange(int32_t& from, int32_t& to, uint32_t& last) {
  from = start_;
  to = end_;
  last = last_;
}

void ProgressCallbackBase::Enable(bool enable) {
  start_ = enable ? 0 : -1;
  if (!enable) return;
  end_ = wholeBar;
  if (progress_ == nullptr) progress_ = findProgress();
}

void ProgressCallbackBase::CopyTo(ProgressCallbackBase* other) {
  if (other == nullptr || other == this) return;
  other->start_ = start_;
  other->end_ = end_;
  other->last_ = 0;
  other->flags_ = flags_.load(std::memory_order_relaxed);
  other->progress_ = progress_;
}

void ProgressCallbackBase::CopyFrom(ProgressCallbackBase* other) {
  if (other != nullptr) other->CopyTo(this);
}

bool ProgressCallbackBase::Begin() { return showFresh(0); }

bool ProgressCallbackBase::End() { return showFresh(1); }

bool ProgressCallbackBase::showFresh(float fraction) {
  if (isOff()) return true;
  put(kCancelled, false);
  last_ = 0;
  return progress_->Update(fraction);
}

bool ProgressCallbackBase::Step(int32_t done, int32_t total) {
  return Report(static_cast<float>(done) / static_cast<float>(total));
}

// The product is one of floats: the positions that a bar shows hang on its rounding.
bool ProgressCallbackBase::Report(float fraction) {
  if (isOff()) return true;
  const float reached = static_cast<float>(int64_t{end_} - start_) * limited(fraction);
  const auto position = static_cast<int32_t>(static_cast<int64_t>(reached) + start_);
  if (static_cast<uint32_t>(position) == last_) return askService();
  last_ = static_cast<uint32_t>(position);
  if (progress_->Update(static_cast<float>(position * 0.001))) return true;
  if (has(kMayBeCancelled)) put(kCancelled, true);
  return false;
}

// Nothing to show: only whether to go on.
bool ProgressCallbackBase::askService() {
  if (!has(kMayBeCancelled)) return true;
  if (has(kCancelled)) return false;
  if (!progress_->IsCancelled()) return true;
  put(kCancelled, true);
  return false;
}

// Whether that changed the flag. The others stay as they are: a cancel from another thread is not
// to get lost.
bool ProgressCallbackBase::put(Flag flag, bool value) {
  if (has(flag) == value) return false;
  const int old = value ? flags_.fetch_or(flag) : flags_.fetch_and(static_cast<uint8_t>(~flag));
  return ((old & flag) != 0) != value;
}

int32_t ProgressCallbackBase::SetCancellable(bool cancellable) {
  return put(kMayBeCancelled, cancellable) ? 1 : 0;
}

bool ProgressCallbackBase::IsCancelled() { return has(kCancelled); }

int32_t ProgressCallbackBase::SetShown(bool shown) { return put(kSilent, !shown) ? 1 : 0; }

bool ProgressCallbackBase::SetCancelled(bool cancelled) {
  put(kCancelled, cancelled);
  return true;
}

uint8_t ProgressCallbackBase::GetFlags() { return flags_.load(std::memory_order_relaxed); }

bool ProgressCallbackBase::IsServiceCancelled() {
  return progress_ != nullptr && progress_->IsCancelled();
}

bool ProgressCallbackBase::SetProgress(IOroProgress* progress) {
  progress_ = progress;
  return true;
}

IOroProgress* ProgressCallbackBase::GetProgress() { return progress_; }

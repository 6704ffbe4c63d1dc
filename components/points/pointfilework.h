// PointFileWork: lets whoever opens or saves a file hear how far that is, and stop it.
//
//   const PointFileWork work([](double fraction) { return !isUnwanted(); });
//   opener->open(path, options, 1);  // false as soon as the listener is
//
// Reading and writing ask the one that lives, of several the innermost; without one they go on to
// their end. A file whose work was stopped adds nothing and is not written, and no error is
// reported. Main thread.
#pragma once

#include "components/points/commands/pointwork.h"

class PointFileWork {
 public:
  // The listener gets a fraction from 0 to 1, once for each part in a thousand; its false stops the
  // work.
  explicit PointFileWork(std::function<bool(double)> listener)
      : work_(std::move(listener)), outer_(current_) {
    current_ = this;
  }
  ~PointFileWork() { current_ = outer_; }
  PointFileWork(const PointFileWork&) = delete;
  PointFileWork& operator=(const PointFileWork&) = delete;

  bool isStopped() const { return work_.isStopped(); }

  // For those who read and write. Work done of all of it, in any unit; false: end now.
  static bool step(int64_t done, int64_t whole) {
    return current_ == nullptr || current_->work_.step(done, whole);
  }
  static bool isCurrentStopped() { return current_ != nullptr && current_->isStopped(); }

 private:
  inline static PointFileWork* current_ = nullptr;

  PointWork work_;
  PointFileWork* outer_;
};

// PointWork: how far a command has come, and whether it is to stop.
//
//   PointWork work([&](double fraction) { return bar.show(fraction); });
//   while (...) if (!work.step(done, whole)) return false;
//
// The listener is asked once for each part in a thousand, so a step costs next to nothing. One
// thread.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

class PointWork {
 public:
  PointWork() = default;
  // The listener gets a fraction from 0 to 1; its false stops the work.
  explicit PointWork(std::function<bool(double)> listener) : listener_(std::move(listener)) {}

  // The share of the whole that the next steps are, from 0 to 1.
  void setRange(double from, double to) {
    from_ = from;
    to_ = to;
    told_ = -1;
  }
  // Work done of all of it, in any unit. False: stop, now and at every later step.
  bool step(int64_t done, int64_t whole);
  bool isStopped() const { return stopped_; }

 private:
  static constexpr int kParts = 1000;

  std::function<bool(double)> listener_;
  double from_ = 0;
  double to_ = 1;
  int told_ = -1;
  bool stopped_ = false;
};

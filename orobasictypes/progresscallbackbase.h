// ProgressCallbackBase: what a long operation reports its progress through, and hears from whether
// to go on.
//
//   progress.SetPercentRange(25, 75);  // this operation's part of the bar
//   for (int32_t i = 1; i <= count; ++i) {
//     if (!progress.Report(static_cast<float>(i) / count)) return false;
//   }
//
// The operation need not know where in a larger job it stands. The display is the service
// IOroProgress; without one every report is true. Used by the operation's thread.
#pragma once

#include <atomic>
#include <cstdint>

class IOroProgress;

class ProgressCallbackBase {
 public:
  enum Flag : uint8_t { kCancelled = 1, kMayBeCancelled = 2, kSilent = 8 };

  ProgressCallbackBase();
  // A copy starts switched off: two objects that move one bar would fight over it.
  ProgressCallbackBase(const ProgressCallbackBase& other)
      : start_(-1),
        flags_(other.flags_.load(std::memory_order_relaxed)),
        progress_(other.progress_) {}
  ProgressCallbackBase& operator=(const ProgressCallbackBase&) = delete;
  virtual ~ProgressCallbackBase() = default;

  // In per cent, at most 100; a negative end stays as it is. Nothing while progress is off.
  virtual void SetPercentRange(int32_t from, int32_t to);
  // 0 and 0 while progress is off.
  virtual void GetPercentRange(int32_t& from, int32_t& to);
  // In tenths of a per cent, as they are; a negative `from` switches progress off.
  virtual void SetRange(int32_t from, int32_t to, uint32_t last);
  virtual void GetRange(int32_t& from, int32_t& to, uint32_t& last);
  // True: the whole bar, and the service is looked up if it is missing. False: off.
  virtual void Enable(bool enable);
  // Range, flags and service; the copy has shown nothing yet. Null: nothing.
  virtual void CopyTo(ProgressCallbackBase* other);
  virtual void CopyFrom(ProgressCallbackBase* other);
  // Shows an empty bar, End a full one. Both forget that the user cancelled.
  virtual bool Begin();
  // Report of done / total.
  virtual bool Step(int32_t done, int32_t total);
  // `fraction` of this operation, cut to 0 to 1. False: stop. The display is touched once for each
  // tenth of a per cent; in between, an operation that may be cancelled asks whether it is.
  virtual bool Report(float fraction);
  virtual bool End();
  // 1 when that changed something.
  virtual int32_t SetCancellable(bool cancellable);
  virtual bool IsCancelled();
  virtual int32_t SetShown(bool shown);
  // May come from another thread. Always true.
  virtual bool SetCancelled(bool cancelled);
  virtual uint8_t GetFlags();
  // What the service says itself.
  virtual bool IsServiceCancelled();
  // Borrowed, as the one that was looked up. Always true.
  virtual bool SetProgress(IOroProgress* progress);
  virtual IOroProgress* GetProgress();

 private:
  bool has(Flag flag) const { return (flags_.load(std::memory_order_relaxed) & flag) != 0; }
  bool put(Flag flag, bool value);
  bool isOff() const { return start_ < 0 || progress_ == nullptr || has(kSilent); }
  bool showFresh(float fraction);
  bool askService();

  int32_t start_ = 0;   // tenths of a per cent; negative: progress is off
  int32_t end_ = 1000;  // tenths of a per cent
  uint32_t last_ = 0;   // the position last shown
  std::atomic<uint8_t> flags_ = kMayBeCancelled;
  IOroProgress* progress_ = nullptr;  // not counted
};

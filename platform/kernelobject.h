#pragma once

// What threads wait for, as the system's kernel has it: mutexes, semaphores and events behind one
// kind of holder. For locks of the program itself take sync.h; these serve component libraries.
// A holder is made and closed by one thread; everything else is for any thread. On Linux named
// mutexes are those of this process.

#include <cstdint>
#include <string_view>

namespace platform {

class KernelObject {
 public:
  static constexpr std::int64_t forever = -1;

  KernelObject() = default;  ///< holds nothing
  ~KernelObject() { close(); }
  KernelObject(const KernelObject&) = delete;
  KernelObject& operator=(const KernelObject&) = delete;

  // Making. False when something is held already or the system refuses.

  /// Recursive, held by nobody; with the right to wait alone.
  bool makeMutex();
  /// The mutex of that name, made when there is none; child processes inherit it.
  bool makeMutex(std::u16string_view name);
  /// False when there is none of that name.
  bool openMutex(std::u16string_view name);
  bool makeSemaphore(std::int32_t start, std::int32_t maximum);
  /// Lets one waiter through and is reset by that.
  bool makeAutoResetEvent();
  /// Lets all through until reset() is called.
  bool makeManualResetEvent();
  void close();
  bool isOpen() const { return handle_ != nullptr; }

  // Using. False when nothing is held.

  /// True when it was had in time. From 0xFFFFFFFF milliseconds on there is no limit.
  bool wait(std::int64_t milliseconds = forever);
  /// False also for a thread that does not hold the mutex.
  bool releaseMutex();
  /// False also beyond the maximum.
  bool releaseSemaphore(std::int32_t count);
  bool setEvent();
  bool resetEvent();
  /// Releases this mutex, or sets this event, and waits for the other; in one step where the system
  /// can. False, and nothing done, when this cannot be signalled.
  bool signalAndWait(KernelObject& other);

 private:
  void* handle_ = nullptr;  // what it is, is the system's business
};

/// Room for the condition variable of the system, ready for use as long as it lives.
class NativeCondition {
 public:
  NativeCondition();
  ~NativeCondition();
  NativeCondition(const NativeCondition&) = delete;
  NativeCondition& operator=(const NativeCondition&) = delete;

  /// For calls of the system: a CONDITION_VARIABLE on Windows, a pthread_cond_t on Linux.
  void* native() { return room_; }

 private:
  alignas(16) unsigned char room_[64] = {};
};

}  // namespace platform

// OroMutex: a mutex of the system's kernel, recursive, without a name or with one.
//
// Take it where a wait may be long or where another process takes part; for the everyday there is
// platform/sync.h. A named one is made empty and then given its name. On Linux names are those of
// this process. Any thread.
#pragma once

#include <string_view>

#include "platform/kernelobject.h"

class OroMutex {
 public:
  OroMutex() { handle_.makeMutex(); }
  // Holds nothing yet.
  struct Empty {};
  explicit OroMutex(Empty) {}

  // Makes the mutex of that name, or opens it where there is one; children inherit it. False when
  // this holds a mutex already or the system refuses.
  bool create(std::u16string_view name) { return handle_.makeMutex(name); }
  // False when this holds a mutex already or there is none of that name.
  bool open(std::u16string_view name) { return handle_.openMutex(name); }
  void close() { handle_.close(); }
  bool isOpen() const { return handle_.isOpen(); }

  // Without limit. Requires: isOpen().
  void lock() { handle_.wait(); }
  void unlock() { handle_.releaseMutex(); }
  bool tryLock() { return handle_.wait(0); }
  // The same for one that may hold nothing, which gives false.
  bool lockIfOpen() { return handle_.wait(); }
  bool unlockIfOpen() { return handle_.isOpen() && handle_.releaseMutex(); }

 private:
  friend class OroCondition;

  platform::KernelObject handle_;
};

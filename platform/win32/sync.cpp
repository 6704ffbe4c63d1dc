#include "platform/sync.h"

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

// A mutex whose holder ended without leaving it is held by the next one who waits.
bool waitForMutex(HANDLE mutex, DWORD milliseconds) {
  const DWORD result = WaitForSingleObject(mutex, milliseconds);
  return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

}  // namespace

KernelMutex::KernelMutex() : handle_(CreateMutexW(nullptr, FALSE, nullptr)) {}

KernelMutex::~KernelMutex() { CloseHandle(handle_); }

void KernelMutex::lock() { waitForMutex(handle_, INFINITE); }

bool KernelMutex::tryLock() { return waitForMutex(handle_, 0); }

void KernelMutex::unlock() { ReleaseMutex(handle_); }

}  // namespace platform

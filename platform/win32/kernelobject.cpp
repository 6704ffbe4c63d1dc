#include "platform/kernelobject.h"

#include <new>

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

bool keep(void*& handle, HANDLE made) {
  handle = made;
  return made != nullptr;
}

// A mutex whose holder ended without leaving it is held by the next one who waits.
bool isHad(DWORD result) { return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED; }

}  // namespace

bool KernelObject::makeMutex() {
  return handle_ == nullptr && keep(handle_, CreateMutexExW(nullptr, nullptr, 0, SYNCHRONIZE));
}

bool KernelObject::makeMutex(std::u16string_view name) {
  SECURITY_ATTRIBUTES inheritable = {};
  inheritable.nLength = sizeof inheritable;
  inheritable.bInheritHandle = TRUE;
  return handle_ == nullptr &&
         keep(handle_, CreateMutexW(&inheritable, FALSE, toWide(name).c_str()));
}

bool KernelObject::openMutex(std::u16string_view name) {
  return handle_ == nullptr && keep(handle_, OpenMutexW(SYNCHRONIZE, FALSE, toWide(name).c_str()));
}

bool KernelObject::makeSemaphore(std::int32_t start, std::int32_t maximum) {
  return handle_ == nullptr && keep(handle_, CreateSemaphoreW(nullptr, start, maximum, nullptr));
}

bool KernelObject::makeAutoResetEvent() {
  return handle_ == nullptr && keep(handle_, CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

bool KernelObject::makeManualResetEvent() {
  return handle_ == nullptr &&
         keep(handle_, CreateEventExW(nullptr, nullptr, CREATE_EVENT_MANUAL_RESET,
                                      SYNCHRONIZE | EVENT_MODIFY_STATE));
}

void KernelObject::close() {
  if (handle_ != nullptr) CloseHandle(handle_);
  handle_ = nullptr;
}

bool KernelObject::wait(std::int64_t milliseconds) {
  if (handle_ == nullptr) return false;
  const DWORD limit =
      milliseconds < 0 || milliseconds >= INFINITE ? INFINITE : static_cast<DWORD>(milliseconds);
  return isHad(WaitForSingleObject(handle_, limit));
}

bool KernelObject::releaseMutex() { return handle_ != nullptr && ReleaseMutex(handle_); }

bool KernelObject::releaseSemaphore(std::int32_t count) {
  return handle_ != nullptr && count > 0 && ReleaseSemaphore(handle_, count, nullptr);
}

bool KernelObject::setEvent() { return handle_ != nullptr && SetEvent(handle_); }

bool KernelObject::resetEvent() { return handle_ != nullptr && ResetEvent(handle_); }

bool KernelObject::signalAndWait(KernelObject& other) {
  return handle_ != nullptr && other.handle_ != nullptr &&
         isHad(SignalObjectAndWait(handle_, other.handle_, INFINITE, FALSE));
}

NativeCondition::NativeCondition() {
  static_assert(sizeof(CONDITION_VARIABLE) <= sizeof room_);
  InitializeConditionVariable(new (room_) CONDITION_VARIABLE);
}

NativeCondition::~NativeCondition() = default;  // the system has nothing to take back

}  // namespace platform

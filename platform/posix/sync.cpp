#include "platform/sync.h"

#include <mutex>

namespace platform {
namespace {

std::recursive_mutex& mutexOf(void* handle) { return *static_cast<std::recursive_mutex*>(handle); }

}  // namespace

KernelMutex::KernelMutex() : handle_(new std::recursive_mutex) {}

KernelMutex::~KernelMutex() { delete static_cast<std::recursive_mutex*>(handle_); }

void KernelMutex::lock() { mutexOf(handle_).lock(); }

bool KernelMutex::tryLock() { return mutexOf(handle_).try_lock(); }

void KernelMutex::unlock() { mutexOf(handle_).unlock(); }

}  // namespace platform

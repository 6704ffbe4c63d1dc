#include "platform/kernelobject.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>

#include "platform/posix/posixgate.h"
#include "platform/posix/threadtoken.h"

namespace platform {
namespace {

// In milliseconds, some weeks: longer waits have no limit, as elsewhere. The clock could not tell
// their end.
constexpr std::int64_t longestWait = 0xFFFFFFFF;

// What a kernel mutex, semaphore or event is, told by a count: how many may still come in.
struct Object {
  enum class Kind { mutex, semaphore, autoReset, manualReset };

  Object(Kind what, std::int64_t start, std::int64_t most)
      : kind(what), count(start), maximum(most) {}

  const Kind kind;
  std::mutex lock;  // guards what follows
  std::condition_variable changed;
  std::int64_t count;
  const std::int64_t maximum;
  std::uintptr_t owner = 0;  // of a mutex, while it is held
  std::int64_t depth = 0;    // entries of the owner beyond the first

  bool tryTake() {
    const std::uintptr_t self = threadToken();
    if (kind == Kind::mutex && owner == self) {
      ++depth;
      return true;
    }
    if (count == 0) return false;
    if (kind != Kind::manualReset) --count;
    if (kind == Kind::mutex) owner = self;
    return true;
  }

  bool release(std::int64_t more) {
    const std::lock_guard hold(lock);
    if (kind == Kind::mutex) {
      if (owner != threadToken()) return false;
      if (depth > 0) {
        --depth;
        return true;
      }
      owner = 0;
    } else if (kind == Kind::semaphore && (more < 1 || count + more > maximum)) {
      return false;
    }
    count = kind == Kind::semaphore ? count + more : 1;
    changed.notify_all();
    return true;
  }
};
using Shared = std::shared_ptr<Object>;

struct NamedMutexes {
  std::mutex lock;  // guards names
  std::map<std::u16string, std::weak_ptr<Object>, std::less<>> names;
};

NamedMutexes& namedMutexes() {
  static auto& all = *new NamedMutexes;  // static objects may still use theirs
  return all;
}

Shared newMutex() { return std::make_shared<Object>(Object::Kind::mutex, 1, 1); }

Object* objectOf(void* handle) {
  return handle == nullptr ? nullptr : static_cast<Shared*>(handle)->get();
}

bool isOfKind(const Object* object, Object::Kind kind) {
  return object != nullptr && object->kind == kind;
}

bool isEvent(const Object* object) {
  return isOfKind(object, Object::Kind::autoReset) || isOfKind(object, Object::Kind::manualReset);
}

bool keep(void*& handle, const Shared& object) {
  if (handle != nullptr || object == nullptr) return false;
  handle = new Shared(object);
  return true;
}

}  // namespace

bool KernelObject::makeMutex() { return keep(handle_, newMutex()); }

bool KernelObject::makeMutex(std::u16string_view name) {
  NamedMutexes& all = namedMutexes();
  const std::lock_guard hold(all.lock);
  if (handle_ != nullptr) return false;
  std::weak_ptr<Object>& entry = all.names[std::u16string(name)];
  Shared object = entry.lock();
  if (object == nullptr) entry = object = newMutex();
  return keep(handle_, object);
}

bool KernelObject::openMutex(std::u16string_view name) {
  NamedMutexes& all = namedMutexes();
  const std::lock_guard hold(all.lock);
  const auto entry = all.names.find(name);
  return entry != all.names.end() && keep(handle_, entry->second.lock());
}

bool KernelObject::makeSemaphore(std::int32_t start, std::int32_t maximum) {
  if (start < 0 || maximum < 1 || start > maximum) return false;
  return keep(handle_, std::make_shared<Object>(Object::Kind::semaphore, start, maximum));
}

bool KernelObject::makeAutoResetEvent() {
  return keep(handle_, std::make_shared<Object>(Object::Kind::autoReset, 0, 1));
}

bool KernelObject::makeManualResetEvent() {
  return keep(handle_, std::make_shared<Object>(Object::Kind::manualReset, 0, 1));
}

void KernelObject::close() {
  delete static_cast<Shared*>(handle_);
  handle_ = nullptr;
}

bool KernelObject::wait(std::int64_t milliseconds) {
  Object* const object = objectOf(handle_);
  if (object == nullptr) return false;
  std::unique_lock hold(object->lock);
  const auto had = [&] { return object->tryTake(); };
  if (milliseconds < 0 || milliseconds >= longestWait) {
    object->changed.wait(hold, had);
    return true;
  }
  return object->changed.wait_for(hold, std::chrono::milliseconds(milliseconds), had);
}

bool KernelObject::releaseMutex() {
  Object* const object = objectOf(handle_);
  return isOfKind(object, Object::Kind::mutex) && object->release(1);
}

bool KernelObject::releaseSemaphore(std::int32_t count) {
  Object* const object = objectOf(handle_);
  return isOfKind(object, Object::Kind::semaphore) && object->release(count);
}

bool KernelObject::setEvent() {
  Object* const object = objectOf(handle_);
  return isEvent(object) && object->release(1);
}

bool KernelObject::resetEvent() {
  Object* const object = objectOf(handle_);
  if (!isEvent(object)) return false;
  const std::lock_guard hold(object->lock);
  object->count = 0;
  return true;
}

// Two steps: a signal that comes in between is kept by the other object's count.
bool KernelObject::signalAndWait(KernelObject& other) {
  Object* const object = objectOf(handle_);
  if (object == nullptr || other.handle_ == nullptr || !object->release(1)) return false;
  return other.wait();
}

NativeCondition::NativeCondition() {
  static_assert(sizeof(pthread_cond_t) <= sizeof room_ && alignof(pthread_cond_t) <= 16);
  pthread_cond_init(new (room_) pthread_cond_t, nullptr);
}

NativeCondition::~NativeCondition() {
  pthread_cond_destroy(static_cast<pthread_cond_t*>(native()));
}

}  // namespace platform

#include "services/errorservice.h"

#include <mutex>

#include "interfaces/IOroErrorListener.h"
#include "orobasictypes/orostring.h"
#include "services/crashhandler.h"
#include "services/errorwinboxdisplay.h"

namespace {

constexpr int32_t kListenerCapacity = 21;
constexpr uint32_t kFlagBuckets = 17;
constexpr int32_t kContextCapacity = 20;

constexpr int32_t kSeverityError = 1;
constexpr int32_t kSeverityErrorWithContext = 2;

ErrorService* currentService = nullptr;

}  // namespace

ErrorService::ErrorService(bool showBox, platform::CrashHandler crashHandler)
    : listeners_(kListenerCapacity),
      flags_(OroHashTable<KelCString, bool>::withBuckets(kFlagBuckets)),
      context_(kContextCapacity) {
  currentService = this;
  setDefaultFlags();
  if (showBox) addListener(new ErrorWinBoxDisplay(true));
  platform::installCrashHandler(crashHandler != nullptr ? crashHandler : oroStandardCrashHandler);
}

ErrorService::~ErrorService() {
  while (!listeners_.isEmpty()) removeAt(listeners_.count());
  currentService = nullptr;
}

ErrorService* ErrorService::current() { return currentService; }

void ErrorService::addListener(IOroErrorListener* listener) {
  if (listener == nullptr) return;
  for (int32_t i = listeners_.count(); i >= 1; --i) {
    if (listeners_[i] == listener) return;
  }
  listener->addRef();
  listeners_.add(listener);
}

void ErrorService::removeListener(IOroErrorListener* listener) {
  for (int32_t i = listeners_.count(); i >= 1; --i) {
    if (listeners_[i] == listener) removeAt(i);
  }
}

void ErrorService::removeAt(int32_t index) {
  IOroErrorListener* const listener = listeners_[index];
  listeners_.remove(index);
  listener->release();
}

void ErrorService::report(const OroString& text, int32_t severity, const KelCString& detail) {
  if (!active_) return;
  const std::lock_guard<platform::KernelMutex> guard(mutex_);
  OroString message(text);
  if (severity == kSeverityErrorWithContext) {
    OroStringArray context;
    getContext(context);
    for (int32_t i = 1; i <= context.lastIndex(); ++i) {
      message.append(u'\n');
      message.append(context[i]);
    }
    severity = kSeverityError;
  }
  // The count is read at each step: a listener may take itself out while it is called.
  for (int32_t i = 1; i <= listeners_.count(); ++i) {
    listeners_[i]->onError(message, &severity, detail);
  }
}

void ErrorService::setFlag(const KelCString& name, bool value) {
  uint32_t bucket = 0;
  if (auto* entry = flags_.find(name, &bucket)) {
    entry->value = value;
  } else {
    flags_.insert(bucket, name, value);
  }
}

bool ErrorService::getFlag(const KelCString& name) {
  const auto* entry = flags_.find(name);
  return entry != nullptr && entry->value;
}

void ErrorService::setDefaultFlags() {
  setFlag(KelCString::borrow("allowInteractiveAcknowledge"), true);
}

void ErrorService::removeWinBoxDisplay() {
  for (int32_t i = 1; i <= listeners_.count(); ++i) {
    if (oroQueryClass<ErrorWinBoxDisplay>(listeners_[i]) == nullptr) continue;
    removeAt(i);
    return;
  }
}

void ErrorService::pushContext(const OroString& text) { context_.append(text); }

void ErrorService::popContext() {
  if (context_.lastIndex() > 0) context_.setLastIndex(context_.lastIndex() - 1);
}

void ErrorService::getContext(OroStringArray& out) {
  out.setLastIndex(0);
  for (int32_t i = 1; i <= context_.lastIndex(); ++i) out.append(context_[i]);
}

void ErrorService::clearContext() { context_.setLastIndex(0); }

bool ErrorService::setActive(bool value) {
  active_ = value;
  return true;
}

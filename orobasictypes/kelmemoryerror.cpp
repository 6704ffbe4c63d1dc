#include "orobasictypes/kelmemoryerror.h"

#include <atomic>
#include <cstdio>
#include <new>

#include "interfaces/IDataStore.h"
#include "interfaces/IGfxRenderer.h"
#include "interfaces/IMemChecker.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/kelmemory.h"
#include "orobasictypes/kelmemoryservices.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oroofstream.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/messagebox.h"
#include "platform/process.h"

namespace {

constexpr int32_t kilobyte = 1024;
constexpr int64_t managerPage = 24;  // kilobytes

// Not translated: a look-up would need memory.
constexpr char16_t messageText[] =
    u"While running this function, you have run out of memory.\n"
    u"The application will close. After restarting, please read\n"
    u"the online help about \"Memory Optimization\".";

std::atomic<bool> failing = false;

// While it stands, the next request that is refused ends the process: there is nothing left to tell
// it with.
class FailureInProgress {
 public:
  FailureInProgress() {
    if (failing.exchange(true)) platform::endProcess(-1);
  }
  ~FailureInProgress() { failing = false; }
  FailureInProgress(const FailureInProgress&) = delete;
  FailureInProgress& operator=(const FailureInProgress&) = delete;
};

// Nothing is drawn while somebody looks at the message.
class RendererPause {
 public:
  RendererPause() : renderer_(kelmemory::renderer()) {
    if (renderer_ != nullptr) renderer_->suspend();
  }
  ~RendererPause() {
    if (renderer_ != nullptr) renderer_->resume();
  }
  RendererPause(const RendererPause&) = delete;
  RendererPause& operator=(const RendererPause&) = delete;

 private:
  IGfxRenderer* const renderer_;
};

// Lines of the record in a buffer of its own, so that writing it takes as little memory as may be.
class Record {
 public:
  void line(const char* label, int64_t value, const char* unit) {
    add(std::snprintf(text_ + size_, sizeof text_ - size_, "%s%7llu%s\n", label,
                      static_cast<unsigned long long>(value), unit));
  }
  void line(const char* text) {
    add(std::snprintf(text_ + size_, sizeof text_ - size_, "%s\n", text));
  }
  const char* text() const { return text_; }

 private:
  void add(int length) { size_ += static_cast<size_t>(length); }

  char text_[1024] = {};  // twice what a record takes
  size_t size_ = 0;
};

void addSystemFigures(Record& record) {
  int64_t free = 0;
  int64_t total = 0;
  int64_t swapFree = 0;
  int64_t swapTotal = 0;
  kelMemoryStatus(free, total, swapFree, swapTotal, kilobyte);
  record.line("system free:      ", free, "k");
  record.line("system total:     ", total, "k");
  record.line("swap free:        ", swapFree, "k");
  record.line("swap total:       ", swapTotal, "k");
}

void addManagerFigures(Record& record) {
  OroMM::IOroMManager* const manager = kelmemory::manager();
  if (manager == nullptr) {
    record.line("oromm not available");
    return;
  }
  record.line("oromm core now:   ", manager->CorePages() * managerPage, "k");
  record.line("oromm core limit: ", manager->CoreLimit() * managerPage, "k");
  record.line("oromm swap now:   ", manager->SwapPages() * managerPage, "k");
  record.line("oromm swap limit: ", manager->SwapLimit() * managerPage, "k");
}

OroPath recordPath() {
  SPtr<IDataStore> store;
  OroPath path;
  if (store) path = store->GetOroString("Directories/Logs Directory", nullptr);
  path.append("memory.log");
  return path;
}

bool wantsErrorService() {
  SPtr<IDataStore> store;
  return store && store->GetInt("Memory/UseErrorService", nullptr) != 0;
}

void show(IOroErrorService* errors) {
  const RendererPause pause;
  if (errors != nullptr) {
    errors->report(OroString(messageText, 0), 1, KelCString::borrow("realloc"));
  } else {
    platform::messageBox(u"Out of Memory", messageText, platform::boxOk);
  }
}

}  // namespace

void kelWriteMemoryLog(int64_t attemptedBytes) {
  Record record;
  if (attemptedBytes != 0) {
    record.line("attempted:        ", attemptedBytes, "b");
    record.line("");
  }
  addSystemFigures(record);
  record.line("");
  addManagerFigures(record);
  record.line("");
  // The line ends of the system: it is read by people.
  OroOfstream file(recordPath(), OroOpenMode::out | OroOpenMode::truncate);
  if (file.good()) file << record.text();
  file.close();
}

bool kelReportMemoryError(int32_t code) {
  const bool useErrorService = wantsErrorService();
  IPtr<IOroErrorService> errors;
  if (useErrorService) errors = SPtr<IOroErrorService>();
  const bool isSilent = useErrorService && !errors;
  if (!isSilent && code >= kKelMemoryOther && code <= kKelTempFileNotOpened) show(errors.get());
  return false;
}

void kelFatalMemoryError(int32_t code) {
  try {
    const FailureInProgress failure;
    kelReportMemoryError(code);
  } catch (const std::bad_alloc&) {
    // Not even the message could be made.
  }
  platform::endProcess(-1);
}

void kelFailMemory(int32_t code, int64_t attemptedBytes) {
  try {
    const FailureInProgress failure;
    kelWriteMemoryLog(attemptedBytes);
    kelReportMemoryError(code);
  } catch (const std::bad_alloc&) {
    // Not even the message could be made.
  }
  platform::endProcess(-1);
}

void kelOutOfMemory(int64_t attemptedBytes) { kelFailMemory(kKelMemoryExhausted, attemptedBytes); }

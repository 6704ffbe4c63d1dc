#include "orobasictypes/orobaselibrary.h"

#include <mutex>

#include "interfaces/IKelFileMagic.h"
#include "interfaces/ILogFile.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oroobject.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "orobasictypes/testaccess.h"
#include "platform/sync.h"

namespace {

struct CleanupList {
  platform::CriticalSection lock;  // guards objects
  OroArray<OroObject*> objects;    // owned, the newest last
};

// Never destroyed: objects may be registered until the very end.
CleanupList& cleanupList() {
  static auto& list = *new CleanupList;
  return list;
}

IPtr<ILogFile>& keptLogFile() {
  static auto& kept = *new IPtr<ILogFile>;
  return kept;
}

void deleteRegisteredObjects() {
  CleanupList& list = cleanupList();
  const std::lock_guard<platform::CriticalSection> guard(list.lock);
  while (!list.objects.isEmpty()) {
    OroObject* const object = list.objects.last();
    list.objects.pop();  // first: a destructor may register more
    delete object;
  }
  list.objects.clear();
}

}  // namespace

void oroRegisterCleanup(OroObject* object) {
  CleanupList& list = cleanupList();
  const std::lock_guard<platform::CriticalSection> guard(list.lock);
  list.objects.add(object);
}

void oroBaseLibraryEnd() {
  deleteRegisteredObjects();
  {
    SPtr<IKelFileMagic> magic;
    if (magic) magic->end();
  }
  oroStringCleanup();
  kelPoolShutdown();
}

ILogFile* oroLogFile() {
  IPtr<ILogFile>& kept = keptLogFile();
  if (!kept) {
    SPtr<ILogFile> found;
    kept = found.get();
  }
  return kept.get();
}

void testaccess::resetLogFile() { keptLogFile() = nullptr; }

#include "orobasictypes/kelmemoryservices.h"

#include <mutex>

#include "interfaces/IGfxRenderer.h"
#include "interfaces/IMemChecker.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/oroserviceonce.h"
#include "orobasictypes/testaccess.h"

namespace {

using ManagerLink = OroServiceOnce<OroMM::IOroMManager>;
using RendererLink = OroServiceOnce<IGfxRenderer>;

struct CheckerLink {
  platform::CriticalSection lock;  // guards checker
  IPtr<IMemChecker> checker;

  IMemChecker* get() {
    const std::lock_guard hold(lock);
    if (!checker) {
      SPtr<IMemChecker> found;
      checker = found.get();
    }
    return checker.get();
  }
};

}  // namespace

namespace kelmemory {

OroMM::IOroMManager* manager() { return immortal<ManagerLink>().get(); }

IGfxRenderer* renderer() { return immortal<RendererLink>().get(); }

IMemChecker* activeChecker() {
  IMemChecker* const checker = immortal<CheckerLink>().get();
  return checker != nullptr && checker->IsActive() ? checker : nullptr;
}

}  // namespace kelmemory

void testaccess::resetMemoryServices() {
  kelmemory::immortal<ManagerLink>().reset();
  kelmemory::immortal<RendererLink>().reset();
  kelmemory::immortal<CheckerLink>().checker = nullptr;
}

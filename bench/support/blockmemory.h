// BlockMemory: this program's split arrays take their blocks from the memory manager that ships, so
// that what is measured lies in memory as a user's points do.
//
//   const bench::BlockMemory memory;  // for the life of this object
//   bench::Ratios ratios(argc, argv);
//
// It is the broker of the program too; services can be added to it. No split array may outlive it.
#pragma once

#include "components/memorymanager/memorymanager.h"
#include "interfaces/IOroMManager.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/testaccess.h"
#include "tests/support/fakebroker.h"

namespace bench {

class BlockMemory {
 public:
  BlockMemory() {
    broker.registerService(KelCString::borrow(OroMM::IOroMManager::interfaceName()),
                           manager_.get());
    testaccess::resetArrayManager();
  }
  ~BlockMemory() { testaccess::resetArrayManager(); }
  BlockMemory(const BlockMemory&) = delete;
  BlockMemory& operator=(const BlockMemory&) = delete;

  tests::FakeBroker broker;

 private:
  const IPtr<MemoryManager> manager_ = new MemoryManager;
};

}  // namespace bench

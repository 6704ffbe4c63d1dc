#include "platform/memoryfigures.h"

#include "platform/systempart.h"

namespace platform {

bool (*memoryFiguresHook)(MemoryFigures&) = nullptr;
bool (*workingSetHook)(WorkingSet&) = nullptr;

bool memoryFigures(MemoryFigures& figures) {
  return memoryFiguresHook != nullptr ? memoryFiguresHook(figures) : systemMemoryFigures(figures);
}

bool workingSet(WorkingSet& figures) {
  return workingSetHook != nullptr ? workingSetHook(figures) : systemWorkingSet(figures);
}

}  // namespace platform

#include "orobasictypes/heapmemoryusage.h"

#include "orobasictypes/kelmemoryservices.h"

OroMutex& kelHeapUsageMutex() { return kelmemory::immortal<OroMutex>(); }

#include "orobasictypes/orosharedsymbols.h"

#include "platform/sharedlibrary.h"

bool oroShareSymbols(const void* address) { return platform::shareSymbols(address); }

#include "components/kit/oroclcbinary.h"

#include "orobasictypes/kelrealloc.h"

OroClcBinary::~OroClcBinary() { kelFree(block_); }

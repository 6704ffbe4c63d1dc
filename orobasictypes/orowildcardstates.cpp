#include "orobasictypes/orowildcardstates.h"

#include <cstring>
#include <utility>

#include "orobasictypes/kelrealloc.h"

OroWildcardStates::OroWildcardStates(int32_t patternLength) : size_(patternLength + 1) {
  kelMalloc(current_, 1, size_);
  kelMalloc(previous_, 1, size_);
  clear();
}

OroWildcardStates::~OroWildcardStates() {
  kelFree(previous_);
  kelFree(current_);
}

void OroWildcardStates::clear() {
  std::memset(current_, 0, static_cast<size_t>(size_));
  std::memset(previous_, 0, static_cast<size_t>(size_));
}

void OroWildcardStates::advance() {
  std::swap(current_, previous_);
  std::memset(current_, 0, static_cast<size_t>(size_));
}

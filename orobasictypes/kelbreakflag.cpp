#include "orobasictypes/kelbreakflag.h"

#include <atomic>

#include "platform/process.h"

namespace {

std::atomic<bool> breakEnabled = platform::environment("ORO_BREAK_ENABLED") != "0";

}  // namespace

bool kelBreakEnabled() { return breakEnabled; }

void kelSetBreakEnabled(bool enabled) { breakEnabled = enabled; }

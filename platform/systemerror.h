#pragma once

// Why the system refused a call, in its own words. The system keeps the last reason of each thread
// until another call fails, so clear it right before the call that counts.
// Any thread, each for its own calls.
//
//   platform::clearSystemError();
//   if (!platform::renameFile(from, to)) show(platform::systemErrorText());

#include <string>

namespace platform {

/// Forgets why an earlier call failed.
void clearSystemError();

/// What the system says of the call that failed last, as "No space left on device", with no line
/// end; empty if none failed.
std::u16string systemErrorText();

}  // namespace platform

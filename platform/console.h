#pragma once

// The console of the process that started this one. A console handle is opaque and belongs to
// the system; null means that there is no console, and then all calls do nothing. Linux has none:
// standard streams reach the terminal by themselves.
// Main thread only. Flush a stream before the attributes change, or the colour meets other text.

#include <cstdint>
#include <string_view>

namespace platform {

/// Attaches the parent's console for standard output (0) or standard error (1): that stream then
/// writes to the console. Null if there is none. The handle is that of the other stream; readers
/// of the console know it so.
void* attachConsole(int streamNumber);

/// The screen colours of the console, 0 without one.
std::uint16_t consoleAttributes(void* console);
void setConsoleAttributes(void* console, std::uint16_t attributes);

/// Lets go of the console that attachConsole gave.
void freeConsole(void* console);

/// Attaches the parent's console, writes the text there and makes it the standard output.
/// False if there is no console. The text is no format.
bool writeUsageToConsole(std::string_view text);
/// Replaces writeUsageToConsole.
extern bool (*writeUsageToConsoleHook)(std::string_view text);

}  // namespace platform

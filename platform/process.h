#pragma once

// The process itself: its executable and modules, its arguments and environment, its end.
// Texts are handed out as copies, except NarrowArguments, which lives as long as the process.
// Call from the main thread unless told otherwise.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Path of the executable in the system's own form ("/" on Linux), as a buffer of maxUnits
/// units would hold it: cut to maxUnits - 1. Empty if the system does not tell.
std::u16string executablePath(int maxUnits);

/// Paths of the loaded modules in the system's order and form, the executable first; at most
/// maxModules, each cut like executablePath. Empty if the system does not tell.
std::vector<std::u16string> modulePaths(int maxModules, int maxUnits);

std::uint32_t processId();

/// The command line as narrow text: values[count] is null. Never freed.
struct NarrowArguments {
  int count;
  char** values;
};

/// The arguments of the process. Takes those of main: Linux uses their bytes as they stand,
/// Windows splits its own command line and converts each argument to the ANSI code page, where
/// characters outside it are lost.
NarrowArguments narrowArguments(int argc, char** argv);

/// The instance handle that the system gave the executable; null on Linux.
void* systemInstanceHandle();
/// Keeps the handle for whoever makes windows later.
void storeInstanceHandle(void* handle);
/// What storeInstanceHandle kept; null at first.
void* instanceHandle();

/// An environment variable as UTF-8; nothing if it is not set. Any thread, while nobody sets one.
std::optional<std::string> environment(std::string_view name);
/// The same as UTF-16.
std::optional<std::u16string> environmentWide(std::u16string_view name);
/// Sets a variable, or removes it when there is no value. For tests and for start-up.
bool setEnvironment(std::string_view name, std::optional<std::string_view> value);

/// Ends the process with its exit handlers, as std::exit; on the spot if that is under way.
[[noreturn]] void endProcess(int status);
/// Ends the process on the spot, as std::_Exit.
[[noreturn]] void endProcessNow(int status);
/// Replacements for the two; a replacement must not return (it throws, say).
extern void (*endProcessHook)(int status);
extern void (*endProcessNowHook)(int status);

/// Lets the C library show its run-time errors in a message box; nothing on Linux.
void reportRuntimeErrorsInBox();

/// Reads the version block of a module file into a zeroed buffer of at least 4096 bytes.
/// False, with an untouched buffer, if there is none, and always on Linux.
bool versionBlock(std::u16string_view path, std::vector<std::uint8_t>& block);

/// A write to a pipe that nobody reads fails instead of ending the process.
void ignoreBrokenPipes();

/// A write beyond the size that the user's session allows a file fails instead of ending the
/// process; nothing on Windows, which has no such limit.
void ignoreFileSizeLimit();

/// Puts a stream that leads nowhere in the place of each standard stream that the process was
/// started without, so that no file takes its place. Call before anything is opened; nothing on
/// Windows, where files take no such places.
void fillStandardStreams();

}  // namespace platform

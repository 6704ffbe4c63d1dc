#pragma once

// What win32/ and posix/ provide for the shared sources of this folder, where only a piece of an
// operation differs between the systems. Nobody outside this folder includes it.

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/knownfolders.h"
#include "platform/memoryfigures.h"
#include "platform/network.h"
#include "platform/osregistry.h"

namespace platform {

/// Shows a real box and gives its answer; 0 or below if it could not be shown.
int showSystemBox(const std::u16string& title, const std::u16string& text, unsigned style);

/// writeUsageToConsole without its hook.
bool writeToParentConsole(std::string_view text);

/// knownFolderPath without its hook.
std::u16string systemKnownFolder(KnownFolder folder);

/// findHost without its hook and its limit; answersEcho without its hook.
bool findSystemHost(const std::string& name, HostAddress& address);
bool systemAnswersEcho(const HostAddress& address, int milliseconds);

/// memoryFigures and workingSet without their hooks.
bool systemMemoryFigures(MemoryFigures& figures);
bool systemWorkingSet(WorkingSet& figures);

/// openTemporaryDescriptor without its hook.
int systemTemporaryDescriptor(std::u16string_view path);

/// The registry that this system has; lives as long as the process.
RegistryStore& systemRegistryStore();

}  // namespace platform

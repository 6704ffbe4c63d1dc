#pragma once

// A file for one process alone that goes with its descriptor, however the process ends.
// Any thread, while nobody sets the hook.

#include <string_view>

namespace platform {

/// Opens a new binary file for reading and writing that is deleted when it is closed: on Linux it
/// loses its name at once and only the user may read it. A descriptor for the operations of
/// descriptor.h, -1 on failure; on Linux also when something has the name already.
int openTemporaryDescriptor(std::u16string_view path);

/// Replaces the opening.
extern int (*temporaryFileHook)(std::u16string_view path);

}  // namespace platform

#pragma once

// Where the system wants temporary files. Any thread, while nobody sets the environment.

#include <string>

namespace platform {

/// The path in the "\" form, without a separator at the end. Never empty; it need not exist.
std::u16string temporaryFolder();

/// Gives the session the variable TEMP where it has neither TEMP nor TMP, as sessions on Linux have
/// not: TMPDIR, else the user's cache folder, which lies on a disk and is the user's own, else the
/// system's temporary folder. Without it the program would keep its files in the working directory.
/// Before other threads run.
void nameTemporaryFolder();

}  // namespace platform

#pragma once

// Where the system wants temporary files. Any thread, while nobody sets the environment.

#include <string>

namespace platform {

/// The path in the "\" form, without a separator at the end. Never empty; it need not exist.
std::u16string temporaryFolder();

}  // namespace platform

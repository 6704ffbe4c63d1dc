#pragma once

// Where a test finds the tree that it was built in: the staged product, the component libraries
// made for tests, the sources. The paths are in the form of the system that the test runs on (under
// Wine with its drive). Any thread.

#include <filesystem>

namespace tests {

/// Folder of the executable `cowl` with its component libraries and description.
std::filesystem::path stageDir();

/// Folder of the component libraries that exist for tests alone.
std::filesystem::path testLibsDir();

/// Top of the source tree, for golden files below tests/.
std::filesystem::path sourceDir();

}  // namespace tests

#pragma once

// A made-up coloured terrain for the demo, the tests and the benchmarks: survey coordinates in
// metres with hills and a height-dependent colour. The same index gives the same line on every
// system, so that files made anywhere compare equal. Free functions without state; any thread.

#include <cstdint>
#include <string>

namespace samplepoints {

/// Appends the line of the point: "x y z r g b" and a line feed. Coordinates have two decimals and
/// lie in 637000..638024, 849000 and up, 400..460; colours are 0 to 255.
void appendLine(std::string& text, uint64_t index);

/// The lines of the points 0 to count - 1.
std::string lines(uint64_t count);

}  // namespace samplepoints

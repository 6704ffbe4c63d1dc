// The images that the executable carries: the PNG files of the folder images/, whose bytes the
// build turns into constant data. Their sizes are fixed; user interface libraries know them.
#pragma once

#include <cstdint>

namespace cowlimages {

extern const uint8_t atelier110[32425];
extern const uint8_t atelier110_cowl[688];

}  // namespace cowlimages

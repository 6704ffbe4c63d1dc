// For builds without libpng.

#include "components/points/commands/pngwriter.h"

bool PngWriter::isThere() { return false; }

bool PngWriter::write(const OroPath&, const std::vector<uint8_t>&, int, int) { return false; }

// Which type a point file is to be saved as, told by its name.
#pragma once

#include "components/points/formats/pointformats.h"

class OroPath;

// By the extension, letter case aside; unknown for one that is not written.
PointFileType pointFileType(const OroPath& path);

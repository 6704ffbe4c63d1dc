// pointInfo: a point file with its format, the number of its points, their bounds and what is known
// of each point.
//
// The file is opened as the application opens it, so that every format of its components is known.
// One thread; needs the components beside the program.
#pragma once

#include "gui/apps/cowlinfo/inforeport.h"

class OroPath;

InfoReport pointInfo(const OroPath& path);

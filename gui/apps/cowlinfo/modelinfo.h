// modelInfo: a model file as a tree of its elements.
//
// Which of an element's bytes are further elements only its owner knows for certain. Shown as such
// is what follows a few bare bytes, ends exactly where the element ends, and has elements in it
// alone; everything else is a number of bytes. Levels and elements are limited. Any thread.
#pragma once

#include "gui/apps/cowlinfo/inforeport.h"

class OroPath;

// Levels and elements beyond these are told as a number, not shown.
inline constexpr int kMostModelLevels = 64;
inline constexpr int kMostModelElements = 100000;

// A file that is no model file, or a broken one, has a problem; what stands in front of the damage
// is shown.
InfoReport modelInfo(const OroPath& path);

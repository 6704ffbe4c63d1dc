// A command-line argument as the person typed it.
//
// The process keeps its arguments as narrow text widened byte by byte, so a letter beyond ASCII
// arrives as units FF80 to FFFF. Take this before an argument is used as a file name or shown.
#pragma once

#include "orobasictypes/orostring.h"

// The argument's bytes read in the system's own encoding: UTF-8 on Linux, the ANSI code page on
// Windows. A text with no widened byte comes back as it is.
OroString oroArgumentText(const OroString& argument);

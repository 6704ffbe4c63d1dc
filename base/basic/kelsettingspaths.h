// Where the settings document of the process is read and written by default.
//
// The arguments "-inifile=" and "-ini_out=" name the two; else the user's own document in the
// directory "userconfig" is both, and where there is none yet, the installed one in the directory
// "config" is read. With "-inifile=" alone nothing is written. Worked out at the first call, when
// the arguments and the directory service must be known, and the same from then on. One thread.
#pragma once

#include "orobasictypes/oropath.h"

struct KelSettingsPaths {
  OroPath read;   // empty when there is none
  OroPath write;  // empty when nothing may be written
};

const KelSettingsPaths& kelSettingsPaths();

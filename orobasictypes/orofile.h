// Files by wide path: temporary names, and the simple calls of the system.
//
//   OroPath name;
//   oroMakeTempName(name);
//   std::FILE* file = oroOpenFile(name, "w+b");
//
// For those who need a C stream or a file's facts. Model files are orofileread.h and
// orofilewrite.h, standard streams oroifstream.h, oroofstream.h and orofstream.h; directories are
// made by OroPath::makeDirectory. Any thread.
#pragma once

#include <cstdint>
#include <cstdio>

#include "platform/filestatus.h"

class OroPath;
class OroString;

// A name for a file of one's own in the temporary folder: that of the setting "Directories/Temp
// Directory", else the directory named "temp", else the system's. Nothing is made; the name is
// taken from the clock and not tested.
void oroMakeTempName(OroPath& out);

// True if the path exists (0), and may be read (4), written (2) or both (6).
bool oroAccess(const OroString& path, int32_t mode);

// As std::fopen. Null also for a mode of more than 255 characters.
std::FILE* oroOpenFile(const OroString& path, const char* mode);

// Removes a file. False if there is none, it is in use or a directory.
bool oroUnlink(const OroString& path);

// False, and nothing stored, if there is no such file.
bool oroStat(const OroString& path, platform::FileStatus& status);

// True if both paths lead to one plain file, by whatever names. A device is a file of its own each
// time it is opened.
bool oroIsSameFile(const OroString& one, const OroString& other);

// Copies all files of a tree, and makes directories that are missing. Files that exist are
// overwritten, links are left out. Ends with false at the first failure; what was copied stays.
bool oroCopyDirectory(const OroPath& from, const OroPath& to);

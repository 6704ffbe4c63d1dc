// IFileUtil: simple questions to the file system, and simple changes in it, for libraries that are
// to work on every system.
//
// It holds nothing. All paths are OroPath; nothing is reported. Any thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IFileDate;
class OroPath;
class OroString;
template <class T>
class OroArray;

class IFileUtil : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IFileUtil"; }

  // True for what is there and is no directory.
  virtual bool isFile(const OroPath& path) = 0;
  virtual bool removeFile(const OroPath& path) = 0;
  // FALSE on success and true on failure; callers rely on it.
  virtual bool renameFile(const OroPath& from, const OroPath& to) = 0;
  // The day of the last change, in UTC. False, and nothing set, for what is not there.
  virtual bool fileDate(const OroPath& path, IFileDate& out) = 0;
  // Appends what is in the directory, relative to it, in no certain order. Mode 1: files, 2:
  // directories, 3: both, 4: entries of every kind. A pattern with wildcards that is not empty
  // limits it, whatever the case of the letters; `recurse` 1 goes into sub-directories.
  virtual void listFiles(const OroPath& directory, OroArray<OroPath>& out, const OroString& pattern,
                         int32_t recurse, int32_t mode) = 0;
  virtual bool isDirectory(const OroPath& path) = 0;
  // Makes the directory and its missing parents. False for one that is there.
  virtual bool makeDirectories(const OroPath& path) = 0;
  // Recursive: with all that is in it; links are removed and not followed.
  virtual bool removeDirectory(const OroPath& path, bool recursive) = 0;
};

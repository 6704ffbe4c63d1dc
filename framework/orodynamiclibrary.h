// OroDynamicLibrary: a shared library in memory.
//
// Whoever loads it unloads it; going away alone leaves the library open. Loading and unloading are
// serialised by the caller.
#pragma once

#include <string>

class OroString;

struct OroDynamicLibrary {
  bool silent = false;     // nobody is told when the library does not load
  void* handle = nullptr;  // of the platform layer; null: not loaded

  // Loads path + extension, or path + the platform's suffix when the extension is empty: first with
  // the library's own folder in the search for others, then plainly, then, for a path with "\", by
  // the bare file name. False, with a report to the error service, when all fail.
  bool load(const OroString& path, const OroString& extension);
  // The address of an exported function, or null.
  void* symbol(const char* name) const;
  void unload();

  // For callers that look through a folder: "*" and the platform's suffix, and a file name with as
  // many units cut off as the suffix has.
  static OroString pattern();
  static OroString withoutSuffix(const OroString& fileName);

 private:
  std::string open(const OroString& name);
  void reportFailure(const OroString& name, const std::string& errorText) const;
};

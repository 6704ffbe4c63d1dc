// OroWholeFile: writes a file so that its name stands for the whole content or for what it stood
// for before, never for a part.
//
//   OroWholeFile file;
//   if (!file.open(path)) return false;
//   file.write(text, length);
//   return file.commit();
//
// The content goes to a temporary file beside the target; commit() brings it to the disk and
// renames it. Without a commit the target is untouched and the temporary file is removed. What is
// no plain file (a device, a pipe) cannot be replaced and is written straight. On Linux a link
// stays and what it leads to is replaced, and the new file has the owner and the rights of the old
// one. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "orobasictypes/orostring.h"

class OroPath;

class OroWholeFile {
 public:
  OroWholeFile() = default;
  ~OroWholeFile() { discard(); }
  OroWholeFile(const OroWholeFile&) = delete;
  OroWholeFile& operator=(const OroWholeFile&) = delete;

  // False when the folder is absent or may not be written, or the target may not.
  bool open(const OroPath& target);

  // Remembers a failure, so that one test at commit() is enough. False once anything failed.
  bool write(const char* bytes, size_t size);

  // True when the target now holds all that was written. Otherwise it is as it was before.
  bool commit();

  // Drops what was written. Harmless after commit().
  void discard();

  // Why the last open(), write() or commit() failed, in the system's words: "No space left on
  // device". Empty when nothing failed and where the system told nothing.
  const OroString& reason() const { return reason_; }

 private:
  bool fail();

  std::FILE* stream_ = nullptr;
  std::u16string target_;
  std::u16string temporary_;
  bool straight_ = false;  // the target is no plain file and is written as it is
  bool failed_ = false;
  OroString reason_;  // of the first failure
};

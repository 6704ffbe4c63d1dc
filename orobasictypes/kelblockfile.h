// KelBlockFile: a block of memory in a temporary file, for the moment in which the heap has no room
// for it. For kelRealloc.
//
// The file lies in the folder for temporary files and is gone when it is closed, at the latest with
// this object. One thread at a time.
#pragma once

#include <cstddef>

class KelBlockFile {
 public:
  KelBlockFile() = default;
  ~KelBlockFile() { close(); }
  KelBlockFile(const KelBlockFile&) = delete;
  KelBlockFile& operator=(const KelBlockFile&) = delete;

  // Makes the file under a new name.
  bool open();
  // False unless all bytes were written.
  bool write(const void* block, size_t bytes);
  // The bytes from the file's start; false unless all were read.
  bool readBack(void* block, size_t bytes);
  void close();

 private:
  int descriptor_ = -1;  // -1 while closed
};

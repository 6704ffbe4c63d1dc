// OroFileReader: reads a file once from front to end in large blocks.
//
//   OroFileReader file;
//   if (!file.open(path)) return false;
//   while (size_t n = file.read(buffer, sizeof buffer)) consume(buffer, n);
//   if (file.failed()) return false;
//
// For importers of text and data files that keep their own buffer. The reader owns the open file
// and closes it when it goes. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

class OroPath;

class OroFileReader {
 public:
  OroFileReader() = default;
  ~OroFileReader() { close(); }
  OroFileReader(const OroFileReader&) = delete;
  OroFileReader& operator=(const OroFileReader&) = delete;

  // False when there is no such file, it is a directory or it may not be read.
  bool open(const OroPath& path);
  void close();

  // Fills up to `size` bytes; 0 at the end of the file and after a failure.
  size_t read(char* buffer, size_t size);

  // True when the system could not deliver what the file holds.
  bool failed() const { return failed_; }
  // Bytes of the whole file as it stood when it was opened; 0 for what has no size (a pipe).
  int64_t size() const { return size_; }

 private:
  std::FILE* stream_ = nullptr;
  int64_t size_ = 0;
  bool failed_ = false;
};

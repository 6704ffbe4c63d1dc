// BinOutputFile: a BinOutput on a file.
//
//   BinOutputFile file(path);
//   file.Write(values, count);
//   return file.FlushAndClose();
//
// Flush() brings the file to the disk. One that does not open gives 0 or false for everything. What
// is near the end of the file is kept in memory, so that going back a little costs no call of the
// system. It owns the stream, also one that it was given, and closes it when it goes; the buffer of
// BinOutput is lost then. One thread at a time.
#pragma once

#include <cstdio>

#include "orobasictypes/binoutput.h"

class OroString;

class BinOutputFile final : public BinOutput {
 public:
  // Makes the file, or empties it.
  explicit BinOutputFile(const OroString& path);
  // From where the stream stands. Null is one that did not open.
  explicit BinOutputFile(std::FILE* stream);
  ~BinOutputFile() override { Close(); }

  bool Flush() override;
  int64_t WriteRaw(const void* buffer, int64_t count) override;
  int64_t ReadRaw(void* buffer, int64_t count) override;
  // -1 for what has no positions (a pipe).
  int64_t Tell() override;
  bool Seek(int64_t offset, bool fromStart) override;
  bool IsGood() override;
  // False also when anything was lost before.
  bool Close() override;

 private:
  enum class Last { seek, read, write };

  bool standAt(int64_t position, Last use);
  int64_t handOver(const void* bytes, int64_t count, int64_t forward);
  bool writeWindow();
  void beginWindow();
  int64_t at() const { return ready_ - window_; }  // where it stands in the window

  std::FILE* stream_ = nullptr;
  uint8_t* window_ = nullptr;  // bytes not yet handed to the stream; null until the first write
  int64_t windowAt_ = -1;      // where the window begins in the file; -1: it has no positions
  int64_t size_ = 0;           // bytes in the window, without those put there since it last moved
  int64_t streamAt_ = -1;      // where the stream stands, -1 when that is not known
  Last last_ = Last::seek;     // what the stream did last
  bool failed_ = false;        // bytes were lost
};

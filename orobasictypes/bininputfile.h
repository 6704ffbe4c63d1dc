// BinInputFile: a BinInput on a file.
//
//   BinInputFile file(path);
//   if (!file.IsGood()) return false;
//
// One that does not open has size 0, and everything of it gives 0 or false. It owns the stream,
// also one that it was given, and closes it when it goes; a given stream is nobody else's from then
// on, since it reads ahead of the values. One thread at a time.
#pragma once

#include <cstdio>

#include "orobasictypes/bininput.h"

class OroString;

class BinInputFile final : public BinInput {
 public:
  explicit BinInputFile(const OroString& path);
  // From where the stream stands. Null is one that did not open.
  explicit BinInputFile(std::FILE* stream);
  ~BinInputFile() override { Close(); }

  int64_t ReadRaw(void* buffer, int64_t count) override;
  // -1 for what has no positions (a pipe).
  int64_t Tell() override;
  bool Seek(int64_t offset, bool fromStart) override;
  bool IsGood() override;
  bool Close() override;

 private:
  void measure();
  int64_t takeAhead(uint8_t* buffer, int64_t count);
  int64_t readStream(void* buffer, int64_t count);
  bool readAhead();
  void dropAhead() { ready_ = readyEnd_ = window_; }

  std::FILE* stream_ = nullptr;
  uint8_t* window_ = nullptr;  // what was read ahead, up to readyEnd_; null until the first read
  int64_t streamAt_ = -1;  // where the stream stands, which is where readyEnd_ ends; -1: nowhere
  int64_t aheadSize_ = 0;  // bytes that the next look ahead takes
  bool failed_ = false;    // the stream could not give what the file holds
};

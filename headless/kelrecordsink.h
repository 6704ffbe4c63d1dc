// KelRecordSink: where the progress records of a run without a user interface go.
//
// The setting chooses a standard stream, a named pipe or a file; an empty setting, a pipe without a
// reader or a file that does not open leave it closed, and then nothing is written. Nothing is
// reported: the run goes on with less reporting. One owner, one thread.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "headless/kelrecord.h"
#include "platform/pipe.h"

class OroString;

class KelRecordSink {
 public:
  KelRecordSink() = default;
  ~KelRecordSink() { close(); }
  KelRecordSink(const KelRecordSink&) = delete;
  KelRecordSink& operator=(const KelRecordSink&) = delete;

  // "stdout" and "stderr" exactly, a pipe name, or else a path; writes the header. Requires:
  // closed.
  void open(const OroString& setting);
  bool isOpen() const { return stream_ != nullptr || pipe_.isOpen(); }

  // A reader sees each record as it is written.
  void write(const KelRecord& record);

  // Writes the trailer and lets go of everything. The standard output is closed for good; standard
  // error stays, since reports may follow. Closing again does nothing.
  void close();

 private:
  void takeStandardStream(int streamNumber, std::FILE* stream);
  void writeText(std::u16string_view text);
  void setColour(KelRecordColour colour);
  void leaveConsole();
  void closeStream();

  void* console_ = nullptr;       // null when no console is attached
  uint16_t savedAttributes_ = 0;  // the console's colours at attach
  platform::PipeSink pipe_;
  std::FILE* stream_ = nullptr;  // ours, or a standard stream
};

#pragma once

// The writing end of a named pipe that somebody else has made. Its name begins with "\\.\pipe\".
// On Linux the rest of the name is a FIFO or socket file in the directory $TMPDIR, or /tmp.
// The sink owns its end and closes it when it goes. One thread at a time.
//
//   platform::PipeSink sink;
//   if (sink.open(u"\\\\.\\pipe\\progress")) sink.write(u"<log>\n");

#include <cstddef>
#include <string_view>

namespace platform {

/// True if the text begins with "\\.\pipe\".
bool namesPipe(std::u16string_view text);

class PipeSink {
 public:
  PipeSink() = default;
  ~PipeSink() { close(); }
  PipeSink(const PipeSink&) = delete;
  PipeSink& operator=(const PipeSink&) = delete;

  /// Opens an existing pipe, closing an earlier one. False if there is none, or no reader.
  bool open(std::u16string_view name);
  bool isOpen() const;

  /// Waits until the reader's side has taken all bytes. False if it is gone or nothing is open.
  bool writeBytes(const void* data, std::size_t size);
  /// The units as little-endian 16-bit words without a terminator.
  bool write(std::u16string_view text);

  void close();

 private:
  struct State;
  State* state_ = nullptr;  // owned; null while closed
};

}  // namespace platform

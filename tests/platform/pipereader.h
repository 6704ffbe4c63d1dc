#pragma once

// The reading end of a pipe that PipeSink can open: made by the constructor, ready for a writer at
// once, gone with the object. For tests only; reading may run in a thread of its own.

#include <string>

namespace tests {

class SinkReader {
 public:
  SinkReader();
  ~SinkReader();
  SinkReader(const SinkReader&) = delete;
  SinkReader& operator=(const SinkReader&) = delete;

  /// The name to give to PipeSink.
  const std::u16string& name() const { return name_; }

  /// Reads until the writer closes its end.
  std::string readAll();

  /// Closes the reading end while a writer may still be there.
  void leave();

 private:
  struct State;
  State* state_;
  std::u16string name_;
};

}  // namespace tests

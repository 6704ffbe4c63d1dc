#pragma once

// The reading end of a named pipe, made by a test for a program that writes its progress there.
// Holds 64 KiB, so that nobody needs to read while the program writes. One thread.
//
//   tests::PipeReader reader("progress");
//   run(... reader.setting() ...);
//   EXPECT_EQ(reader.readAll(), u"<log>\n</log>\n");

#include <string>
#include <string_view>

namespace tests {

class PipeReader {
 public:
  /// Makes a pipe of its own; the name is for people and gets the process's id appended.
  explicit PipeReader(std::string_view name);
  ~PipeReader();
  PipeReader(const PipeReader&) = delete;
  PipeReader& operator=(const PipeReader&) = delete;

  /// The text that names the pipe in a setting or an argument: "\\.\pipe\" and the name.
  const std::string& setting() const { return setting_; }

  /// What was written up to now, as 16-bit units.
  std::u16string readAll();

 private:
  struct End;

  std::string setting_;
  End* end_;  ///< owned
};

/// The units of bytes in little-endian order; an odd byte at the end is dropped.
std::u16string unitsFromBytes(std::string_view bytes);

}  // namespace tests

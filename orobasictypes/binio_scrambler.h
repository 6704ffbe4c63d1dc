// BinIO_Scrambler: changes the bytes of binary files on their way, both ways.
//
//   InstallScrambler(new MyScrambler);  // from now on, for all streams made in this module
//   InstallScrambler(nullptr);          // deletes it
//
// For components that keep their files from being read elsewhere; the system itself installs none.
// It must give back what it took for any cut of the bytes into chunks, since reading cuts other
// than writing. Each module has a scrambler of its own, and a stream keeps to that of the module
// that made it, whichever module reads or writes it. Install it while nobody reads or writes.
#pragma once

#include <cstdint>

class BinIO_Scrambler {
 public:
  virtual ~BinIO_Scrambler() = default;
  // `position` is where the first of the bytes stands in the medium.
  virtual void Scramble(void* buffer, int64_t position, int64_t count) = 0;
  virtual void Unscramble(void* buffer, int64_t position, int64_t count) = 0;
};

// Keeps the scrambler and deletes the one before, unless it is the same.
void InstallScrambler(BinIO_Scrambler* scrambler);

namespace binio {
// What is installed, null for none. Only InstallScrambler changes it.
extern BinIO_Scrambler* scrambler;
}  // namespace binio

// A library with a copy of its own of the binary files, as every component has, for the tests of
// streams that are made in one module and used in another.
#include "tests/orobasictypes/memorymedia.h"

extern "C" {

[[gnu::visibility("default")]] bool otherWrite(BinOutput* output, const int32_t* values,
                                               int64_t count) {
  bool written = true;
  for (int64_t i = 0; i < count; ++i) written = output->Write(values + i, 1) && written;
  return written;
}

[[gnu::visibility("default")]] int64_t otherReadBack(BinOutput* output, void* buffer,
                                                     int64_t count) {
  return output->ReadBack(buffer, count);
}

[[gnu::visibility("default")]] bool otherRead(BinInput* input, int32_t* values, int64_t count) {
  return input->Read(values, count);
}

[[gnu::visibility("default")]] void otherScramble(bool scrambles) {
  InstallScrambler(scrambles ? new tests::FlipScrambler : nullptr);
}

}  // extern "C"

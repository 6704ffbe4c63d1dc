// OroString in binary files; apart from the rest of it, which needs no files.
#include "orobasictypes/bininput.h"
#include "orobasictypes/binoutput.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"

bool OroString::write(BinOutput& output) const {
  return output.Write(reinterpret_cast<const uint16_t*>(wideText()), length());
}

bool OroString::read(BinInput& input) { return read(input, input.GetSize() - input.Tell()); }

bool OroString::read(BinInput& input, int64_t bytes) {
  constexpr int64_t mostUnits = INT32_MAX / int64_t{sizeof(char16_t)} - 1;  // and the terminator
  const int64_t count = bytes > 0 ? bytes / int64_t{sizeof(char16_t)} : 0;
  const int64_t size = input.GetSize();
  const bool fits = size == 0 || bytes <= size - input.Tell();
  if (count > mostUnits || !fits) return false;
  char16_t* units = nullptr;
  kelMalloc(units, sizeof(char16_t), static_cast<int32_t>(count) + 1);
  units[count] = 0;
  const bool whole = input.Read(reinterpret_cast<uint16_t*>(units), count);
  if (whole) assign(units);
  kelFree(units);
  return whole;
}

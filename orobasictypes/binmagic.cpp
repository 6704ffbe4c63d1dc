#include "orobasictypes/binmagic.h"

#include <string>

#include "orobasictypes/bininput.h"
#include "orobasictypes/binoutput.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelrealloc.h"

KelCString BinMagic::GetText() const {
  return KelCString((std::to_string(GetId()) + " " + std::to_string(GetVersion())).c_str());
}

bool BinMagic::Read(BinInput& input, const BinMagic& expected) {
  const bool read = input.Read(&value_, 1);
  if (*this != expected) kelAssertFail("magic_ == magic", "orobasictypes/binio", __LINE__);
  return read;
}

bool BinMagic::ReadMatch(BinInput& input, const BinMagic& expected) {
  return input.Read(&value_, 1) && *this == expected;
}

bool BinMagic::ReadMatchId(BinInput& input) {
  const int32_t before = value_;
  return input.Read(&value_, 1) && value_ >> 8 == before >> 8;
}

bool BinMagic::Write(BinOutput& output) const { return output.Write(&value_, 1); }

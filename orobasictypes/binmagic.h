// BinMagic: the first 32 bits of a saved object, which say what it is (24 bits) and in which
// version of its form (8 bits).
//
//   static constexpr BinMagic kHeader(0x315E97, 2);
//   kHeader.Write(output);
//   ...
//   if (!BinMagic().ReadMatch(input, kHeader)) return false;
//
// A plain value.
#pragma once

#include <cstdint>

class BinInput;
class BinOutput;
class KelCString;

class BinMagic {
 public:
  constexpr BinMagic() = default;
  // The value as it stands, identifier and version together.
  constexpr explicit BinMagic(int32_t value) : value_(value) {}
  // The version is not cut to its byte. A negative identifier is the whole value.
  constexpr BinMagic(int32_t id, int32_t version)
      : value_(id < 0 ? id
                      : static_cast<int32_t>(static_cast<uint32_t>(id) << 8 |
                                             static_cast<uint32_t>(version))) {}

  constexpr int32_t GetValue() const { return value_; }
  // -1 for a negative value.
  constexpr int32_t GetId() const { return value_ < 0 ? -1 : value_ >> 8; }
  // -1 for a negative value.
  constexpr int32_t GetVersion() const { return (value_ & 0xFF) | value_ >> 31; }
  // Identifier, blank, version, both decimal.
  KelCString GetText() const;

  // Each reads the next 32 bits into this one; at the end of the input it is false and this one
  // stays. Read asserts that they are the expected ones and is true for any others too.
  bool Read(BinInput& input, const BinMagic& expected);
  bool ReadMatch(BinInput& input, const BinMagic& expected);  // true if they are the expected ones
  bool ReadMatchId(BinInput& input);  // true if the upper 24 bits are those that it held before
  bool Write(BinOutput& output) const;

  friend constexpr bool operator==(const BinMagic&, const BinMagic&) = default;

 private:
  int32_t value_ = 0;
};

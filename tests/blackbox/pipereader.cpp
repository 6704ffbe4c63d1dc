#include "tests/blackbox/pipereader.h"

namespace tests {

std::u16string unitsFromBytes(std::string_view bytes) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    units += static_cast<char16_t>(low | high << 8);
  }
  return units;
}

}  // namespace tests

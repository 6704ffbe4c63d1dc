#include "gui/apps/main/productversion.h"

#include <algorithm>
#include <cstddef>

#include "platform/process.h"

namespace {

constexpr int kPathRoom = 128;             // units, terminator included
constexpr std::size_t kSearched = 4096;    // bytes of the block
constexpr std::size_t kNameBytes = 30;     // "ProductVersion" and its terminator
constexpr std::size_t kLongestValue = 32;  // units

// Set by the build where executables have no version blocks, null elsewhere.
constexpr const char* kBuildVersion = COWL_VERSION_WITHOUT_BLOCK;

bool nameStandsAt(const std::vector<uint8_t>& block, std::size_t at) {
  constexpr std::u16string_view name = u"ProductVersion";
  for (std::size_t i = 0; i < kNameBytes; ++i) {
    const char16_t unit = i / 2 < name.size() ? name[i / 2] : u'\0';
    if (block[at + i] != (i % 2 == 0 ? unit & 0xff : unit >> 8)) return false;
  }
  return true;
}

}  // namespace

std::optional<std::string> productVersionText() {
  if (kBuildVersion != nullptr) return kBuildVersion;
  std::vector<uint8_t> block;
  if (!platform::versionBlock(platform::executablePath(kPathRoom), block)) return std::nullopt;
  return findProductVersion(block);
}

std::optional<std::string> findProductVersion(const std::vector<uint8_t>& block) {
  const std::size_t end = std::min(block.size(), kSearched);
  for (std::size_t at = 0; at + kNameBytes <= end;) {
    if (block[at] != 'P') {
      ++at;
    } else if (!nameStandsAt(block, at)) {
      at += 2;  // a letter at an odd place right in front hides the name; kept
    } else {
      std::string value;
      for (std::size_t i = at + kNameBytes; i < block.size() && value.size() < kLongestValue;
           i += 2) {
        if (block[i] == 0) break;
        value += static_cast<char>(block[i]);
      }
      return value;
    }
  }
  return std::nullopt;
}

std::string displayVersionOf(std::string_view version) {
  std::size_t end = version.find('.');
  if (end == version.npos) end = version.find(',');
  return std::string(version.substr(0, end));
}

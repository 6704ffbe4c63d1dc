// The version of the product, as the executable itself tells it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The text of the executable's version block, or of the build where the system has no such blocks.
// Nothing when the block cannot be read; a path of 128 units or more is not even tried whole.
std::optional<std::string> productVersionText();

// The value of "ProductVersion" in the first 4096 bytes of a version block, at most 32 characters.
std::optional<std::string> findProductVersion(const std::vector<uint8_t>& block);

// What comes before the first ".", or before the first "," of a text without "."; else the whole.
std::string displayVersionOf(std::string_view version);

#pragma once

// The text form of a registry's root, which docs/formats/registry-text.md describes. Pure
// functions, any thread.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/registrytree.h"

namespace platform {

inline constexpr std::size_t largestRegistryText = 8u << 20;  // bytes
inline constexpr std::size_t mostRegistryKeys = 65536;        // of one text

/// Nothing if the text does not follow the form to its end.
std::optional<RegistryNode> parseRegistryText(std::string_view text);

/// Keys and values in the order of their names.
std::string writeRegistryText(const RegistryNode& root);

/// Whether the text of that tree is within the limits of parseRegistryText.
bool isReadableRegistryText(std::string_view text, const RegistryNode& root);

}  // namespace platform

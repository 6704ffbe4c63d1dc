#pragma once

// Keys and values of a registry in memory, and the rules of names that all registries of ours
// share. A plain value; one thread at a time.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

inline constexpr std::size_t longestRegistryKeyName = 255;      // units
inline constexpr std::size_t longestRegistryValueName = 16383;  // units
inline constexpr std::size_t deepestRegistryLevel = 512;        // a root is level 0

/// The bits of access rights that an operation asks for.
inline constexpr std::uint32_t registryMayQuery = 1;
inline constexpr std::uint32_t registryMaySet = 2;
inline constexpr std::uint32_t registryMayCreate = 4;

/// The form in which names are compared: ASCII letters in lower case.
std::u16string foldedRegistryName(std::u16string_view name);

/// The names in a key path with "\"; empty ones between separators don't count. Nothing if a name
/// is longer than any key may have.
std::optional<std::vector<std::u16string>> splitRegistryPath(std::u16string_view path);

struct RegistryValue {
  std::u16string name;  // as first written
  std::uint32_t type = 0;
  std::string data;

  /// Stores what is asked for, by the rules of RegistryStore::queryValue.
  std::int32_t handOut(std::uint32_t* outType, void* outData, std::uint32_t* size) const;
  bool holds(std::uint32_t otherType, std::string_view otherData) const {
    return type == otherType && data == otherData;
  }
};

struct RegistryNode {
  std::u16string name;                                           // as first written
  std::map<std::u16string, std::unique_ptr<RegistryNode>> keys;  // by folded name
  std::map<std::u16string, RegistryValue> values;                // by folded name

  /// Null if there is none.
  RegistryNode* child(std::u16string_view childName) const;
  /// The key of that name, made if it is missing.
  RegistryNode& childMade(std::u16string_view childName);
  /// Null if there is none.
  const RegistryValue* value(std::u16string_view valueName) const;
  /// Replaces type and data; a value that is there keeps the spelling of its name.
  void set(std::u16string_view valueName, std::uint32_t type, std::string_view data);
};

}  // namespace platform

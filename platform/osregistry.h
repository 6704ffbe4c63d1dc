#pragma once

// The operating system's registry: keys with typed values below two roots. Windows has its own;
// elsewhere two text files stand in (fileregistry.h). Another store can take its place
// (setRegistryStore).
// Names are compared without regard to case; a key's name may be a path with "\".
// A key that was opened or created is closed by its caller. Calls give a status, 0 for success.
// Main thread only.

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A key that is open; a root is always open.
using RegistryKey = void*;

enum class RegistryRoot { currentUser, localMachine };

/// Statuses, with the numbers of the system.
inline constexpr std::int32_t registryOk = 0;
inline constexpr std::int32_t registryNotFound = 2;
inline constexpr std::int32_t registryAccessDenied = 5;
inline constexpr std::int32_t registryBadKey = 6;
inline constexpr std::int32_t registryBadParameter = 87;
inline constexpr std::int32_t registryMoreData = 234;
inline constexpr std::int32_t registryDamaged = 1015;
inline constexpr std::int32_t registryIoFailed = 1016;

/// Types of values.
inline constexpr std::uint32_t registryTypeNone = 0;
inline constexpr std::uint32_t registryTypeText = 1;
inline constexpr std::uint32_t registryTypeDword = 4;

/// Access rights.
inline constexpr std::uint32_t registryRead = 0x20019;
inline constexpr std::uint32_t registryWrite = 0x20006;
inline constexpr std::uint32_t registryFullAccess = 0xF003F;

/// What a registry can do. All sizes are in bytes; texts in data are UTF-16 with a terminator.
class RegistryStore {
 public:
  virtual ~RegistryStore() = default;
  virtual RegistryKey root(RegistryRoot which) = 0;
  /// Opens an existing key below parent; an empty name opens parent once more.
  virtual std::int32_t openKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                               RegistryKey& out) = 0;
  /// Opens a key, making it and those on the way to it where missing.
  virtual std::int32_t createKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                                 RegistryKey& out) = 0;
  /// Reads a value. type and data may be null. size is the buffer's size before and the value's
  /// size after the call; a buffer that is too small gives registryMoreData and is left alone,
  /// a null buffer gives success and the size. size may be null only if data is.
  virtual std::int32_t queryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                                  void* data, std::uint32_t* size) = 0;
  virtual std::int32_t setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                const void* data, std::uint32_t size) = 0;
  /// Removes a key with all below it.
  virtual std::int32_t removeTree(RegistryKey parent, std::u16string_view name) = 0;
  virtual std::int32_t closeKey(RegistryKey key) = 0;
};

/// The store in use: the system's own unless another was set.
RegistryStore& registryStore();
/// Puts another store in place and returns the one before; null means the system's own. The
/// store stays the caller's.
RegistryStore* setRegistryStore(RegistryStore* store);

RegistryKey registryRoot(RegistryRoot which);

/// The operations on the store in use, with wide and with narrow names. The narrow forms of
/// the value calls also turn texts (type 1) to and from narrow text.
std::int32_t registryOpenKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                             RegistryKey& out);
std::int32_t registryOpenKey(RegistryKey parent, std::string_view name, std::uint32_t access,
                             RegistryKey& out);
std::int32_t registryCreateKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                               RegistryKey& out);
std::int32_t registryCreateKey(RegistryKey parent, std::string_view name, std::uint32_t access,
                               RegistryKey& out);
std::int32_t registryQueryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                                void* data, std::uint32_t* size);
std::int32_t registryQueryValue(RegistryKey key, std::string_view name, std::uint32_t* type,
                                void* data, std::uint32_t* size);
std::int32_t registrySetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                              const void* data, std::uint32_t size);
std::int32_t registrySetValue(RegistryKey key, std::string_view name, std::uint32_t type,
                              const void* data, std::uint32_t size);
std::int32_t registryRemoveTree(RegistryKey parent, std::u16string_view name);
std::int32_t registryCloseKey(RegistryKey key);

/// Reads a text value below a root in one go. False if the key or the value is missing or is no
/// text.
bool registryReadText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                      std::u16string& out);

}  // namespace platform

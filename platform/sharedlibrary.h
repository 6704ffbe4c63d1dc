#pragma once

// Loading of component libraries. A library is an opaque pointer, owned by whoever opened it
// until closeLibrary. Names are paths in the "\" form or bare file names.
// Callers serialise opening and closing; symbols may be looked up from any thread.

#include <string>
#include <string_view>

namespace platform {

/// What the file of a component library ends in: ".dll" or ".so".
const char16_t* librarySuffix();

/// How dependent libraries are looked for: beside the library, or only where the system looks.
/// On Linux the library itself says so, and the two are the same.
enum class LibrarySearch { alteredPath, plain };

/// Opens a library, null on failure. A bare name is looked for in the library directory first.
/// On failure errorText, if given, becomes "0x", the error number in hexadecimal, ":" and the
/// system's message, at most 254 bytes of it; on Linux a text that stands there already is left
/// when a bare name is not found. A file that is cut short is a failure like any other.
void* openLibrary(std::u16string_view name, LibrarySearch how, std::string* errorText = nullptr);

/// The address of an exported symbol, null if the library has none of that name.
void* librarySymbol(void* library, const char* name);

/// Closes a library; null does nothing.
void closeLibrary(void* library);

/// Makes the symbols of the loaded library that holds this address known to libraries that are
/// opened later, as an interpreter's own extension libraries need it. False when the system does
/// not know the address; on Windows, where libraries name what they take symbols from, always true.
bool shareSymbols(const void* address);

/// Where libraries opened by bare name, and those that others depend on, are looked for besides
/// the system's places. On Linux for bare names only. Empty takes it back.
void setLibraryDirectory(std::u16string_view directory);

/// For its life the system shows no box for a damaged disk and, if silent, none for a library
/// that does not load. Nothing on Linux.
class LibraryErrorMode {
 public:
  explicit LibraryErrorMode(bool silent);
  ~LibraryErrorMode();
  LibraryErrorMode(const LibraryErrorMode&) = delete;
  LibraryErrorMode& operator=(const LibraryErrorMode&) = delete;

 private:
  unsigned before_;  // the mode that is put back
};

}  // namespace platform

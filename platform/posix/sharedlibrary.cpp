#include "platform/sharedlibrary.h"

#include <cerrno>
#include <cstdio>

#include "platform/files.h"
#include "platform/posix/posixgate.h"
#include "platform/text.h"

namespace platform {
namespace {

std::string libraryDirectory;  // where bare names are looked for first, in the system's form

void setErrorText(std::string* errorText, int number, std::string_view message) {
  constexpr std::size_t longestMessage = 254;
  if (errorText == nullptr) return;
  char head[16];
  std::snprintf(head, sizeof head, "0x%x:", static_cast<unsigned>(number));
  *errorText = head;
  errorText->append(message.substr(0, longestMessage));
}

bool isBareName(std::string_view name) { return name.find('/') == name.npos; }

// A file that lies in the library directory is the one that is meant, also if it does not load.
std::string fileToOpen(const std::string& name) {
  if (!isBareName(name) || libraryDirectory.empty()) return name;
  const std::string beside = libraryDirectory + "/" + name;
  return access(beside.c_str(), F_OK) == 0 ? beside : name;
}

// The loader gives a message and no number: a file that cannot be read has its own, and one that
// can is no library.
int errorNumberOf(const std::string& file) {
  if (isBareName(file)) return ENOENT;
  return access(file.c_str(), R_OK) != 0 ? errno : ENOEXEC;
}

}  // namespace

const char16_t* librarySuffix() { return u".so"; }

void* openLibrary(std::u16string_view name, LibrarySearch, std::string* errorText) {
  const std::string systemName = toSystemPath(name);
  if (systemName.empty()) {  // to the system this would be the program itself
    setErrorText(errorText, ENOENT,
                 toUtf8Lossy(name) + ": cannot open shared object file: No such file or directory");
    return nullptr;
  }
  const std::string file = fileToOpen(systemName);
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* message = dlerror();
    setErrorText(errorText, errorNumberOf(file), message != nullptr ? message : "");
  }
  return library;
}

void* librarySymbol(void* library, const char* name) {
  return library == nullptr ? nullptr : dlsym(library, name);
}

void closeLibrary(void* library) {
  if (library != nullptr) dlclose(library);
}

bool shareSymbols(const void* address) {
  Dl_info info;
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return false;
  // The library stays: what uses its symbols is never told that it goes.
  return dlopen(info.dli_fname, RTLD_NOW | RTLD_GLOBAL | RTLD_NOLOAD) != nullptr;
}

void setLibraryDirectory(std::u16string_view directory) {
  libraryDirectory = toSystemPath(directory);
}

LibraryErrorMode::LibraryErrorMode(bool) : before_(0) {}

LibraryErrorMode::~LibraryErrorMode() = default;

}  // namespace platform

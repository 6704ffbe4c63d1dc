#include "platform/sharedlibrary.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

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

bool readAt(int file, void* out, std::size_t size, std::uint64_t place) {
  auto* to = static_cast<char*>(out);
  while (size > 0) {
    const ssize_t got = pread(file, to, size, static_cast<off_t>(place));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    to += got;
    place += static_cast<std::uint64_t>(got);
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

std::string cutShort(std::uint64_t size) {
  return "the file is cut short: it ends after " + std::to_string(size) + " bytes";
}

// What is wrong with the parts of the file that the loader would map; empty when nothing is.
std::string flawOfParts(int file, std::uint64_t size, const Elf64_Ehdr& header) {
  if (header.e_phentsize != sizeof(Elf64_Phdr)) return "the file has no table of its parts";
  const std::uint64_t table = header.e_phnum * sizeof(Elf64_Phdr);
  if (header.e_phoff > size || table > size - header.e_phoff) return cutShort(size);
  std::vector<Elf64_Phdr> parts(header.e_phnum);
  if (!readAt(file, parts.data(), table, header.e_phoff)) return "the file cannot be read";
  for (const Elf64_Phdr& part : parts) {
    if (part.p_type != PT_LOAD) continue;
    if (part.p_offset > size || part.p_filesz > size - part.p_offset) return cutShort(size);
  }
  return {};
}

std::string flawOf(int file) {
  struct stat status;
  if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return "this is no plain file";
  const auto size = static_cast<std::uint64_t>(status.st_size);
  Elf64_Ehdr header = {};
  if (!readAt(file, &header, std::min<std::uint64_t>(size, sizeof header), 0)) {
    return "the file cannot be read";
  }
  if (size == 0) return "the file is empty";
  if (std::memcmp(header.e_ident, ELFMAG, std::min<std::uint64_t>(size, SELFMAG)) != 0) {
    return "the file is no library";
  }
  if (size < sizeof header) return cutShort(size);
  const unsigned char* const kind = header.e_ident;
  if (kind[EI_CLASS] != ELFCLASS64 || kind[EI_DATA] != ELFDATA2LSB ||
      header.e_machine != EM_X86_64) {
    return "the library is made for machines of another kind";
  }
  return flawOfParts(file, size, header);
}

// The loader maps what the file's own table says and touches it. Where a file has lost its end the
// process would end there, so files are looked at first. A file that does not open has no flaw
// here: the loader has the words for that.
std::string flawOfFile(const std::string& name) {
  if (isBareName(name)) return {};
  const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return {};
  std::string flaw = flawOf(file);
  ::close(file);
  return flaw;
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
  const std::string flaw = flawOfFile(file);
  if (!flaw.empty()) {
    setErrorText(errorText, ENOEXEC, flaw + " (" + file + ")");
    return nullptr;
  }
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  // That a bare name is nowhere says less than why the file that was meant did not load.
  const bool isTold = isBareName(file) && errorText != nullptr && !errorText->empty();
  if (library == nullptr && !isTold) {
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

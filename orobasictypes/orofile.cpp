#include "orobasictypes/orofile.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "interfaces/IDataStore.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/clock.h"
#include "platform/directory.h"
#include "platform/files.h"
#include "platform/filestream.h"
#include "platform/process.h"
#include "platform/temporaryfolder.h"

namespace {

constexpr size_t longestMode = 255;
constexpr size_t copiedBlock = 65536;

std::u16string systemPath(const OroString& path) { return OroPath(path).toOsPath().wideText(); }

OroPath temporaryFolder() {
  const SPtr<IDataStore> store;
  if (store) {
    const OroPath setting(store->GetOroString("Directories/Temp Directory", nullptr));
    if (!setting.isEmpty()) return setting;
  }
  const OroPath& directory = oroDirPath("temp");
  if (!directory.isEmpty()) return directory;
  return OroPath(OroString(platform::temporaryFolder().c_str()));
}

struct Closer {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;

bool copyFile(const std::u16string& from, const std::u16string& to) {
  if (platform::isSameFile(from, to)) return true;  // opening it for writing would empty it
  const Stream source(platform::openFile(from, "rb"));
  Stream target(platform::openFile(to, "wb"));
  if (source == nullptr || target == nullptr) return false;
  const auto block = std::make_unique<char[]>(copiedBlock);
  size_t got = 0;
  do {
    got = std::fread(block.get(), 1, copiedBlock, source.get());
    if (platform::writeBlock(target.get(), block.get(), got) != got) return false;
  } while (got > 0);
  return std::ferror(source.get()) == 0 && std::fclose(target.release()) == 0;
}

struct Entry {
  std::u16string name;
  platform::EntryKind kind;
};

// False when the directory cannot be read to its end.
bool listEntries(const std::u16string& path, std::vector<Entry>& entries) {
  platform::DirectoryIterator entry(path);
  for (; entry.isPresent(); entry.next()) entries.push_back({entry.name(), entry.kind()});
  return !entry.failed();
}

// The entries are listed before anything is made, so that a copy into itself ends.
bool copyTree(const std::u16string& from, const std::u16string& to) {
  std::vector<Entry> entries;
  if (!listEntries(from, entries)) return false;
  if (!platform::isDirectory(to) &&
      platform::makeDirectory(to) != platform::MakeDirectory::created) {
    return false;
  }
  const auto copyAll = [&](platform::EntryKind kind, auto copy) {
    return std::all_of(entries.begin(), entries.end(), [&](const Entry& entry) {
      return entry.kind != kind || copy(from + u'\\' + entry.name, to + u'\\' + entry.name);
    });
  };
  return copyAll(platform::EntryKind::directory, copyTree) &&
         copyAll(platform::EntryKind::file, copyFile);
}

}  // namespace

void oroMakeTempName(OroPath& out) {
  char leaf[40];
  std::snprintf(leaf, sizeof leaf, "\\oro-%08x-%08x-temp", platform::processId(),
                static_cast<unsigned>(platform::steadyNanoseconds()));
  OroString name(temporaryFolder());
  const bool isRoot = name == "\\";
  name.append(isRoot ? leaf + 1 : leaf);
  out = name;
}

bool oroAccess(const OroString& path, int32_t mode) {
  return platform::pathAllows(systemPath(path), mode);
}

std::FILE* oroOpenFile(const OroString& path, const char* mode) {
  if (strnlen(mode, longestMode + 1) > longestMode) return nullptr;
  return platform::openFile(systemPath(path), mode);
}

bool oroUnlink(const OroString& path) { return platform::removeFile(systemPath(path)); }

bool oroStat(const OroString& path, platform::FileStatus& status) {
  return platform::fileStatus(systemPath(path), status);
}

bool oroIsSameFile(const OroString& one, const OroString& other) {
  return platform::isFile(systemPath(one)) &&
         platform::isSameFile(systemPath(one), systemPath(other));
}

bool oroCopyDirectory(const OroPath& from, const OroPath& to) {
  return platform::isDirectory(systemPath(from)) && to.makeDirectory(true) &&
         copyTree(systemPath(from), systemPath(to));
}

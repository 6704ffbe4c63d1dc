#include "services/fileutil.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interfaces/IFileDate.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orowildcard.h"
#include "platform/directory.h"
#include "platform/files.h"
#include "platform/filestatus.h"
#include "services/calendarday.h"

namespace {

using platform::EntryKind;

enum ListMode : int32_t { listFilesAlone = 1, listDirectoriesAlone, listBoth, listEverything };

bool isSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

std::u16string systemPath(const OroPath& path) { return path.toOsPath().wideText(); }

bool isKnownDirectory(std::u16string path) {
  platform::FileStatus status = {};
  bool known = platform::fileStatus(path, status);
  if (!known && !path.empty() && isSeparator(path.back())) {
    path.pop_back();
    known = platform::fileStatus(path, status);
  }
  return known && status.isDirectory;
}

// A front of a path; a drive gets the separator that makes it a directory.
std::u16string frontOf(const std::u16string& path, size_t length) {
  std::u16string front = path.substr(0, length);
  if (front.size() == 2 && front[1] == u':') front += u'\\';
  return front;
}

bool makeOne(const std::u16string& path) {
  return platform::makeDirectory(path) == platform::MakeDirectory::created;
}

// How much of the path is the deepest directory that exists.
size_t lengthOfDeepest(const std::u16string& path) {
  for (size_t i = path.size(); i-- > 0;) {
    if (isSeparator(path[i]) && isKnownDirectory(frontOf(path, i))) return i;
  }
  return 0;
}

struct Entry {
  OroPath path;
  std::u16string name;
  EntryKind kind;  // of a link: what it leads to
  bool isLink;
};

EntryKind kindBehind(const OroPath& path) {
  const std::u16string name = systemPath(path);
  if (platform::isDirectory(name)) return EntryKind::directory;
  return platform::isFile(name) ? EntryKind::file : EntryKind::other;
}

std::vector<Entry> entriesOf(const OroPath& directory) {
  std::vector<Entry> entries;
  platform::DirectoryIterator found(systemPath(directory));
  for (; found.isPresent(); found.next()) {
    const OroPath path = directory.joined(OroString(found.name().c_str()));
    const bool isLink = found.kind() == EntryKind::link;
    entries.push_back({path, found.name(), isLink ? kindBehind(path) : found.kind(), isLink});
  }
  return entries;
}

bool isWanted(EntryKind kind, int32_t mode) {
  switch (mode) {
    case listFilesAlone:
      return kind == EntryKind::file;
    case listDirectoriesAlone:
      return kind == EntryKind::directory;
    case listBoth:
      return kind == EntryKind::file || kind == EntryKind::directory;
    default:
      return mode == listEverything;
  }
}

// Without the directory that was searched, and without the separator behind it.
OroPath relativeTo(std::u16string_view top, const OroPath& path) {
  std::u16string_view rest = path.wideText();
  const auto same = [](char16_t a, char16_t b) {
    return a == b || (isSeparator(a) && isSeparator(b));
  };
  if (rest.size() < top.size() || !std::equal(top.begin(), top.end(), rest.begin(), same)) {
    return path;
  }
  rest.remove_prefix(top.size());
  if (!rest.empty() && isSeparator(rest.front())) rest.remove_prefix(1);
  return OroPath(OroString(std::u16string(rest).c_str()));
}

}  // namespace

bool FileUtil::isFile(const OroPath& path) {
  const std::u16string name = systemPath(path);
  platform::FileStatus status = {};
  return !path.isEmpty() && platform::pathAllows(name, platform::accessExists) &&
         platform::fileStatus(name, status) && !status.isDirectory;
}

bool FileUtil::removeFile(const OroPath& path) { return platform::removeFile(systemPath(path)); }

bool FileUtil::renameFile(const OroPath& from, const OroPath& to) {
  return !platform::renameToFreeName(systemPath(from), systemPath(to));
}

bool FileUtil::fileDate(const OroPath& path, IFileDate& out) {
  platform::FileStatus status = {};
  if (!platform::fileStatus(systemPath(path), status)) return false;
  const CalendarDay date = calendarDayOf(status.modified);
  out.setDay(date.day);
  out.setMonth(date.month);
  out.setYear(date.year);
  return true;
}

void FileUtil::listFiles(const OroPath& directory, OroArray<OroPath>& out, const OroString& pattern,
                         int32_t recurse, int32_t mode) {
  std::optional<OroWildcard> wanted;
  if (!pattern.isEmpty()) wanted.emplace(pattern, true);
  const OroPath top(directory);  // the caller's may be an item of the list, which grows
  std::vector<OroPath> pending = {top};
  while (!pending.empty()) {
    const OroPath current = pending.back();
    pending.pop_back();
    for (const Entry& entry : entriesOf(current)) {
      if (isWanted(entry.kind, mode) &&
          (!wanted || wanted->matchIgnoringCase(OroString(entry.name.c_str())))) {
        out.add(relativeTo(top.wideText(), entry.path));
      }
      // A link may lead back to where the search comes from.
      const bool goesIn = entry.kind == EntryKind::directory && !entry.isLink;
      if (recurse == 1 && goesIn) pending.push_back(entry.path);
    }
  }
}

bool FileUtil::isDirectory(const OroPath& path) { return isKnownDirectory(systemPath(path)); }

bool FileUtil::makeDirectories(const OroPath& path) {
  const std::u16string whole = systemPath(path);
  if (makeOne(whole)) return true;
  for (size_t i = lengthOfDeepest(whole); i < whole.size(); ++i) {
    if (i == 0 || !isSeparator(whole[i])) continue;  // nothing stands before a root
    const std::u16string front = frontOf(whole, i);
    if (!isKnownDirectory(front) && !makeOne(front)) return false;
  }
  return makeOne(whole);
}

bool FileUtil::removeDirectory(const OroPath& path, bool recursive) {
  const std::u16string name = systemPath(path);
  return recursive ? platform::removeTree(name) : platform::removeDirectory(name);
}

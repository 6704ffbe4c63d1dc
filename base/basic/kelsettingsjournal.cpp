#include "base/basic/kelsettingsjournal.h"

#include <algorithm>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"
#include "platform/descriptor.h"
#include "platform/files.h"

namespace {

constexpr const char kSuffix[] = ".changes";
constexpr const char kRejectedSuffix[] = ".rejected";
constexpr int32_t kWarning = 0;
constexpr size_t kLeastBlock = 4096;  // bytes that are read at once

OroPath withSuffix(const OroPath& path, const char* suffix) {
  OroString text(path);
  text.append(suffix);
  return OroPath(text);
}

size_t endOfLast(std::string_view contents, std::string_view ending) {
  const size_t at = contents.rfind(ending);
  return at == contents.npos ? 0 : at + ending.size();
}

bool isFrontOfEntry(std::string_view text) {
  for (const std::string_view opening : {"<section name=\"", "<value name=\""}) {
    if (text.substr(0, opening.size()) == opening.substr(0, text.size())) return true;
  }
  return false;
}

constexpr const char* kKept =
    oroKey("Changed settings could not be merged from %1. They are kept in %2.");
constexpr const char* kLost = oroKey(
    "Changed settings could not be merged from %1 and are lost, since %2 cannot be written.");

void warn(const char* what, const OroPath& journal, const OroPath& rejected) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  oroTranslate(text, what, oroShownPath(journal), oroShownPath(rejected));
  errors->report(text, kWarning, KelCString::empty());
}

}  // namespace

// Reading is asked for too, so that a file that only takes writing counts as one that does not
// open.
bool KelSettingsJournal::open(const OroPath& path) {
  close();
  using namespace platform;
  descriptor_ = openDescriptor(path.wideText(), openRead | openWrite | openCreate | openAppend);
  return isOpen();
}

// A part of an entry would make the whole journal unreadable as soon as another one follows.
bool KelSettingsJournal::write(std::string_view entry) {
  const int64_t written = platform::writeDescriptor(descriptor_, entry.data(), entry.size());
  if (written == static_cast<int64_t>(entry.size())) return true;
  if (written <= 0) return false;
  const int64_t end = platform::seekDescriptor(descriptor_, 0, platform::SeekFrom::end);
  if (end >= written) platform::truncateDescriptor(descriptor_, end - written);
  return false;
}

void KelSettingsJournal::close() {
  if (isOpen()) platform::closeDescriptor(descriptor_);
  descriptor_ = -1;
}

OroPath KelSettingsJournal::pathOf(const OroPath& document) {
  return withSuffix(document, kSuffix);
}

// Another session may cut the file at this moment, so it is not looked at in place.
bool KelSettingsJournal::read(const OroPath& path, size_t most, std::string& contents) {
  OroFileReader file;
  if (!platform::isFile(path.wideText()) || !file.open(path)) return false;
  contents.clear();
  size_t block = std::clamp<uint64_t>(static_cast<uint64_t>(file.size()) + 1, kLeastBlock, most);
  while (contents.size() < most) {
    const size_t before = contents.size();
    contents.resize(std::min(before + block, most));
    const size_t got = file.read(contents.data() + before, contents.size() - before);
    contents.resize(before + got);
    if (got == 0) break;
    block = kLeastBlock;
  }
  return !file.failed();
}

// Only a closing tag ends an entry: texts and blobs have line feeds inside. Blocks that never got
// to the disk may read as zeros.
bool KelSettingsJournal::removeCutEntry(std::string& contents) {
  const size_t whole =
      std::max(endOfLast(contents, "</value>\n"), endOfLast(contents, "</section>\n"));
  std::string_view rest = std::string_view(contents).substr(whole);
  rest = rest.substr(0, rest.find_last_not_of('\0') + 1);
  if (whole == contents.size() || !isFrontOfEntry(rest)) return false;
  contents.resize(whole);
  return true;
}

void KelSettingsJournal::reject(const OroPath& path) {
  const OroPath rejected = withSuffix(path, kRejectedSuffix);
  if (platform::renameFile(path.wideText(), rejected.wideText())) {
    warn(kKept, path, rejected);
  } else if (platform::removeFile(path.wideText())) {
    warn(kLost, path, rejected);
  }
}

#include "base/basic/kelsettingsjournal.h"

#include <algorithm>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
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

OroPath withSuffix(const OroPath& path, const char* suffix) {
  OroString text(path);
  text.append(suffix);
  return OroPath(text);
}

size_t endOfLast(std::string_view contents, std::string_view ending) {
  const size_t at = contents.rfind(ending);
  return at == contents.npos ? 0 : at + ending.size();
}

void warn(const OroPath& journal, const OroPath& rejected) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  oroTranslate(text, "Changed settings could not be merged from %1. They are kept in %2.",
               oroShownPath(journal), oroShownPath(rejected));
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

bool KelSettingsJournal::read(const OroPath& path, std::string& contents) {
  platform::MappedFile file;
  if (!file.open(path.wideText())) return false;
  contents = file.bytes();
  return true;
}

// Only a closing tag ends an entry: texts and blobs have line feeds inside.
size_t KelSettingsJournal::lengthOfWholeEntries(std::string_view contents) {
  return std::max(endOfLast(contents, "</value>\n"), endOfLast(contents, "</section>\n"));
}

void KelSettingsJournal::reject(const OroPath& path) {
  const OroPath rejected = withSuffix(path, kRejectedSuffix);
  if (platform::renameFile(path.wideText(), rejected.wideText())) {
    warn(path, rejected);
  } else {
    platform::removeFile(path.wideText());
  }
}

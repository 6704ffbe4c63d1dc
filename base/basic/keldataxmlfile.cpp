#include "base/basic/keldataxmlfile.h"

#include <string>

#include "base/basic/keldataxmltree.h"
#include "base/basic/keljournaldocument.h"
#include "base/basic/kelsettingsjournal.h"
#include "base/basic/kelsettingspaths.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IOroDOMXml.h"
#include "interfaces/IOroDOMXmlError.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/orowholefile.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"

namespace {

constexpr const char kDamagedSuffix[] = ".damaged";
constexpr int32_t kError = 1;

bool copyFile(const OroPath& from, const OroPath& to) {
  platform::MappedFile source;
  OroWholeFile target;
  return source.open(from.wideText()) && target.open(to) &&
         target.write(source.data(), source.size()) && target.commit();
}

}  // namespace

KelDataXMLFile::KelDataXMLFile(int32_t mode, const OroString& readPath, const OroString& writePath,
                               bool fullWrite, bool useJournal)
    : KelDataVisitor(mode),
      useJournal_(useJournal),
      fullWrite_(fullWrite),
      readPath_(readPath),
      writePath_(writePath) {}

const OroPath& KelDataXMLFile::readPath() const {
  return readPath_.isEmpty() ? kelSettingsPaths().read : readPath_;
}

const OroPath& KelDataXMLFile::writePath() const {
  return writePath_.isEmpty() ? kelSettingsPaths().write : writePath_;
}

OroPath KelDataXMLFile::journalPath(const OroPath& document) const {
  return useJournal_ ? KelSettingsJournal::pathOf(document) : document;
}

bool KelDataXMLFile::takesPart(IKelDataItem& item) const {
  if ((item.GetFlags() & IKelDataItem::kPersistent) == 0) return false;
  return GetFilter() == nullptr || GetFilter()->Accept(&item);
}

bool KelDataXMLFile::Begin() {
  if (loaded_) return true;
  if (failed_) return false;
  loaded_ = GetMode() == kWriting || LoadTable(values_);
  return loaded_;
}

bool KelDataXMLFile::LoadTable(KelDataXMLTable& table) {
  if (fullWrite_) return true;
  const OroPath path = readPath();
  return !path.isEmpty() && ReadDocument(path, table);
}

bool KelDataXMLFile::ReadDocument(const OroPath& path, KelDataXMLTable& table) {
  SPtr<IOroDOMXml> document;
  if (!document) return false;
  MergeJournal(path);
  if (!platform::pathExists(path.wideText())) return false;
  if (load(path, *document) && kelFlattenDocument(*document, table)) return true;
  failed_ = true;
  unreadable_ = true;
  reportUnreadable(*document, path);
  return false;
}

// Remembers whether the document that was looked at last is there and cannot be read.
bool KelDataXMLFile::load(const OroPath& path, IOroDOMXml& document) {
  const bool read = document.load(path);
  lookedAt_ = path;
  unreadable_ = !read && platform::pathExists(path.wideText());
  return read;
}

void KelDataXMLFile::reportUnreadable(IOroDOMXml& document, const OroPath& path) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  if (const IOroDOMXmlError* const error = document.lastError()) error->text(text);
  if (text.isEmpty()) {
    oroTranslate(text, "The settings in %1 could not be read.", oroShownPath(path));
  }
  errors->report(text, kError, KelCString::empty());
}

bool KelDataXMLFile::MergeJournal(const OroPath& path) {
  const OroPath journal = journalPath(path);
  std::string lines;
  if (!KelSettingsJournal::read(journal, kMostJournalBytes + 1, lines)) return false;
  SPtr<IOroDOMXml> document;
  if (!document) return false;  // the changes exist nowhere else
  const bool merged = mergeInto(path, lines, *document);
  if (merged || lines.empty() || !useJournal_) {
    platform::removeFile(journal.wideText());
  } else {
    KelSettingsJournal::reject(journal);
  }
  return merged;
}

// Later lines win over earlier ones, and all over the document.
bool KelDataXMLFile::mergeInto(const OroPath& path, const std::string& journal,
                               IOroDOMXml& document) {
  KelDataXMLTable table;
  if (!load(path, document) || !kelFlattenDocument(document, table)) return false;
  SPtr<IOroDOMXml> changes;
  if (!changes || !kelParseJournal(journal, *changes)) return false;
  SPtr<IOroDOMXml> merged;
  return kelFlattenDocument(*changes, table) && merged && kelBuildDocument(table, *merged) &&
         merged->save(path);
}

bool KelDataXMLFile::WriteDocument(const OroPath& path, const KelDataXMLTable& table) {
  MergeJournal(path);
  SPtr<IOroDOMXml> document;
  if (!document || !kelBuildDocument(table, *document)) return false;
  path.parent().makeDirectory(true);
  keepUnreadable(path);
  if (!document->save(path)) return false;
  lookedAt_ = path;
  unreadable_ = false;
  return true;
}

// What could not be read is about to be replaced; a person may still want to mend it.
void KelDataXMLFile::keepUnreadable(const OroPath& path) {
  if (lookedAt_.compareOrdinal(path) != 0 && platform::pathExists(path.wideText())) {
    SPtr<IOroDOMXml> before;
    if (before) load(path, *before);
  }
  if (lookedAt_.compareOrdinal(path) != 0 || !unreadable_) return;
  OroString kept(path);
  kept.append(kDamagedSuffix);
  if (copyFile(path, OroPath(kept))) return;
  platform::renameFile(path.wideText(), kept.wideText());
}

bool KelDataXMLFile::Commit() {
  KelDataXMLTable all;
  LoadTable(all);
  all.overlay(values_);
  const OroPath path = writePath();
  // Where the document stands in for the journal it holds nothing but lines, and is replaced.
  const bool merged = !dirty_ && !path.isEmpty() && MergeJournal(path);
  if (merged && useJournal_) return true;
  if (path.isEmpty() || !WriteDocument(path, all)) return false;
  dirty_ = false;
  return true;
}

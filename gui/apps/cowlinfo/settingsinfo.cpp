#include "gui/apps/cowlinfo/settingsinfo.h"

#include <vector>

#include "base/basic/keldataxmltable.h"
#include "base/basic/keldataxmltree.h"
#include "base/basic/keljournaldocument.h"
#include "base/basic/kelnaturalorder.h"
#include "base/basic/kelsettingsjournal.h"
#include "gui/apps/cowlinfo/infotext.h"
#include "interfaces/IOroDOMXml.h"
#include "interfaces/IOroDOMXmlError.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"

namespace {

constexpr size_t kMostValueText = 200;  // bytes of a value that are shown

struct Value {
  std::string path;
  const KelDataXMLValue* value;
  const char* layer;
};

void addProblem(InfoReport& report, IOroDOMXml& document, const char* otherwise) {
  OroString text;
  if (const IOroDOMXmlError* const error = document.lastError()) error->text(text);
  report.problems.push_back(text.isEmpty() ? infoText(otherwise) : shownText(text));
}

bool readDocument(const OroPath& path, KelDataXMLTable& table, InfoReport& report) {
  SPtr<IOroDOMXml> document;
  if (!document) {
    report.problems.push_back(infoText("there is no component that reads XML documents"));
    return false;
  }
  if (document->load(path) && kelFlattenDocument(*document, table)) return true;
  addProblem(report, *document, "the file is no settings document");
  return false;
}

// True when there is a journal.
bool readJournal(const OroPath& path, KelDataXMLTable& table, InfoReport& report) {
  const OroPath journal = KelSettingsJournal::pathOf(path);
  if (!platform::isFile(journal.wideText())) return false;
  std::string lines;
  SPtr<IOroDOMXml> document;
  const bool read = KelSettingsJournal::read(journal, kMostJournalBytes + 1, lines);
  if (!read || !document || !kelParseJournal(std::move(lines), *document) ||
      !kelFlattenDocument(*document, table)) {
    report.problems.push_back(
        infoText("the journal %1 cannot be merged", shownText(oroShownPath(journal))));
  }
  return true;
}

// The document's values, those of the journal in their place.
std::vector<Value> allValues(const KelDataXMLTable& document, const KelDataXMLTable& journal) {
  std::vector<Value> values;
  for (const auto& entry : journal.entries()) {
    values.push_back({entry.key.c_str(), &entry.value, "journal"});
  }
  for (const auto& entry : document.entries()) {
    if (journal.find(entry.key.c_str()) != nullptr) continue;
    values.push_back({entry.key.c_str(), &entry.value, "document, layer 1"});
  }
  kelNaturalSort(values, [](const Value& value) { return value.path.c_str(); });
  return values;
}

}  // namespace

InfoReport settingsInfo(const OroPath& path) {
  InfoReport report;
  KelDataXMLTable document;
  KelDataXMLTable journal;
  if (!readDocument(path, document, report)) return report;
  const bool hasJournal = readJournal(path, journal, report);
  const std::vector<Value> values = allValues(document, journal);
  std::string head = shownText(oroShownPath(path)) + ": settings document, " +
                     counted(values.size(), "value", "values");
  if (hasJournal) head += ", " + std::to_string(journal.count()) + " of them from the journal";
  report.line(0, head);
  for (const Value& value : values) {
    report.line(1, shownText(value.path) + " = " + shownText(value.value->text, kMostValueText) +
                       " (" + shownText(value.value->type) + "; " + value.layer + ")");
  }
  return report;
}

#include "base/basic/keljournaldocument.h"

#include "base/basic/kelsettingsjournal.h"
#include "interfaces/IOroDOMXml.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orounits.h"

namespace {

constexpr const char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

// The lines of a journal as a document; false for bytes that are no text. A unit 0, which comes of
// a stray byte too, would end the text and lose all lines behind it.
bool wrap(const std::string& lines, OroString& document) {
  std::u16string text(lines.size(), u'\0');
  const ptrdiff_t units = orounits::decodeUtf8(lines.data(), lines.size(), text.data());
  if (units < 0) return false;
  text.resize(static_cast<size_t>(units));
  if (text.find(u'\0') != text.npos) return false;
  document = OroString(kDeclaration);
  document.append("<OroDataStore>\n");
  document.append(OroString(text.c_str()));
  document.append("</OroDataStore>\n");
  return true;
}

bool parseLines(const std::string& lines, IOroDOMXml& document) {
  OroString text;
  return wrap(lines, text) && document.parse(text);
}

}  // namespace

bool kelParseJournal(std::string lines, IOroDOMXml& document) {
  if (lines.size() > kMostJournalBytes) return false;
  if (parseLines(lines, document)) return true;
  return KelSettingsJournal::removeCutEntry(lines) && parseLines(lines, document);
}

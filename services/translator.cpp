#include "services/translator.h"

#include <cstring>
#include <string_view>

#include "interfaces/IOroDOMXmlElement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "interfaces/IOroDOMXmlV2.h"
#include "interfaces/IOroLanguageID.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"
#include "services/oroinputunicodestream.h"

namespace {

constexpr size_t kKeptUnits = 2;  // of a value, blanks or not

// The escapes that both kinds of file have, in this order. A doubled backslash is none of them.
OroString unescaped(OroString text) {
  text.replaceAll(OroString("\\\""), OroString("\""));
  text.replaceAll(OroString("\\n"), OroString("\n"));
  text.replaceAll(OroString("\\t"), OroString("\t"));
  return text;
}

OroString withoutTrailingBlanks(const OroString& text) {
  std::u16string_view units = text.wideText();
  while (units.size() > kKeptUnits && units.back() == u' ') units.remove_suffix(1);
  return text.left(static_cast<int>(units.size()));
}

// Takes the text in quotes behind the keyword; the quotes are not looked at. False, with the text
// as it was, where there is no room for them.
bool takeQuoted(const OroString& line, int keywordUnits, OroString& text) {
  constexpr int quotes = 2;
  const int units = line.length() - keywordUnits;
  if (units < quotes) return false;
  text = line.mid(keywordUnits + 1, units - quotes);
  return true;
}

IOroDOMXmlElement* firstChild(IOroDOMXmlElement& parent, const char* name) {
  for (IOroDOMXmlElementItr* child = parent.children(); !child->atEnd(); child->advance()) {
    if (std::strcmp(child->element()->tagName(), name) == 0) return child->element();
  }
  return nullptr;
}

}  // namespace

bool Translator::lookup(const char* key, OroString& out) {
  const OroString* const text = entries_.find(key);
  if (text == nullptr) return OroTrivialTranslator::lookup(key, out);
  out = *text;
  return true;
}

bool Translator::setLanguage(IOroLanguageID* language) {
  if (language == nullptr) return false;
  const char* const code = language->getLanguage().c_str();
  const OroPath& folder = oroDirPath("language");
  return loadEither(folder.joined(KelCString("velmora.", code, ".resx").c_str()),
                    folder.joined(KelCString(code, ".po").c_str()));
}

bool Translator::load(const OroPath& path) {
  OroPath resx(path);
  resx.setExtension("resx");
  OroPath po(path);
  po.setExtension("po");
  return loadEither(resx, po);
}

bool Translator::loadEither(const OroPath& resx, const OroPath& po) {
  if (platform::isFile(resx.wideText())) return readResx(resx);
  return platform::isFile(po.wideText()) && readPo(po);
}

bool Translator::readResx(const OroPath& path) {
  const SPtr<IOroDOMXmlV2> document;
  if (!document || !document->load(path)) return false;
  IOroDOMXmlElement* const root = document->root();
  if (root == nullptr) return true;
  for (IOroDOMXmlElementItr* child = root->children(); !child->atEnd(); child->advance()) {
    IOroDOMXmlElement& data = *child->element();
    if (std::strcmp(data.tagName(), "data") != 0) continue;
    const IOroDOMXmlElement* const value = firstChild(data, "value");
    OroString key;
    OroString text;
    if (value == nullptr || !data.wideAttribute("name", key)) continue;
    value->text(text);
    storeEscaped(key, text);
  }
  return true;
}

// One line a text: what the format spreads over several lines is not read. Lines are stripped
// before they are looked at; without the text service that takes their inner blanks too, so that no
// line has a keyword and the file gives nothing.
bool Translator::readPo(const OroPath& path) {
  constexpr int keyUnits = 6;
  constexpr int valueUnits = 7;
  const OroString keyWord("msgid ");
  const OroString valueWord("msgstr ");
  OroInputUnicodeStream file(path);
  if (!file.isOpen()) return false;
  bool whole = true;
  OroString key;
  OroString value;
  for (OroString raw; file.readLine(raw, OroString("\n"));) {
    const OroString line = raw.stripSpace();
    if (line.startsWith(keyWord, keyUnits)) {
      whole &= takeQuoted(line, keyUnits, key);
    } else if (line.startsWith(valueWord, valueUnits)) {
      if (!takeQuoted(line, valueUnits, value)) {
        whole = false;
        continue;
      }
      storeEscaped(key, value);
      key = OroString();
      value = OroString();
    }
  }
  return whole && file.atEnd();
}

void Translator::storeEscaped(const OroString& key, const OroString& value) {
  if (key.isEmpty() || value.isEmpty()) return;
  entries_.store(unescaped(key), withoutTrailingBlanks(unescaped(value)));
}

#include "services/oroxlifftranslator.h"

#include <cstring>

#include "interfaces/IOroDOMXml.h"
#include "interfaces/IOroDOMXmlElement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t kError = 1;

bool isNamed(const IOroDOMXmlElement& element, const char* name) {
  return std::strcmp(element.tagName(), name) == 0;
}

// Calls `use` for each child element of that name.
template <class Use>
void forChildren(IOroDOMXmlElement* parent, const char* name, const Use& use) {
  if (parent == nullptr) return;
  for (IOroDOMXmlElementItr* child = parent->children(); !child->atEnd(); child->advance()) {
    if (isNamed(*child->element(), name)) use(child->element());
  }
}

// Untranslated, since it is about a translation that is missing. The misspelling is kept: programs
// look for the text.
void reportUnreadable(const OroPath& path) {
  const SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text("Translation file not found or oarsing error: ");
  text.append(oroShownPath(path));
  errors->report(text, kError, KelCString());
}

}  // namespace

bool OroXLIFFTranslator::setLanguage(IOroLanguageID* language) {
  language_ = SPtr<IOroLanguageID>();
  if (language_ && language != nullptr) language_->setLanguage(language->getLanguage());
  return true;
}

bool OroXLIFFTranslator::setBaseName(const OroPath& path) {
  baseName_ = path;
  return true;
}

bool OroXLIFFTranslator::lookup(const char* key, OroString& out) {
  if (!loaded_) load();
  if (const OroString* const text = entries_.find(key)) {
    out = *text;
    return true;
  }
  if (fallback_ == nullptr) fallback_ = SPtr<IOroTranslator>().get();
  // As the application's translator it would ask itself for ever.
  if (fallback_ == nullptr || fallback_ == this) return OroTrivialTranslator::lookup(key, out);
  fallback_->translate(out, key);
  return true;
}

void OroXLIFFTranslator::load() {
  loaded_ = true;
  if (baseName_.isEmpty() || !language_) return;
  const KelCString& code = language_->getLanguage();
  if (code.find("en") >= 0) return;
  OroString name(baseName_);
  name.append("_");
  name.append(code.c_str());
  const OroPath path(name);
  const SPtr<IOroDOMXml> document;
  if (!document) return;
  if (document->load(path)) {
    forChildren(document->root(), "file", [this](IOroDOMXmlElement* file) { readFile(file); });
  } else {
    reportUnreadable(path);
  }
}

void OroXLIFFTranslator::readFile(IOroDOMXmlElement* file) {
  forChildren(file, "body", [this](IOroDOMXmlElement* body) { readBody(body); });
}

void OroXLIFFTranslator::readBody(IOroDOMXmlElement* body) {
  forChildren(body, "trans-unit", [this](IOroDOMXmlElement* unit) { readUnit(unit); });
}

// The first complete pair, in whatever order, is the unit's.
void OroXLIFFTranslator::readUnit(IOroDOMXmlElement* unit) {
  OroString source;
  OroString target;
  bool hasSource = false;
  for (IOroDOMXmlElementItr* child = unit->children(); !child->atEnd(); child->advance()) {
    const IOroDOMXmlElement& element = *child->element();
    if (isNamed(element, "source")) {
      element.text(source);
      hasSource = true;
    } else if (isNamed(element, "target")) {
      OroString text;
      element.text(text);
      if (!text.isEmpty()) target = text;
    }
    if (!hasSource || target.isEmpty()) continue;
    entries_.store(source, target);
    return;
  }
}

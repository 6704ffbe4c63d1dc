#include "components/xmldom/xmldocument.h"

#include <cstring>
#include <new>

#include "components/xmldom/xmlprinter.h"
#include "components/xmldom/xmltext.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/orowholefile.h"

namespace {

// Line ends are left alone, blank text is kept, a declaration may only stand at the top, and what
// stands outside the root comes as a node, so that it can be refused.
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata |
                                   pugi::parse_declaration | pugi::parse_fragment;

constexpr const char* kOutside = oroKey("Text outside the root element");

const char* whatIsWrong(pugi::xml_parse_status status) {
  switch (status) {
    case pugi::status_out_of_memory:
      return oroKey("There is not enough memory to read the document");
    case pugi::status_unrecognized_tag:
      return oroKey("A tag that is none");
    case pugi::status_bad_pi:
      return oroKey("A declaration or instruction that is not well-formed");
    case pugi::status_bad_comment:
      return oroKey("A comment that is not well-formed");
    case pugi::status_bad_cdata:
      return oroKey("Raw character data that are not well-formed");
    case pugi::status_bad_doctype:
      return oroKey("A document type that is not well-formed");
    case pugi::status_bad_pcdata:
      return oroKey("Character data that are not well-formed");
    case pugi::status_bad_start_element:
      return oroKey("A start tag that is not well-formed");
    case pugi::status_bad_attribute:
      return oroKey("An attribute that is not well-formed");
    case pugi::status_bad_end_element:
      return oroKey("An end tag that is not well-formed");
    case pugi::status_end_element_mismatch:
      return oroKey("An element whose tags do not match");
    case pugi::status_no_document_element:
      return oroKey("No root element");
    default:
      return oroKey("The document cannot be read");
  }
}

}  // namespace

bool XmlDocument::parse(const OroString& text) { return read({nullptr, &text}); }

bool XmlDocument::load(const OroPath& path) { return read({&path, nullptr}); }

const char* XmlDocument::fill(XmlSource& source, const Origin& origin) {
  return origin.path != nullptr ? source.readFile(*origin.path) : source.readText(*origin.text);
}

bool XmlDocument::read(const Origin& origin) try {
  clear();
  error_ = nullptr;
  if (const char* const problem = fill(source_, origin)) return fail(problem, origin);
  const Problem problem = parseSource();
  return problem.text == nullptr || failAt(problem, origin);
} catch (const std::bad_alloc&) {
  clear();
  return false;
}

XmlDocument::Problem XmlDocument::parseSource() {
  const void* const zero = std::memchr(source_.begin(), '\0', source_.size());
  if (zero != nullptr) {
    const auto offset = static_cast<const char*>(zero) - source_.begin();
    return {oroKey("A character that is not allowed"), static_cast<size_t>(offset)};
  }
  // The parser puts its end mark in place of the last byte, which is the one behind the text.
  const pugi::xml_parse_result result = tree_.load_buffer_inplace(
      source_.begin(), source_.size() + 1, kParseOptions, pugi::encoding_utf8);
  if (!result) return {whatIsWrong(result.status), static_cast<size_t>(result.offset)};
  return findRoot();
}

XmlDocument::Problem XmlDocument::findRoot() {
  pugi::xml_node root;
  for (const pugi::xml_node node : tree_.children()) {
    if (node.type() == pugi::node_declaration) continue;
    const auto offset = static_cast<size_t>(node.offset_debug());
    if (node.type() == pugi::node_element) {
      if (root) return {oroKey("A second root element"), offset - 1};
      root = node;
      continue;
    }
    const size_t blanks = std::strspn(node.value(), " \t\r\n");
    if (node.type() == pugi::node_cdata) return {kOutside, offset - std::strlen("<![CDATA[")};
    if (node.value()[blanks] != '\0') return {kOutside, offset + blanks};
  }
  if (!root) return {oroKey("No root element"), source_.size()};
  root_ = elementFor(root);
  return {nullptr, 0};
}

void XmlDocument::clear() {
  root_ = nullptr;
  iterators_.clear();
  elements_.clear();
  tree_.reset();
  source_ = XmlSource();
}

// Always false, as the caller's result.
bool XmlDocument::fail(const char* key, const Origin& origin) {
  clear();
  OroString text;
  if (origin.path != nullptr) {
    oroTranslate(text, key, oroShownPath(*origin.path));
  } else {
    oroTranslate(text, key);
  }
  error_ = new XmlError(text);
  return false;
}

// The parser has changed the bytes, so the place is looked for in the text as it came.
bool XmlDocument::failAt(const Problem& problem, const Origin& origin) {
  clear();
  XmlSource again;
  XmlPosition position;
  if (fill(again, origin) == nullptr) position = again.positionOf(problem.offset);
  const OroString line(position.line);
  const OroString column(position.column);
  OroString what;
  oroTranslate(what, problem.text);
  OroString text;
  if (origin.path != nullptr) {
    oroTranslate(text, "%1, line %2, column %3: %4", oroShownPath(*origin.path), line, column,
                 what);
  } else {
    oroTranslate(text, "Line %1, column %2: %3", line, column, what);
  }
  error_ = new XmlError(text);
  return false;
}

bool XmlDocument::save(const OroPath& path) try {
  error_ = nullptr;
  OroWholeFile file;
  if (root_ != nullptr && file.open(path) && printXml(*root_, file) && file.commit()) return true;
  OroString text;
  oroTranslate(text,
               root_ != nullptr
                   ? oroKey("The file %1 could not be written")
                   : oroKey("The file %1 is not written: the document has no root element"),
               oroShownPath(path));
  error_ = new XmlError(oroWithReason(text, file.reason()));
  return false;
} catch (const std::bad_alloc&) {
  return false;
}

IOroDOMXmlElement* XmlDocument::createElement(const char* name) try {
  return xmltext::isName(name) ? elements_.make(*this, name) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

bool XmlDocument::setRoot(IOroDOMXmlElement* element) {
  XmlElement* const own = orphan(element);
  if (own == nullptr) return false;
  root_ = own;
  return true;
}

XmlElement* XmlDocument::orphan(IOroDOMXmlElement* element) const {
  auto* const own = oroQueryClass<XmlElement>(element);
  if (own == nullptr || &own->document() != this) return nullptr;
  return own->parent() == nullptr && own != root_ ? own : nullptr;
}

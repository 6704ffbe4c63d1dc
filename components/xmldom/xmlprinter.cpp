#include "components/xmldom/xmlprinter.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "components/xmldom/xmlelement.h"
#include "orobasictypes/orowholefile.h"

namespace {

enum class Place { text, attribute };

bool isPlain(char c, Place place) {
  if (c == '&' || c == '<' || c == '>') return false;
  if (place == Place::attribute) return static_cast<unsigned char>(c) >= 0x20 && c != '"';
  return static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n';
}

void appendReference(std::string& out, char c) {
  switch (c) {
    case '&':
      out += "&amp;";
      return;
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '"':
      out += "&quot;";
      return;
    default:
      out += "&#" + std::to_string(static_cast<int>(c)) + ';';
  }
}

class Printer {
 public:
  explicit Printer(OroWholeFile& file) : file_(file) { out_.reserve(kBlock + kBlock / 4); }

  bool print(XmlElement& root);

 private:
  static constexpr size_t kBlock = size_t{1} << 16;
  // Deeper elements go no further to the right, so that a file grows with what it says alone.
  static constexpr size_t kMostTabs = 64;

  void startTag(const XmlElement& element);
  void endTag(const XmlElement& element, bool onOwnLine);
  void escaped(std::string_view text, Place place);
  void newLine() { (out_ += '\n').append(std::min(depth_, kMostTabs), '\t'); }
  bool flush();

  OroWholeFile& file_;
  std::string out_;
  size_t depth_ = 0;
  // For each open element, whether it holds text and thus gets no blanks.
  std::string inText_;
};

bool Printer::flush() {
  const bool done = file_.write(out_.data(), out_.size());
  out_.clear();
  return done;
}

void Printer::escaped(std::string_view text, Place place) {
  size_t begin = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (isPlain(text[i], place)) continue;
    out_ += text.substr(begin, i - begin);
    appendReference(out_, text[i]);
    begin = i + 1;
  }
  out_ += text.substr(begin);
}

void Printer::startTag(const XmlElement& element) {
  (out_ += '<') += element.tagName();
  element.eachAttribute([this](const char* name, std::string_view value) {
    ((out_ += ' ') += name) += "=\"";
    escaped(value, Place::attribute);
    out_ += '"';
  });
}

void Printer::endTag(const XmlElement& element, bool onOwnLine) {
  if (onOwnLine) newLine();
  ((out_ += "</") += element.tagName()) += '>';
}

// A walk by the links between the elements, since a nested document may be as deep as it is long.
bool Printer::print(XmlElement& root) {
  out_ = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  XmlElement* at = &root;
  for (;;) {
    startTag(*at);
    XmlElement* const child = at->firstChild();
    const std::string text = at->textBefore();
    if (child != nullptr) {
      out_ += '>';
      inText_ += at->hasTextToKeep() ? '\1' : '\0';
      ++depth_;
      if (inText_.back() != '\0') {
        escaped(text, Place::text);
      } else {
        newLine();
      }
      at = child;
      continue;
    }
    if (text.empty()) {
      out_ += "/>";
    } else {
      out_ += '>';
      escaped(text, Place::text);
      endTag(*at, false);
    }
    // Up to the next element that has a sibling behind it.
    for (; at != &root; at = at->parent()) {
      const bool inText = inText_.back() != '\0';
      if (inText) escaped(at->parent()->textBehind(*at), Place::text);
      if (at->next() != nullptr) {
        if (!inText) newLine();
        break;
      }
      inText_.pop_back();
      --depth_;
      endTag(*at->parent(), !inText);
    }
    if (out_.size() >= kBlock && !flush()) return false;
    if (at == &root) break;
    at = at->next();
  }
  out_ += '\n';
  return flush();
}

}  // namespace

bool printXml(XmlElement& root, OroWholeFile& file) { return Printer(file).print(root); }

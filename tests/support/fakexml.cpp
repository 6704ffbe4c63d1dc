#include "tests/support/fakexml.h"

#include <cstring>
#include <deque>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interfaces/IOroDOMXmlElement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "interfaces/IOroDOMXmlError.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orowholefile.h"
#include "platform/files.h"

namespace tests {
namespace {

class Document;

class Element final : public IOroDOMXmlElement {
 public:
  static constexpr const char* className() { return "tests::Element"; }
  using Offers = OroOffers<Element, IOroDOMXmlElement>;
  Element(Document& document, std::string tag) : tag_(std::move(tag)), document_(document) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const char* tagName() const override { return tag_.c_str(); }
  const char* attribute(const char* name) const override {
    for (const auto& [key, value] : attributes_) {
      if (key == name) return value.c_str();
    }
    return nullptr;
  }
  bool wideAttribute(const char* name, OroString& out) const override {
    const char* const value = attribute(name);
    out = OroString::fromUtf8(value);
    return value != nullptr;
  }
  bool setAttribute(const char* name, const OroString& value) override {
    setBytes(name, value.toUtf8());
    return true;
  }
  void text(OroString& out) const override { out = OroString::fromUtf8(text_.c_str()); }
  bool setText(const OroString& text) override {
    text_ = text.toUtf8();
    return true;
  }
  IOroDOMXmlElementItr* children() override;
  bool appendChild(IOroDOMXmlElement* child) override {
    auto* const own = oroQueryClass<Element>(child);
    if (own == nullptr || own->placed_) return false;
    own->placed_ = true;
    children_.push_back(own);
    return true;
  }

  void setBytes(const std::string& name, std::string value) {
    for (auto& [key, old] : attributes_) {
      if (key == name) {
        old = std::move(value);
        return;
      }
    }
    attributes_.emplace_back(name, std::move(value));
  }

  std::string tag_;
  std::vector<std::pair<std::string, std::string>> attributes_;
  std::string text_;
  std::vector<Element*> children_;
  bool placed_ = false;  // has a parent or is the root

 private:
  Document& document_;
};

class Iterator final : public IOroDOMXmlElementItr {
 public:
  static constexpr const char* className() { return "tests::Iterator"; }
  using Offers = OroOffers<Iterator, IOroDOMXmlElementItr>;
  explicit Iterator(const Element& parent) : parent_(parent) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void advance() override {
    if (!atEnd()) ++at_;
  }
  bool atEnd() const override { return at_ == parent_.children_.size(); }
  IOroDOMXmlElement* element() const override { return atEnd() ? nullptr : parent_.children_[at_]; }

 private:
  const Element& parent_;
  size_t at_ = 0;
};

std::string decoded(std::string_view raw) {
  static constexpr std::pair<std::string_view, char> entities[] = {
      {"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}};
  std::string text;
  while (!raw.empty()) {
    size_t used = 0;
    for (const auto& [entity, character] : entities) {
      if (!raw.starts_with(entity)) continue;
      text += character;
      used = entity.size();
    }
    if (used == 0) text += raw[0];
    raw.remove_prefix(used == 0 ? 1 : used);
  }
  return text;
}

std::string encoded(const std::string& text) {
  std::string raw;
  for (const char character : text) {
    const std::string_view special = "\"&<>";
    static constexpr std::string_view entities[] = {"&quot;", "&amp;", "&lt;", "&gt;"};
    const size_t at = special.find(character);
    at == special.npos ? raw += character : raw += entities[at];
  }
  return raw;
}

class Document final : public IOroDOMXml, public IOroDOMXmlError {
 public:
  static constexpr const char* className() { return "tests::Document"; }
  using Offers = OroOffers<Document, IOroDOMXml, IOroDOMXmlError>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool parse(const OroString& text) override { return read(text.toUtf8()); }
  bool load(const OroPath& path) override {
    if (FakeXml::current() != nullptr) ++FakeXml::current()->loads;
    clear();
    platform::MappedFile file;
    if (!file.open(path.wideText())) return fail("cannot open");
    return read(std::string(file.bytes()));
  }
  bool save(const OroPath& path) override;
  IOroDOMXmlElement* root() override { return root_; }
  IOroDOMXmlElement* createElement(const char* name) override { return make(name); }
  bool setRoot(IOroDOMXmlElement* element) override {
    auto* const own = oroQueryClass<Element>(element);
    if (own == nullptr || own->placed_) return false;
    own->placed_ = true;
    root_ = own;
    return true;
  }
  IOroDOMXmlError* lastError() override { return error_.empty() ? nullptr : this; }
  void text(OroString& out) const override { out = OroString(error_.c_str()); }

  IOroDOMXmlElementItr* iterate(const Element& parent) {
    return iterators_.emplace_back(new Iterator(parent)).get();
  }

 private:
  Element* make(std::string tag) {
    return elements_.emplace_back(new Element(*this, std::move(tag))).get();
  }
  void clear() {
    root_ = nullptr;
    error_.clear();
    iterators_.clear();
    elements_.clear();
  }
  bool fail(const std::string& why) {
    clear();
    error_ = why;
    return false;
  }
  bool read(const std::string& bytes);
  bool readTag(std::string_view tag, std::vector<Element*>& open);
  bool readAttributes(std::string_view rest, Element& element);
  bool readClosing(std::string_view name, std::vector<Element*>& open);

  std::deque<std::unique_ptr<Element>> elements_;
  std::deque<std::unique_ptr<Iterator>> iterators_;
  Element* root_ = nullptr;
  std::string error_;
};

IOroDOMXmlElementItr* Element::children() { return document_.iterate(*this); }

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool Document::read(const std::string& bytes) {
  clear();
  std::string_view rest = bytes;
  std::vector<Element*> open;
  while (!rest.empty()) {
    const size_t angle = std::min(rest.find('<'), rest.size());
    const std::string_view text = rest.substr(0, angle);
    if (open.empty() && !isBlank(text)) return fail("text outside the root");
    if (!open.empty() && !text.empty()) open.back()->text_ += decoded(text);
    rest.remove_prefix(angle);
    if (rest.empty()) break;
    const std::string_view end = rest.starts_with("<!--") ? "-->"
                                 : rest.starts_with("<?") ? "?>"
                                                          : ">";
    const size_t length = rest.find(end);
    if (length == rest.npos) return fail("a tag has no end");
    if (end == ">" && !readTag(rest.substr(1, length - 1), open)) return false;
    rest.remove_prefix(length + end.size());
  }
  if (!open.empty()) return fail("the end is missing");
  if (root_ == nullptr) return fail("no root");
  for (const auto& element : elements_) {  // the layout between elements is no text
    if (!element->children_.empty() && isBlank(element->text_)) element->text_.clear();
  }
  return true;
}

bool Document::readTag(std::string_view tag, std::vector<Element*>& open) {
  if (tag.starts_with("/")) return readClosing(tag.substr(1), open);
  const bool empty = tag.ends_with("/");
  if (empty) tag.remove_suffix(1);
  const size_t nameEnd = std::min(tag.find_first_of(" \t\r\n"), tag.size());
  if (nameEnd == 0 || tag.find('<') != tag.npos) return fail("a tag has no name");
  Element* const element = make(std::string(tag.substr(0, nameEnd)));
  if (!readAttributes(tag.substr(nameEnd), *element)) return false;
  if (open.empty() && root_ != nullptr) return fail("more than one root");
  open.empty() ? setRoot(element) : open.back()->appendChild(element);
  if (!empty) open.push_back(element);
  return true;
}

bool Document::readAttributes(std::string_view rest, Element& element) {
  while (!isBlank(rest)) {
    rest.remove_prefix(rest.find_first_not_of(" \t\r\n"));
    const size_t quote = rest.find("=\"");
    if (quote == rest.npos) return fail("an attribute has no value");
    const size_t end = rest.find('"', quote + 2);
    if (end == rest.npos) return fail("an attribute has no end");
    element.setBytes(std::string(rest.substr(0, quote)),
                     decoded(rest.substr(quote + 2, end - quote - 2)));
    rest.remove_prefix(end + 1);
  }
  return true;
}

bool Document::readClosing(std::string_view name, std::vector<Element*>& open) {
  if (open.empty() || open.back()->tag_ != name) return fail("tags do not match");
  open.pop_back();
  return true;
}

class Saving {
 public:
  std::string run(const Element& root) {
    bytes_ = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    put(root, 0);
    return std::move(bytes_);
  }

 private:
  void put(const Element& element, size_t depth) {
    bytes_ += std::string(depth, '\t') + "<" + element.tag_;
    for (const auto& [name, value] : element.attributes_) {
      bytes_ += " " + name + "=\"" + encoded(value) + "\"";
    }
    if (element.children_.empty() && element.text_.empty()) {
      bytes_ += " />\n";
      return;
    }
    bytes_ += ">" + encoded(element.text_);
    if (!element.children_.empty()) bytes_ += "\n";
    for (const Element* child : element.children_) put(*child, depth + 1);
    if (!element.children_.empty()) bytes_ += std::string(depth, '\t');
    bytes_ += "</" + element.tag_ + ">\n";
  }

  std::string bytes_;
};

bool Document::save(const OroPath& path) {
  FakeXml* const library = FakeXml::current();
  if (library != nullptr) {
    ++library->saves;
    if (library->savesLeft-- <= 0) return false;
  }
  if (root_ == nullptr) return false;
  const std::string bytes = Saving().run(*root_);
  OroWholeFile file;
  if (!file.open(path)) return false;
  constexpr size_t kBlock = 64;  // small, so that a disk has many places to be full at
  for (size_t at = 0; at < bytes.size(); at += kBlock) {
    file.write(bytes.data() + at, std::min(kBlock, bytes.size() - at));
  }
  return file.commit();
}

}  // namespace

FakeXml*& FakeXml::current() {
  static FakeXml* library = nullptr;
  return library;
}

int32_t FakeXml::getService(const KelCString& interfaceName, void** out) {
  if (!interfaceName.equals(IOroDOMXml::interfaceName())) {
    return FakeBroker::getService(interfaceName, out);
  }
  *out = nullptr;
  if (!available) return 0;
  ++documents;
  *out = make();
  return 1;
}

IOroDOMXml* newFakeXmlDocument() { return new Document; }

}  // namespace tests

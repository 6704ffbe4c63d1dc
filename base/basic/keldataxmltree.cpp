#include "base/basic/keldataxmltree.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "base/basic/keldataxmltable.h"
#include "base/basic/keldataxmltypes.h"
#include "base/basic/kelnaturalorder.h"
#include "interfaces/IOroDOMXml.h"
#include "interfaces/IOroDOMXmlElement.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "platform/text.h"

namespace {

constexpr const char kRoot[] = "OroDataStore";
constexpr const char kSection[] = "section";
constexpr const char kValue[] = "value";
constexpr const char kName[] = "name";
constexpr const char kType[] = "type";

// Deep nesting makes paths of many times the document's own size: this many bytes are enough for
// millions of settings and too few to harm.
constexpr size_t kMostPathBytes = size_t{256} << 20;

// Most types are the store's own, whose names need no copy.
void readType(const IOroDOMXmlElement& element, OroString& type) {
  const char* const name = element.attribute(kType);
  for (const OroString* known :
       {&keldataxmltypes::integer, &keldataxmltypes::wide, &keldataxmltypes::floating,
        &keldataxmltypes::narrow, &keldataxmltypes::blob}) {
    if (name == nullptr || std::strcmp(known->toNarrow(), name) != 0) continue;
    type = *known;
    return;
  }
  element.wideAttribute(kType, type);
}

// Walks the sections with a stack of its own.
class Flattening {
 public:
  explicit Flattening(KelDataXMLTable& table) : table_(table) {}

  bool run(IOroDOMXmlElement& root) {
    enter(root);
    while (!open_.empty() && pathBytes_ <= kMostPathBytes) step();
    return open_.empty();
  }

 private:
  struct Section {
    IOroDOMXmlElementItr* next;
    size_t pathLength;  // of its own path with a '/' behind, in path_
  };

  void enter(IOroDOMXmlElement& section) { open_.push_back({section.children(), path_.size()}); }

  void step() {
    const Section section = open_.back();
    path_.resize(section.pathLength);
    if (section.next->atEnd()) {
      open_.pop_back();
      return;
    }
    IOroDOMXmlElement* const element = section.next->element();
    section.next->advance();
    const char* const name = element->attribute(kName);
    if (name != nullptr) path_ += name;
    if (std::strcmp(element->tagName(), kValue) == 0) {
      store(*element);
    } else {
      path_ += '/';
      enter(*element);
    }
  }

  void store(const IOroDOMXmlElement& element) {
    pathBytes_ += path_.size();
    KelDataXMLValue& value = table_.at(path_);
    readType(element, value.type);
    element.text(value.text);
  }

  KelDataXMLTable& table_;
  std::vector<Section> open_;
  std::string path_;
  size_t pathBytes_ = 0;  // of all values so far
};

using Entry = KelDataXMLTable::Table::Entry;

// A byte that is no UTF-8 is decoded as the second half of a pair, alone.
bool hasStrayByte(std::u16string_view name) {
  bool inPair = false;
  for (const char16_t unit : name) {
    if ((unit & 0xFC00) == 0xDC00 && !inPair) return true;
    inPair = (unit & 0xFC00) == 0xD800;
  }
  return false;
}

// A segment that is no UTF-8 goes out widened, so that it does not become one with others.
OroString nameOf(std::string_view segment) {
  const std::u16string name = platform::fromSystem(segment);
  if (!hasStrayByte(name)) return OroString(name.c_str());
  return OroString(segment.data(), static_cast<int>(segment.size()));
}

// Appends the values in their order; the sections that are open are the prefixes of the last path.
class Building {
 public:
  Building(IOroDOMXml& document, IOroDOMXmlElement* root) : document_(document) {
    open_.push_back({root, 0});
  }

  bool append(const Entry& entry) {
    const std::string_view path = entry.key.c_str();
    while (!path.starts_with(prefix())) open_.pop_back();
    size_t start = open_.back().pathLength;
    for (size_t slash; (slash = path.find('/', start)) != path.npos; start = slash + 1) {
      IOroDOMXmlElement* const section = child(kSection, path.substr(start, slash - start));
      if (section == nullptr) return false;
      open_.push_back({section, slash + 1});
    }
    path_ = path;
    IOroDOMXmlElement* const value = child(kValue, path.substr(start));
    return value != nullptr && value->setAttribute(kType, entry.value.type) &&
           value->setText(entry.value.text);
  }

 private:
  struct Section {
    IOroDOMXmlElement* element;
    size_t pathLength;  // of its own path with a '/' behind, in path_
  };

  std::string_view prefix() const { return path_.substr(0, open_.back().pathLength); }

  IOroDOMXmlElement* child(const char* tag, std::string_view name) {
    IOroDOMXmlElement* const element = document_.createElement(tag);
    const bool appended = element != nullptr && element->setAttribute(kName, nameOf(name)) &&
                          open_.back().element->appendChild(element);
    return appended ? element : nullptr;
  }

  IOroDOMXml& document_;
  std::vector<Section> open_;
  std::string_view path_;  // the last one; the table's
};

}  // namespace

bool kelFlattenDocument(IOroDOMXml& document, KelDataXMLTable& table) {
  IOroDOMXmlElement* const root = document.root();
  return root != nullptr && Flattening(table).run(*root);
}

bool kelBuildDocument(const KelDataXMLTable& table, IOroDOMXml& document) {
  IOroDOMXmlElement* const root = document.createElement(kRoot);
  if (root == nullptr || !document.setRoot(root)) return false;
  std::vector<const Entry*> entries;
  entries.reserve(table.count());
  for (const Entry& entry : table.entries()) entries.push_back(&entry);
  kelNaturalSort(entries, [](const Entry* entry) { return entry->key.c_str(); });
  Building building(document, root);
  for (const Entry* entry : entries) {
    if (!building.append(*entry)) return false;
  }
  return true;
}

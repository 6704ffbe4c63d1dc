#include "tests/base/basic/documentdouble.h"

#include "base/basic/keldatavisitor.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataString.h"
#include "orobasictypes/orostring.h"

namespace tests {

namespace {

DocumentDouble* current = nullptr;

class DoubleReader : public KelDataVisitor {
 public:
  explicit DoubleReader(bool notify) : KelDataVisitor(kReading), notify_(notify) {}

  bool Begin() override {
    if (!current->readable) return false;
    current->merge();
    return true;
  }
  bool VisitInt(IKelDataInt* item) override {
    const std::string* const text = valueOf(item);
    if (text == nullptr) return !takesPart(item);
    const int32_t value = std::stoi(*text);
    return notify_ ? (item->Update(value, nullptr, false), true) : read(item, value);
  }
  bool VisitString(IKelDataString* item) override {
    const std::string* const text = valueOf(item);
    if (text == nullptr) return !takesPart(item);
    const char* const value = text->c_str();
    return notify_ ? (item->Update(value, nullptr, false), true) : read(item, value);
  }

 private:
  template <class Item>
  bool takesPart(Item* item) {
    auto* const any = oroQuery<IKelDataItem>(item);
    return (any->GetFlags() & IKelDataItem::kPersistent) != 0;
  }
  template <class Item>
  const std::string* valueOf(Item* item) {
    if (!takesPart(item)) return nullptr;
    const auto found = current->values.find(oroQuery<IKelDataItem>(item)->GetPath());
    return found == current->values.end() ? nullptr : &found->second;
  }
  template <class Item, class Value>
  bool read(Item* item, Value value) {
    item->Set(value);
    oroQuery<IKelDataItem>(item)->CopyLayer(0, 1);
    return true;
  }

  bool notify_;
};

class DoubleWriter : public KelDataVisitor {
 public:
  DoubleWriter() : KelDataVisitor(kWriting) {}

  bool Begin() override {
    if (current->writable) current->journalFileMade = true;
    return current->writable;
  }
  bool VisitInt(IKelDataInt* item) override { return write(item, std::to_string(item->Get())); }
  bool VisitString(IKelDataString* item) override { return write(item, item->Get()); }

 private:
  template <class Item>
  bool write(Item* typed, const std::string& value) {
    auto* const item = oroQuery<IKelDataItem>(typed);
    const uint32_t flags = item->GetFlags();
    if ((flags & IKelDataItem::kPersistent) == 0) return true;
    if ((flags & IKelDataItem::kInitialiseAll) == 0 && !item->LayersDiffer(0, 1)) return true;
    current->journal.push_back(item->GetPath() + ("=" + value));
    item->CopyLayer(0, 1);
    return true;
  }
};

template <class Visitor, class... Arguments>
IKelDataVisitor* make(const std::string& what, Arguments... arguments) {
  current->made.push_back(what);
  return new Visitor(arguments...);
}

std::string described(const char* what, const OroString& path, bool notify) {
  return std::string(what) + " " + path.toUtf8() + (notify ? " 1" : " 0");
}

}  // namespace

DocumentDouble::DocumentDouble() : before_(kelDataFactories()) {
  current = this;
  KelDataFactories& table = kelDataFactories();
  table.defaultXmlReader = [] { return make<DoubleReader>("default reader", false); };
  table.defaultXmlWriter = [] { return make<DoubleWriter>("default writer"); };
  table.registryReader = [] { return make<DoubleReader>("registry reader", false); };
  table.registryWriter = [] { return make<DoubleWriter>("registry writer"); };
  table.fileReader = [](const OroString& path, bool notify) {
    return make<DoubleReader>(described("file reader", path, notify), notify);
  };
  table.fileWriter = [](const OroString& path) {
    return make<DoubleWriter>(std::string("file writer ") + path.toUtf8());
  };
  table.xmlReader = [](const OroString& path, bool notify) {
    return make<DoubleReader>(described("xml reader", path, notify), notify);
  };
  table.xmlWriter = [](const OroString& path) {
    return make<DoubleWriter>(std::string("xml writer ") + path.toUtf8());
  };
  table.commit = [](IKelDataVisitor*) {
    ++current->commits;
    current->merge();
    return current->writable;
  };
}

DocumentDouble::~DocumentDouble() {
  kelDataFactories() = before_;
  current = nullptr;
}

void DocumentDouble::merge() {
  for (const std::string& line : journal) {
    const size_t equals = line.find('=');
    values[line.substr(0, equals)] = line.substr(equals + 1);
  }
  journal.clear();
}

}  // namespace tests

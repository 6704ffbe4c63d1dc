#include "framework/kelregistry.h"

#include <cstring>
#include <ostream>
#include <string>

#include "framework/kelchildtable.h"
#include "framework/kelregiter.h"
#include "framework/keysegments.h"
#include "framework/subiter.h"
#include "orobasictypes/oroarray.h"

KelRegistry::~KelRegistry() {
  OroArray<KelChildTable*> doomed;
  if (children_ != nullptr) doomed.add(children_);
  while (!doomed.isEmpty()) {
    KelChildTable* const table = doomed.last();
    doomed.pop();
    // The grandchildren are taken off first: a chain of any length ends without recursion.
    for (int32_t i = 1; i <= table->nodeCount(); ++i) {
      KelRegistry* const child = table->node(i);
      if (child == nullptr || child->children_ == nullptr) continue;
      doomed.add(child->children_);
      child->children_ = nullptr;
    }
    delete table;
  }
}

SubIter* KelRegistry::subIter(KelCString& path) {
  KeySegments segments(path);
  segments.next();
  if (segments.text()[0] == '\0') return nullptr;
  const KelRegistry* const child =
      children_ != nullptr ? children_->find(segments.text()) : nullptr;
  return new SubIter(child != nullptr ? child->children_ : nullptr);
}

int32_t KelRegistry::setValue(KelCString& key, const KelCString& value) {
  KelRegistry* node = this;
  for (KeySegments segments(key); segments.next();) {
    if (node->children_ == nullptr) node->children_ = new KelChildTable;
    KelRegistry* const child = node->children_->find(segments.text());
    node = child != nullptr ? child : node->children_->add(segments.text());
  }
  node->value_ = value;
  return 1;
}

int32_t KelRegistry::removeKey(KelCString& key) {
  KelRegistry* node = this;
  KeySegments segments(key);
  do {
    segments.next();
    if (node->children_ == nullptr) return 0;
    if (segments.isLast()) return node->children_->remove(segments.text()) ? 1 : 0;
    node = node->children_->find(segments.text());
  } while (node != nullptr);
  return 0;
}

KelRegistry* KelRegistry::find(KelCString& key) {
  KelRegistry* node = this;
  for (KeySegments segments(key); node != nullptr && segments.next();) {
    node = node->children_ != nullptr ? node->children_->find(segments.text()) : nullptr;
  }
  return node;
}

const KelCString* KelRegistry::getValue(KelCString& key) {
  const KelRegistry* const node = find(key);
  return node != nullptr ? &node->value_ : nullptr;
}

const KelCString* KelRegistry::getValue2(KelCString& section, KelCString& key) {
  if (section.isEmpty()) return getValue(key);
  if (key.isEmpty()) return getValue(section);
  KelCString joined(section.text(), "/", key.text());
  return getValue(joined);
}

bool KelRegistry::valueEquals(KelCString& key, const char* text) {
  const KelCString* const value = getValue(key);
  if (value == nullptr) return false;
  if (value->isEmpty()) return text == nullptr || *text == '\0';
  return text != nullptr && std::strcmp(value->text(), text) == 0;
}

int32_t KelRegistry::getInt(KelCString& key, int32_t fallback) {
  const KelCString* const value = getValue(key);
  return value != nullptr ? value->toInt() : fallback;
}

Velmora::IOroRegIter* KelRegistry::newIterator(KelCString& key) {
  KelRegistry* const node = find(key);
  return node != nullptr ? new KelRegIter(*node, new SubIter(node->children_)) : nullptr;
}

void KelRegistry::dump(std::ostream& stream, int32_t indent) const {
  // The bound counts the children that are left, not the places; readers of dumps know it so.
  const int32_t count = children_ != nullptr ? children_->entryCount() : 0;
  for (int32_t i = 1; i <= count; ++i) {
    if (children_->key(i).isEmpty()) continue;
    const KelRegistry& child = *children_->node(i);
    stream << std::string(static_cast<size_t>(indent) * 4, ' ');
    if (child.hasTable()) {
      stream << '[' << children_->key(i).text() << "]\n";
    } else {
      stream << children_->key(i).text();
    }
    child.dump(stream, indent + 1);
  }
  if (!value_.isEmpty()) stream << " = '" << value_.text() << "'\n";
}

#include "framework/kelchildtable.h"

#include "framework/kelregistry.h"

KelChildTable::~KelChildTable() {
  for (int32_t i = nodes_.count(); i >= 1; --i) delete nodes_[i];
}

KelRegistry* KelChildTable::find(const char* key) const {
  const auto* const entry = index_.find(KelCString::borrow(key));
  return entry != nullptr ? nodes_[entry->value] : nullptr;
}

KelRegistry* KelChildTable::add(const char* key) {
  const int32_t number = nodes_.add(new KelRegistry);
  keys_.add(KelCString(key));
  index_.insert(KelCString(key), number);
  return nodes_[number];
}

bool KelChildTable::remove(const char* key) {
  const KelCString name = KelCString::borrow(key);
  const auto* const entry = index_.find(name);
  if (entry == nullptr) return false;
  const int32_t number = entry->value;
  delete nodes_[number];
  nodes_[number] = nullptr;
  keys_[number] = KelCString();
  index_.remove(name);
  return true;
}

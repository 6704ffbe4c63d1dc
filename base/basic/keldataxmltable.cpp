#include "base/basic/keldataxmltable.h"

#include <cstring>
#include <utility>

#include "orobasictypes/kelhash.h"

KelDataXMLTable::Table::Entry* KelDataXMLTable::entry(std::string_view path,
                                                      uint32_t* index) const {
  const auto equal = [path](const KelCString& key) {
    const char* const text = key.c_str();
    return std::strncmp(text, path.data(), path.size()) == 0 && text[path.size()] == '\0';
  };
  return table_.findHashed(kelHashBytes(path.data(), path.size()), equal, index);
}

KelDataXMLValue* KelDataXMLTable::find(std::string_view path) const {
  Table::Entry* const found = entry(path, nullptr);
  return found == nullptr ? nullptr : &found->value;
}

KelDataXMLValue& KelDataXMLTable::at(std::string_view path) {
  uint32_t index = 0;
  if (Table::Entry* const found = entry(path, &index)) return found->value;
  KelCString key(path.data(), static_cast<int>(path.size()));
  return table_.insert(index, std::move(key), KelDataXMLValue())->value;
}

void KelDataXMLTable::put(std::string_view path, const OroString& type, const OroString& text) {
  KelDataXMLValue& value = at(path);
  value.type = type;
  value.text = text;
}

void KelDataXMLTable::overlay(KelDataXMLTable& other) {
  for (Table::Entry& own : other.table_) at(own.key.c_str()) = std::move(own.value);
  other.clear();
}

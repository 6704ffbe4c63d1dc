// KelDataXMLTable: the values of a settings document by their full paths, each a type name and the
// value's text.
//
//   table.put("GUI/Width", type, text);
//   if (const KelDataXMLValue* value = table.find("GUI/Width")) use(value->text);
//
// Paths are bytes, compared exactly. Walking it goes in table order, which a sort of the paths
// starts from. Owns its values. No locks: one thread at a time.
#pragma once

#include <cstdint>
#include <string_view>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orostring.h"

struct KelDataXMLValue {
  OroString type;  // carried along, never used for reading
  OroString text;
};

class KelDataXMLTable {
 public:
  using Table = OroHashTable<KelCString, KelDataXMLValue>;

  KelDataXMLTable() : table_(Table::withBuckets(kFirstBuckets)) {}

  // The value, which keeps its address until the table is cleared; null when there is none.
  KelDataXMLValue* find(std::string_view path) const;
  // The value, made empty when there is none.
  KelDataXMLValue& at(std::string_view path);
  void put(std::string_view path, const OroString& type, const OroString& text);
  // Takes over the other's values, over its own where both have one. The other is empty then.
  void overlay(KelDataXMLTable& other);
  void clear() { table_.clear(); }

  uint32_t count() const { return table_.entryCount(); }
  const Table& entries() const { return table_; }

 private:
  static constexpr uint32_t kFirstBuckets = 131;

  Table::Entry* entry(std::string_view path, uint32_t* index) const;

  Table table_;
};

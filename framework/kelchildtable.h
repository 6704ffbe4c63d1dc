// KelChildTable: the children of one registry node, by number and by key.
//
// Numbers start at 1, are given once and never again, so that the order of the first making is the
// order of walks. A removed child leaves a null and an empty key in its place. The table owns its
// nodes and deletes them, whatever their counts.
#pragma once

#include <cstdint>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"

class KelRegistry;

class KelChildTable {
 public:
  KelChildTable() = default;
  ~KelChildTable();  // from the highest number down
  KelChildTable(const KelChildTable&) = delete;
  KelChildTable& operator=(const KelChildTable&) = delete;

  // The child with this key, or null.
  KelRegistry* find(const char* key) const;
  // A new child in the next place. Requires: none has this key.
  KelRegistry* add(const char* key);
  // Deletes the child with all below it; false if there is none.
  bool remove(const char* key);

  // The highest number given so far.
  int32_t nodeCount() const { return nodes_.count(); }
  // How many children there are.
  int32_t entryCount() const { return static_cast<int32_t>(index_.entryCount()); }
  // 1 to nodeCount(); null and empty for a removed child.
  KelRegistry* node(int32_t number) const { return nodes_[number]; }
  const KelCString& key(int32_t number) const { return keys_[number]; }

 private:
  static constexpr int32_t kFirstCapacity = 3;
  static constexpr uint32_t kBuckets = 17;

  OroArray<KelRegistry*> nodes_{kFirstCapacity};
  OroArray<KelCString> keys_{kFirstCapacity};
  OroHashTable<KelCString, int32_t> index_ =
      OroHashTable<KelCString, int32_t>::withBuckets(kBuckets);
};

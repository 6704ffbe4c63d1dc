// KelDataIndex: finds items or directories of a store by full path, in either form of a path.
//
// A thin cover of OroHashTable: the order of its entries is the order in which the store notifies
// all items. A path is a text, or a list of pieces that is hashed and compared as if joined. It
// owns its keys' texts only where it is given owned ones, and never what it points to.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelhash.h"
#include "orobasictypes/orohashtable.h"

template <class T>
class KelDataIndex {
 public:
  using Table = OroHashTable<KelCString, T*>;
  using Entry = typename Table::Entry;
  using Pieces = const char* const*;

  // Sized for so many paths.
  explicit KelDataIndex(int32_t expected)
      : table_(expected <= 2 ? kSmallSize : static_cast<uint32_t>(expected - 1)) {}

  // The entry of a path, borrowed, or null; a null path has none, a null list is the empty path.
  Entry* find(const char* path) const {
    if (path == nullptr) return nullptr;
    return table_.findHashed(kelHashText(path), [path](const KelCString& key) {
      return std::strcmp(key.text(), path) == 0;
    });
  }
  Entry* find(std::string_view path) const {
    return table_.findHashed(kelHashBytes(path.data(), path.size()),
                             [path](const KelCString& key) { return key.text() == path; });
  }
  Entry* find(Pieces pieces) const {
    if (pieces == nullptr) return find("");
    return table_.findHashed(kelHashList(pieces),
                             [pieces](const KelCString& key) { return joins(key.text(), pieces); });
  }
  // What stands under the path; null when there is no entry, and for an entry without a value.
  template <class Path>
  T* value(Path path) const {
    const Entry* const entry = find(path);
    return entry == nullptr ? nullptr : entry->value;
  }

  // A borrowed key must stay valid as long as its entry. Requires: no entry of this path.
  void add(KelCString key, T* value) { table_.insert(std::move(key), value); }
  bool remove(const char* path) { return table_.remove(KelCString::borrow(path)); }
  void clear() { table_.clear(); }
  const Table& table() const { return table_; }
  Table& table() { return table_; }

 private:
  static constexpr uint32_t kSmallSize = 16;  // 17 buckets

  static bool joins(const char* text, Pieces pieces) {
    for (; *pieces != nullptr; ++pieces) {
      const size_t length = std::strlen(*pieces);
      if (std::strncmp(text, *pieces, length) != 0) return false;
      text += length;
    }
    return *text == '\0';
  }

  Table table_;
};

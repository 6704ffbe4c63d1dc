// OroHashTable: the one chained hash table of the system.
//
//   OroHashTable<KelCString, int32_t> ages(6);                // 11 buckets
//   uint32_t index;
//   if (!ages.find(name, &index)) ages.insert(index, name, 7);
//   for (auto& entry : ages) print(entry.key, entry.value);
//
// Its order can be seen from outside and does not change: buckets upward, in each chain the newest
// entry first, chains reversed at each growth. Entries keep their address until they are removed.
// The table owns its entries. No locks: the owner guards it.
#pragma once

#include <cassert>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelhash.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/oroguid.h"

// The first size of the prime table above `count`, at most 2147483659. Bucket counts come from it.
uint32_t oroNextPrime(uint32_t count);

// How keys hash and compare. Other classes bring hash() and equals() or ==.
template <class Key>
struct OroHashTraits {
  static uint32_t hash(const Key& key) { return static_cast<uint32_t>(key.hash()); }
  static bool equal(const Key& a, const Key& b) {
    if constexpr (requires { a.equals(b); }) {
      return a.equals(b);
    } else {
      return a == b;
    }
  }
};

// Null and "" are two keys. Literals often meet themselves, so the addresses are compared first.
template <>
struct OroHashTraits<KelCString> {
  static uint32_t hash(const KelCString& key) { return kelHashText(key.text()); }
  static bool equal(const KelCString& a, const KelCString& b) {
    if (a.text() == b.text()) return true;
    return !a.isNull() && !b.isNull() && std::strcmp(a.text(), b.text()) == 0;
  }
};

template <>
struct OroHashTraits<GUID> {
  static uint32_t hash(const GUID& key) { return key.data1; }
  static bool equal(const GUID& a, const GUID& b) { return a == b; }
};

// Pointers hash by their low half and compare whole.
template <class T>
struct OroHashTraits<T*> {
  static uint32_t hash(const T* key) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(key));
  }
  static bool equal(const T* a, const T* b) { return a == b; }
};

template <class Key, class Value, class Traits = OroHashTraits<Key>>
class OroHashTable {
 public:
  struct Entry {
    uint32_t bucket;  // the index that it is filed under
    uint32_t hash;    // of the key; spares most comparisons with other keys
    Key key;
    Value value;
    Entry* next;  // older entry of the chain, or null
  };
  template <class E>
  class Walk;
  using Iterator = Walk<Entry>;
  using ConstIterator = Walk<const Entry>;

  // With oroNextPrime(count) buckets. The bucket array is made at the first insertion, or at once.
  explicit OroHashTable(uint32_t count, bool allocate = false) {
    setBucketCount(oroNextPrime(count));
    if (allocate) makeBuckets();
  }
  // With `count` buckets where that is a size of the prime table, else with the next size.
  static OroHashTable withBuckets(uint32_t count) {
    return OroHashTable(count < 2 ? 0 : count - 1);
  }
  OroHashTable(const OroHashTable&) = delete;
  OroHashTable& operator=(const OroHashTable&) = delete;
  ~OroHashTable() { clear(); }

  // The first entry with this key, borrowed, or null. `index` receives the bucket of the key, also
  // without a hit; it is good for insert() until the next insertion. Allocates nothing.
  Entry* find(const Key& key, uint32_t* index = nullptr) const {
    return findHashed(
        Traits::hash(key), [&](const Key& k) { return Traits::equal(k, key); }, index);
  }
  // The same without a Key at hand: `hash` is what the key would hash to, and `equal(const Key&)`
  // tells whether a key is the one that is looked for.
  template <class Equal>
  Entry* findHashed(uint32_t hash, const Equal& equal, uint32_t* index = nullptr) const;

  // Puts a new entry in front of the chain at `index`, where find() said that the key belongs, and
  // returns it. Does not look for the key: the new entry hides an older one.
  Entry* insert(uint32_t index, Key key, Value value) {
    const uint32_t hash = Traits::hash(key);
    assert(index == reduce(hash));
    return insertHashed(index, hash, std::move(key), std::move(value));
  }
  // The same at the key's own bucket.
  Entry* insert(Key key, Value value) {
    const uint32_t hash = Traits::hash(key);
    return insertHashed(reduce(hash), hash, std::move(key), std::move(value));
  }
  // Removes and destroys the first entry with this key; false if there is none.
  bool remove(const Key& key) {
    return removeHashed(Traits::hash(key), [&](const Key& k) { return Traits::equal(k, key); });
  }
  template <class Equal>
  bool removeHashed(uint32_t hash, const Equal& equal);
  // Destroys all entries and the bucket array; the bucket count stays.
  void clear();

  uint32_t entryCount() const { return entryCount_; }
  uint32_t bucketCount() const { return bucketCount_; }
  bool isEmpty() const { return entryCount_ == 0; }
  // False before the first insertion and after clear().
  bool hasBuckets() const { return buckets_ != nullptr; }
  // The bucket of a hash.
  uint32_t reduce(uint32_t hash) const {
    // The remainder without a division: the fraction of hash / bucketCount times bucketCount.
    const uint64_t fraction = reciprocal_ * hash;
    return static_cast<uint32_t>((static_cast<unsigned __int128>(fraction) * bucketCount_) >> 64);
  }

  // All entries in table order. An insertion or removal ends the walk.
  Iterator begin() { return Iterator(*this); }
  Iterator end() { return Iterator(); }
  ConstIterator begin() const { return ConstIterator(*this); }
  ConstIterator end() const { return ConstIterator(); }

 private:
  void setBucketCount(uint32_t count) {
    bucketCount_ = count;
    reciprocal_ = UINT64_MAX / count + 1;
  }
  Entry* insertHashed(uint32_t index, uint32_t hash, Key key, Value value);
  void makeBuckets();
  void grow();
  static void destroy(Entry* entry);

  Entry** buckets_ = nullptr;  // bucketCount_ chains, or null
  uint32_t bucketCount_ = 0;   // a size of the prime table
  uint32_t entryCount_ = 0;
  uint64_t reciprocal_ = 0;  // 2 to the 64 over bucketCount_, rounded up
};

template <class Key, class Value, class Traits>
template <class E>
class OroHashTable<Key, Value, Traits>::Walk {
 public:
  Walk() = default;
  explicit Walk(const OroHashTable& table) : table_(&table) {
    if (table.buckets_ != nullptr) settle(0);
  }
  E& operator*() const { return *entry_; }
  E* operator->() const { return entry_; }
  Walk& operator++() {
    const uint32_t next = entry_->bucket + 1;
    entry_ = entry_->next;
    if (entry_ == nullptr) settle(next);
    return *this;
  }
  friend bool operator==(const Walk& a, const Walk& b) { return a.entry_ == b.entry_; }

 private:
  void settle(uint32_t bucket) {
    for (; bucket < table_->bucketCount_; ++bucket) {
      entry_ = table_->buckets_[bucket];
      if (entry_ != nullptr) return;
    }
  }

  const OroHashTable* table_ = nullptr;
  E* entry_ = nullptr;  // null at the end
};

template <class Key, class Value, class Traits>
template <class Equal>
typename OroHashTable<Key, Value, Traits>::Entry* OroHashTable<Key, Value, Traits>::findHashed(
    uint32_t hash, const Equal& equal, uint32_t* index) const {
  const uint32_t bucket = reduce(hash);
  if (index != nullptr) *index = bucket;
  if (buckets_ == nullptr) return nullptr;
  Entry* entry = buckets_[bucket];
  while (entry != nullptr && (entry->hash != hash || !equal(entry->key))) entry = entry->next;
  return entry;
}

template <class Key, class Value, class Traits>
typename OroHashTable<Key, Value, Traits>::Entry* OroHashTable<Key, Value, Traits>::insertHashed(
    uint32_t index, uint32_t hash, Key key, Value value) {
  static_assert(alignof(Entry) <= alignof(std::max_align_t));
  if (buckets_ == nullptr) makeBuckets();
  void* storage = nullptr;
  kelMalloc(storage, sizeof(Entry), 1);
  Entry*& head = buckets_[index];
  head = new (storage) Entry{index, hash, std::move(key), std::move(value), head};
  Entry* const entry = head;
  ++entryCount_;
  if (static_cast<double>(entryCount_) >= bucketCount_ * 0.8) grow();
  return entry;
}

template <class Key, class Value, class Traits>
template <class Equal>
bool OroHashTable<Key, Value, Traits>::removeHashed(uint32_t hash, const Equal& equal) {
  if (buckets_ == nullptr) return false;
  for (Entry** link = &buckets_[reduce(hash)]; *link != nullptr; link = &(*link)->next) {
    Entry* const entry = *link;
    if (entry->hash != hash || !equal(entry->key)) continue;
    *link = entry->next;
    --entryCount_;
    destroy(entry);
    return true;
  }
  return false;
}

template <class Key, class Value, class Traits>
void OroHashTable<Key, Value, Traits>::clear() {
  if (buckets_ == nullptr) return;
  Entry** const buckets = std::exchange(buckets_, nullptr);
  entryCount_ = 0;  // a destructor that looks at this table finds it empty
  for (uint32_t i = 0; i < bucketCount_; ++i) {
    for (Entry* entry = buckets[i]; entry != nullptr;) destroy(std::exchange(entry, entry->next));
  }
  kelFree(buckets);
}

template <class Key, class Value, class Traits>
void OroHashTable<Key, Value, Traits>::makeBuckets() {
  kelMalloc(buckets_, sizeof(Entry*), static_cast<int32_t>(bucketCount_));
  std::memset(buckets_, 0, sizeof(Entry*) * bucketCount_);
}

// Heads of chains move to heads of chains, so that each chain is reversed; callers see the order.
template <class Key, class Value, class Traits>
void OroHashTable<Key, Value, Traits>::grow() {
  const uint32_t oldCount = bucketCount_;
  const uint32_t newCount = oroNextPrime(oldCount);
  if (newCount == oldCount) return;
  Entry** const oldBuckets = buckets_;
  setBucketCount(newCount);
  makeBuckets();
  for (uint32_t i = 0; i < oldCount; ++i) {
    for (Entry* entry = oldBuckets[i]; entry != nullptr;) {
      Entry* const next = entry->next;
      entry->bucket = reduce(entry->hash);
      entry->next = std::exchange(buckets_[entry->bucket], entry);
      entry = next;
    }
  }
  kelFree(oldBuckets);
}

template <class Key, class Value, class Traits>
void OroHashTable<Key, Value, Traits>::destroy(Entry* entry) {
  entry->~Entry();
  kelFree(entry);
}

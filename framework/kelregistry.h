// KelRegistry: one node of the process-wide tree of named texts, and through its root the service
// IOroRegistry.
//
// Each node is a full registry of what lies below it and owns its children outright; only the root
// is counted. Paths of any depth are followed without recursion. Not locked: see IOroRegistry.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"

class KelChildTable;
class SubIter;

class KelRegistry : public Velmora::IOroRegistry {
 public:
  static constexpr const char* className() { return "KelRegistry"; }
  using Offers = OroOffers<KelRegistry, Velmora::IOroRegistry>;

  KelRegistry() = default;
  KelRegistry(const KelRegistry&) = delete;
  KelRegistry& operator=(const KelRegistry&) = delete;
  ~KelRegistry() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // A walk over the children of the child that the path's first segment names, which the caller
  // deletes; null for an empty first segment. What follows the first segment is dropped: the walk
  // is made for two levels.
  virtual SubIter* subIter(KelCString& path);

  int32_t setValue(KelCString& key, const KelCString& value) override;
  int32_t removeKey(KelCString& key) override;
  const KelCString* getValue2(KelCString& section, KelCString& key) override;
  const KelCString* getValue(KelCString& key) override;
  bool valueEquals(KelCString& key, const char* text) override;
  int32_t getInt(KelCString& key, int32_t fallback) override;
  Velmora::IOroRegIter* newIterator(KelCString& key) override;

  // For diagnosis: the tree below this node, `indent` levels in. After removals the children made
  // last are missing from it.
  void dump(std::ostream& stream, int32_t indent) const;

  const KelCString& ownValue() const { return value_; }
  bool hasTable() const { return children_ != nullptr; }

 private:
  KelRegistry* find(KelCString& key);

  KelChildTable* children_ = nullptr;  // owned; null until the first child
  KelCString value_;                   // empty: no value
};

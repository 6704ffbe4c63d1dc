// KelDataDirectory: one section of the settings tree; owns its sections and items.
//
// The store makes directories as paths need them. Searches go by the list, since sections are
// small; only many subdirectories, as an import may bring, are found through a table of names.
// Whole paths are found through the store's index instead. One thread at a time.
#pragma once

#include <cstdint>
#include <string_view>

#include "interfaces/IKelDataDirectory.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orooffers.h"

class KelDataDirectory final : public IKelDataDirectory {
 public:
  static constexpr const char* className() { return "KelDataDirectory"; }
  using Offers = OroOffers<KelDataDirectory, IKelDataDirectory>;

  // Named by one segment, copied; the root's name is empty.
  explicit KelDataDirectory(std::string_view name);
  ~KelDataDirectory() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const char* GetPath() const override { return name_.c_str(); }
  const char* GetName() const override;
  void AddDirectory(IKelDataDirectory* directory) override;
  bool RemoveDirectory(IKelDataDirectory* directory) override;
  void AddItem(IKelDataItem* item) override;
  bool RemoveItem(IKelDataItem* item) override;
  IKelDataDirectory* FindDirectory(const char* name, int32_t length) override;
  IKelDataDirectory* GetDirectory(const char* name) override;
  IKelDataItem* GetItem(const char* name) override;
  bool Accept(IKelDataVisitor* visitor) override;
  void CopyLayers(int32_t from, int32_t to) override;
  bool CollectPaths(OroArray<const char*>& list) override;

  // As the removals, but the child passes to the caller instead of being deleted.
  bool takeDirectory(IKelDataDirectory* directory);
  bool takeItem(IKelDataItem* item);

  // For whoever removes a whole subtree. Items from 1 to the count.
  const OroArray<IKelDataDirectory*>& directories() const { return directories_; }
  const OroArray<IKelDataItem*>& items() const { return items_; }

 private:
  void addName(IKelDataDirectory* directory);
  IKelDataDirectory* findByName(std::string_view name);

  static constexpr int32_t kMostScanned = 32;

  KelCString name_;
  OroArray<IKelDataItem*> items_;
  OroArray<IKelDataDirectory*> directories_;
  // The first subdirectory of each name: of all, or empty.
  OroHashTable<KelCString, IKelDataDirectory*> byName_{kMostScanned};
};

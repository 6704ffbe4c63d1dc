// KelDataDirectory: one section of the settings tree; owns its sections and items.
//
// The store makes directories as paths need them. Searches are linear: sections are small, and
// whole paths are found through the store's index instead. One thread at a time.
#pragma once

#include <cstdint>
#include <string_view>

#include "interfaces/IKelDataDirectory.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
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
  KelCString name_;
  OroArray<IKelDataItem*> items_;
  OroArray<IKelDataDirectory*> directories_;
};

// IKelDataDirectory: one section of the settings tree, with its sections and items.
//
// A directory owns what it holds: removing a child deletes it whatever its reference count says,
// and deleting the directory deletes its subdirectories, then its items. What a store made is
// removed through the store, whose index knows it. Searches are case sensitive and give the first
// match in the order of adding. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IKelDataItem;
class IKelDataVisitor;
template <class T>
class OroArray;

class IKelDataDirectory : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataDirectory"; }

  // Both give the one segment that the directory is named by; the root's is empty.
  virtual const char* GetPath() const = 0;
  virtual const char* GetName() const = 0;

  virtual void AddDirectory(IKelDataDirectory* directory) = 0;
  // Deletes it. False if it is no child of this one.
  virtual bool RemoveDirectory(IKelDataDirectory* directory) = 0;
  virtual void AddItem(IKelDataItem* item) = 0;
  // Deletes it. False if it is no child of this one.
  virtual bool RemoveItem(IKelDataItem* item) = 0;

  // The subdirectory whose name is exactly these bytes, or null.
  virtual IKelDataDirectory* FindDirectory(const char* name, int32_t length) = 0;
  virtual IKelDataDirectory* GetDirectory(const char* name) = 0;
  virtual IKelDataItem* GetItem(const char* name) = 0;

  // Shows the visitor this directory: subdirectories first, then items. A false visit ends the
  // walk at once, except in a reading visitor (mode 0), which goes on and gives false at the end.
  virtual bool Accept(IKelDataVisitor* visitor) = 0;
  // CopyLayer on every item below that is not layer-exempt.
  virtual void CopyLayers(int32_t from, int32_t to) = 0;
  // Appends the path of every item below, borrowed. True if there was one.
  virtual bool CollectPaths(OroArray<const char*>& list) = 0;
};

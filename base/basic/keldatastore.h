// KelDataStore: the settings store, a tree of typed items with an index of full paths beside it.
//
// IDataStore tells the contract of every operation. Use getGenDataStore() for the process's store
// and KelCustomDataStore for one of your own. The store owns its tree and holds its reader and
// writer. What is removed while a walk or a delivery of this store runs stays alive until that is
// over, so a handler may remove anything; it must not destroy the store itself. No locks: one
// thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/basic/keldatadirectory.h"
#include "base/basic/keldataindex.h"
#include "base/basic/keldataitem.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IKelDataVisitor.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orooffers.h"

class KelDataInt;

class KelDataStore : public virtual IDataStore {
 public:
  static constexpr const char* className() { return "KelDataStore"; }
  using Offers = OroOffers<KelDataStore, IDataStore>;

  // `useXml` chooses the default reader and writer: settings document or system registry. The
  // counts of directories and items to expect size the indexes.
  KelDataStore(bool useXml, int32_t directories, int32_t items);
  ~KelDataStore() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void CreateDirectory(const char* path) override;
  bool RemoveDirectory(const char* path) override;
  bool DirectoryExists(const char* path) override { return directories_.find(path) != nullptr; }
  bool CreateVoid(const char* path, uint32_t flags) override;
  bool CreateInt(const char* path, int32_t value, int32_t minimum, int32_t maximum,
                 uint32_t flags) override;
  bool CreateFloat(const char* path, double value, double minimum, double maximum,
                   uint32_t flags) override;
  bool CreateString(const char* path, int32_t capacity, const char* text, uint32_t flags) override;
  bool CreateOroString(const char* path, int32_t capacity, const OroString& text,
                       uint32_t flags) override;
  bool CreateBlob(const char* path, int32_t size, const void* data, uint32_t flags) override;

  int32_t GetInt(PathPieces path, bool* ok) override;
  int32_t GetInt(const char* path, bool* ok) override;
  double GetFloat(PathPieces path, bool* ok) override;
  double GetFloat(const char* path, bool* ok) override;
  const char* GetString(PathPieces path, bool* ok) override;
  const char* GetString(const char* path, bool* ok) override;
  const OroString& GetOroString(PathPieces path, bool* ok) override;
  const OroString& GetOroString(const char* path, bool* ok) override;
  void GetIntRange(const char* path, int32_t& minimum, int32_t& maximum, bool* ok) override;
  void GetFloatRange(const char* path, double& minimum, double& maximum, bool* ok) override;
  const void* GetBlob(const char* path, int32_t& size, bool* ok) override;
  int32_t GetCapacity(const char* path, bool* ok) override;

  bool InitInt(const char* path, int32_t value) override;
  bool InitFloat(const char* path, double value) override;
  bool InitString(const char* path, const char* text) override;
  bool InitOroString(const char* path, const OroString& text) override;
  bool InitBlob(const char* path, const void* data, const int32_t& size) override;

  bool RemoveItem(const char* path) override;
  void Clear() override;
  bool GetType(const char* path, int32_t& kind) override;
  uint32_t GetFlags(const char* path) override;
  bool SetFlags(const char* path, uint32_t flags) override;
  void CopyLayer(const char* path, int32_t from, int32_t to, bool* ok) override;
  void CopyLayers(int32_t from, int32_t to) override;
  bool Exists(PathPieces path) override;
  bool Exists(const char* path) override;
  bool AddReceiver(const char* path, IOroDataReceiver* receiver) override;
  bool RemoveReceiver(const char* path, IOroDataReceiver* receiver) override;
  void NotifyAll() override;

  bool SetBlob(IOroDataReceiver* sender, PathPieces path, const void* data, int32_t size) override;
  bool SetOroString(IOroDataReceiver* sender, PathPieces path, const OroString& text) override;
  bool SetString(IOroDataReceiver* sender, PathPieces path, const char* text) override;
  bool SetFloat(IOroDataReceiver* sender, PathPieces path, double value) override;
  bool SetInt(IOroDataReceiver* sender, PathPieces path, int32_t value) override;
  bool Fire(IOroDataReceiver* sender, PathPieces path) override;
  bool SetBlob(IOroDataReceiver* sender, const char* path, const void* data, int32_t size) override;
  bool SetOroString(IOroDataReceiver* sender, const char* path, const OroString& text) override;
  bool SetString(IOroDataReceiver* sender, const char* path, const char* text) override;
  bool SetFloat(IOroDataReceiver* sender, const char* path, double value) override;
  bool SetInt(IOroDataReceiver* sender, const char* path, int32_t value) override;
  bool Fire(IOroDataReceiver* sender, const char* path) override;
  bool SetIntEx(IOroDataReceiver* sender, PathPieces path, int32_t value, int32_t extra) override;
  bool SetIntEx(IOroDataReceiver* sender, const char* path, int32_t value, int32_t extra) override;

  void SetForceNotify(bool value) override { forceNotify_ = value; }
  bool GetForceNotify() override { return forceNotify_; }
  void SetFrozen(bool value) override { frozen_ = value; }
  bool GetFrozen() override { return frozen_; }

  bool AcceptPath(IKelDataVisitor* visitor, const char* path) override;
  bool Accept(IKelDataVisitor* visitor) override;
  IKelDataVisitor* CreateDefaultReader() override;
  IKelDataVisitor* CreateDefaultWriter() override;
  IKelDataVisitor* CreateFileReader(const OroString& path, bool notify) override;
  IKelDataVisitor* CreateFileWriter(const OroString& path) override;
  IKelDataVisitor* CreateXmlReader(const OroString& path, bool notify) override;
  IKelDataVisitor* CreateXmlWriter(const OroString& path) override;
  IKelDataVisitor* GetWriter() override { return writer_.get(); }
  void SetWriter(IKelDataVisitor* visitor) override { writer_ = visitor; }
  IKelDataVisitor* GetReader() override { return reader_.get(); }
  void SetReader(IKelDataVisitor* visitor) override { reader_ = visitor; }
  bool Load() override;
  bool ImportIni(const OroString& file, bool expandEnv) override;
  bool CollectPaths(const char* path, OroArray<const char*>& list) override;
  bool ImportXml(const OroString& file, const char* subtree) override;

  // For the application shell. Without autosave no set is journalled.
  void SetAutoSave(bool value) { autoSave_ = value; }
  // Merges the journal into the settings document. True too when the writer keeps none.
  bool CommitWriter();

  // For debugging: whether tree and indexes agree. False for any tree with a directory inside
  // another, which the verifier cannot look up.
  bool CheckIndexes();

  // For the index visitors. An item or directory stays in the tree when it leaves the index.
  bool unindexItem(const char* path) { return items_.remove(path); }
  bool unindexDirectory(const char* path) { return directories_.remove(path); }
  bool indexesItem(const char* path) const { return items_.find(path) != nullptr; }
  bool indexesDirectory(const char* path) const { return directories_.find(path) != nullptr; }
  bool isRoot(const IKelDataDirectory* directory) const { return directory == root_.get(); }

 private:
  // Holds off deletions while handlers or visitors run.
  class Running;

  template <class Item, class Path>
  Item* find(Path path) const;
  template <class Item, class... Arguments>
  bool create(const char* path, const Arguments&... arguments);
  template <class Item, class... Values>
  bool update(Item* item, IOroDataReceiver* sender, const Values&... values);
  bool updateString(KelDataItem* item, IOroDataReceiver* sender, const char* text);
  bool updateEx(KelDataInt* item, int32_t value, int32_t extra);
  bool fire(KelDataItem* item, IOroDataReceiver* sender);
  void journal(const KelDataItem& item);
  void assertFound(bool found, const char* expression, int32_t line) const;

  KelDataDirectory* parentOf(const char* path) const;
  void retire(OroObject* object);
  void keepEvents(KelDataDirectory& directory);
  void forgetSubtree(KelDataDirectory& top);

  IPtr<IKelDataVisitor> heldIfOwn(IKelDataVisitor* visitor) const;
  IKelDataItem* descend(const char* path);
  bool walkPath(IKelDataVisitor& visitor, const char* path, int32_t base);
  bool enterDirectories(IKelDataVisitor& visitor, int32_t base);
  bool leaveDirectories(IKelDataVisitor& visitor, int32_t base);

  bool forceNotify_ = false;
  bool frozen_ = false;
  bool autoSave_ = true;
  const bool useXml_;
  KelDataIndex<KelDataItem> items_;             // the keys are the items' own paths
  KelDataIndex<KelDataDirectory> directories_;  // null for a directory that was removed
  OroArray<IKelDataDirectory*> walkStack_;      // of the walks that run, one above the other
  IPtr<KelDataDirectory> root_;
  IPtr<IKelDataVisitor> writer_;  // may be null, as may the reader
  IPtr<IKelDataVisitor> reader_;

  // Events that were removed and that the index still finds: nothing ever shows an event to the
  // visitor that empties the index.
  std::vector<std::unique_ptr<IKelDataItem>> removedEvents_;
  int32_t running_ = 0;  // walks and deliveries, one in the other
  // What was removed while some ran.
  std::vector<std::unique_ptr<OroObject>> retired_;
  std::vector<IPtr<KelDataDirectory>> retiredRoots_;
};

// IDataStore: the settings of the process, a tree of typed items reached by path.
//
//   SPtr<IDataStore> store;
//   store->CreateDirectory("Fonts and Languages");
//   store->CreateString("Fonts and Languages/Language", 80, "en", 1);
//   store->AcceptPath(store->GetReader(), "Fonts and Languages/Language");
//   const char* language = store->GetString("Fonts and Languages/Language", nullptr);
//
// A path is segments with '/' between, case sensitive, none in front. Declare a setting before use:
// nothing is known in advance, and declaring again changes nothing. The second form of an operation
// takes the path as a list of pieces that ends in null and is read as if joined. Texts and data
// that getters give are the item's own, good until its next change. No locks: one thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IKelDataVisitor;
class IOroDataReceiver;
class OroString;
template <class T>
class OroArray;

class IDataStore : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IDataStore"; }

  using PathPieces = const char* const*;  // ends in null

  // --- Declaring. Kinds and flags are those of IKelDataItem.

  // Makes every missing segment, and makes the whole path (no part of it) known to creation and to
  // look-ups: create "A", then "A/B", to put items into both.
  virtual void CreateDirectory(const char* path) = 0;
  // True if removed, with all below it.
  virtual bool RemoveDirectory(const char* path) = 0;
  virtual bool DirectoryExists(const char* path) = 0;
  // True if the item is there afterwards: an existing one stays as it is, whatever its kind. False
  // if the text before the last '/' was never given to CreateDirectory.
  virtual bool CreateVoid(const char* path, uint32_t flags) = 0;
  virtual bool CreateInt(const char* path, int32_t value, int32_t minimum, int32_t maximum,
                         uint32_t flags) = 0;
  virtual bool CreateFloat(const char* path, double value, double minimum, double maximum,
                           uint32_t flags) = 0;
  virtual bool CreateString(const char* path, int32_t capacity, const char* text,
                            uint32_t flags) = 0;
  virtual bool CreateOroString(const char* path, int32_t capacity, const OroString& text,
                               uint32_t flags) = 0;
  virtual bool CreateBlob(const char* path, int32_t size, const void* data, uint32_t flags) = 0;

  // --- Reading. `ok`, if given, becomes true for an item of that kind, else false.

  virtual int32_t GetInt(PathPieces path, bool* ok) = 0;
  virtual int32_t GetInt(const char* path, bool* ok) = 0;
  virtual double GetFloat(PathPieces path, bool* ok) = 0;
  virtual double GetFloat(const char* path, bool* ok) = 0;
  // Null only when there is no such item.
  virtual const char* GetString(PathPieces path, bool* ok) = 0;
  virtual const char* GetString(const char* path, bool* ok) = 0;
  // The shared empty string when there is no such item.
  virtual const OroString& GetOroString(PathPieces path, bool* ok) = 0;
  virtual const OroString& GetOroString(const char* path, bool* ok) = 0;
  // 0 and 1 when there is no such item.
  virtual void GetIntRange(const char* path, int32_t& minimum, int32_t& maximum, bool* ok) = 0;
  virtual void GetFloatRange(const char* path, double& minimum, double& maximum, bool* ok) = 0;
  // Null and size 0 when there is no such item.
  virtual const void* GetBlob(const char* path, int32_t& size, bool* ok) = 0;
  // Of a text in characters, of a blob its size; 0 and not ok for the other kinds.
  virtual int32_t GetCapacity(const char* path, bool* ok) = 0;

  // --- Setting all four layers, silently, frozen or not. False if there is no such item.

  virtual bool InitInt(const char* path, int32_t value) = 0;
  virtual bool InitFloat(const char* path, double value) = 0;
  virtual bool InitString(const char* path, const char* text) = 0;
  virtual bool InitOroString(const char* path, const OroString& text) = 0;
  virtual bool InitBlob(const char* path, const void* data, const int32_t& size) = 0;

  // --- Items as such.

  virtual bool RemoveItem(const char* path) = 0;  // true if removed
  virtual void Clear() = 0;                       // removes everything, the root included
  virtual bool GetType(const char* path, int32_t& kind) = 0;
  virtual uint32_t GetFlags(const char* path) = 0;
  virtual bool SetFlags(const char* path, uint32_t flags) = 0;
  // IKelDataItem::CopyLayer; a failed assertion for a missing path, silent in a batch run.
  virtual void CopyLayer(const char* path, int32_t from, int32_t to, bool* ok) = 0;
  virtual void CopyLayers(int32_t from, int32_t to) = 0;
  // An item or a directory.
  virtual bool Exists(PathPieces path) = 0;
  virtual bool Exists(const char* path) = 0;
  virtual bool AddReceiver(const char* path, IOroDataReceiver* receiver) = 0;
  virtual bool RemoveReceiver(const char* path, IOroDataReceiver* receiver) = 0;
  virtual void NotifyAll() = 0;

  // --- Setting. Stores, tells the receivers but `sender` (which may be null) if the value changed,
  // and journals an item with that flag. False if there is no item of that kind; true and nothing
  // done while frozen. SetString takes wide text items too.

  virtual bool SetBlob(IOroDataReceiver* sender, PathPieces path, const void* data,
                       int32_t size) = 0;
  virtual bool SetOroString(IOroDataReceiver* sender, PathPieces path, const OroString& text) = 0;
  virtual bool SetString(IOroDataReceiver* sender, PathPieces path, const char* text) = 0;
  virtual bool SetFloat(IOroDataReceiver* sender, PathPieces path, double value) = 0;
  virtual bool SetInt(IOroDataReceiver* sender, PathPieces path, int32_t value) = 0;
  // Fires an event. Requires: an item of the kind void.
  virtual bool Fire(IOroDataReceiver* sender, PathPieces path) = 0;
  virtual bool SetBlob(IOroDataReceiver* sender, const char* path, const void* data,
                       int32_t size) = 0;
  virtual bool SetOroString(IOroDataReceiver* sender, const char* path, const OroString& text) = 0;
  virtual bool SetString(IOroDataReceiver* sender, const char* path, const char* text) = 0;
  virtual bool SetFloat(IOroDataReceiver* sender, const char* path, double value) = 0;
  virtual bool SetInt(IOroDataReceiver* sender, const char* path, int32_t value) = 0;
  virtual bool Fire(IOroDataReceiver* sender, const char* path) = 0;
  // As SetInt, but every receiver hears of it, the sender too, through OnIntExChanged.
  virtual bool SetIntEx(IOroDataReceiver* sender, PathPieces path, int32_t value,
                        int32_t extra) = 0;
  virtual bool SetIntEx(IOroDataReceiver* sender, const char* path, int32_t value,
                        int32_t extra) = 0;

  // While set, setters tell all receivers whether the value changed or not.
  virtual void SetForceNotify(bool value) = 0;
  virtual bool GetForceNotify() = 0;
  // While set, setters do nothing and give true, and NotifyAll does nothing.
  virtual void SetFrozen(bool value) = 0;
  virtual bool GetFrozen() = 0;

  // --- Persistence. A null visitor gives false.

  // Walks one item, or one directory that was created by name. A failed assertion and false for a
  // missing path, silent in a batch run.
  virtual bool AcceptPath(IKelDataVisitor* visitor, const char* path) = 0;
  virtual bool Accept(IKelDataVisitor* visitor) = 0;
  // New visitors, borrowed with a count of 0; null where the build has none.
  virtual IKelDataVisitor* CreateDefaultReader() = 0;
  virtual IKelDataVisitor* CreateDefaultWriter() = 0;
  // With `notify`, values that are read reach the receivers.
  virtual IKelDataVisitor* CreateFileReader(const OroString& path, bool notify) = 0;
  virtual IKelDataVisitor* CreateFileWriter(const OroString& path) = 0;
  virtual IKelDataVisitor* CreateXmlReader(const OroString& path, bool notify) = 0;
  virtual IKelDataVisitor* CreateXmlWriter(const OroString& path) = 0;
  virtual IKelDataVisitor* GetWriter() = 0;  // borrowed
  virtual void SetWriter(IKelDataVisitor* visitor) = 0;
  virtual IKelDataVisitor* GetReader() = 0;  // borrowed
  virtual void SetReader(IKelDataVisitor* visitor) = 0;
  virtual bool Load() = 0;  // Accept(GetReader())
  // Reads "[section]" and "key=value" lines into text items that are not saved. With `expandEnv`,
  // "${NAME}" becomes the environment variable. False at the first line that is broken, too long
  // or without a line end; what came before stays.
  virtual bool ImportIni(const OroString& file, bool expandEnv) = 0;
  // Appends the paths of the items in a directory, or the path itself if it is an item. Borrowed:
  // item paths from the items, the path itself from the caller.
  virtual bool CollectPaths(const char* path, OroArray<const char*>& list) = 0;
  // Reads a settings document into the declared items, or those under `subtree` (null: all).
  virtual bool ImportXml(const OroString& file, const char* subtree) = 0;
};

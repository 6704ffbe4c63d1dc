#include "base/basic/keldatastore.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_set>

#include "base/basic/keldatablob.h"
#include "base/basic/keldatafactories.h"
#include "base/basic/keldatafloat.h"
#include "base/basic/keldatahashremover.h"
#include "base/basic/keldatahashverifier.h"
#include "base/basic/keldatainiimport.h"
#include "base/basic/keldataint.h"
#include "base/basic/keldataorostring.h"
#include "base/basic/keldatastring.h"
#include "base/basic/keldatavoid.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orocommandlineflag.h"
#include "orobasictypes/orostring.h"

namespace {

constexpr int32_t kFirstWalkCapacity = 5;

// The item as the class of its kind; null for another kind.
template <class Item>
Item* as(KelDataItem* item) {
  return item != nullptr && item->kind() == Item::kKind ? static_cast<Item*>(item) : nullptr;
}

template <class Item>
Item* checked(Item* item, bool* ok) {
  if (ok != nullptr) *ok = item != nullptr;
  return item;
}

// The silent set of all layers.
template <class Item, class... Values>
bool initialise(Item* item, const Values&... values) {
  if (item == nullptr) return false;
  const uint32_t flags = item->GetFlags();
  item->SetFlags(flags | IKelDataItem::kInitialiseAll);
  item->Set(values...);
  item->SetFlags(flags);
  return true;
}

KelDataDirectory* subdirectory(KelDataDirectory& parent, std::string_view name) {
  IKelDataDirectory* const found =
      parent.FindDirectory(name.data(), static_cast<int32_t>(name.size()));
  if (auto* const own = oroQueryClass<KelDataDirectory>(found)) return own;
  auto* const made = new KelDataDirectory(name);
  parent.AddDirectory(made);
  return made;
}

}  // namespace

class KelDataStore::Running {
 public:
  explicit Running(KelDataStore& store) : store_(store) { ++store_.running_; }
  ~Running() {
    if (--store_.running_ != 0) return;
    store_.retired_.clear();
    store_.retiredRoots_.clear();
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  KelDataStore& store_;
};

KelDataStore::KelDataStore(bool useXml, int32_t directories, int32_t items)
    : useXml_(useXml),
      items_(items),
      directories_(directories),
      walkStack_(kFirstWalkCapacity),
      root_(new KelDataDirectory("")) {
  writer_ = KelDataStore::CreateDefaultWriter();
  reader_ = KelDataStore::CreateDefaultReader();
}

KelDataStore::~KelDataStore() = default;

template <class Item, class Path>
Item* KelDataStore::find(Path path) const {
  return as<Item>(items_.value(path));
}

// --- Declaring

// An empty segment ends the walk; the whole text is known all the same, for the last directory.
void KelDataStore::CreateDirectory(const char* path) {
  if (path == nullptr || *path == '\0') return;
  KelDataDirectory* directory = root_.get();
  for (std::string_view rest(path); !rest.empty() && rest.front() != '/';) {
    const size_t length = std::min(rest.find('/'), rest.size());
    directory = subdirectory(*directory, rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  if (auto* const entry = directories_.find(path)) {
    entry->value = directory;
  } else {
    directories_.add(KelCString(path), directory);
  }
}

// The root, or what stands in the index under exactly the text before the last '/'.
KelDataDirectory* KelDataStore::parentOf(const char* path) const {
  if (path == nullptr) return nullptr;
  const char* const slash = std::strrchr(path, '/');
  if (slash == nullptr) return root_.get();
  return directories_.value(std::string_view(path, static_cast<size_t>(slash - path)));
}

bool KelDataStore::RemoveDirectory(const char* path) {
  KelDataDirectory* const parent = parentOf(path);
  KelDataDirectory* const directory = parent == nullptr ? nullptr : directories_.value(path);
  if (directory == nullptr) return false;
  KelDataHashRemover remover(*this);
  directory->Accept(&remover);
  if (!parent->takeDirectory(directory)) return false;
  forgetSubtree(*directory);
  retire(directory);
  return true;
}

// The index keeps the paths of deeper directories, but nothing may be reached through them.
void KelDataStore::forgetSubtree(KelDataDirectory& top) {
  std::unordered_set<const KelDataDirectory*> gone;
  std::vector<KelDataDirectory*> pending{&top};
  while (!pending.empty()) {
    KelDataDirectory* const directory = pending.back();
    pending.pop_back();
    gone.insert(directory);
    keepEvents(*directory);
    for (IKelDataItem* item : directory->items()) {
      if (auto* const own = oroQueryClass<KelDataItem>(item)) own->forgetReceivers();
    }
    for (IKelDataDirectory* below : directory->directories()) {
      if (auto* const own = oroQueryClass<KelDataDirectory>(below)) pending.push_back(own);
    }
  }
  for (auto& entry : directories_.table()) {
    if (gone.count(entry.value) != 0) entry.value = nullptr;
  }
}

void KelDataStore::keepEvents(KelDataDirectory& directory) {
  for (int32_t i = directory.items().count(); i >= 1; --i) {
    IKelDataItem* const item = directory.items()[i];
    if (item->GetType() != IKelDataItem::kVoid) continue;
    directory.takeItem(item);
    removedEvents_.emplace_back(item);
  }
}

void KelDataStore::retire(OroObject* object) {
  std::unique_ptr<OroObject> owner(object);
  if (running_ > 0) retired_.push_back(std::move(owner));
}

template <class Item, class... Arguments>
bool KelDataStore::create(const char* path, const Arguments&... arguments) {
  KelDataDirectory* const parent = parentOf(path);
  if (parent == nullptr) return false;
  if (items_.find(path) != nullptr) return true;
  auto* const item = new Item(path, arguments...);
  items_.add(KelCString::borrow(item->path()), item);
  parent->AddItem(item);
  return true;
}

bool KelDataStore::CreateVoid(const char* path, uint32_t flags) {
  return create<KelDataVoid>(path, flags);
}

bool KelDataStore::CreateInt(const char* path, int32_t value, int32_t minimum, int32_t maximum,
                             uint32_t flags) {
  return create<KelDataInt>(path, value, minimum, maximum, flags);
}

bool KelDataStore::CreateFloat(const char* path, double value, double minimum, double maximum,
                               uint32_t flags) {
  return create<KelDataFloat>(path, value, minimum, maximum, flags);
}

bool KelDataStore::CreateString(const char* path, int32_t capacity, const char* text,
                                uint32_t flags) {
  return create<KelDataString>(path, capacity, text, flags);
}

bool KelDataStore::CreateOroString(const char* path, int32_t capacity, const OroString& text,
                                   uint32_t flags) {
  return create<KelDataOroString>(path, capacity, text, flags);
}

bool KelDataStore::CreateBlob(const char* path, int32_t size, const void* data, uint32_t flags) {
  return create<KelDataBlob>(path, size, data, flags);
}

bool KelDataStore::RemoveItem(const char* path) {
  KelDataDirectory* const parent = parentOf(path);
  KelDataItem* const item = parent == nullptr ? nullptr : items_.value(path);
  if (item == nullptr) return false;
  KelDataHashRemover remover(*this);
  item->Accept(&remover);
  if (!parent->takeItem(item)) return false;
  if (item->kind() == IKelDataItem::kVoid) {
    removedEvents_.emplace_back(item);
  } else {
    item->forgetReceivers();
    retire(item);
  }
  return true;
}

void KelDataStore::Clear() {
  for (auto& entry : items_.table()) entry.value->forgetReceivers();
  items_.clear();
  directories_.clear();
  if (running_ > 0) {
    retiredRoots_.push_back(root_);
    for (auto& event : removedEvents_) retired_.push_back(std::move(event));
  }
  removedEvents_.clear();
  root_ = new KelDataDirectory("");
}

// --- Reading

int32_t KelDataStore::GetInt(PathPieces path, bool* ok) {
  const auto* const item = checked(find<KelDataInt>(path), ok);
  return item == nullptr ? 0 : item->Get();
}

int32_t KelDataStore::GetInt(const char* path, bool* ok) {
  const auto* const item = checked(find<KelDataInt>(path), ok);
  return item == nullptr ? 0 : item->Get();
}

double KelDataStore::GetFloat(PathPieces path, bool* ok) {
  const auto* const item = checked(find<KelDataFloat>(path), ok);
  return item == nullptr ? 0.0 : item->Get();
}

double KelDataStore::GetFloat(const char* path, bool* ok) {
  const auto* const item = checked(find<KelDataFloat>(path), ok);
  return item == nullptr ? 0.0 : item->Get();
}

const char* KelDataStore::GetString(PathPieces path, bool* ok) {
  const auto* const item = checked(find<KelDataString>(path), ok);
  return item == nullptr ? nullptr : item->Get();
}

const char* KelDataStore::GetString(const char* path, bool* ok) {
  const auto* const item = checked(find<KelDataString>(path), ok);
  return item == nullptr ? nullptr : item->Get();
}

const OroString& KelDataStore::GetOroString(PathPieces path, bool* ok) {
  const auto* const item = checked(find<KelDataOroString>(path), ok);
  return item == nullptr ? OroString::empty() : item->Get();
}

const OroString& KelDataStore::GetOroString(const char* path, bool* ok) {
  const auto* const item = checked(find<KelDataOroString>(path), ok);
  return item == nullptr ? OroString::empty() : item->Get();
}

void KelDataStore::GetIntRange(const char* path, int32_t& minimum, int32_t& maximum, bool* ok) {
  minimum = 0;
  maximum = 1;
  const auto* const item = checked(find<KelDataInt>(path), ok);
  if (item != nullptr) item->GetRange(minimum, maximum);
}

void KelDataStore::GetFloatRange(const char* path, double& minimum, double& maximum, bool* ok) {
  minimum = 0.0;
  maximum = 1.0;
  const auto* const item = checked(find<KelDataFloat>(path), ok);
  if (item != nullptr) item->GetRange(minimum, maximum);
}

const void* KelDataStore::GetBlob(const char* path, int32_t& size, bool* ok) {
  const auto* const item = checked(find<KelDataBlob>(path), ok);
  size = item == nullptr ? 0 : item->GetSize();
  return item == nullptr ? nullptr : item->Get();
}

int32_t KelDataStore::GetCapacity(const char* path, bool* ok) {
  KelDataItem* const item = items_.value(path);
  if (ok != nullptr) *ok = true;
  if (const auto* const text = as<KelDataString>(item)) return text->GetCapacity();
  if (const auto* const text = as<KelDataOroString>(item)) return text->GetCapacity();
  if (const auto* const blob = as<KelDataBlob>(item)) return blob->GetSize();
  if (ok != nullptr) *ok = false;
  return 0;
}

bool KelDataStore::InitInt(const char* path, int32_t value) {
  return initialise(find<KelDataInt>(path), value);
}

bool KelDataStore::InitFloat(const char* path, double value) {
  return initialise(find<KelDataFloat>(path), value);
}

bool KelDataStore::InitString(const char* path, const char* text) {
  return initialise(find<KelDataString>(path), text);
}

bool KelDataStore::InitOroString(const char* path, const OroString& text) {
  return initialise(find<KelDataOroString>(path), text);
}

bool KelDataStore::InitBlob(const char* path, const void* data, const int32_t& size) {
  return initialise(find<KelDataBlob>(path), data, size);
}

// --- Items as such

bool KelDataStore::GetType(const char* path, int32_t& kind) {
  const KelDataItem* const item = items_.value(path);
  if (item != nullptr) kind = item->kind();
  return item != nullptr;
}

uint32_t KelDataStore::GetFlags(const char* path) {
  const KelDataItem* const item = items_.value(path);
  return item == nullptr ? 0 : item->GetFlags();
}

bool KelDataStore::SetFlags(const char* path, uint32_t flags) {
  KelDataItem* const item = items_.value(path);
  if (item != nullptr) item->SetFlags(flags);
  return item != nullptr;
}

// In a batch run nobody is there to mend a path, and the run goes on without a word.
void KelDataStore::assertFound(bool found, const char* expression, int32_t line) const {
  if (!found && oroCommandLineFlag() == 0) kelAssertFail(expression, "base/basic/keldata", line);
}

void KelDataStore::CopyLayer(const char* path, int32_t from, int32_t to, bool* ok) {
  KelDataItem* const item = checked(items_.value(path), ok);
  assertFound(item != nullptr, "item", __LINE__);
  if (item == nullptr) return;
  const Running running(*this);
  item->CopyLayer(from, to);
}

void KelDataStore::CopyLayers(int32_t from, int32_t to) {
  const Running running(*this);
  root_.get()->CopyLayers(from, to);
}

bool KelDataStore::Exists(PathPieces path) {
  return items_.find(path) != nullptr || directories_.find(path) != nullptr;
}

bool KelDataStore::Exists(const char* path) {
  if (path == nullptr || *path == '\0') return false;
  return items_.find(path) != nullptr || directories_.find(path) != nullptr;
}

bool KelDataStore::AddReceiver(const char* path, IOroDataReceiver* receiver) {
  KelDataItem* const item = items_.value(path);
  if (item != nullptr) item->AddReceiver(receiver);
  return item != nullptr;
}

bool KelDataStore::RemoveReceiver(const char* path, IOroDataReceiver* receiver) {
  KelDataItem* const item = items_.value(path);
  return item != nullptr && item->RemoveReceiver(receiver);
}

// The paths as they stand at the start, in the order of the index; what handlers remove is passed
// over, what they put in its place is not. Nothing is freed before the end, so the paths hold.
void KelDataStore::NotifyAll() {
  if (frozen_) return;
  const Running running(*this);
  std::vector<const char*> paths;
  paths.reserve(items_.table().entryCount());
  for (const auto& entry : items_.table()) paths.push_back(entry.key.text());
  for (const char* path : paths) {
    KelDataItem* const item = items_.value(path);
    if (item != nullptr && !item->hasFlag(IKelDataItem::kNoNotifyAll)) item->Notify();
  }
}

// --- Setting

template <class Item, class... Values>
bool KelDataStore::update(Item* item, IOroDataReceiver* sender, const Values&... values) {
  if (item == nullptr) return false;
  const Running running(*this);
  item->Update(values..., sender, forceNotify_);
  journal(*item);
  return true;
}

bool KelDataStore::updateString(KelDataItem* item, IOroDataReceiver* sender, const char* text) {
  if (auto* const wide = as<KelDataOroString>(item)) {
    return update(wide, sender, OroString(text == nullptr ? "" : text));
  }
  return update(as<KelDataString>(item), sender, text);
}

bool KelDataStore::updateEx(KelDataInt* item, int32_t value, int32_t extra) {
  if (item == nullptr) return false;
  const Running running(*this);
  item->updateEx(value, extra);
  journal(*item);
  return true;
}

bool KelDataStore::fire(KelDataItem* item, IOroDataReceiver* sender) {
  if (item == nullptr) return false;
  const Running running(*this);
  item->fire(sender, forceNotify_);
  return true;
}

// Whether it could be written is not told: the set itself succeeded, and the writer remembers what
// it owes. A handler may have removed the item.
void KelDataStore::journal(const KelDataItem& item) {
  if (!autoSave_ || !item.hasFlag(IKelDataItem::kJournalled)) return;
  if (items_.value(item.path()) != &item) return;
  AcceptPath(writer_.get(), item.path());
}

bool KelDataStore::SetBlob(IOroDataReceiver* sender, PathPieces path, const void* data,
                           int32_t size) {
  return frozen_ || update(find<KelDataBlob>(path), sender, data, size);
}

bool KelDataStore::SetOroString(IOroDataReceiver* sender, PathPieces path, const OroString& text) {
  return frozen_ || update(find<KelDataOroString>(path), sender, text);
}

bool KelDataStore::SetString(IOroDataReceiver* sender, PathPieces path, const char* text) {
  return frozen_ || updateString(items_.value(path), sender, text);
}

bool KelDataStore::SetFloat(IOroDataReceiver* sender, PathPieces path, double value) {
  return frozen_ || update(find<KelDataFloat>(path), sender, value);
}

bool KelDataStore::SetInt(IOroDataReceiver* sender, PathPieces path, int32_t value) {
  return frozen_ || update(find<KelDataInt>(path), sender, value);
}

bool KelDataStore::Fire(IOroDataReceiver* sender, PathPieces path) {
  return frozen_ || fire(items_.value(path), sender);
}

bool KelDataStore::SetBlob(IOroDataReceiver* sender, const char* path, const void* data,
                           int32_t size) {
  return frozen_ || update(find<KelDataBlob>(path), sender, data, size);
}

bool KelDataStore::SetOroString(IOroDataReceiver* sender, const char* path, const OroString& text) {
  return frozen_ || update(find<KelDataOroString>(path), sender, text);
}

bool KelDataStore::SetString(IOroDataReceiver* sender, const char* path, const char* text) {
  return frozen_ || updateString(items_.value(path), sender, text);
}

bool KelDataStore::SetFloat(IOroDataReceiver* sender, const char* path, double value) {
  return frozen_ || update(find<KelDataFloat>(path), sender, value);
}

bool KelDataStore::SetInt(IOroDataReceiver* sender, const char* path, int32_t value) {
  return frozen_ || update(find<KelDataInt>(path), sender, value);
}

bool KelDataStore::Fire(IOroDataReceiver* sender, const char* path) {
  return frozen_ || fire(items_.value(path), sender);
}

bool KelDataStore::SetIntEx(IOroDataReceiver*, PathPieces path, int32_t value, int32_t extra) {
  return frozen_ || updateEx(find<KelDataInt>(path), value, extra);
}

bool KelDataStore::SetIntEx(IOroDataReceiver*, const char* path, int32_t value, int32_t extra) {
  return frozen_ || updateEx(find<KelDataInt>(path), value, extra);
}

// --- Walks and persistence

// A reference on the store's own reader or writer: a handler may put another in its place while it
// walks. Other visitors are their caller's, and may live on the stack.
IPtr<IKelDataVisitor> KelDataStore::heldIfOwn(IKelDataVisitor* visitor) const {
  return visitor == reader_.get() || visitor == writer_.get() ? visitor : nullptr;
}

bool KelDataStore::Accept(IKelDataVisitor* visitor) {
  if (visitor == nullptr) return false;
  const IPtr<IKelDataVisitor> held = heldIfOwn(visitor);
  const Running running(*this);
  const bool accepted = visitor->Begin() && root_.get()->Accept(visitor);
  return visitor->End() && accepted;
}

// A handler that a walk calls may start another: each uses the stack above the one it runs in.
bool KelDataStore::AcceptPath(IKelDataVisitor* visitor, const char* path) {
  if (visitor == nullptr) return false;
  const IPtr<IKelDataVisitor> held = heldIfOwn(visitor);
  const Running running(*this);
  const int32_t base = walkStack_.count();
  const bool result = walkPath(*visitor, path, base);
  walkStack_.setCount(base);
  return result;
}

bool KelDataStore::walkPath(IKelDataVisitor& visitor, const char* path, int32_t base) {
  IKelDataItem* const item = descend(path);
  IKelDataDirectory* const directory = item == nullptr ? directories_.value(path) : nullptr;
  assertFound(item != nullptr || directory != nullptr, "directory", __LINE__);
  if (item == nullptr && directory == nullptr) return false;
  const bool accepted = visitor.Begin() && enterDirectories(visitor, base) &&
                        (item != nullptr ? item->Accept(&visitor) : directory->Accept(&visitor)) &&
                        leaveDirectories(visitor, base);
  return visitor.End() && accepted;
}

// The item at the end of the path, or null. The directories on the way, as far as there are, go on
// the stack; the root does not.
IKelDataItem* KelDataStore::descend(const char* path) {
  if (path == nullptr) return nullptr;
  IKelDataDirectory* directory = root_.get();
  const char* name = path;
  while (const char* const slash = std::strchr(name, '/')) {
    directory = directory->FindDirectory(name, static_cast<int32_t>(slash - name));
    if (directory == nullptr) return nullptr;
    walkStack_.add(directory);
    name = slash + 1;
  }
  return directory->GetItem(name);
}

bool KelDataStore::enterDirectories(IKelDataVisitor& visitor, int32_t base) {
  for (int32_t i = base + 1; i <= walkStack_.count(); ++i) {
    if (!visitor.EnterDirectory(walkStack_[i])) return false;
  }
  return true;
}

bool KelDataStore::leaveDirectories(IKelDataVisitor& visitor, int32_t base) {
  for (int32_t i = walkStack_.count(); i > base; --i) {
    if (!visitor.LeaveDirectory(walkStack_[i])) return false;
  }
  return true;
}

IKelDataVisitor* KelDataStore::CreateDefaultReader() {
  const KelDataFactories& factories = kelDataFactories();
  const auto make = useXml_ ? factories.defaultXmlReader : factories.registryReader;
  return make == nullptr ? nullptr : make();
}

IKelDataVisitor* KelDataStore::CreateDefaultWriter() {
  const KelDataFactories& factories = kelDataFactories();
  const auto make = useXml_ ? factories.defaultXmlWriter : factories.registryWriter;
  return make == nullptr ? nullptr : make();
}

IKelDataVisitor* KelDataStore::CreateFileReader(const OroString& path, bool notify) {
  const auto make = kelDataFactories().fileReader;
  return make == nullptr ? nullptr : make(path, notify);
}

IKelDataVisitor* KelDataStore::CreateFileWriter(const OroString& path) {
  const auto make = kelDataFactories().fileWriter;
  return make == nullptr ? nullptr : make(path);
}

IKelDataVisitor* KelDataStore::CreateXmlReader(const OroString& path, bool notify) {
  const auto make = kelDataFactories().xmlReader;
  return make == nullptr ? nullptr : make(path, notify);
}

IKelDataVisitor* KelDataStore::CreateXmlWriter(const OroString& path) {
  const auto make = kelDataFactories().xmlWriter;
  return make == nullptr ? nullptr : make(path);
}

bool KelDataStore::Load() { return Accept(reader_.get()); }

bool KelDataStore::ImportIni(const OroString& file, bool expandEnv) {
  return KelDataIniImport(*this, expandEnv).run(file);
}

bool KelDataStore::CollectPaths(const char* path, OroArray<const char*>& list) {
  if (KelDataDirectory* const directory = directories_.value(path)) {
    return directory->CollectPaths(list);
  }
  if (items_.value(path) == nullptr || *path == '\0') return false;
  list.add(path);
  return true;
}

bool KelDataStore::ImportXml(const OroString& file, const char* subtree) {
  const IPtr<IKelDataVisitor> reader(CreateXmlReader(file, false));
  const bool whole = subtree == nullptr || *subtree == '\0';
  return whole ? Accept(reader.get()) : AcceptPath(reader.get(), subtree);
}

bool KelDataStore::CommitWriter() {
  const auto commit = kelDataFactories().commit;
  return !writer_ || commit == nullptr || commit(writer_.get());
}

bool KelDataStore::CheckIndexes() {
  KelDataHashVerifier verifier(*this);
  bool agree = Accept(&verifier);
  for (const auto& entry : items_.table()) {
    if (entry.value == nullptr || parentOf(entry.key.text()) == nullptr) agree = false;
  }
  for (const auto& entry : directories_.table()) {
    if (entry.value == nullptr) agree = false;
  }
  return agree;
}

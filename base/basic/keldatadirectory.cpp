#include "base/basic/keldatadirectory.h"

#include <cstring>
#include <utility>

#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataVisitor.h"
#include "orobasictypes/kelhash.h"

namespace {

constexpr int32_t kFirstCapacity = 21;

template <class T>
void append(OroArray<T*>& list, T* child) {
  if (child == nullptr) return;
  if (list.capacity() == 0) list = OroArray<T*>(kFirstCapacity);
  list.add(child);
}

template <class T>
bool take(OroArray<T*>& list, const T* child) {
  for (int32_t i = 1; i <= list.count(); ++i) {
    if (list[i] != child) continue;
    list.remove(i);
    return true;
  }
  return false;
}

}  // namespace

KelDataDirectory::KelDataDirectory(std::string_view name)
    : name_(name.data(), static_cast<int32_t>(name.size())) {}

KelDataDirectory::~KelDataDirectory() {
  for (IKelDataDirectory* directory : directories_) delete directory;
  for (IKelDataItem* item : items_) delete item;
}

const char* KelDataDirectory::GetName() const {
  const char* const slash = std::strrchr(name_.c_str(), '/');
  return slash == nullptr ? name_.c_str() : slash + 1;
}

void KelDataDirectory::AddDirectory(IKelDataDirectory* directory) {
  append(directories_, directory);
  if (directory != nullptr && !byName_.isEmpty()) addName(directory);
}

void KelDataDirectory::addName(IKelDataDirectory* directory) {
  KelCString name(directory->GetName());
  if (byName_.find(name) == nullptr) byName_.insert(std::move(name), directory);
}

bool KelDataDirectory::RemoveDirectory(IKelDataDirectory* directory) {
  if (!takeDirectory(directory)) return false;
  delete directory;
  return true;
}

void KelDataDirectory::AddItem(IKelDataItem* item) { append(items_, item); }

bool KelDataDirectory::RemoveItem(IKelDataItem* item) {
  if (!takeItem(item)) return false;
  delete item;
  return true;
}

bool KelDataDirectory::takeDirectory(IKelDataDirectory* directory) {
  if (!take(directories_, directory)) return false;
  byName_.clear();  // made again when it is needed
  return true;
}

bool KelDataDirectory::takeItem(IKelDataItem* item) { return take(items_, item); }

IKelDataDirectory* KelDataDirectory::FindDirectory(const char* name, int32_t length) {
  if (name == nullptr || length < 0) return nullptr;
  const std::string_view wanted(name, static_cast<size_t>(length));
  if (directories_.count() > kMostScanned) return findByName(wanted);
  for (IKelDataDirectory* directory : directories_) {
    if (directory->GetName() == wanted) return directory;
  }
  return nullptr;
}

IKelDataDirectory* KelDataDirectory::findByName(std::string_view name) {
  if (byName_.isEmpty()) {
    for (IKelDataDirectory* directory : directories_) addName(directory);
  }
  const auto* const entry =
      byName_.findHashed(kelHashBytes(name.data(), name.size()),
                         [name](const KelCString& key) { return key.c_str() == name; });
  return entry == nullptr ? nullptr : entry->value;
}

IKelDataDirectory* KelDataDirectory::GetDirectory(const char* name) {
  return name == nullptr ? nullptr : FindDirectory(name, static_cast<int32_t>(std::strlen(name)));
}

IKelDataItem* KelDataDirectory::GetItem(const char* name) {
  for (IKelDataItem* item : items_) {
    if (name != nullptr && std::strcmp(item->GetName(), name) == 0) return item;
  }
  return nullptr;
}

// A visit may set values, and so run handlers that add or remove children: the lists are read anew
// at each step.
bool KelDataDirectory::Accept(IKelDataVisitor* visitor) {
  if (!visitor->EnterDirectory(this)) return false;
  const bool goesOn = visitor->GetMode() == IKelDataVisitor::kReading;
  bool result = true;
  for (int32_t i = 1; i <= directories_.count(); ++i) {
    if (directories_[i]->Accept(visitor)) continue;
    if (!goesOn) return false;
    result = false;
  }
  for (int32_t i = 1; i <= items_.count(); ++i) {
    if (items_[i]->Accept(visitor)) continue;
    if (!goesOn) return false;
    result = false;
  }
  return visitor->LeaveDirectory(this) && result;
}

void KelDataDirectory::CopyLayers(int32_t from, int32_t to) {
  for (int32_t i = 1; i <= directories_.count(); ++i) directories_[i]->CopyLayers(from, to);
  for (int32_t i = 1; i <= items_.count(); ++i) {
    if ((items_[i]->GetFlags() & IKelDataItem::kLayerExempt) == 0) items_[i]->CopyLayer(from, to);
  }
}

bool KelDataDirectory::CollectPaths(OroArray<const char*>& list) {
  bool found = !items_.isEmpty();
  for (IKelDataDirectory* directory : directories_) {
    if (directory->CollectPaths(list)) found = true;
  }
  for (IKelDataItem* item : items_) list.add(item->GetPath());
  return found;
}

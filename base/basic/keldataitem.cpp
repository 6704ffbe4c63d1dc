#include "base/basic/keldataitem.h"

#include <cstring>
#include <utility>

#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/kelrealloc.h"

namespace {

constexpr int32_t kFirstReceiverCapacity = 21;
constexpr uint32_t kBlockTableBuckets = 17;

int32_t leafOffsetOf(const char* path) {
  const char* const slash = std::strrchr(path, '/');
  return slash == nullptr ? 0 : static_cast<int32_t>(slash + 1 - path);
}

}  // namespace

KelDataItem::KelDataItem(const char* path, int32_t kind, uint32_t flags)
    : blocked_(OroHashTable<IOroDataReceiver*, uint8_t>::withBuckets(kBlockTableBuckets)),
      path_(path),
      leafOffset_(leafOffsetOf(path)),
      kind_(kind),
      flags_(flags) {}

KelDataItem::~KelDataItem() {
  if (gone_ != nullptr) *gone_ = true;
}

int32_t KelDataItem::findReceiver(const IOroDataReceiver* receiver) const {
  for (int32_t i = 1; i <= receivers_.count(); ++i) {
    if (receivers_[i] == receiver) return i;
  }
  return 0;
}

void KelDataItem::AddReceiver(IOroDataReceiver* receiver) {
  if (receiver == nullptr || findReceiver(receiver) != 0) return;
  const int32_t empty = findReceiver(nullptr);
  if (empty != 0) {
    receivers_[empty] = receiver;
  } else {
    if (receivers_.capacity() == 0) {
      receivers_ = OroArray<IOroDataReceiver*>(kFirstReceiverCapacity);
    }
    receivers_.add(receiver);
  }
  setBlocked(receiver, false);
}

bool KelDataItem::RemoveReceiver(IOroDataReceiver* receiver) {
  const int32_t slot = receiver == nullptr ? 0 : findReceiver(receiver);
  if (slot == 0) return false;
  receivers_[slot] = nullptr;
  blocked_.remove(receiver);
  return true;
}

void KelDataItem::BlockReceiver(IOroDataReceiver* receiver, bool blocked) {
  setBlocked(receiver, blocked);
}

void KelDataItem::setBlocked(IOroDataReceiver* receiver, bool blocked) {
  uint32_t index = 0;
  if (auto* entry = blocked_.find(receiver, &index)) {
    entry->value = blocked;
  } else {
    blocked_.insert(index, receiver, blocked);
  }
}

bool KelDataItem::IsReceiverBlocked(IOroDataReceiver* receiver) const {
  const auto* const entry = blocked_.find(receiver);
  if (entry == nullptr) kelAssertFail("entry", "base/basic/keldata", __LINE__);
  return entry != nullptr && entry->value != 0;
}

IOroDataReceiver* KelDataItem::GetReceiver(int32_t index) const {
  return index >= 0 && index < receivers_.count() ? receivers_[index + 1] : nullptr;
}

bool KelDataItem::Accept(IKelDataVisitor*) { return true; }

void KelDataItem::CopyLayer(int32_t, int32_t) {}

bool KelDataItem::LayersDiffer(int32_t, int32_t) const { return false; }

void KelDataItem::fire(IOroDataReceiver* sender, bool force) {
  const Message fired = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    receiver.OnVoidFired(item.path());
  };
  deliver({.message = fired, .sender = sender, .force = force});
}

void KelDataItem::deliverToAll(const Delivery& delivery) {
  bool gone = false;  // whether a handler destroyed this item
  bool* const outer = std::exchange(gone_, &gone);
  if (delivery.raisesDepth) ++depth_;
  // Read once: a receiver that a handler appends does not hear of this change. The slots are read
  // at each step, since handlers may move the array, empty slots and fill them again.
  const int32_t count = receivers_.count();
  for (int32_t i = 1; i <= count && !gone; ++i) tell(receivers_[i], delivery, gone);
  if (gone) {
    if (outer != nullptr) *outer = true;
    return;
  }
  gone_ = outer;
  if (delivery.raisesDepth) --depth_;
  if (depth_ == 0 && compactionPending_) compact();
}

void KelDataItem::tell(IOroDataReceiver* receiver, const Delivery& delivery, const bool& gone) {
  if (receiver == nullptr) {
    compactionPending_ = true;
    return;
  }
  if (receiver == delivery.sender && !delivery.force) return;
  auto* const entry = blocked_.find(receiver);  // each receiver has one from AddReceiver on
  if (entry == nullptr || entry->value != 0) return;
  entry->value = 1;
  delivery.message(*this, *receiver, delivery.extra);
  if (gone) return;
  // A receiver that removed itself has no entry any more, and gets none.
  if (auto* const after = blocked_.find(receiver)) after->value = 0;
}

void KelDataItem::forgetReceivers() {
  for (IOroDataReceiver*& receiver : receivers_) receiver = nullptr;
  blocked_.clear();
}

void KelDataItem::compact() {
  int32_t kept = 0;
  for (int32_t i = 1; i <= receivers_.count(); ++i) {
    if (receivers_[i] != nullptr) receivers_[++kept] = receivers_[i];
  }
  // An outer walk may still be on its way to the old end and must find nothing there.
  for (int32_t i = kept + 1; i <= receivers_.count(); ++i) receivers_[i] = nullptr;
  receivers_.setCount(kept);
  compactionPending_ = false;
}

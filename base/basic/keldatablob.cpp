#include "base/basic/keldatablob.h"

#include <algorithm>
#include <cstring>

#include "interfaces/IKelDataVisitor.h"
#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/kelrealloc.h"

KelDataBlob::KelDataBlob(const char* path, int32_t size, const void* data, uint32_t flags)
    : KelDataItem(path, kBlob, flags) {
  for (int32_t layer = 0; layer < kLayers; ++layer) store(layer, data, size);
}

KelDataBlob::~KelDataBlob() {
  for (void* data : data_) kelFree(data);
}

bool KelDataBlob::Accept(IKelDataVisitor* visitor) { return visitor->VisitBlob(this); }

void KelDataBlob::CopyLayer(int32_t from, int32_t to) {
  if (!isLayer(from) || !isLayer(to)) return;
  if (to == 0) {
    Update(data_[from], size_[from], nullptr, false);
  } else {
    store(to, data_[from], size_[from]);
  }
}

bool KelDataBlob::LayersDiffer(int32_t a, int32_t b) const {
  return isLayer(a) && isLayer(b) && !holds(a, data_[b], size_[b]);
}

void KelDataBlob::Set(const void* data, int32_t size) {
  store(0, data, size);
  if (!hasFlag(kInitialiseAll)) return;
  for (int32_t layer = 1; layer < kLayers; ++layer) store(layer, data_[0], size_[0]);
}

void KelDataBlob::Update(const void* data, int32_t size, IOroDataReceiver* sender, bool force) {
  const bool same = holds(0, data, size);
  Set(data, size);
  if (same && !force) return;
  const Message changed = [](const KelDataItem& item, IOroDataReceiver& receiver, int32_t) {
    const auto& blob = static_cast<const KelDataBlob&>(item);
    receiver.OnBlobChanged(item.path(), blob.data_[0], blob.size_[0]);
  };
  deliver({.message = changed, .sender = sender, .force = force, .raisesDepth = false});
}

// The new bytes are in place before the old ones go: `data` may point into them.
void KelDataBlob::store(int32_t layer, const void* data, int32_t size) {
  size = std::max(size, 0);
  void* bytes = size == size_[layer] ? data_[layer] : nullptr;
  if (bytes == nullptr && size > 0) kelMalloc(bytes, 1, size);
  if (size > 0 && data != nullptr) std::memmove(bytes, data, static_cast<size_t>(size));
  if (size > 0 && data == nullptr) std::memset(bytes, 0, static_cast<size_t>(size));
  if (bytes != data_[layer]) kelFree(data_[layer]);
  data_[layer] = bytes;
  size_[layer] = size;
}

bool KelDataBlob::holds(int32_t layer, const void* data, int32_t size) const {
  size = std::max(size, 0);
  if (size != size_[layer]) return false;
  const auto* const mine = static_cast<const unsigned char*>(data_[layer]);
  if (data != nullptr) return size == 0 || std::memcmp(mine, data, static_cast<size_t>(size)) == 0;
  return std::all_of(mine, mine + size, [](unsigned char byte) { return byte == 0; });
}

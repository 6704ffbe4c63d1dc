#include "base/basic/keldataboolpair.h"

#include <cstring>

#include "interfaces/IDataStore.h"

KelDataBoolPair::KelDataBoolPair(IDataStore* store, const char* firstKey, const char* secondKey,
                                 int32_t operation)
    : KelDataRecvItem(store, firstKey, Unconnected()),
      operation_(operation),
      secondKey_(secondKey) {
  KelDataBoolPair::Connect();
}

bool KelDataBoolPair::Connect() {
  if (isConnected()) return true;
  if (store() == nullptr || !store()->Exists(key()) || !store()->Exists(secondKey_.c_str())) {
    return false;
  }
  store()->AddReceiver(key(), this);
  store()->AddReceiver(secondKey_.c_str(), this);
  setConnected();
  Refresh();
  return true;
}

bool KelDataBoolPair::Disconnect() {
  if (store() == nullptr) return false;
  store()->RemoveReceiver(key(), this);
  store()->RemoveReceiver(secondKey_.c_str(), this);
  dropStore();
  return true;
}

void KelDataBoolPair::Refresh() {
  if (!isConnected()) return;
  state_ = 0;
  set(kFirst, store()->GetInt(key(), nullptr) > 0);
  set(kSecond, store()->GetInt(secondKey_.c_str(), nullptr) > 0);
  combine();
}

void KelDataBoolPair::OnIntChanged(const char* path, int32_t value) {
  set(std::strcmp(path, key()) == 0 ? kFirst : kSecond, value >= 1);
  combine();
}

void KelDataBoolPair::set(uint8_t bit, bool on) {
  state_ = static_cast<uint8_t>(on ? state_ | bit : state_ & ~bit);
}

void KelDataBoolPair::combine() {
  const bool first = (state_ & kFirst) != 0;
  const bool second = (state_ & kSecond) != 0;
  bool combined = false;
  if (operation_ == kAnd) combined = first && second;
  if (operation_ == kOr) combined = first || second;
  if (operation_ == kExclusiveOr) combined = first != second;
  set(kCombined, combined);
}

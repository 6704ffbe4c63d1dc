#include "base/basic/keldatarecvfloat.h"

#include "interfaces/IDataStore.h"

KelDataRecvFloat::KelDataRecvFloat(IDataStore* store, const char* key)
    : KelDataRecvItem(store, key) {
  KelDataRecvFloat::Refresh();
}

void KelDataRecvFloat::Refresh() {
  if (isConnected()) value_ = store()->GetFloat(key(), nullptr);
}

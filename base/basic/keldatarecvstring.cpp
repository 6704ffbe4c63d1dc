#include "base/basic/keldatarecvstring.h"

#include "interfaces/IDataStore.h"

KelDataRecvString::KelDataRecvString(IDataStore* store, const char* key)
    : KelDataRecvItem(store, key) {
  KelDataRecvString::Refresh();
}

void KelDataRecvString::Refresh() {
  if (isConnected()) value_ = store()->GetString(key(), nullptr);
}

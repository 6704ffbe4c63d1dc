#include "base/basic/keldatarecvorostring.h"

#include "interfaces/IDataStore.h"

KelDataRecvOroString::KelDataRecvOroString(IDataStore* store, const char* key)
    : KelDataRecvItem(store, key) {
  KelDataRecvOroString::Refresh();
}

void KelDataRecvOroString::Refresh() {
  if (isConnected()) value_ = store()->GetOroString(key(), nullptr);
}

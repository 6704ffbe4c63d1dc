#include "base/basic/keldatarecvint.h"

#include "interfaces/IDataStore.h"

KelDataRecvInt::KelDataRecvInt(IDataStore* store, const char* key) : KelDataRecvItem(store, key) {
  KelDataRecvInt::Refresh();
}

void KelDataRecvInt::Refresh() {
  if (isConnected()) value_ = store()->GetInt(key(), nullptr);
}

#include "base/basic/keldatahashverifier.h"

#include "base/basic/keldatastore.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataItem.h"

bool KelDataHashVerifier::VisitItem(IKelDataItem* item) {
  return store_.indexesItem(item->GetPath());
}

bool KelDataHashVerifier::LeaveDirectory(IKelDataDirectory* directory) {
  return store_.isRoot(directory) || store_.indexesDirectory(directory->GetPath());
}

#include "base/basic/keldatahashremover.h"

#include "base/basic/keldatastore.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataItem.h"

bool KelDataHashRemover::VisitItem(IKelDataItem* item) {
  return store_.unindexItem(item->GetPath());
}

bool KelDataHashRemover::LeaveDirectory(IKelDataDirectory* directory) {
  return store_.unindexDirectory(directory->GetPath());
}

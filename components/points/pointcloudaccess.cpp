#include "components/points/pointcloudaccess.h"

#include "components/points/pointblocks.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointcloudset.h"
#include "components/points/pointdocument.h"

PointCloud& PointCloudAccess::cloud() const { return pointsOf(object_.get())->cloud(); }

int64_t PointCloudAccess::count() { return cloud().count(); }

bool PointCloudAccess::hasColors() { return cloud().hasColors(); }

// Who looks at the colours keeps them.
bool PointCloudAccess::setHasColors(bool wanted) {
  if (wanted == hasColors()) return true;
  PointCloudSet set(cloud());
  set.own();
  set.setHasColors(wanted);
  return true;
}

IPointBlocks* PointCloudAccess::blocks() { return new PointBlocks(cloud().points()); }

int64_t PointCloudAccess::selectedCount() { return cloud().selection().CountSet(); }

bool PointCloudAccess::holds(int64_t first, int64_t size) {
  return first >= 0 && size >= 0 && first <= count() && size <= count() - first;
}

bool PointCloudAccess::readSelection(int64_t first, int64_t size, uint8_t* flags) {
  if (!holds(first, size)) return false;
  const BitVector& selection = cloud().selection();
  for (int64_t i = 0; i < size; ++i) {
    flags[i] = selection.Test(static_cast<int32_t>(first + i + 1)) ? 1 : 0;
  }
  return true;
}

bool PointCloudAccess::writeSelection(int64_t first, int64_t size, const uint8_t* flags) {
  if (!holds(first, size)) return false;
  BitVector& selection = cloud().selection();
  for (int64_t i = 0; i < size; ++i) {
    const auto item = static_cast<int32_t>(first + i + 1);
    if (flags[i] != 0) {
      selection.Set(item);
    } else {
      selection.Clear(item);
    }
  }
  return true;
}

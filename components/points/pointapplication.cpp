#include "components/points/pointapplication.h"

#include "interfaces/IDataStore.h"
#include "orobasictypes/sptr.h"

namespace {

struct Setting {
  const char* path;
  int32_t value;
  int32_t least;
  int32_t most;
};

constexpr Setting kDecimals = {"Points/Decimals", PointWriteOptions::kAsRead, -1, 15};
constexpr Setting kPlyForm = {"Points/PlyForm", 1, 0, 2};
constexpr Setting kPcdForm = {"Points/PcdForm", 1, 0, 1};
constexpr Setting kRealBytes = {"Points/RealBytes", 0, 0, 8};

int32_t valueOf(IDataStore* store, const Setting& setting) {
  bool found = false;
  const int32_t value = store != nullptr ? store->GetInt(setting.path, &found) : 0;
  return found ? value : setting.value;
}

// Stands at the default or at what the user's document says. Nothing of it is saved.
void declare(IDataStore& store, const Setting& setting) {
  constexpr uint32_t kPersistent = 1;  // what a reader fills in
  store.CreateInt(setting.path, setting.value, setting.least, setting.most, kPersistent);
  store.AcceptPath(store.GetReader(), setting.path);
  store.SetFlags(setting.path, 0);
}

}  // namespace

void PointApplication::prepare() {
  SPtr<IDataStore> store;
  if (!store) return;
  store->CreateDirectory("Points");
  for (const Setting& setting : {kDecimals, kPlyForm, kPcdForm, kRealBytes}) {
    declare(*store, setting);
  }
}

PointWriteOptions pointWriteOptions() {
  SPtr<IDataStore> store;
  PointWriteOptions options;
  options.decimals = valueOf(store.get(), kDecimals);
  options.plyForm = static_cast<PlyForm>(valueOf(store.get(), kPlyForm));
  options.pcdBinary = valueOf(store.get(), kPcdForm) == 1;
  const int32_t bytes = valueOf(store.get(), kRealBytes);
  options.realBytes = bytes == 4 || bytes == 8 ? bytes : 0;
  return options;
}

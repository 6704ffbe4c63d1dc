#include "components/points/pointapplication.h"

#include "interfaces/IDataStore.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kDecimals = "Points/Decimals";
constexpr int32_t kAsRead = -1;
constexpr int32_t kMostDecimals = 15;

}  // namespace

void PointApplication::prepare() {
  SPtr<IDataStore> store;
  if (!store) return;
  store->CreateDirectory("Points");
  store->CreateInt(kDecimals, kAsRead, kAsRead, kMostDecimals, 0);
}

int pointDecimals(int ofCloud) {
  SPtr<IDataStore> store;
  bool found = false;
  const int32_t decimals = store ? store->GetInt(kDecimals, &found) : kAsRead;
  return found && decimals != kAsRead ? decimals : ofCloud;
}

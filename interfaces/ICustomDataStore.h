// ICustomDataStore: IDataStore by another name, for a small store of a component's own.
#pragma once

#include "interfaces/IDataStore.h"

class ICustomDataStore : public virtual IDataStore {
 public:
  static constexpr const char* interfaceName() { return "ICustomDataStore"; }
};

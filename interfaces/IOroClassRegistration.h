// IOroClassRegistration: how the classes of the application become known to the broker.
//
// Reached through IOroObjBroker::classRegistration. Start-up only, main thread only.
#pragma once

#include <cstdint>

#include "orobasictypes/kelcstringset.h"

class KelCString;
struct GUID;

class IOroClassRegistration {
 public:
  virtual ~IOroClassRegistration() = default;

  // Makes a class known with its component, its tags (may be none) and its name for messages. 1, or
  // 0 with a report for a class id that is known already: the first registration stands.
  virtual int32_t registerClass(const GUID& classId, const GUID& componentId,
                                const KelCStringSet& tags, const KelCString& className) = 0;

  // Forgets the class and the interfaces that have it as default. The result tells whether such an
  // interface went, not whether the class did; callers rely on it.
  virtual int32_t unregisterClass(const GUID& classId) = 0;
};

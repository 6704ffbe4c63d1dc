#include "orobasictypes/orostrsupport.h"

#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/oroserviceonce.h"
#include "orobasictypes/testaccess.h"

namespace {

OroServiceOnce<IOroStrSupport>& support() {
  static auto* const once = new OroServiceOnce<IOroStrSupport>;  // outlives all strings
  return *once;
}

}  // namespace

IOroStrSupport* oroStrSupport() { return support().get(); }

void testaccess::resetStrSupport() { support().reset(); }

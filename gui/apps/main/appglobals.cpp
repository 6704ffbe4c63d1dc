#include "gui/apps/main/appglobals.h"

OroAppGlobals& oroAppGlobals() {
  static OroAppGlobals globals;
  return globals;
}

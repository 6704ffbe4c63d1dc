#include "base/basic/keldatafactories.h"

KelDataFactories& kelDataFactories() {
  static KelDataFactories factories;
  return factories;
}

#include "base/basic/gendatastore.h"

GenDataStore* getGenDataStore() {
  static GenDataStore* const store = [] {
    auto* const made = new GenDataStore;
    made->addRef();  // for good: nobody's last release may destroy it
    return made;
  }();
  return store;
}

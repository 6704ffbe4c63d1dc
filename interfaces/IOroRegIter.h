// IOroRegIter: walks the entries below a node of the registry, in the order of their making.
//
//   IPtr<Velmora::IOroRegIter> entry(registry->newIterator(section));
//   if (entry) for (entry->first(); !entry->atEnd(); entry->next()) entry->key(name);
//
// An entry is a node with a value; nodes without one are directories and are entered as far as the
// depth allows. One owner, one thread; the registry must not change meanwhile.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;

namespace Velmora {

class IOroRegIter : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroRegIter"; }

  // Back to the first child, entry or not; use first() to start a walk.
  virtual void rewind() = 0;
  // To the first entry.
  virtual void first() = 0;
  // To the next entry. Not past the end.
  virtual void next() = 0;
  virtual bool atEnd() = 0;

  // The entry's value.
  virtual void value(KelCString& out) = 0;
  // The entry's path below the node that the iterator was made on.
  virtual void key(KelCString& out) = 0;

  // How many levels to enter: 1 at first; the registry is made for up to 2. 0 is without limit and
  // ends only in trees of two levels.
  virtual void setDepth(int32_t levels) = 0;
};

}  // namespace Velmora

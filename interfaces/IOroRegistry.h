// IOroRegistry: the process-wide tree of named texts, kept in memory only.
//
// The application description, the command line and the product facts reach every part through it.
// Keys are paths with "/". A key must be a text of its own and not a borrowed literal: it is
// divided in place while an operation runs and reads as before afterwards. Not locked: written at
// start on the main thread; readers on other threads use key objects of their own.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class KelCString;

namespace Velmora {

class IOroRegIter;

class IOroRegistry : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroRegistry"; }

  // Sets the value at the key, making all nodes on the way; the empty key is this node. Always 1.
  virtual int32_t setValue(KelCString& key, const KelCString& value) = 0;

  // Removes the node with all below it. 1, or 0 when there is none.
  virtual int32_t removeKey(KelCString& key) = 0;

  // The value at section + "/" + key; an empty one of the two drops out with its slash.
  virtual const KelCString* getValue2(KelCString& section, KelCString& key) = 0;

  // The value at the key, or null when there is no such node; a node without a value gives the
  // empty text. Borrowed, valid until the node goes.
  virtual const KelCString* getValue(KelCString& key) = 0;

  // Whether the node exists and its value is exactly the text.
  virtual bool valueEquals(KelCString& key, const char* text) = 0;

  // The value as a decimal integer, 0 when it is none; `fallback` only when the node is absent.
  virtual int32_t getInt(KelCString& key, int32_t fallback) = 0;

  // A new iterator over the children of the node, count 0; null when the node is absent. The node
  // must outlive it.
  virtual IOroRegIter* newIterator(KelCString& key) = 0;
};

}  // namespace Velmora

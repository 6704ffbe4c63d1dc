// IOroDocObjectItr: walks the objects of a document.
//
//   for (IPtr<IOroDocObjectItr> walk(document->objectIterator(2, 0, 0, 0)); !walk->atEnd();
//        walk->next()) use(walk->current());
//
// A new iterator stands at the first object. The document must not change while it is walked.
#pragma once

#include "orobasictypes/iorounknown.h"

class IOroDocObject;

class IOroDocObjectItr : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDocObjectItr"; }

  virtual bool atEnd() = 0;

  // Does nothing at the end.
  virtual void next() = 0;

  // The object here, owned by the document; null at the end.
  virtual IOroDocObject* current() = 0;
};

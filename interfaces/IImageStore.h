// IImageStore: the images of the user interface by name, as undecoded bytes.
//
// Components put theirs in at start; user interface libraries fetch and decode them. All containers
// are borrowed and live as long as the process. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IImageContainer;
class KelCString;

class IImageStore : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IImageStore"; }

  // Keeps the address: the bytes stay the caller's and must live as long as the process. A name
  // that is known gets a new container; whoever has the old one may go on using it.
  virtual void addImage(const KelCString& name, const void* data, uint32_t size) = 0;
  // Null for an unknown name.
  virtual IImageContainer* getImage(const KelCString& name) = 0;
  // The same into *out; tells whether the name is known.
  virtual bool findImage(const KelCString& name, IImageContainer** out) = 0;
};

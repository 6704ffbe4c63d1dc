#include "components/kit/entrypoint.h"

#include <new>

#include "components/kit/orocomponentbase.h"
#include "orobasictypes/kelrealloc.h"

int EntryPoint(int32_t* version, IOroComponent** component) {
  constexpr int32_t contractVersion = 100;
  if (version == nullptr || component == nullptr) return 0;
  *version = contractVersion;
  kelHelpOperatorNew();
  *component = new (std::nothrow) OroComponentBase(oroComponentRecord);
  if (*component == nullptr) return 0;
  (*component)->addRef();  // an IPtr on the component must not end it; the manager deletes it
  return 1;
}

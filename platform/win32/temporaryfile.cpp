#include "platform/temporaryfile.h"

#include "platform/systempart.h"
#include "platform/win32/win32gate.h"

namespace platform {

int systemTemporaryDescriptor(std::u16string_view path) {
  return _wsopen(toWidePath(path).c_str(),
                 _O_RDWR | _O_CREAT | _O_BINARY | _O_TEMPORARY | _O_NOINHERIT, _SH_DENYNO,
                 _S_IREAD | _S_IWRITE);
}

}  // namespace platform

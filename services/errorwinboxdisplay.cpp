#include "services/errorwinboxdisplay.h"

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "platform/messagebox.h"
#include "platform/process.h"

namespace {

constexpr int kModulePathUnits = 1024;

const char* labelKey(int32_t severity) {
  switch (severity) {
    case 0:
      return oroKey("WARNING");
    case 1:
      return oroKey("ERROR");
    default:
      return oroKey("Unknown");
  }
}

OroString executableName() {
  const std::u16string path = platform::executablePath(kModulePathUnits);
  return OroPath(OroString(path.c_str())).fileName(true);
}

}  // namespace

void ErrorWinBoxDisplay::onError(const OroString& text, const int32_t* severity,
                                 const KelCString& detail) {
  if (errorsOnly_ && *severity != 1) return;
  OroString label;
  oroTranslate(label, labelKey(*severity));
  OroString message;
  if (detail.isEmpty()) {
    oroTranslate(message, "%1:\n%2", label, text);
  } else {
    oroTranslate(message, "%1:\n%2\n%3", label, text, OroString(detail));
  }
  const unsigned icon = *severity == 1 ? platform::boxErrorIcon : platform::boxWarningIcon;
  platform::messageBox(executableName().wideText(), message.wideText(), platform::boxOk | icon);
}

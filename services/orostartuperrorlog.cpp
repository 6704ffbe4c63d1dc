#include "services/orostartuperrorlog.h"

#include "interfaces/IOroDirService.h"
#include "interfaces/IOroErrorService.h"
#include "interfaces/IProductInfo.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "platform/process.h"
#include "services/logfilelistener.h"
#include "services/registryvalue.h"

namespace {

OroPath stemOfExecutable(const KelCString& executable) {
  const OroPath path(OroString::fromUtf8(executable.text()));
  return path.parent().joined(path.fileName(false));
}

OroPath stemOfProduct() {
  SPtr<IOroDirService> directories;
  const OroPath folder = directories ? directories->getDir("exe") : OroPath();
  KelCString name;
  SPtr<IProductInfo> product;
  if (product) product->productName(name);
  return folder.joined(OroString(name));
}

}  // namespace

bool oroWantsStartupErrorLog() {
  return platform::environment("CREATE_ERROR_LOG_AT_STARTUP") == "1";
}

void oroCreateStartupErrorLog() {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  auto* const listener = new LogfileListener;
  errors->addListener(listener);
  listener->setLogFile(oroErrorLogPath());
}

OroPath oroErrorLogPath() {
  const KelCString* const executable = oroRegistryValue("MAIN_ARGV0");
  const bool recorded = executable != nullptr && !executable->isEmpty();
  OroPath path = recorded ? stemOfExecutable(*executable) : stemOfProduct();
  path.append(".log");  // a separator goes in between: the stem is a directory
  return path;
}

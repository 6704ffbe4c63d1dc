#include "gui/apps/main/errorprinter.h"

#include <string>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orosystemtext.h"
#include "platform/streams.h"

namespace {

constexpr const char* kFlag = "errorsOnStandardError";

}  // namespace

void ErrorPrinter::onError(const OroString& text, const int32_t* severity,
                           const KelCString& detail) {
  constexpr int32_t kError = 1;
  if (*severity != kError) return;
  std::string lines = oroTerminalText(text) + "\n";
  if (!detail.isEmpty()) lines += oroTerminalText(OroString(detail)) + "\n";
  platform::writeStandardError(lines);
}

ErrorPrinter::Attached::Attached() {
  if (!errors_) return;
  errors_->addListener(printer_.get());
  errors_->setFlag(KelCString::borrow(kFlag), true);
}

ErrorPrinter::Attached::~Attached() {
  if (!errors_) return;
  errors_->setFlag(KelCString::borrow(kFlag), false);
  errors_->removeListener(printer_.get());
}

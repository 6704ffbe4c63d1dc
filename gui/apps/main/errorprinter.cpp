#include "gui/apps/main/errorprinter.h"

#include <string>

#include "framework/componentload.h"
#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orosystemtext.h"
#include "platform/streams.h"

namespace {

constexpr const char* kFlag = "errorsOnStandardError";

// A load stands in the journal behind the loader's words about it, so the first ones pass.
bool isToldAgain(const OroString& report) {
  const SPtr<IOroLoadJournal> journal;
  if (!journal) return false;
  ComponentLoad load;
  int32_t step = 0;
  for (int32_t i = 1; journal->load(i, load.path, step, load.nanoseconds); ++i) {
    load.step = static_cast<OroLoadStep>(step);
    if (isLoaderReport(report, load)) return true;
  }
  return false;
}

}  // namespace

void ErrorPrinter::onError(const OroString& text, const int32_t* severity,
                           const KelCString& detail) {
  constexpr int32_t kError = 1;
  if (*severity != kError || isToldAgain(text)) return;
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

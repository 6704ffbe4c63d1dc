#include "framework/componentload.h"

#include <string_view>

namespace {

ComponentLoadListener toldListener = nullptr;
void* toldContext = nullptr;

}  // namespace

void setComponentLoadListener(ComponentLoadListener listener, void* context) {
  toldListener = listener;
  toldContext = context;
}

void tellComponentLoad(const ComponentLoad& load) {
  if (toldListener != nullptr) toldListener(load, toldContext);
}

// The words have the whole path, with an extension where the description leaves it out.
bool isLoaderReport(const OroString& report, const ComponentLoad& load) {
  if (load.step != kOroLoadFile || load.path.isEmpty()) return false;
  const std::u16string_view text(report.wideText());
  const std::u16string_view path(load.path.wideText());
  const size_t place = text.find(path);
  if (place == text.npos) return false;
  const std::u16string_view rest = text.substr(place + path.size());
  return !rest.empty() && (rest[0] == u'.' || rest[0] == u';');
}

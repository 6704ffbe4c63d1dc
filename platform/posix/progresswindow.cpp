#include "platform/progresswindow.h"

namespace platform {

bool ProgressWindow::create() { return false; }

void ProgressWindow::destroy() {}

void ProgressWindow::setCommandText(std::u16string_view) {}

void ProgressWindow::setActionText(std::u16string_view) {}

void ProgressWindow::setPercent(int) {}

void ProgressWindow::pump() {}

}  // namespace platform

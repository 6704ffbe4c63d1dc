#include "gui/apps/main/commandrecord.h"

#include "gui/apps/main/appglobals.h"
#include "interfaces/IInfoBar2.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"

CommandRecord::CommandRecord(IInfoBar2* bar, const char* name) : bar_(bar) {
  if (bar_ == nullptr) return;
  OroString text;
  bar_->startCommand(oroAppGlobals().appMain, oroTranslate(text, name));
}

CommandRecord::~CommandRecord() {
  if (bar_ != nullptr) bar_->stopCommand(oroAppGlobals().appMain);
}

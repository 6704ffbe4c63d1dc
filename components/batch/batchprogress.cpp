#include "components/batch/batchprogress.h"

#include "interfaces/IInfoBar2.h"
#include "orobasictypes/orotranslate.h"

BatchProgress::BatchProgress(int32_t files) : files_(files) {
  OroString text;
  oroTranslate(text, "Batch of %1 files", OroString(files));
  if (busy_) busy_->startBusy(text, 0, this);
}

BatchProgress::~BatchProgress() {
  if (busy_) busy_->stopBusy(0, 0, this);
}

void BatchProgress::beginFile(int32_t number, const OroString& name) {
  OroString text;
  oroTranslate(text, "File %1 of %2: %3", OroString(number), OroString(files_), name);
  if (busy_) busy_->startBusy(text, 0, &done_);
}

void BatchProgress::endFile() {
  ++done_;
  if (busy_) busy_->stopBusy(0, 0, &done_);
  if (bar_) bar_->setPercent(static_cast<int32_t>(int64_t{done_} * 100 / files_));
}

void BatchProgress::show(const OroString& summary) {
  if (busy_) busy_->setBusyText(summary);
}

BatchCommand::BatchCommand(const char* key) {
  OroString text;
  if (auto* const commands = oroQuery<IInfoBar2>(bar_.get())) {
    commands->startCommand(this, oroTranslate(text, key));
  }
}

BatchCommand::~BatchCommand() {
  if (auto* const commands = oroQuery<IInfoBar2>(bar_.get())) commands->stopCommand(this);
}

#include "components/points/pointprogress.h"

#include <algorithm>

#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"

PointProgress::PointProgress(const char* key) {
  OroString text;
  oroTranslate(text, key);
  if (busy_) busy_->startBusy(text, 0, this);
}

PointProgress::~PointProgress() {
  if (busy_) busy_->stopBusy(0, 0, this);
}

void PointProgress::update(int64_t done, int64_t whole) {
  if (!bar_ || whole <= 0) return;
  const auto percent = static_cast<int32_t>(std::clamp<int64_t>(done * 100 / whole, 0, 100));
  if (percent == percent_) return;
  percent_ = percent;
  bar_->setPercent(percent);
}

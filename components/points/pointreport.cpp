#include "components/points/pointreport.h"

#include <algorithm>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orotranslate.h"

void reportPoints(int32_t severity, const char* key, const OroString& a1, const OroString& a2,
                  const OroString& a3) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  oroTranslate(text, key, a1, a2, a3);
  errors->report(text, severity, KelCString());
}

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

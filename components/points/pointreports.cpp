#include "components/points/pointreports.h"

namespace {

PointReports* innermostReports = nullptr;

}  // namespace

PointReports::PointReports() : outer_(innermostReports) { innermostReports = this; }

PointReports::~PointReports() { innermostReports = outer_; }

void PointReports::hear(int32_t severity, const OroString& text) {
  if (innermostReports == nullptr || severity != 1) return;
  if (innermostReports->error_.isEmpty()) innermostReports->error_ = text;
}

#include "components/points/pointreport.h"

#include "components/points/pointreports.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

void reportPoints(int32_t severity, const char* key, const OroString& a1, const OroString& a2,
                  const OroString& a3) {
  OroString text;
  oroTranslate(text, key, a1, a2, a3);
  reportPointText(severity, text);
}

void reportPointText(int32_t severity, const OroString& text) {
  PointReports::hear(severity, text);
  const SPtr<IOroErrorService> errors;
  if (errors) errors->report(text, severity, KelCString());
}

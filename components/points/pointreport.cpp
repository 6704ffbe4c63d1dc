#include "components/points/pointreport.h"

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

void reportPoints(int32_t severity, const char* key, const OroString& a1, const OroString& a2,
                  const OroString& a3) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  oroTranslate(text, key, a1, a2, a3);
  errors->report(text, severity, KelCString());
}

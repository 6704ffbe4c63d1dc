#include "components/batch/batchreport.h"

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

void reportBatch(int32_t severity, const char* key, const OroString& a1, const OroString& a2) {
  SPtr<IOroErrorService> errors;
  if (!errors) return;
  OroString text;
  oroTranslate(text, key, a1, a2);
  errors->report(text, severity, KelCString());
}

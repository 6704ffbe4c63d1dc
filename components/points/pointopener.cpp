#include "components/points/pointopener.h"

#include "components/points/pointdocument.h"
#include "components/points/pointfiles.h"
#include "components/points/pointreport.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"

bool PointOpener::open(const OroPath& path, IOroOpenOptions*, int32_t) {
  SPtr<IOroDoc> service;
  auto* document = oroQueryClass<PointDocument>(service.get());
  if (document == nullptr) {
    reportPoints(1, "There is no document to open %1 in", oroShownPath(path));
    return false;
  }
  if (mode_ == 0) document->removeAll();
  return loadPointFile(path, *document);
}

#include "gui/apps/cowl/cowlimageadder.h"

#include "gui/apps/cowl/cowlimages.h"
#include "interfaces/IImageStore.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/sptr.h"

void CowlImageAdder::initialize() {
  const SPtr<IImageStore> images;
  if (!images) return;
  images->addImage(KelCString::borrow("atelier110"), cowlimages::atelier110,
                   sizeof cowlimages::atelier110);
  images->addImage(KelCString::borrow("atelier110_cowl"), cowlimages::atelier110_cowl,
                   sizeof cowlimages::atelier110_cowl);
}

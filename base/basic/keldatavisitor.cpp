#include "base/basic/keldatavisitor.h"

#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"

bool KelDataVisitor::VisitBlob(IKelDataBlob* item) {
  return VisitItem(oroQuery<IKelDataItem>(item));
}

bool KelDataVisitor::VisitOroString(IKelDataOroString* item) {
  return VisitItem(oroQuery<IKelDataItem>(item));
}

bool KelDataVisitor::VisitString(IKelDataString* item) {
  return VisitItem(oroQuery<IKelDataItem>(item));
}

bool KelDataVisitor::VisitFloat(IKelDataFloat* item) {
  return VisitItem(oroQuery<IKelDataItem>(item));
}

bool KelDataVisitor::VisitInt(IKelDataInt* item) { return VisitItem(oroQuery<IKelDataItem>(item)); }

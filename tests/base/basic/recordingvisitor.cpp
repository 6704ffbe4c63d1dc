#include "tests/base/basic/recordingvisitor.h"

#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"

namespace tests {

namespace {

template <class Item>
std::string pathOf(Item* item) {
  return oroQuery<IKelDataItem>(item)->GetPath();
}

}  // namespace

bool RecordingVisitor::record(const std::string& call) {
  calls.push_back(call);
  if (during) during(call);
  return failing.count(call) == 0;
}

bool RecordingVisitor::EnterDirectory(IKelDataDirectory* directory) {
  return record(std::string("enter ") + directory->GetPath());
}

bool RecordingVisitor::LeaveDirectory(IKelDataDirectory* directory) {
  return record(std::string("leave ") + directory->GetPath());
}

bool RecordingVisitor::VisitBlob(IKelDataBlob* item) { return record("blob " + pathOf(item)); }

bool RecordingVisitor::VisitOroString(IKelDataOroString* item) {
  return record("wide " + pathOf(item));
}

bool RecordingVisitor::VisitString(IKelDataString* item) {
  return record("string " + pathOf(item));
}

bool RecordingVisitor::VisitFloat(IKelDataFloat* item) { return record("float " + pathOf(item)); }

bool RecordingVisitor::VisitInt(IKelDataInt* item) { return record("int " + pathOf(item)); }

}  // namespace tests

// RecordingVisitor: writes down the walk that it is taken on, and fails where the test wants.
//
//   tests::RecordingVisitor visitor(IKelDataVisitor::kReading);
//   visitor.failing = {"int A/b"};
//   store.Accept(&visitor);
//   EXPECT_THAT(visitor.calls, ElementsAre("begin", "enter ", ...));
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/basic/keldatavisitor.h"

namespace tests {

class RecordingVisitor : public KelDataVisitor {
 public:
  explicit RecordingVisitor(int32_t mode) : KelDataVisitor(mode) {}

  bool Begin() override { return record("begin"); }
  bool EnterDirectory(IKelDataDirectory* directory) override;
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;
  bool LeaveDirectory(IKelDataDirectory* directory) override;
  bool End() override { return record("end"); }

  std::vector<std::string> calls;
  std::set<std::string> failing;                   // the calls whose result is false
  std::function<void(const std::string&)> during;  // runs in each call

 private:
  bool record(const std::string& call);
};

}  // namespace tests

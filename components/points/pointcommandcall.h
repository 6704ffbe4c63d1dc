// PointCommandCall: one call of a point command.
//
// Gathers the values and checks them against the command's row, then runs it on the document.
#pragma once

#include "components/points/pointcommandrows.h"
#include "components/points/pointcommandrun.h"
#include "interfaces/ICommandCall.h"

class PointCommandCall : public ICommandCall {
 public:
  static constexpr const char* className() { return "PointCommandCall"; }
  using Offers = OroOffers<PointCommandCall, ICommandCall>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // The row must outlive the call.
  explicit PointCommandCall(const PointCommandRow& row) : row_(row) {}

  bool setNumbers(const char* parameter, const double* values, int32_t count) override;
  bool setText(const char* parameter, const OroString& text) override;
  bool setCloud(IOroUnknown* cloud) override;
  bool run(IOroProgress* progress) override;
  bool wasStopped() override { return stopped_; }
  const OroString& message() override { return message_; }

  int32_t resultCount() override { return static_cast<int32_t>(results_.size()); }
  const char* resultName(int32_t result) override;
  const double* resultNumbers(int32_t result, int32_t& count) override;

 private:
  const PointParameter* find(const char* parameter);
  const PointCommandResult* resultAt(int32_t result) const;
  bool hasAll();
  bool runOn(PointDocument& document, IOroProgress* progress);
  bool failCount(const PointParameter& row, int32_t count);
  bool fail(const char* key, const OroString& a1 = OroString(), const OroString& a2 = OroString());

  const PointCommandRow& row_;
  PointCommandRun::Numbers numbers_;
  PointCommandRun::Texts texts_;
  IPtr<PointObject> target_;
  std::vector<PointCommandResult> results_;
  OroString message_;
  bool stopped_ = false;
};

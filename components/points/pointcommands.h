// PointCommands: the commands on the document's points, by name.
//
// The one table that scripts, batches and help read. It is empty until the commands are registered.
// Main thread only.
#pragma once

#include <span>

#include "components/points/pointcommandrows.h"
#include "interfaces/ICommandRegistration.h"
#include "interfaces/ICommandTable.h"
#include "orobasictypes/orooffers.h"

class PointCommands : public ICommandRegistration, public ICommandTable {
 public:
  static constexpr const char* className() { return "PointCommands"; }
  using Offers = OroOffers<PointCommands, ICommandRegistration, ICommandTable>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void registerCommands() override { rows_ = pointCommandRows(); }
  void commandsRegistered() override {}

  int32_t commandCount() override { return static_cast<int32_t>(rows_.size()); }
  const char* commandName(int32_t command) override;
  bool commandHelp(int32_t command, OroString& text) override;
  int32_t parameterCount(int32_t command) override;
  const char* parameterName(int32_t command, int32_t parameter) override;
  bool parameterHelp(int32_t command, int32_t parameter, OroString& text) override;
  int32_t parameterNumbers(int32_t command, int32_t parameter) override;
  bool parameterRequired(int32_t command, int32_t parameter) override;
  ICommandCall* newCall(int32_t command) override;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  const PointCommandRow* row(int32_t command) const;
  const PointParameter* parameterOf(int32_t command, int32_t parameter) const;

  std::span<const PointCommandRow> rows_;
};

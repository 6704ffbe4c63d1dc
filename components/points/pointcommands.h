// PointCommands: the commands on the document's points, by name.
//
// The table is what a script engine offers to its scripts. Commands work on every cloud of the
// document, in place. Main thread only.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "interfaces/ICommandRegistration.h"
#include "orobasictypes/orooffers.h"

class PointDocument;

struct PointCommand {
  const char* name;
  const char* usage;  // its arguments, for people
  size_t argumentCount;
  bool (*run)(PointDocument& document, std::span<const double> arguments);
};

class PointCommands : public ICommandRegistration {
 public:
  static constexpr const char* className() { return "PointCommands"; }
  using Offers = OroOffers<PointCommands, ICommandRegistration>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void registerCommands() override;
  void commandsRegistered() override;

  // In the order of their names, once they are registered.
  const std::vector<PointCommand>& commands() const { return commands_; }
  // Runs a command on the document. False for an unknown name, a wrong number of arguments, or
  // arguments that make no sense; the points are then unchanged.
  bool run(PointDocument& document, std::string_view name, std::span<const double> arguments) const;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  std::vector<PointCommand> commands_;
};

// CommandLine: turns the options of the command line into settings.
//
// The usage text that the executable prints is the grammar. A command line is taken whole or not at
// all: an unknown option or a missing value is refused, errorText() names it, and no setting has
// changed. Main thread only.
#pragma once

#include <vector>

#include "interfaces/ICmdLine.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

class IDataStore;

class CommandLine : public ICmdLine {
 public:
  static constexpr const char* className() { return "CommandLine"; }
  using Offers = OroOffers<CommandLine, ICmdLine>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool parse(int32_t argc, const OroString* argv) override;
  const OroString& errorText() override { return errorText_; }

  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  struct Option;
  // A setting that the command line asks for; applied when all of it was understood.
  struct Change {
    const Option* option;
    OroString text;
    int32_t number;
  };

  static const Option* findOption(const OroString& name);
  bool read(const Option& option, const OroString& value);
  bool apply(IDataStore& store) const;
  bool refuse(const char* key, const OroString& a1, const OroString& a2 = OroString());

  std::vector<Change> changes_;
  OroString errorText_;
};

// CommandLine: turns the options of the command line into settings.
//
// The usage text that the executable prints is the grammar, with the options -exitstatus and
// -verbose of this library beside it. A command line is taken whole or not at all: an unknown
// option or a missing value is refused, errorText() names it, and no setting has changed. Main
// thread only.
#pragma once

#include <span>
#include <string>
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

  // All that it knows, those that end in "=" by their beginning.
  static std::vector<std::string> optionNames();
  // What the process is to end with after the last command line was refused while it asked for a
  // status; 0 otherwise.
  static int32_t statusOfRefusal();

  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }

 private:
  enum class Value;
  struct Option;
  // A setting that the command line asks for; applied when all of it was understood.
  struct Change {
    const Option* option;
    OroString text;
    int32_t number;
  };

  static std::span<const Option> options();
  static const Option* findOption(const OroString& name);
  bool take(int32_t argc, const OroString* argv);
  bool read(const Option& option, const OroString& value);
  const OroString& asked(const char* option) const;
  bool keepsLogApart();
  bool apply(IDataStore& store) const;
  bool refuse(const char* key, const OroString& a1, const OroString& a2 = OroString());

  std::vector<Change> changes_;
  OroString errorText_;
};

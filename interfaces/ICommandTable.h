// ICommandTable: the application's commands by name, for whoever offers them to people: scripts,
// batches, help.
//
//   const SPtr<ICommandTable> table;
//   for (int32_t i = 0; i < table->commandCount(); ++i) show(table->commandName(i));
//
// Commands and parameters are numbered from 0, commands in the order of their names. Names are the
// table's own and stay. A number that names nothing gives null or 0. Filled once
// ICommandRegistration has entered the commands. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class ICommandCall;
class OroString;

class ICommandTable : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ICommandTable"; }

  virtual int32_t commandCount() = 0;
  // As scripts write it: small letters, with "_" between words.
  virtual const char* commandName(int32_t command) = 0;
  // What it does, in a sentence and the user's language. False outside.
  virtual bool commandHelp(int32_t command, OroString& text) = 0;

  // In the order in which values without a name are taken.
  virtual int32_t parameterCount(int32_t command) = 0;
  virtual const char* parameterName(int32_t command, int32_t parameter) = 0;
  // What it means, with its unit and what it is when it is left out. False outside.
  virtual bool parameterHelp(int32_t command, int32_t parameter, OroString& text) = 0;
  // How many numbers it is at most: 1, 3 and so on; 0 for a text.
  virtual int32_t parameterNumbers(int32_t command, int32_t parameter) = 0;
  virtual bool parameterRequired(int32_t command, int32_t parameter) = 0;

  // A new call of the command, with a count of 0.
  virtual ICommandCall* newCall(int32_t command) = 0;
};

#include "components/points/pointcommands.h"

#include "components/points/pointcommandcall.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"

const PointCommandRow* PointCommands::row(int32_t command) const {
  return command >= 0 && command < static_cast<int32_t>(rows_.size())
             ? &rows_[static_cast<size_t>(command)]
             : nullptr;
}

const PointParameter* PointCommands::parameterOf(int32_t command, int32_t parameter) const {
  const PointCommandRow* const found = row(command);
  if (found == nullptr || parameter < 0) return nullptr;
  const auto at = static_cast<size_t>(parameter);
  return at < found->parameters.size() ? &found->parameters[at] : nullptr;
}

const char* PointCommands::commandName(int32_t command) {
  const PointCommandRow* const found = row(command);
  return found != nullptr ? found->name : nullptr;
}

bool PointCommands::commandHelp(int32_t command, OroString& text) {
  const PointCommandRow* const found = row(command);
  if (found != nullptr) oroTranslate(text, found->help);
  return found != nullptr;
}

int32_t PointCommands::parameterCount(int32_t command) {
  const PointCommandRow* const found = row(command);
  return found != nullptr ? static_cast<int32_t>(found->parameters.size()) : 0;
}

const char* PointCommands::parameterName(int32_t command, int32_t parameter) {
  const PointParameter* const found = parameterOf(command, parameter);
  return found != nullptr ? found->name : nullptr;
}

bool PointCommands::parameterHelp(int32_t command, int32_t parameter, OroString& text) {
  const PointParameter* const found = parameterOf(command, parameter);
  if (found != nullptr) oroTranslate(text, found->help);
  return found != nullptr;
}

int32_t PointCommands::parameterNumbers(int32_t command, int32_t parameter) {
  const PointParameter* const found = parameterOf(command, parameter);
  return found != nullptr ? found->mostNumbers : 0;
}

bool PointCommands::parameterRequired(int32_t command, int32_t parameter) {
  const PointParameter* const found = parameterOf(command, parameter);
  return found != nullptr && found->required;
}

ICommandCall* PointCommands::newCall(int32_t command) {
  const PointCommandRow* const found = row(command);
  return found != nullptr ? new PointCommandCall(*found) : nullptr;
}

#pragma once

// A process before its start for one test of the application main, and clean again after it: no
// broker, an empty settings store, nothing of the machine's own folders, no message box that
// blocks, and no host of any name, which is the event "network" when the start asks.

#include <string>
#include <vector>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "tests/tempfolder.h"

class IOroUnknown;

namespace tests {

class AppWorld {
 public:
  AppWorld();
  ~AppWorld();
  AppWorld(const AppWorld&) = delete;
  AppWorld& operator=(const AppWorld&) = delete;

  /// What the message box showed, one text after the other.
  const std::u16string& boxText() const;

 private:
  TempFolder folder_;
};

/// Publishes the object at the process's broker under the name.
void publish(const char* name, IOroUnknown* object);

/// The text of a registry key; "<absent>" where there is no such node.
std::string registryText(const std::string& key);

/// Declares a wide setting, if it is not there yet, and sets it.
void setText(const char* path, const char* text);
void setNumber(const char* path, int value);

/// Arguments as the main function makes them of narrow text.
std::vector<OroString> argumentsOf(const std::vector<std::string>& texts);

}  // namespace tests

// ApplicationDescription: what the application is made of, read from its description file.
//
// A plain value that the parser fills and KelInitServer puts into force. The format is told in
// docs/formats/application-description.md.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "orobasictypes/oroguid.h"

struct ApplicationDescription {
  struct RegistryValue {
    std::string key;
    std::string value;
  };
  struct ClassEntry {
    std::string name;
    GUID id;
    std::vector<std::string> tags;
    std::vector<std::string> defaultOf;  // interfaces whose default class this is
    bool initializer = false;            // an object of it is to be initialized at start
  };
  struct ComponentEntry {
    std::string library;  // file name without suffix, beside the description
    GUID id;
    std::string name;   // for messages; the library's name where none is told
    std::string group;  // empty for the default group
    std::vector<ClassEntry> classes;
  };

  std::vector<RegistryValue> registry;
  std::vector<ComponentEntry> components;
};

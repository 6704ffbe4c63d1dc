// The help that the executable gives by itself, before anything of the framework exists.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class OroString;

// Whether the first argument asks for help: "-h", "-help" or "/?" exactly.
bool isHelpRequest(int32_t argc, const OroString* argv);

// Writes the usage to the console that started the process, if there is one, and to standard
// output in any case: the second is what reaches a redirected output. Always true.
bool printUsage(int32_t argc, const OroString* argv);

// The usage for a program of this name, which stands in the text as given; a name with "meter",
// "tally" or "tlly" in it, in any case, shows options of its own.
std::string usageText(std::string_view programName);

// The entry points of components that are linked into the executable, by the base name of the
// library that they would otherwise be, in lower case.
//
// Filled before the first component is asked for; read by the component manager when its linkage
// is static. Main thread.
#pragma once

#include <cstdint>

class IOroComponent;
class OroString;

// The function that a component library exports as "EntryPoint".
using OroEntryPoint = int (*)(int32_t* version, IOroComponent** component);

// Enters or replaces the function of the name, which is kept as it is: capitals are never found.
void addStaticEntryPoint(const OroString& name, OroEntryPoint function);

// The function of the name, or null, which is then the entry of that name.
OroEntryPoint staticEntryPoint(const OroString& name);

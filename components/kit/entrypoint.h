// EntryPoint: the one symbol that a component library exports.
//
// componentkit defines it from the library's oroComponentRecord. A library that wants a component
// class of its own includes this and defines the function itself; that one is then taken.
#pragma once

#include <cstdint>

class IOroComponent;

// Stores the version of the contract, 100, and the library's component, and returns 1. Anything
// else makes the host leave the library alone. Called once for each load.
extern "C" [[gnu::visibility("default")]] int EntryPoint(int32_t* version,
                                                         IOroComponent** component);

// The executable as a component: it offers classes of its own by class id, on the same path as
// those of a library, but nothing is loaded for them. Main thread, once, at start.
#pragma once

#include "orobasictypes/oroguid.h"

inline constexpr GUID kCowlComponentId = {
    0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, 0xEA, 0xEA, 0x81, 0x06, 0x3F, 0xF0}};
inline constexpr GUID kCowlAppClass = {
    0x1E94C4F5, 0x4B50, 0x447B, {0xAB, 0xDD, 0x81, 0x69, 0x0E, 0xE6, 0xF6, 0x79}};
inline constexpr GUID kCowlImageAdderClass = {
    0xC7D73C96, 0xD667, 0x4BE7, {0x92, 0x5D, 0x3A, 0x29, 0xB2, 0x2D, 0x79, 0x7D}};

// Enters the component with the component manager; nothing without one. No class is entered: which
// of them an application has is told by its description.
void registerBuiltInComponent();

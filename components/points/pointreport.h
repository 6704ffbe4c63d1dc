// reportPoints: tells the user what went wrong, through the error service; silent without one.
#pragma once

#include <cstdint>

#include "orobasictypes/orostring.h"

// Reports the text of an English key with its arguments; severity 1 is an error, 0 a warning.
void reportPoints(int32_t severity, const char* key, const OroString& a1,
                  const OroString& a2 = OroString(), const OroString& a3 = OroString());

// The same with a text that is in the user's language already.
void reportPointText(int32_t severity, const OroString& text);

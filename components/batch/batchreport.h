// reportBatch: tells the user what went wrong, through the error service; silent without one.
#pragma once

#include <cstdint>

#include "orobasictypes/orostring.h"

// Reports the text of an English key with its arguments; severity 1 is an error, 0 a warning.
void reportBatch(int32_t severity, const char* key, const OroString& a1 = OroString(),
                 const OroString& a2 = OroString());

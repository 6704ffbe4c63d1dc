// ProgressCallbackObject: a stand-alone object for code that has no progress base of its own.
//
// See progresscallbackbase.h. It belongs to whoever makes it.
#pragma once

#include "orobasictypes/oroobject.h"
#include "orobasictypes/progresscallbackbase.h"

class ProgressCallbackObject : public OroObject, public ProgressCallbackBase {};

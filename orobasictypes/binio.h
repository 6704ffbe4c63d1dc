// Binary input and output: everything of it in one include.
//
// bininput.h, binoutput.h           typed values on any medium
// bininputfile.h, binoutputfile.h   the two on files
// binmagic.h                        what a saved object begins with
// binio_scrambler.h                 the hook that changes bytes on their way
#pragma once

#include "orobasictypes/bininput.h"
#include "orobasictypes/bininputfile.h"
#include "orobasictypes/binio_scrambler.h"
#include "orobasictypes/binmagic.h"
#include "orobasictypes/binoutput.h"
#include "orobasictypes/binoutputfile.h"

// The part of the engine that is written in Python: runs one script as the program of a fresh
// "__main__" and tells how it ended.
//
// The text defines run(source, path, arguments), which returns two things: None, or a text that
// tells the failure with its traceback; and whether the user's interrupt ended the script. What a
// script may have bent (streams, arguments, tracing, the recursion limit) is straight again after
// it, and what belongs to the script alone is gone.
#pragma once

extern const char* const pythonRunnerSource;

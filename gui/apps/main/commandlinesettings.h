// The settings of the command-line flow. Main thread.
#pragma once

class IDataStore;

// Paths of the settings; each is a text unless told otherwise, empty or 0 by default.
namespace commandlinesettings {

inline constexpr const char* kCommandLine = "GUI/CommandLine";  // integer, 1 in such a run
inline constexpr const char* kProgressWindow = "GUI/CommandLine Progress Window";  // integer
inline constexpr const char* kLogFile = "GUI/CommandLine Log File";
inline constexpr const char* kBatch = "Advanced/Batch Processing/Enabled";  // integer
inline constexpr const char* kScript = "Scripting/Startup Macro";
inline constexpr const char* kInputFile = "Scripting/Input File";
inline constexpr const char* kOutputFile = "Scripting/Output File";
inline constexpr const char* kExitOnMacroEnd = "Scripting/ExitOnMacroEnd";  // integer
inline constexpr const char* kScriptError = "Python/Error String";

}  // namespace commandlinesettings

// Declares them, and takes from the settings document what it has to say about what drives the
// flow, so that a document alone can. None of them is ever saved.
void declareCommandLineSettings(IDataStore& store);

// The module `cowl`: what a script sees of the application.
#pragma once

// Makes it importable. Call once, before the interpreter starts.
void addPythonModule();

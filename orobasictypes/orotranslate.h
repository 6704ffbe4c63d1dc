// oroTranslate: makes a user-visible text from its English key.
//
//   OroString text;
//   oroTranslate(text, "%1:\n%2", label, message);
//
// The key is the text in English; where there is no translation it is the result. The module's
// translator is found at the first call and kept for good: the one of the module's component, else
// the service "IOroTranslator", else the trivial one. Nothing may call this before the services
// stand, or the module stays untranslated. Arguments fill "%1" onward. Main thread at first call.
#pragma once

#include <cstdint>

class IOroTranslator;
class OroString;

// Marks a key that reaches oroTranslate from elsewhere, so that tools/checktranslations.py finds
// it.
constexpr const char* oroKey(const char* key) { return key; }

// All of these store into `out` and return it.
OroString& oroTranslate(OroString& out, const char* key);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4, const OroString& a5);
OroString& oroTranslate(OroString& out, const char* key, const OroString& a1, const OroString& a2,
                        const OroString& a3, const OroString& a4, const OroString& a5,
                        const OroString& a6);
// Any number of arguments; "%10" is the tenth here.
OroString& oroTranslateArray(OroString& out, const char* key, int32_t count,
                             const OroString* arguments);

// The module's translator, never null, held by the module until the process ends.
IOroTranslator* oroModuleTranslator();

// Holds another translator from now on, unless the services have chosen one already.
void oroSetModuleTranslator(IOroTranslator* translator);

// The language step of the start: which language the session speaks, and who is told.
//
// The language comes from the registry's "Application/Language", else from the setting "Fonts and
// Languages/Language" as it is stored, else from the system's locale, else it is "en". Without the
// service "IOroLanguageID" the session has no language and all keys show as they are. Nothing is
// reported. Main thread, once, when the component libraries are known.
#pragma once

#include "interfaces/IOroLanguageID.h"
#include "orobasictypes/iptr.h"

// The whole step: chooses, then tells the application's translator, the components in the
// registry's section "I18N" and the translators of all components, in this order.
void firstLanguageStep();

// Sets the registry's or the stored language on the service "IOroLanguageID" and gives that, or
// null without it. The code stays as it was where neither has one. The registry's language leaves
// the settings alone.
IPtr<IOroLanguageID> chooseLanguage();

// Makes an object of each class in the section "I18N" and tells it the language.
void initComponentLanguages(IOroLanguageID* language);

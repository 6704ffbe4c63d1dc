// What the object core looks up once and keeps, made new for a test.
//
// Only tests include this; it is no part of what a component author gets. Each module has its own
// statics: these reset the ones of the module that calls.
#pragma once

#include "orobasictypes/kelprocessor.h"

namespace testaccess {

// No broker, the identity of the host, no assertion callback.
void resetModule();

// The module's translator; the next text chooses one anew.
void resetModuleTranslator();

// The kept text service; the next operation that has use for it asks anew.
void resetStrSupport();

// The kept directory service behind oroDirPath.
void resetDirPath();

// The kept service ILogFile.
void resetLogFile();

// The kept memory manager of the split arrays; no array of before may be in use.
void resetArrayManager();

// Wider instructions up to `limit` alone, as far as the processor has them; which it is then.
KelProcessorLevel limitProcessorLevel(KelProcessorLevel limit);

// The kept services of the memory layer: manager, checker, renderer.
void resetMemoryServices();

// The listener behind kelMemoryLimit; the next call makes one anew.
void resetMemLimitListener();

}  // namespace testaccess

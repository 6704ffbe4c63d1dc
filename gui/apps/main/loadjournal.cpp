#include "gui/apps/main/loadjournal.h"

#include <algorithm>
#include <mutex>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

LoadJournal::Listening::Listening(LoadJournal& journal) {
  setComponentLoadListener(
      [](const ComponentLoad& load, void* context) {
        const bool isNew = static_cast<LoadJournal*>(context)->enter(load);
        if (isNew && !load.silent && !load.reported) report(load);
      },
      &journal);
}

LoadJournal::Listening::~Listening() { setComponentLoadListener(nullptr, nullptr); }

int32_t LoadJournal::count() {
  const std::lock_guard guard(lock_);
  return static_cast<int32_t>(loads_.size());
}

bool LoadJournal::load(int32_t index, OroString& path, int32_t& step, int64_t& nanoseconds) {
  const std::lock_guard guard(lock_);
  if (index < 1 || static_cast<size_t>(index) > loads_.size()) return false;
  const ComponentLoad& load = loads_[static_cast<size_t>(index) - 1];
  path = load.path;
  step = load.step;
  nanoseconds = load.nanoseconds;
  return true;
}

// False for a library that stands there with the same end: it is asked for anew at each request.
bool LoadJournal::enter(const ComponentLoad& load) {
  const std::lock_guard guard(lock_);
  const bool known = std::any_of(loads_.begin(), loads_.end(), [&](const ComponentLoad& other) {
    return other.path == load.path && other.step == load.step;
  });
  if (!known) loads_.push_back(load);
  return !known;
}

void LoadJournal::report(const ComponentLoad& load) {
  const SPtr<IOroErrorService> errors;
  if (!errors || load.step == kOroLoadDone) return;
  const OroString library = oroShownPath(OroPath(load.path));
  const OroString answer(load.answer);
  OroString text;
  if (load.step == kOroLoadEntryPoint) {
    oroTranslate(text, "The component library %1 has no entry point", library);
  } else if (load.step == kOroLoadVersion) {
    oroTranslate(text, "The component library %1 has version %2 of its entry point, not 100",
                 library, answer);
  } else {
    oroTranslate(text, "The entry point of the component library %1 gave no component (status %2)",
                 library, answer);
  }
  errors->report(text, 1, KelCString());
}

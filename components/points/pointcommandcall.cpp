#include "components/points/pointcommandcall.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

#include "components/points/pointcloudaccess.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfilework.h"
#include "components/points/pointprogress.h"
#include "interfaces/IOroProgress.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

bool PointCommandCall::fail(const char* key, const OroString& a1, const OroString& a2) {
  oroTranslate(message_, key, a1, a2);
  return false;
}

const PointParameter* PointCommandCall::find(const char* parameter) {
  for (const PointParameter& each : row_.parameters) {
    if (std::strcmp(each.name, parameter) == 0) return &each;
  }
  fail("%1 has no value named %2", OroString(row_.name), OroString(parameter));
  return nullptr;
}

bool PointCommandCall::failCount(const PointParameter& row, int32_t count) {
  const OroString fewest(row.fewestNumbers);
  const OroString most(row.mostNumbers);
  if (row.fewestNumbers == row.mostNumbers) {
    oroTranslate(message_, "The value %2 of %1 takes numbers: %3 of them, not %4",
                 OroString(row_.name), OroString(row.name), most, OroString(count));
  } else {
    oroTranslate(message_, "The value %2 of %1 takes numbers: %3 to %4 of them, not %5",
                 OroString(row_.name), OroString(row.name), fewest, most, OroString(count));
  }
  return false;
}

bool PointCommandCall::setNumbers(const char* parameter, const double* values, int32_t count) {
  const PointParameter* const row = find(parameter);
  if (row == nullptr) return false;
  if (row->mostNumbers == 0) {
    return fail("The value %2 of %1 is a text", OroString(row_.name), OroString(parameter));
  }
  if (count < row->fewestNumbers || count > row->mostNumbers) return failCount(*row, count);
  if (!std::all_of(values, values + count, [](double each) { return std::isfinite(each); })) {
    return fail("The value %2 of %1 is not finite", OroString(row_.name), OroString(parameter));
  }
  numbers_[parameter].assign(values, values + count);
  return true;
}

bool PointCommandCall::setText(const char* parameter, const OroString& text) {
  const PointParameter* const row = find(parameter);
  if (row == nullptr) return false;
  if (row->mostNumbers != 0) {
    return fail("The value %2 of %1 is made of numbers", OroString(row_.name),
                OroString(parameter));
  }
  texts_[parameter] = text;
  return true;
}

bool PointCommandCall::setCloud(IOroUnknown* cloud) {
  auto* const access = oroQueryClass<PointCloudAccess>(cloud);
  if (cloud != nullptr && access == nullptr) return fail("This is no cloud of the document");
  target_ = access != nullptr ? access->object() : nullptr;
  return true;
}

bool PointCommandCall::hasAll() {
  for (const PointParameter& each : row_.parameters) {
    const bool given =
        each.mostNumbers == 0 ? texts_.contains(each.name) : numbers_.contains(each.name);
    if (each.required && !given) {
      return fail("%1 needs the value %2", OroString(row_.name), OroString(each.name));
    }
  }
  return true;
}

bool PointCommandCall::runOn(PointDocument& document, IOroProgress* progress) {
  PointProgress shown(row_.name);
  PointCommandRun run(document, target_.get(), numbers_, texts_, [&](double fraction) {
    shown.update(static_cast<int64_t>(fraction * 1000), 1000);
    return progress == nullptr || progress->Update(static_cast<float>(fraction));
  });
  // A file shows its own progress.
  const PointFileWork files([&](double fraction) {
    return progress == nullptr || progress->Update(static_cast<float>(fraction));
  });
  const bool done = row_.run(run);
  stopped_ = run.work().isStopped() || files.isStopped();
  if (done) {
    results_ = std::move(run.results());
    message_ = OroString::empty();
  } else if (stopped_) {
    fail("The work was stopped");
  } else {
    message_ = run.message();
  }
  return done;
}

bool PointCommandCall::run(IOroProgress* progress) {
  if (!hasAll()) return false;
  const SPtr<IOroDoc> service;
  auto* const document = oroQueryClass<PointDocument>(service.get());
  if (document == nullptr) return fail("There is no document");
  try {
    return runOn(*document, progress);
  } catch (const std::bad_alloc&) {
    return fail("There is not enough memory for %1", OroString(row_.name));
  }
}

const PointCommandResult* PointCommandCall::resultAt(int32_t result) const {
  return result >= 0 && result < static_cast<int32_t>(results_.size())
             ? &results_[static_cast<size_t>(result)]
             : nullptr;
}

const char* PointCommandCall::resultName(int32_t result) {
  const PointCommandResult* const found = resultAt(result);
  return found != nullptr ? found->name : nullptr;
}

const double* PointCommandCall::resultNumbers(int32_t result, int32_t& count) {
  const PointCommandResult* const found = resultAt(result);
  count = found != nullptr ? static_cast<int32_t>(found->numbers.size()) : 0;
  return count > 0 ? found->numbers.data() : nullptr;
}

#include "components/points/pointcommandrun.h"

#include <utility>

#include "components/points/pointclouddata.h"
#include "components/points/pointcloudset.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/orotranslate.h"

PointCommandRun::PointCommandRun(PointDocument& document, PointObject* target,
                                 const Numbers& numbers, const Texts& texts,
                                 std::function<bool(double)> listener)
    : document_(document),
      oneCloud_(target != nullptr),
      numbers_(numbers),
      texts_(texts),
      work_(std::move(listener)) {
  if (target != nullptr) {
    objects_.emplace_back(target);
    return;
  }
  for (PointObject* object : document.objects()) {
    if (pointsOf(object) != nullptr) objects_.emplace_back(object);
  }
}

int64_t PointCommandRun::points() const {
  int64_t sum = 0;
  for (const IPtr<PointObject>& object : objects_) sum += pointsOf(object.get())->cloud().count();
  return sum;
}

const double* PointCommandRun::numbers(std::string_view parameter) const {
  const auto found = numbers_.find(parameter);
  return found != numbers_.end() ? found->second.data() : nullptr;
}

size_t PointCommandRun::numberCount(std::string_view parameter) const {
  const auto found = numbers_.find(parameter);
  return found != numbers_.end() ? found->second.size() : 0;
}

double PointCommandRun::number(std::string_view parameter, double otherwise) const {
  const double* const given = numbers(parameter);
  return given != nullptr ? given[0] : otherwise;
}

const OroString& PointCommandRun::text(std::string_view parameter) const {
  const auto found = texts_.find(parameter);
  return found != texts_.end() ? found->second : OroString::empty();
}

bool PointCommandRun::has(std::string_view parameter) const {
  return numbers(parameter) != nullptr || texts_.find(parameter) != texts_.end();
}

bool PointCommandRun::forEach(const std::function<bool(PointSet& set)>& each) {
  const auto whole = static_cast<double>(points());
  double before = 0;
  for (const IPtr<PointObject>& object : objects_) {
    PointCloudSet set(pointsOf(object.get())->cloud());
    const auto own = static_cast<double>(set.count());
    if (whole > 0) work_.setRange(before / whole, (before + own) / whole);
    before += own;
    if (!each(set)) return false;
  }
  return true;
}

void PointCommandRun::result(const char* name, std::vector<double> numbers) {
  results_.push_back({name, std::move(numbers)});
}

bool PointCommandRun::fail(const char* key, const OroString& a1, const OroString& a2) {
  oroTranslate(message_, key, a1, a2);
  return false;
}

bool PointCommandRun::failAs(const OroString& text) {
  message_ = text;
  return false;
}

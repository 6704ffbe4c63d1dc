#include "components/points/pointmovecommands.h"

#include <algorithm>
#include <string>
#include <vector>

#include "components/points/commands/pointgray.h"
#include "components/points/commands/pointmover.h"
#include "components/points/commands/pointset.h"
#include "components/points/commands/pointsorter.h"
#include "components/points/commands/pointtransform.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointcloudset.h"
#include "components/points/pointcommandrun.h"
#include "components/points/pointdocument.h"

namespace {

constexpr double kOrigin[3] = {0, 0, 0};

const double* given(const PointCommandRun& run, const char* parameter, const double* otherwise) {
  const double* const numbers = run.numbers(parameter);
  return numbers != nullptr ? numbers : otherwise;
}

bool apply(PointCommandRun& run, const PointTransform& transform) {
  return run.forEach([&](PointSet& set) {
    transform.apply(set);
    set.coordinatesChanged();
    return true;
  });
}

// Axes by weight; empty for a text that names none, or one twice.
std::vector<int> axesOf(const OroString& text) {
  std::vector<int> axes;
  for (int i = 0; i < text.length(); ++i) {
    const int axis = text.at(i) - u'x';
    if (axis < 0 || axis > 2 || std::find(axes.begin(), axes.end(), axis) != axes.end()) return {};
    axes.push_back(axis);
  }
  return axes;
}

}  // namespace

// The digits that the file wrote still hold: a shift is mostly by round numbers.
bool pointcommands::translate(PointCommandRun& run) {
  const PointTransform shift = PointTransform::shift(run.numbers("by"));
  return run.forEach([&](PointSet& set) {
    shift.apply(set);
    return true;
  });
}

bool pointcommands::scale(PointCommandRun& run) {
  const double* const numbers = run.numbers("factor");
  const size_t count = run.numberCount("factor");
  if (count == 2) return run.fail("A scale takes one factor or three");
  const double factors[3] = {numbers[0], numbers[count == 3 ? 1 : 0], numbers[count == 3 ? 2 : 0]};
  return apply(run, PointTransform::scaling(factors, given(run, "center", kOrigin)));
}

bool pointcommands::rotate(PointCommandRun& run) {
  constexpr double kUp[3] = {0, 0, 1};
  const double* const axis = given(run, "axis", kUp);
  if (axis[0] == 0 && axis[1] == 0 && axis[2] == 0) return run.fail("An axis needs a direction");
  return apply(
      run, PointTransform::rotation(axis, run.number("angle", 0), given(run, "center", kOrigin)));
}

bool pointcommands::transform(PointCommandRun& run) {
  const size_t count = run.numberCount("matrix");
  if (count != 12 && count != 16) return run.fail("A matrix has twelve or sixteen numbers");
  double matrix[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
  std::copy_n(run.numbers("matrix"), count, matrix);
  return apply(run, PointTransform(matrix));
}

bool pointcommands::toGray(PointCommandRun& run) {
  double changed = 0;
  run.forEach([&](PointSet& set) {
    if (PointGray::apply(set)) changed += static_cast<double>(set.count());
    return true;
  });
  run.result("points", {changed});
  return true;
}

// All orders are found before the first point moves, so that a stop leaves all as it was.
bool pointcommands::sort(PointCommandRun& run) {
  const std::vector<int> axes = axesOf(run.has("axis") ? run.text("axis") : OroString(u"xyz"));
  if (axes.empty()) {
    return run.fail("\"%1\" names no axes: they are x, y and z, each once at most",
                    run.text("axis"));
  }
  const PointSorter sorter(axes, run.flag("descending"));
  std::vector<std::vector<uint32_t>> orders;
  const bool done = run.forEach(
      [&](PointSet& set) { return sorter.find(set, orders.emplace_back(), run.work()); });
  if (!done) return false;
  size_t at = 0;
  return run.forEach([&](PointSet& set) {
    PointMover::reorder(set, orders[at++]);
    return true;
  });
}

bool pointcommands::merge(PointCommandRun& run) {
  const auto& objects = run.objects();
  if (run.points() > PointCloud::kMostPoints) {
    return run.fail("One cloud cannot hold so many points");
  }
  run.result("clouds", {static_cast<double>(objects.size())});
  run.result("points", {static_cast<double>(run.points())});
  for (size_t i = 1; i < objects.size(); ++i) {
    PointCloud& first = pointsOf(objects[0].get())->cloud();
    PointCloud& other = pointsOf(objects[i].get())->cloud();
    PointCloudSet to(first);
    PointCloudSet from(other);
    PointMover::append(to, from);
    first.decimals = first.decimals < 0 || other.decimals < 0
                         ? PointCloud::kShortest
                         : std::max(first.decimals, other.decimals);
    run.document().remove(objects[i].get());
  }
  return true;
}

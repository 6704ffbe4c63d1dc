#include "components/points/pointfactcommands.h"

#include "components/points/commands/pointbounds.h"
#include "components/points/commands/pointset.h"
#include "components/points/pointcommandrun.h"
#include "orobasictypes/bitvector.h"

namespace {

// Without points there is no box, and no result of its name.
void tellBounds(PointCommandRun& run, const PointBounds& bounds) {
  if (!bounds.any()) return;
  run.result("min", {bounds.least(), bounds.least() + 3});
  run.result("max", {bounds.most(), bounds.most() + 3});
}

}  // namespace

bool pointcommands::bounds(PointCommandRun& run) {
  const bool selected = run.flag("selected");
  PointBounds bounds;
  run.forEach([&](PointSet& set) {
    if (selected) {
      bounds.add(set, set.selection());
    } else {
      bounds.add(set);
    }
    return true;
  });
  run.result("points", {static_cast<double>(bounds.points())});
  tellBounds(run, bounds);
  return true;
}

bool pointcommands::info(PointCommandRun& run) {
  PointBounds bounds;
  double colored = 0;
  double selected = 0;
  run.forEach([&](PointSet& set) {
    bounds.add(set);
    if (set.hasColors()) colored += static_cast<double>(set.count());
    selected += set.selection().CountSet();
    return true;
  });
  run.result("clouds", {static_cast<double>(run.objects().size())});
  run.result("points", {static_cast<double>(run.points())});
  run.result("colored", {colored});
  run.result("selected", {selected});
  tellBounds(run, bounds);
  return true;
}

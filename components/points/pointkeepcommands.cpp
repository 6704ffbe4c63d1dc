#include "components/points/pointkeepcommands.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "components/points/commands/duplicatefinder.h"
#include "components/points/commands/pointbox.h"
#include "components/points/commands/pointmover.h"
#include "components/points/commands/pointset.h"
#include "components/points/commands/pointthinner.h"
#include "components/points/commands/voxelthinner.h"
#include "components/points/pointcommandrun.h"
#include "orobasictypes/bitvector.h"

namespace {

using Find = std::function<bool(PointSet& set, BitVector& mask)>;

// A mask for each cloud; false when the work was stopped.
bool findAll(PointCommandRun& run, const Find& find, std::vector<BitVector>& masks) {
  masks.reserve(run.objects().size());
  return run.forEach([&](PointSet& set) { return find(set, masks.emplace_back()); });
}

// Finds what stays in all clouds before the first point goes, so that a stop leaves all as it was.
bool keep(PointCommandRun& run, const Find& find) {
  const auto before = static_cast<double>(run.points());
  std::vector<BitVector> masks;
  if (!findAll(run, find, masks)) return false;
  size_t at = 0;
  run.forEach([&](PointSet& set) {
    PointMover::keep(set, masks[at++]);
    return true;
  });
  run.result("before", {before});
  run.result("after", {static_cast<double>(run.points())});
  return true;
}

// False with a message for a box that is none.
bool takeBox(PointCommandRun& run, PointBox& box) {
  if (const double* least = run.numbers("min")) std::copy_n(least, 3, box.least);
  if (const double* most = run.numbers("max")) std::copy_n(most, 3, box.most);
  return box.isSensible() || run.fail("The corner \"min\" of a box lies above its corner \"max\"");
}

void complement(BitVector& mask, int64_t count) { mask.Complement(static_cast<int32_t>(count)); }

bool isWhole(double value, double least, double most) {
  return value >= least && value <= most && value == std::floor(value);
}

}  // namespace

bool pointcommands::crop(PointCommandRun& run) {
  PointBox box;
  if (!takeBox(run, box)) return false;
  const bool inside = run.number("inside", 1) != 0;
  const bool selected = run.flag("selected");
  return keep(run, [&](PointSet& set, BitVector& mask) {
    if (selected) {
      mask.SetAll(static_cast<int32_t>(set.count()));
      mask &= set.selection();
    } else if (!box.find(set, mask, run.work())) {
      return false;
    }
    if (!inside) complement(mask, set.count());
    return true;
  });
}

bool pointcommands::deduplicate(PointCommandRun& run) {
  return keep(run, [&](PointSet& set, BitVector& mask) {
    return DuplicateFinder().find(set, mask, run.work());
  });
}

bool pointcommands::thin(PointCommandRun& run) {
  constexpr double kMost = 9007199254740992;  // 2^53
  const double count = run.number("count", 0);
  const double seed = run.number("seed", 0);
  const OroString& method = run.text("method");
  const bool randomly = method == "random";
  if (!isWhole(count, 0, kMost)) return run.fail("The number of points is no whole number from 0");
  if (!isWhole(seed, 0, 4294967295.0)) return run.fail("The seed is no whole number of 32 bits");
  if (!randomly && !method.isEmpty() && !(method == "even")) {
    return run.fail("The method %1 is not known: it is even or random", method);
  }
  const int64_t whole = run.points();
  const int64_t wanted = std::min(static_cast<int64_t>(count), whole);
  int64_t before = 0;
  return keep(run, [&](PointSet& set, BitVector& mask) {
    const int64_t share = PointThinner::share(before, set.count(), whole, wanted);
    before += set.count();
    if (randomly) {
      PointThinner::randomly(set.count(), share, static_cast<uint32_t>(seed), mask);
    } else {
      PointThinner::evenly(set.count(), share, mask);
    }
    return true;
  });
}

bool pointcommands::voxelThin(PointCommandRun& run) {
  const double size = run.number("size", 0);
  if (!(size > 0)) return run.fail("The size of a cube is above 0");
  bool fits = true;
  const bool done = keep(run, [&](PointSet& set, BitVector& mask) {
    VoxelThinner thinner(size);
    fits = thinner.fits(set);
    return fits && thinner.find(set, mask, run.work());
  });
  return fits ? done : run.fail("The cubes are too small for where the points are");
}

namespace {

bool isOneOf(const OroString& text, std::initializer_list<const char*> names) {
  return std::any_of(names.begin(), names.end(), [&](const char* name) { return text == name; });
}

// What the mode makes of a cloud's selection and the points in the box.
void combine(PointSet& set, const OroString& mode, BitVector& box) {
  BitVector& selection = set.selection();
  if (mode == "add") {
    selection |= box;
  } else if (mode == "remove") {
    selection -= box;
  } else if (mode == "keep") {
    selection &= box;
  } else if (mode == "all") {
    selection.SetAll(static_cast<int32_t>(set.count()));
  } else if (mode == "none") {
    selection.Zero();
  } else if (mode == "invert") {
    complement(selection, set.count());
  } else {
    selection.Swap(box);
  }
}

}  // namespace

bool pointcommands::select(PointCommandRun& run) {
  PointBox box;
  if (!takeBox(run, box)) return false;
  const OroString& mode = run.text("mode");
  const bool byBox = mode.isEmpty() || isOneOf(mode, {"new", "add", "remove", "keep"});
  if (!byBox && !isOneOf(mode, {"all", "none", "invert"})) {
    return run.fail("The mode %1 is not known: it is new, add, remove, keep, all, none or invert",
                    mode);
  }
  std::vector<BitVector> boxes;
  const bool done = findAll(
      run,
      [&](PointSet& set, BitVector& mask) { return !byBox || box.find(set, mask, run.work()); },
      boxes);
  if (!done) return false;
  double selected = 0;
  size_t at = 0;
  run.forEach([&](PointSet& set) {
    combine(set, mode, boxes[at++]);
    selected += set.selection().CountSet();
    return true;
  });
  run.result("selected", {selected});
  return true;
}

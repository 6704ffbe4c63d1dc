#include "components/points/pointcommands.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"

namespace {

std::vector<PointCloud*> clouds(const PointDocument& document) {
  std::vector<PointCloud*> all;
  for (PointObject* object : document.objects()) {
    if (PointCloudData* data = pointsOf(object)) all.push_back(&data->cloud());
  }
  return all;
}

// Keeps the points whose indices are listed, in that order.
void pick(PointCloud& cloud, const std::vector<size_t>& indices) {
  PointCloud kept;
  kept.decimals = cloud.decimals;
  kept.positions.reserve(indices.size());
  for (size_t i : indices) kept.positions.push_back(cloud.positions[i]);
  if (cloud.hasColors()) {
    kept.colors.reserve(indices.size());
    for (size_t i : indices) kept.colors.push_back(cloud.colors[i]);
  }
  cloud = std::move(kept);
}

template <class Keep>
void keepWhere(PointCloud& cloud, Keep keep) {
  std::vector<size_t> indices;
  for (size_t i = 0; i < cloud.size(); ++i) {
    if (keep(i)) indices.push_back(i);
  }
  pick(cloud, indices);
}

// translate dx dy dz
bool translate(PointDocument& document, std::span<const double> by) {
  for (PointCloud* cloud : clouds(document)) {
    for (PointPosition& p : cloud->positions) p = {p.x + by[0], p.y + by[1], p.z + by[2]};
  }
  return true;
}

// scale factor, about the origin
bool scale(PointDocument& document, std::span<const double> by) {
  for (PointCloud* cloud : clouds(document)) {
    for (PointPosition& p : cloud->positions) p = {p.x * by[0], p.y * by[0], p.z * by[0]};
    cloud->decimals = PointCloud::kShortest;
  }
  return true;
}

// sort axis, 0 to 2 for x, y and z; points of equal coordinate keep their order
bool sort(PointDocument& document, std::span<const double> by) {
  if (by[0] != 0 && by[0] != 1 && by[0] != 2) return false;
  constexpr double PointPosition::*kAxes[] = {&PointPosition::x, &PointPosition::y,
                                              &PointPosition::z};
  const auto axis = kAxes[static_cast<int>(by[0])];
  for (PointCloud* cloud : clouds(document)) {
    std::vector<size_t> order(cloud->size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
      return cloud->positions[a].*axis < cloud->positions[b].*axis;
    });
    pick(*cloud, order);
  }
  return true;
}

// thin n: the first of every n points stays
bool thin(PointDocument& document, std::span<const double> by) {
  if (!(by[0] >= 1) || by[0] != std::floor(by[0]) || by[0] > 2147483647) return false;
  const auto every = static_cast<size_t>(by[0]);
  for (PointCloud* cloud : clouds(document)) {
    keepWhere(*cloud, [&](size_t i) { return i % every == 0; });
  }
  return true;
}

// crop minX minY minZ maxX maxY maxZ, borders included
bool crop(PointDocument& document, std::span<const double> box) {
  if (!(box[0] <= box[3] && box[1] <= box[4] && box[2] <= box[5])) return false;
  for (PointCloud* cloud : clouds(document)) {
    keepWhere(*cloud, [&](size_t i) {
      const PointPosition& p = cloud->positions[i];
      return p.x >= box[0] && p.x <= box[3] && p.y >= box[1] && p.y <= box[4] && p.z >= box[2] &&
             p.z <= box[5];
    });
  }
  return true;
}

void append(PointCloud& to, const PointCloud& from) {
  const bool colors = (to.hasColors() || to.size() == 0) && (from.hasColors() || from.size() == 0);
  to.positions.insert(to.positions.end(), from.positions.begin(), from.positions.end());
  if (colors) {
    to.colors.insert(to.colors.end(), from.colors.begin(), from.colors.end());
  } else {
    to.colors.clear();
  }
  to.decimals = to.decimals < 0 || from.decimals < 0 ? PointCloud::kShortest
                                                     : std::max(to.decimals, from.decimals);
}

// merge: all clouds become the first one; colours stay where all clouds have them
bool merge(PointDocument& document, std::span<const double>) {
  PointCloudData* first = nullptr;
  for (PointObject* object : document.objects()) {
    PointCloudData* data = pointsOf(object);
    if (data == nullptr) continue;
    if (first == nullptr) {
      first = data;
    } else {
      append(first->cloud(), data->cloud());
      document.remove(object);
    }
  }
  return true;
}

constexpr PointCommand kCommands[] = {
    {"crop", "minX minY minZ maxX maxY maxZ", 6, crop},
    {"merge", "", 0, merge},
    {"scale", "factor", 1, scale},
    {"sort", "axis", 1, sort},
    {"thin", "every", 1, thin},
    {"translate", "dx dy dz", 3, translate},
};

}  // namespace

void PointCommands::registerCommands() {
  commands_.assign(std::begin(kCommands), std::end(kCommands));
}

void PointCommands::commandsRegistered() {
  std::sort(commands_.begin(), commands_.end(), [](const PointCommand& a, const PointCommand& b) {
    return std::string_view(a.name) < b.name;
  });
}

bool PointCommands::run(PointDocument& document, std::string_view name,
                        std::span<const double> arguments) const {
  for (const PointCommand& command : commands_) {
    if (command.name != name) continue;
    const bool finite = std::all_of(arguments.begin(), arguments.end(),
                                    [](double value) { return std::isfinite(value); });
    return finite && arguments.size() == command.argumentCount && command.run(document, arguments);
  }
  return false;
}

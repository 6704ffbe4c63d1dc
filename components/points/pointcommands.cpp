#include "components/points/pointcommands.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "orobasictypes/oromatrix.h"

namespace {

std::vector<PointCloud*> clouds(const PointDocument& document) {
  std::vector<PointCloud*> all;
  for (PointObject* object : document.objects()) {
    if (PointCloudData* data = pointsOf(object)) all.push_back(&data->cloud());
  }
  return all;
}

template <class Keep>
void keepWhere(PointCloud& cloud, Keep keep) {
  BitVector kept(cloud.count());
  OroVector point;
  for (int32_t i = 1; i <= cloud.count(); ++i) {
    cloud.points().Get(i, point);
    if (keep(i, point)) kept.Set(i);
  }
  cloud.keep(kept);
}

// Where each point goes when they are ordered by a coordinate.
void sortBy(PointCloud& cloud, double OroVector::*axis) {
  const int32_t count = cloud.count();
  std::vector<double> keys(static_cast<size_t>(count));
  std::vector<int32_t> order(keys.size());
  for (size_t i = 0; i < keys.size(); ++i) {
    keys[i] = cloud.points().GetVector(static_cast<int32_t>(i) + 1).*axis;
  }
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
    return keys[static_cast<size_t>(a)] < keys[static_cast<size_t>(b)];
  });
  OroMM::IntArray map(count + 1);
  for (int32_t i = 0; i < count; ++i) map.Set(order[static_cast<size_t>(i)] + 1, i + 1);
  cloud.reorder(map);
}

// translate dx dy dz
bool translate(PointDocument& document, std::span<const double> by) {
  OroMatrix matrix;
  matrix.SetTranslation(OroVector(by[0], by[1], by[2]));
  for (PointCloud* cloud : clouds(document)) cloud->points().Transform(matrix);
  return true;
}

// scale factor, about the origin
bool scale(PointDocument& document, std::span<const double> by) {
  OroMatrix matrix;
  matrix.m[0] = matrix.m[5] = matrix.m[10] = by[0];
  for (PointCloud* cloud : clouds(document)) {
    cloud->points().Transform(matrix);
    cloud->decimals = PointCloud::kShortest;
  }
  return true;
}

// sort axis, 0 to 2 for x, y and z; points of equal coordinate keep their order
bool sort(PointDocument& document, std::span<const double> by) {
  if (by[0] != 0 && by[0] != 1 && by[0] != 2) return false;
  constexpr double OroVector::*kAxes[] = {&OroVector::x, &OroVector::y, &OroVector::z};
  const auto axis = kAxes[static_cast<int>(by[0])];
  for (PointCloud* cloud : clouds(document)) sortBy(*cloud, axis);
  return true;
}

// thin n: the first of every n points stays
bool thin(PointDocument& document, std::span<const double> by) {
  if (!(by[0] >= 1) || by[0] != std::floor(by[0]) || by[0] > 2147483647) return false;
  const auto every = static_cast<int32_t>(by[0]);
  for (PointCloud* cloud : clouds(document)) {
    keepWhere(*cloud, [&](int32_t i, const OroVector&) { return (i - 1) % every == 0; });
  }
  return true;
}

// crop minX minY minZ maxX maxY maxZ, borders included
bool crop(PointDocument& document, std::span<const double> box) {
  if (!(box[0] <= box[3] && box[1] <= box[4] && box[2] <= box[5])) return false;
  for (PointCloud* cloud : clouds(document)) {
    keepWhere(*cloud, [&](int32_t, const OroVector& p) {
      return p.x >= box[0] && p.x <= box[3] && p.y >= box[1] && p.y <= box[4] && p.z >= box[2] &&
             p.z <= box[5];
    });
  }
  return true;
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
      if (!first->cloud().append(data->cloud())) return false;
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

#include "components/points/formats/laswriter.h"

#include <cmath>
#include <cstring>
#include <string>

#include "components/points/formats/pointtexts.h"

namespace {

constexpr uint8_t kOneReturn = 0x09;  // the first of one
constexpr size_t kReturnByte = 14;
constexpr size_t kColorBytes = 20;
constexpr int kMostLasDecimals = 9;  // finer than any instrument, and room for offsets in doubles
// Tried for a grid that keeps all coordinates: what people write coordinates with.
constexpr int kUsualDecimals = 6;

bool fitsRaw(int64_t raw) { return raw >= INT32_MIN && raw <= INT32_MAX; }

// The middle of the range, so round that it is decimal at every scale.
double roundOffset(double least, double most) {
  const double middle = least / 2 + most / 2;
  const double unit = std::pow(10, std::floor(std::log10(std::max(most - least, 1.0))));
  const double rounded = std::nearbyint(middle / unit) * unit;
  return std::isfinite(rounded) ? rounded : middle;
}

// Every cloud with points has this grid.
const PointGrid* commonGrid(const PointSource& source) {
  const PointGrid* common = nullptr;
  for (const PointCloudHead& cloud : source.clouds()) {
    if (cloud.count == 0) continue;
    if (!cloud.grid || (common != nullptr && *common != *cloud.grid)) return nullptr;
    common = &*cloud.grid;
  }
  return common;
}

// Coordinates on the grid, and what that lost.
struct Quantizer {
  LasGrid grids[3];
  int64_t rounded = 0;
  double most = 0;

  char* put(char* out, const double* xyz) {
    for (int axis = 0; axis < 3; ++axis, out += 4) {
      const auto raw = static_cast<int32_t>(grids[axis].raw(xyz[axis]));
      const double lost = std::fabs(grids[axis].coordinate(raw) - xyz[axis]);
      rounded += lost != 0;
      most = std::max(most, lost);
      std::memcpy(out, &raw, sizeof raw);
    }
    return out;
  }
};

void putColor(char* out, const PointColor& color) {
  const uint16_t channels[] = {static_cast<uint16_t>(color.red * 257),
                               static_cast<uint16_t>(color.green * 257),
                               static_cast<uint16_t>(color.blue * 257)};
  std::memcpy(out, channels, sizeof channels);
}

}  // namespace

bool LasWriter::write(PointSource& source, PointOutputBuffer& out) {
  const Totals all = totals(source);
  noteJoined(source);
  Bounds bounds = {};
  if (all.count > 0 && !findBounds(source, bounds)) return false;
  LasHeader header;
  header.pointFormat = all.hasColors ? 2 : 0;
  header.recordSize = LasHeader::smallestRecord(header.pointFormat);
  header.count = static_cast<uint64_t>(all.count);
  const PointGrid* common = commonGrid(source);
  for (int axis = 0; axis < 3; ++axis) {
    if (common != nullptr) {
      header.grid.scale[axis] = common->scale[axis];
      header.grid.offset[axis] = common->offset[axis];
    }
    const LasGrid kept(header.grid.scale[axis], header.grid.offset[axis]);
    const bool good = common != nullptr && fits(kept, bounds.least[axis], bounds.most[axis]) &&
                      keepsAll(source, axis, kept);
    if (!good && !chooseAxis(source, axis, bounds, header.grid)) {
      return fail(pointtexts::kTooLarge);
    }
    const LasGrid grid(header.grid.scale[axis], header.grid.offset[axis]);
    const auto least = static_cast<int32_t>(grid.raw(bounds.least[axis]));
    const auto most = static_cast<int32_t>(grid.raw(bounds.most[axis]));
    header.minimum[axis] = all.count > 0 ? grid.coordinate(least) : 0;
    header.maximum[axis] = all.count > 0 ? grid.coordinate(most) : 0;
    if (header.minimum[axis] > header.maximum[axis]) {
      std::swap(header.minimum[axis], header.maximum[axis]);
    }
  }
  out.put(header.bytes12());
  return writePoints(source, out, header);
}

bool LasWriter::findBounds(PointSource& source, Bounds& bounds) {
  std::fill_n(bounds.least, 3, HUGE_VAL);
  std::fill_n(bounds.most, 3, -HUGE_VAL);
  return eachBlock(source, false, [&](size_t, const double* xyz, const PointColor*, size_t count) {
    for (size_t i = 0; i < 3 * count; ++i) {
      bounds.least[i % 3] = std::min(bounds.least[i % 3], xyz[i]);
      bounds.most[i % 3] = std::max(bounds.most[i % 3], xyz[i]);
    }
    return true;
  });
}

bool LasWriter::fits(const LasGrid& grid, double least, double most) {
  return fitsRaw(grid.raw(least)) && fitsRaw(grid.raw(most));
}

// False where no decimal grid holds the range.
bool LasWriter::chooseAxis(PointSource& source, int axis, const Bounds& bounds, PointGrid& grid) {
  const double least = bounds.least[axis];
  const double most = bounds.most[axis];
  const double offsets[] = {0, roundOffset(least, most)};
  bool found = false;
  for (int d = 0; d <= kMostLasDecimals; ++d) {
    const double scale = 1 / LasGrid::powerOfTen(d);
    for (const double offset : offsets) {
      const LasGrid tried(scale, offset);
      if (!fits(tried, least, most)) continue;
      grid.scale[axis] = scale;
      grid.offset[axis] = offset;
      found = true;
      if (d <= kUsualDecimals && keepsAll(source, axis, tried)) return true;
      break;
    }
  }
  return found || chooseCoarse(axis, bounds, grid);
}

// Beyond steps of 1 the grid is no longer decimal, but it still holds the range.
bool LasWriter::chooseCoarse(int axis, const Bounds& bounds, PointGrid& grid) {
  const double least = bounds.least[axis];
  const double most = bounds.most[axis];
  if (!std::isfinite(most - least)) return false;
  grid.offset[axis] = roundOffset(least, most);
  grid.scale[axis] = std::pow(10, std::ceil(std::log10((most - least) / 2e9)));
  return fits({grid.scale[axis], grid.offset[axis]}, least, most);
}

bool LasWriter::keepsAll(PointSource& source, int axis, const LasGrid& grid) {
  return eachBlock(source, false, [&](size_t, const double* xyz, const PointColor*, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const double value = xyz[3 * i + static_cast<size_t>(axis)];
      const auto raw = static_cast<int32_t>(grid.raw(value));
      if (grid.coordinate(raw) != value) return false;
    }
    return true;
  });
}

bool LasWriter::writePoints(PointSource& source, PointOutputBuffer& out, const LasHeader& header) {
  const PointGrid& grid = header.grid;
  Quantizer quantizer{{{grid.scale[0], grid.offset[0]},
                       {grid.scale[1], grid.offset[1]},
                       {grid.scale[2], grid.offset[2]}}};
  const auto size = static_cast<size_t>(header.recordSize);
  const bool colors = header.pointFormat == 2;
  const bool whole = eachBlock(source, colors,
                               [&](size_t, const double* xyz, const PointColor* rgb, size_t count) {
                                 char* at = out.room(count * size);
                                 std::memset(at, 0, count * size);
                                 for (size_t i = 0; i < count; ++i, at += size) {
                                   quantizer.put(at, xyz + 3 * i);
                                   at[kReturnByte] = kOneReturn;
                                   if (rgb != nullptr) putColor(at + kColorBytes, rgb[i]);
                                 }
                                 out.take(at);
                                 source.wrote(count);
                                 return out.good();
                               });
  if (quantizer.rounded > 0) {
    note(pointtexts::kNoteRealsRounded, std::to_string(quantizer.rounded),
         pointFigure(quantizer.most));
  }
  return whole && out.flush();
}

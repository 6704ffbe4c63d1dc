#include "components/points/formats/pointformatwriter.h"

#include <cmath>
#include <string>

#include "components/points/formats/pointtexts.h"

namespace {

// Counts in `rounded` the coordinates that are no floats, and keeps the largest difference.
void compareFloats(const double* values, size_t count, int64_t& rounded, double& most) {
  for (size_t i = 0; i < count; ++i) {
    const double lost = std::fabs(static_cast<double>(static_cast<float>(values[i])) - values[i]);
    rounded += lost != 0;
    most = std::max(most, lost);
  }
}

}  // namespace

PointFormatWriter::Totals PointFormatWriter::totals(const PointSource& source) {
  Totals all;
  bool plain = false;
  for (const PointCloudHead& cloud : source.clouds()) {
    all.count += cloud.count;
    plain = plain || (cloud.count > 0 && !cloud.hasColors);
    all.hasColors = all.hasColors || cloud.hasColors;
  }
  all.hasColors = all.hasColors && !plain;
  return all;
}

int PointFormatWriter::chooseReal(PointSource& source, int option) {
  if (option == 8) return 8;
  int64_t rounded = 0;
  double most = 0;
  const bool whole =
      eachBlock(source, false, [&](size_t, const double* xyz, const PointColor*, size_t count) {
        compareFloats(xyz, 3 * count, rounded, most);
        return option == 4 || rounded == 0;
      });
  if (problem_ != nullptr) return 0;
  if (option != 4) return whole ? 4 : 8;
  if (!whole) return 0;
  if (!std::isfinite(most)) return fail(pointtexts::kTooLarge);
  if (rounded > 0) note(pointtexts::kNoteRealsRounded, std::to_string(rounded), pointFigure(most));
  return 4;
}

int PointFormatWriter::decimalsOf(const PointSource& source, size_t cloud,
                                  const PointWriteOptions& options) {
  return options.decimals == PointWriteOptions::kAsRead ? source.clouds()[cloud].decimals
                                                        : options.decimals;
}

void PointFormatWriter::noteJoined(const PointSource& source) {
  if (source.clouds().size() < 2) return;
  note(pointtexts::kNoteJoined, std::to_string(source.clouds().size()));
}

// The difference is 0 for finite numbers alone; a sum has no branch in the loop.
bool PointFormatWriter::areFinite(const double* values, size_t count) {
  double sum = 0;
  for (size_t i = 0; i < count; ++i) sum += values[i] - values[i];
  return sum == 0;
}

bool PointFormatWriter::refuseCoordinate() { return fail(pointtexts::kNotSavable); }

bool PointFormatWriter::fail(const char* problem) {
  problem_ = problem;
  return false;
}

void PointFormatWriter::note(const char* key, std::string_view first, std::string_view second) {
  notes_.push_back({key, pointText(first), pointText(second)});
}

// PointFormatWriter: writes the clouds of a source as a point file of one format.
//
//   auto writer = format.makeWriter(options);
//   if (!writer->write(source, bytes)) report(writer->problem());
//   for (const PointNote& note : writer->notes()) warn(note);
//
// All points go into one cloud, in the order of the source; they have colours if all of them do. A
// writer serves one file. One thread.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "components/points/formats/pointnotes.h"
#include "components/points/formats/pointoutputbuffer.h"
#include "components/points/formats/pointsource.h"
#include "components/points/formats/pointwriteoptions.h"

class PointFormatWriter {
 public:
  virtual ~PointFormatWriter() = default;

  // False when the output or the source refused, or, with a problem, when the format cannot hold
  // the points; what was written is then no file.
  virtual bool write(PointSource& source, PointOutputBuffer& out) = 0;

  // The key of a sentence whose %1 is the file, or null.
  const char* problem() const { return problem_; }
  const PointNotes& notes() const { return notes_; }

 protected:
  // Points that are handed on at a time.
  static constexpr size_t kBlock = 1024;

  struct Totals {
    int64_t count = 0;
    bool hasColors = false;
  };
  static Totals totals(const PointSource& source);

  // Calls use(cloud, xyz, colors, count) for the points of one cloud, block by block, until it
  // gives false. False with a problem at a coordinate that is no finite number: no reader takes it.
  template <class Use>
  bool eachBlockOf(PointSource& source, size_t cloud, bool withColors, Use use) {
    std::vector<double> xyz(3 * kBlock);
    std::vector<PointColor> colors(withColors ? kBlock : 0);
    PointColor* const rgb = withColors ? colors.data() : nullptr;
    const int64_t whole = source.clouds()[cloud].count;
    for (int64_t first = 0; first < whole; first += kBlock) {
      const auto count = static_cast<size_t>(std::min<int64_t>(kBlock, whole - first));
      if (!source.points(cloud, first, count, xyz.data(), rgb)) return false;
      if (!areFinite(xyz.data(), 3 * count)) return refuseCoordinate();
      if (!use(cloud, xyz.data(), rgb, count)) return false;
    }
    return true;
  }
  // The same for the points of all clouds.
  template <class Use>
  bool eachBlock(PointSource& source, bool withColors, Use use) {
    for (size_t cloud = 0; cloud < source.clouds().size(); ++cloud) {
      if (!eachBlockOf(source, cloud, withColors, use)) return false;
    }
    return true;
  }

  // Bytes of a coordinate, 4 or 8, that the option comes to for these points. 0 with a problem
  // where a coordinate does not fit. Notes what 4 bytes lose.
  int chooseReal(PointSource& source, int option);
  static int decimalsOf(const PointSource& source, size_t cloud, const PointWriteOptions& options);
  void noteJoined(const PointSource& source);

  bool fail(const char* problem);
  void note(const char* key, std::string_view first = {}, std::string_view second = {});

 private:
  static bool areFinite(const double* values, size_t count);
  bool refuseCoordinate();

  const char* problem_ = nullptr;
  PointNotes notes_;
};

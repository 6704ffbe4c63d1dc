#include "components/points/pointwriter.h"

#include <algorithm>
#include <memory>
#include <new>

#include "components/points/pointapplication.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfiletype.h"
#include "components/points/pointprogress.h"
#include "components/points/pointreport.h"
#include "components/points/pointtextformatter.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orowholefile.h"

namespace {

constexpr size_t kBlock = size_t{1} << 18;

// Lines of points, handed to the file block by block.
class LineBlock {
 public:
  explicit LineBlock(OroWholeFile& file) : file_(file) {}

  bool add(const PointTextFormatter& form, const double* position, const PointColor* color) {
    end_ = form.line(end_, position, color);
    return end_ <= bytes_.get() + kBlock - PointTextFormatter::kLineRoom || flush();
  }
  bool flush() {
    const bool good = file_.write(bytes_.get(), static_cast<size_t>(end_ - bytes_.get()));
    end_ = bytes_.get();
    return good;
  }

 private:
  OroWholeFile& file_;
  std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(kBlock);
  char* end_ = bytes_.get();
};

// A piece of a cloud at a time, so that its blocks are looked at once.
class CloudLines {
 public:
  CloudLines(const PointCloud& cloud, bool withColors)
      : cloud_(cloud), form_(pointDecimals(cloud.decimals)), withColors_(withColors) {}

  static constexpr int32_t kPiece = 4096;

  // The points from `first` on.
  bool write(int32_t first, int32_t count, LineBlock& lines) {
    cloud_.positions(first, count, positions_.get());
    if (withColors_) cloud_.colors(first, count, colors_.get());
    for (int32_t i = 0; i < count; ++i) {
      const PointColor* const color = withColors_ ? &colors_[static_cast<size_t>(i)] : nullptr;
      if (!lines.add(form_, positions_.get() + int64_t{3} * i, color)) return false;
    }
    return true;
  }

 private:
  const PointCloud& cloud_;
  const PointTextFormatter form_;
  const bool withColors_;
  std::unique_ptr<double[]> positions_ = std::make_unique_for_overwrite<double[]>(3 * kPiece);
  std::unique_ptr<PointColor[]> colors_ = std::make_unique<PointColor[]>(kPiece);
};

bool writeClouds(const std::vector<const PointCloud*>& clouds, OroWholeFile& file) {
  int64_t whole = 0;
  bool colors = true;
  for (const PointCloud* cloud : clouds) {
    whole += cloud->count();
    colors = colors && (cloud->hasColors() || cloud->count() == 0);
  }
  PointProgress progress("Writing points");
  LineBlock lines(file);
  int64_t done = 0;
  for (const PointCloud* cloud : clouds) {
    CloudLines cloudLines(*cloud, colors);
    for (int32_t first = 1; first <= cloud->count(); first += CloudLines::kPiece) {
      const int32_t count = std::min(CloudLines::kPiece, cloud->count() - first + 1);
      if (!cloudLines.write(first, count, lines)) return false;
      done += count;
      progress.update(done, whole);
    }
  }
  progress.update(whole, whole);
  return lines.flush() && file.commit();
}

}  // namespace

int32_t PointWriter::prepare(const OroPath& path) {
  objects_.clear();
  return static_cast<int32_t>(pointFileType(path));
}

void PointWriter::setSaveData(IFileSaveData* saveData) {
  saveData_ = saveData;
  if (saveData == nullptr) objects_.clear();
}

bool PointWriter::canSave(IOroDocObject* object) {
  return object != nullptr && pointsOf(object) != nullptr;
}

void PointWriter::addObject(IOroDocObject* object) {
  if (canSave(object)) objects_.emplace_back(object);
}

bool PointWriter::write(const OroPath& path) {
  std::vector<const PointCloud*> clouds;
  for (const IPtr<IOroDocObject>& object : objects_) {
    clouds.push_back(&pointsOf(object.get())->cloud());
  }
  if (clouds.empty()) {
    reportPoints(1, "There are no points to save to the file %1", oroShownPath(path));
    return false;
  }
  const auto colored = std::count_if(clouds.begin(), clouds.end(),
                                     [](const PointCloud* cloud) { return cloud->hasColors(); });
  if (colored != 0 && colored != static_cast<ptrdiff_t>(clouds.size())) {
    reportPoints(0, "Some points have no colour, so the file %1 is written without colours",
                 oroShownPath(path));
  }
  try {
    OroWholeFile file;
    if (file.open(path) && writeClouds(clouds, file)) return true;
    reportPoints(1, "Cannot write the file %1", oroShownPath(path));
  } catch (const std::bad_alloc&) {
    reportPoints(1, "There is not enough memory to write the file %1", oroShownPath(path));
  }
  return false;
}

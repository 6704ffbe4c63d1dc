#include "components/points/pointopener.h"

#include <memory>
#include <new>
#include <string>

#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfiletype.h"
#include "components/points/pointprogress.h"
#include "components/points/pointreport.h"
#include "components/points/pointtextparser.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"

namespace {

constexpr size_t kBlock = size_t{1} << 18;

// After the first block the length of a line is known, and with it how many points will come.
void reserveFor(PointCloud& cloud, size_t parsed, int64_t fileSize) {
  if (parsed == 0 || cloud.count() == 0) return;
  const double share = static_cast<double>(fileSize) / static_cast<double>(parsed);
  const double points = cloud.count() * share * 1.02 + 16;
  if (points > PointCloud::kMostPoints) return;
  cloud.reserve(static_cast<int32_t>(points));
}

bool readText(const OroPath& path, PointCloud& cloud) {
  OroFileReader file;
  if (!file.open(path)) {
    reportPoints(1, "Cannot open the file %1", oroShownPath(path));
    return false;
  }
  PointProgress progress("Reading points");
  PointTextParser parser(cloud);
  const auto block = std::make_unique_for_overwrite<char[]>(kBlock);
  int64_t done = 0;
  while (const size_t got = file.read(block.get(), kBlock)) {
    if (!parser.feed(block.get(), got)) break;
    if (done == 0) reserveFor(cloud, got, file.size());
    done += static_cast<int64_t>(got);
    progress.update(done, file.size());
  }
  if (file.failed()) {
    reportPoints(1, "The file %1 could not be read to its end", oroShownPath(path));
    return false;
  }
  if (parser.finish()) return true;
  OroString problem;
  oroTranslate(problem, parser.problem());
  reportPoints(1, "%1, line %2: %3", oroShownPath(path),
               OroString(std::to_string(parser.line()).c_str()), problem);
  return false;
}

}  // namespace

bool PointOpener::open(const OroPath& path, IOroOpenOptions*, int32_t) {
  SPtr<IOroDoc> service;
  auto* document = oroQueryClass<PointDocument>(service.get());
  if (document == nullptr) {
    reportPoints(1, "There is no document to open %1 in", oroShownPath(path));
    return false;
  }
  if (mode_ == 0) document->removeAll();
  if (pointFileType(path) != PointFileType::text) {
    reportPoints(1, "The type of the file %1 is not known", oroShownPath(path));
    return false;
  }
  if (!PointCloud::canBeMade()) {
    reportPoints(1, "There is no memory manager for the points of the file %1", oroShownPath(path));
    return false;
  }
  try {
    const IPtr<PointCloudData> data(new PointCloudData);
    if (!readText(path, data->cloud())) return false;
    if (data->cloud().count() == 0) {
      reportPoints(0, "The file %1 holds no points", oroShownPath(path));
    }
    document->add(new PointObject(path.fileName(false), PointCloudData::classId(), data.get()));
    return true;
  } catch (const std::bad_alloc&) {
    reportPoints(1, "There is not enough memory to read the file %1", oroShownPath(path));
    return false;
  }
}

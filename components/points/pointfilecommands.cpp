#include "components/points/pointfilecommands.h"

#include <cmath>

#include "components/points/commands/pngwriter.h"
#include "components/points/commands/pointpicture.h"
#include "components/points/commands/pointset.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointcommandrun.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfiles.h"
#include "components/points/pointfiletype.h"
#include "components/points/pointreports.h"
#include "interfaces/IFileSaveData.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroOpenOptions.h"
#include "interfaces/IOroSaveDoc.h"
#include "interfaces/IWriteScene.h"
#include "interfaces/IWriteSceneV3.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kNoName = oroKey("The name of the file is empty");
constexpr int32_t kNative = 1015;
constexpr int32_t kGathered = 1000;  // below, the objects are handed over one by one

// The save is over when this goes: the writer lets go of what it was given.
class Save {
 public:
  Save(IWriteScene& writer, IFileSaveData& data) : writer_(&writer) { writer.setSaveData(&data); }
  ~Save() { writer_->setSaveData(nullptr); }
  Save(const Save&) = delete;
  Save& operator=(const Save&) = delete;

 private:
  IPtr<IWriteScene> writer_;
};

bool saveWith(PointCommandRun& run, IWriteScene& writer, IFileSaveData& data, IOroSaveDoc& saver) {
  const Save save(writer, data);
  auto* const format = oroQuery<IWriteSceneV3>(&writer);
  int32_t code = kNative;
  if (!(data.path().extension() == "cwl")) {
    if (format == nullptr) return false;
    code = format->prepare(data.path());
  }
  data.setStatus(code);
  if (code < kGathered) {
    for (PointObject* object : run.document().objects()) {
      if (pointsOf(object) != nullptr && writer.canSave(object)) writer.addObject(object);
    }
  }
  return saver.save(&data, &writer, 0, 0);
}

// What was reported tells the file and the reason; another component's failure may tell nothing.
bool failReported(PointCommandRun& run, const PointReports& reports, const char* otherwise,
                  const OroPath& path) {
  if (!reports.error().isEmpty()) return run.failAs(reports.error());
  return run.fail(otherwise, oroShownPath(path));
}

// The services save the document as a whole.
bool saveCloud(PointCommandRun& run, const OroPath& path) {
  const PointReports reports;
  return savePointFile(path, pointFileType(path), {run.objects().front().get()}) ||
         failReported(run, reports, oroKey("The file %1 was not saved"), path);
}

bool takeView(const OroString& name, PointPicture::View& view) {
  if (name == "front") {
    view = PointPicture::View::front;
  } else if (name == "side") {
    view = PointPicture::View::side;
  } else {
    return name.isEmpty() || name == "top";
  }
  return true;
}

bool isEdge(double pixels) {
  return pixels >= 1 && pixels <= PointPicture::kLargestEdge && pixels == std::floor(pixels);
}

}  // namespace

bool pointcommands::open(PointCommandRun& run) {
  const OroPath path(run.text("file"));
  if (path.isEmpty()) return run.fail(kNoName);
  const SPtr<IOroOpenDoc> opener;
  if (!opener) return run.fail("There is nothing that opens files");
  const int64_t before = run.points();
  opener->setMode(1);
  opener->setText(0, OroString::empty());
  const SPtr<IOroOpenOptions> options;
  const PointReports reports;
  if (!opener->open(path, options.get(), 1)) {
    return failReported(run, reports, oroKey("The file %1 was not opened"), path);
  }
  int64_t after = 0;
  for (PointObject* object : run.document().objects()) {
    if (PointCloudData* const data = pointsOf(object)) after += data->cloud().count();
  }
  run.result("points", {static_cast<double>(after - before)});
  return true;
}

bool pointcommands::save(PointCommandRun& run) {
  const OroPath path(run.text("file"));
  if (path.isEmpty()) return run.fail(kNoName);
  if (run.isOneCloud()) return saveCloud(run, path);
  const SPtr<IFileSaveData> data;
  const SPtr<IOroSaveDoc> saver;
  const SPtr<IFileTypeService> types;
  const IPtr<IWriteScene> writer(types ? types->writerFor() : nullptr);
  if (!data || !saver || !writer) return run.fail("There is nothing that saves files");
  data->setPath(path);
  const PointReports reports;
  return saveWith(run, *writer, *data, *saver) ||
         failReported(run, reports, oroKey("The file %1 was not saved"), path);
}

bool pointcommands::snapshot(PointCommandRun& run) {
  const OroPath path(run.text("file"));
  const OroString& color = run.text("color");
  const double* const size = run.numbers("size");
  PointPicture::View view = PointPicture::View::top;
  if (!takeView(run.text("view"), view)) {
    return run.fail("The view %1 is not known: it is top, front or side", run.text("view"));
  }
  if (!color.isEmpty() && !(color == "rgb") && !(color == "height")) {
    return run.fail("The color %1 is not known: it is rgb or height", color);
  }
  if (size != nullptr && !(isEdge(size[0]) && isEdge(size[1]))) {
    return run.fail("The edges of a picture are whole numbers from 1 to 16384");
  }
  if (path.isEmpty()) return run.fail(kNoName);
  if (!(path.extension().toLower() == "png")) {
    return run.fail("Pictures are written as .png files alone, not as %1", oroShownPath(path));
  }
  PointBounds bounds;
  run.forEach([&](PointSet& set) { return bounds.add(set), true; });
  PointPicture picture(size != nullptr ? static_cast<int>(size[0]) : 800,
                       size != nullptr ? static_cast<int>(size[1]) : 600, view);
  if (bounds.any()) {
    picture.frame(bounds);
    const bool drawn = run.forEach(
        [&](PointSet& set) { return picture.draw(set, !(color == "height"), run.work()); });
    if (!drawn) return false;
  }
  PngWriter writer;
  if (writer.write(path, picture.pixels(), picture.width(), picture.height())) return true;
  OroString text;
  oroTranslate(text, writer.problem(), oroShownPath(path));
  return run.failAs(oroWithReason(text, writer.reason()));
}

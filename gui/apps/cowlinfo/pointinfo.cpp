#include "gui/apps/cowlinfo/pointinfo.h"

#include <charconv>

#include "gui/apps/cowlinfo/infotext.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IOroDoc.h"
#include "interfaces/IOroDocObject.h"
#include "interfaces/IOroDocObjectItr.h"
#include "interfaces/IOroFileTypeNames.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroPointInfo.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostringarray.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t kReplaceObjects =
    0;  // the file's objects take the place of those of the last one
constexpr int32_t kAllObjects = 2;

std::string formatName(const OroPath& path) {
  SPtr<IFileTypeService> types;
  auto* const names = oroQuery<IOroFileTypeNames>(types.get());
  OroString name;
  return names != nullptr && names->formatName(path, name) ? shownText(name) : "points";
}

std::string corner(const double* position) {
  std::string out = "(";
  for (int i = 0; i < 3; ++i) {
    char text[40];
    if (i > 0) out += ", ";
    out.append(text, std::to_chars(text, text + sizeof text, position[i]).ptr);
  }
  return out + ")";
}

std::string attributes(IOroPointInfo& info) {
  OroStringArray names;
  info.pointAttributes(names);
  std::string out;
  for (int32_t i = 1; i <= names.lastIndex(); ++i) {
    out += (i > 1 ? ", " : "") + shownText(names[i]);
  }
  return out;
}

void showObject(IOroDocObject& object, IOroPointInfo& info, InfoReport& report) {
  const auto count = static_cast<uint64_t>(info.pointCount());
  report.line(1, "\"" + shownText(object.name()) + "\": " + counted(count, "point", "points"));
  double minimum[3];
  double maximum[3];
  if (info.pointBounds(minimum, maximum)) {
    report.line(2, "bounds " + corner(minimum) + " to " + corner(maximum));
  }
  report.line(2, "attributes " + attributes(info));
}

void showObjects(IOroDoc& document, InfoReport& report) {
  const IPtr<IOroDocObjectItr> walk(document.objectIterator(kAllObjects, 0, 0, 0));
  for (; walk && !walk->atEnd(); walk->next()) {
    IOroDocObject* const object = walk->current();
    auto* const info = oroQuery<IOroPointInfo>(object);
    if (info != nullptr && info->pointCount() >= 0) showObject(*object, *info, report);
  }
}

}  // namespace

InfoReport pointInfo(const OroPath& path) {
  InfoReport report;
  SPtr<IOroDoc> document;
  SPtr<IOroOpenDoc> opener;
  if (!document || !opener) {
    report.problems.push_back(infoText("there is no component that opens point files"));
    return report;
  }
  document->makeDocument();
  opener->setMode(kReplaceObjects);
  if (!opener->open(path, nullptr, 1)) {
    report.problems.push_back(infoText("the file cannot be read as points"));
    return report;
  }
  report.line(0, shownText(oroShownPath(path)) + ": " + formatName(path));
  showObjects(*document, report);
  return report;
}

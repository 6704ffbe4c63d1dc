#include "components/points/pointfiles.h"

#include <algorithm>
#include <new>
#include <string>

#include "components/points/pointapplication.h"
#include "components/points/pointcloudsink.h"
#include "components/points/pointcloudsource.h"
#include "components/points/pointdocument.h"
#include "components/points/pointfileinput.h"
#include "components/points/pointfileoutput.h"
#include "components/points/pointfiletype.h"
#include "components/points/pointfilework.h"
#include "components/points/pointreport.h"
#include "orobasictypes/orofile.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"

namespace {

constexpr size_t kHead = 1024;  // bytes that a format is told by

bool fail(const char* key, const OroPath& path, const OroString& second = OroString(),
          const OroString& third = OroString()) {
  reportPoints(1, key, oroShownPath(path), second, third);
  return false;
}

void reportNotes(const PointNotes& notes, const OroPath& path) {
  for (const PointNote& note : notes) {
    reportPoints(0, note.key, oroShownPath(path), note.first, note.second);
  }
}

OroString number(int64_t value) { return OroString(std::to_string(value).c_str()); }

bool failProblem(const PointProblem& problem, const OroPath& path) {
  OroString text;
  oroTranslate(text, problem.key, problem.argument);
  return fail(problem.isLine ? oroKey("%1, line %2: %3") : oroKey("%1, byte %2: %3"), path,
              number(problem.place), text);
}

// False, and it is said why, where there is nothing at this name that could be read.
bool isThere(const OroPath& path) {
  platform::FileStatus status;
  if (!oroStat(path, status)) return fail("Cannot open the file %1", path);
  return !status.isDirectory || fail("%1 is a directory, not a file", path);
}

// The file's bytes have to be those that its name promises.
bool isOfFormat(const PointFormat& format, PointInputBuffer& bytes, const OroPath& path) {
  bytes.fill(kHead);
  const PointFormat* found = pointFormatBeginning({bytes.data(), std::min(bytes.ready(), kHead)});
  if (found == nullptr || found == &format) return true;
  return fail("The file %1 is named as %2 but holds %3", path, OroString(format.name),
              OroString(found->name));
}

bool loadAs(const PointFormat& format, const OroPath& path, PointDocument& document) {
  PointCloudSink sink;
  {
    PointFileInput input;
    if (!input.open(path)) return fail("Cannot open the file %1", path);
    PointInputBuffer bytes(input);
    if (!isOfFormat(format, bytes, path)) return false;
    const auto reader = format.makeReader();
    const bool whole = reader->read(bytes, sink);
    if (PointFileWork::isCurrentStopped()) return false;
    if (bytes.failed()) return fail("The file %1 could not be read to its end", path);
    if (sink.isFull()) return fail("There is not enough memory to read the file %1", path);
    if (!whole) return failProblem(reader->problem(), path);
    reportNotes(reader->notes(), path);
  }
  if (sink.count() == 0) reportPoints(0, "The file %1 holds no points", oroShownPath(path));
  sink.addTo(document, path.fileName(false));
  return true;
}

bool failWriting(const OroPath& path, const OroWholeFile& file) {
  OroString text;
  oroTranslate(text, "Cannot write the file %1", oroShownPath(path));
  reportPointText(1, oroWithReason(text, file.reason()));
  return false;
}

bool writeTo(const OroPath& path, PointFormatWriter& writer, PointSource& source) {
  OroWholeFile file;
  if (!file.open(path)) return failWriting(path, file);
  PointFileOutput output(file);
  PointOutputBuffer bytes(output);
  const bool whole = writer.write(source, bytes);
  if (PointFileWork::isCurrentStopped()) return false;
  if (writer.problem() != nullptr) return fail(writer.problem(), path);
  if (!whole || !file.commit()) return failWriting(path, file);
  reportNotes(writer.notes(), path);
  return true;
}

}  // namespace

bool loadPointFile(const OroPath& path, PointDocument& document) {
  if (!isThere(path)) return false;
  const PointFormat* format = pointFormatNamed(path.extension().toUtf8());
  if (format == nullptr) return fail("The type of the file %1 is not known", path);
  if (!PointCloud::canBeMade()) {
    return fail("There is no memory manager for the points of the file %1", path);
  }
  try {
    return loadAs(*format, path, document);
  } catch (const std::bad_alloc&) {
    return fail("There is not enough memory to read the file %1", path);
  }
}

bool savePointFile(const OroPath& path, PointFileType type,
                   const std::vector<IOroDocObject*>& objects) {
  const PointFormat* format = pointFormatOf(type);
  if (format == nullptr) return fail("The type of the file %1 cannot be saved", path);
  try {
    PointCloudSource source(objects);
    if (source.clouds().empty()) return fail("There are no points to save to the file %1", path);
    const int64_t plain = type != PointFileType::native ? source.missingColors() : 0;
    if (plain > 0) {
      reportPoints(0, "Of %2 points %3 have no colour, so the file %1 is written without colours",
                   oroShownPath(path), number(source.count()), number(plain));
    }
    const int64_t selected = type != PointFileType::native ? source.selectedAmongOthers() : 0;
    if (!writeTo(path, *format->makeWriter(pointWriteOptions()), source)) return false;
    if (selected > 0) {
      reportPoints(0, "The file %1 cannot keep a selection: %2 of %3 points were selected",
                   oroShownPath(path), number(selected), number(source.count()));
    }
    return true;
  } catch (const std::bad_alloc&) {
    return fail("There is not enough memory to write the file %1", path);
  }
}

#include "components/points/formats/pointformats.h"

#include <algorithm>
#include <string>

#include "components/points/formats/csvreader.h"
#include "components/points/formats/cwlreader.h"
#include "components/points/formats/cwlwriter.h"
#include "components/points/formats/lasreader.h"
#include "components/points/formats/laswriter.h"
#include "components/points/formats/pcdreader.h"
#include "components/points/formats/pcdwriter.h"
#include "components/points/formats/plyreader.h"
#include "components/points/formats/plywriter.h"
#include "components/points/formats/pointtextreader.h"
#include "components/points/formats/pointtextwriter.h"
#include "components/points/formats/ptsreader.h"

namespace {

template <class Reader>
std::unique_ptr<PointFormatReader> makeReader() {
  return std::make_unique<Reader>();
}

template <class Writer>
std::unique_ptr<PointFormatWriter> makeWriter(const PointWriteOptions& options) {
  return std::make_unique<Writer>(options);
}

template <PointTextKind Kind>
std::unique_ptr<PointFormatWriter> makeTextWriter(const PointWriteOptions& options) {
  return std::make_unique<PointTextWriter>(Kind, options);
}

constexpr const char* kText[] = {"xyz", "txt", "asc"};
constexpr const char* kPly[] = {"ply"};
constexpr const char* kLas[] = {"las"};
constexpr const char* kLaz[] = {"laz"};  // so that a compressed file is refused by its name
constexpr const char* kPcd[] = {"pcd"};
constexpr const char* kCsv[] = {"csv"};
constexpr const char* kPts[] = {"pts"};
constexpr const char* kCwl[] = {"cwl"};

constexpr PointFormat kFormats[] = {
    {PointFileType::text,
     "text",
     kText,
     {},
     nullptr,
     makeReader<PointTextReader>,
     makeTextWriter<PointTextKind::plain>},
    {PointFileType::ply,
     "PLY",
     kPly,
     {},
     PlyReader::recognises,
     makeReader<PlyReader>,
     makeWriter<PlyWriter>},
    {PointFileType::las, "LAS", kLas, kLaz, LasReader::recognises, makeReader<LasReader>,
     makeWriter<LasWriter>},
    {PointFileType::pcd,
     "PCD",
     kPcd,
     {},
     PcdReader::recognises,
     makeReader<PcdReader>,
     makeWriter<PcdWriter>},
    {PointFileType::csv,
     "CSV",
     kCsv,
     {},
     nullptr,
     makeReader<CsvReader>,
     makeTextWriter<PointTextKind::csv>},
    {PointFileType::pts,
     "PTS",
     kPts,
     {},
     nullptr,
     makeReader<PtsReader>,
     makeTextWriter<PointTextKind::pts>},
    {PointFileType::native,
     "CWL",
     kCwl,
     {},
     CwlReader::recognises,
     makeReader<CwlReader>,
     makeWriter<CwlWriter>},
};

bool hasName(std::span<const char* const> names, std::string_view extension) {
  std::string lower(extension);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return std::find(names.begin(), names.end(), lower) != names.end();
}

template <class Fits>
const PointFormat* firstThat(Fits fits) {
  const auto found = std::find_if(std::begin(kFormats), std::end(kFormats), fits);
  return found == std::end(kFormats) ? nullptr : found;
}

}  // namespace

std::span<const PointFormat> pointFormats() { return kFormats; }

const PointFormat* pointFormatNamed(std::string_view extension) {
  return firstThat([&](const PointFormat& format) {
    return hasName(format.extensions, extension) || hasName(format.readOnly, extension);
  });
}

PointFileType pointTypeNamed(std::string_view extension) {
  const PointFormat* format = firstThat(
      [&](const PointFormat& candidate) { return hasName(candidate.extensions, extension); });
  return format == nullptr ? PointFileType::unknown : format->type;
}

const PointFormat* pointFormatOf(PointFileType type) {
  return firstThat([&](const PointFormat& format) { return format.type == type; });
}

const PointFormat* pointFormatBeginning(std::string_view head) {
  return firstThat([&](const PointFormat& format) {
    return format.recognises != nullptr && format.recognises(head);
  });
}

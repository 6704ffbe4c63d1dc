// The point file formats: one table that opening, saving and people's lists of file types read.
//
//   const PointFormat* format = pointFormatNamed("ply");
//   if (format == nullptr) return unknown();
//   auto reader = format->makeReader();
//
// Any thread.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "components/points/formats/pointformatreader.h"
#include "components/points/formats/pointformatwriter.h"

// The codes by which a save names its file type; from 1000 on nothing is gathered for it.
enum class PointFileType : int32_t {
  text = 1,  // lines of numbers
  ply = 2,
  las = 3,
  pcd = 4,
  csv = 5,
  pts = 6,
  unknown = 1001,  // no type of this library
  native = 1015,   // the whole document in the application's own form
};

struct PointFormat {
  PointFileType type;
  const char* name;  // for people
  // In lower case, without the point; the first is the usual one, those of `readOnly` are not
  // written.
  std::span<const char* const> extensions;
  std::span<const char* const> readOnly;
  // Whether a file of this format may begin so; null where every text may.
  bool (*recognises)(std::string_view head);
  std::unique_ptr<PointFormatReader> (*makeReader)();
  std::unique_ptr<PointFormatWriter> (*makeWriter)(const PointWriteOptions& options);
};

std::span<const PointFormat> pointFormats();

// By the extension of a file that is to be read; null for one that no format has. Letter case does
// not count.
const PointFormat* pointFormatNamed(std::string_view extension);
// By the extension of a file that is to be written; unknown for one that no format has.
PointFileType pointTypeNamed(std::string_view extension);
const PointFormat* pointFormatOf(PointFileType type);  // null for unknown
// By the first bytes of a file; null where no format knows them as its own.
const PointFormat* pointFormatBeginning(std::string_view head);

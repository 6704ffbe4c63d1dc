// KelRecord: one record of the progress stream, and its two spellings.
//
// A reader of a pipe sees start, stop, set and error records end in ">", a reader of a file or a
// standard stream sees "/>"; both are kept apart on purpose, since readers of either exist. Texts
// go out as they are, without escapes. Pure functions; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum class KelRecordKind {
  startCommand,
  stopCommand,
  startAction,
  stopAction,
  setAction,
  percent,
  error,
  warning,
};

struct KelRecord {
  KelRecordKind kind = KelRecordKind::percent;
  std::u16string text;  // between the quotes; not used by a percent record
  int32_t percent = 0;  // of a percent record alone
};

// The colours of a record's parts on a console.
enum class KelRecordColour { frame, name, value, error, warning, restore };

// A part of a record and the colour that it is written in.
struct KelRecordPiece {
  std::u16string text;
  KelRecordColour colour = KelRecordColour::frame;
};

// The record in one piece, line feed included.
std::u16string kelPipeSpelling(const KelRecord& record);

// The record in three pieces; the percent record loses its leading blank on a console.
std::vector<KelRecordPiece> kelStreamSpelling(const KelRecord& record, bool console);

// The console attribute of a colour; `saved` is what stood there before.
uint16_t kelColourAttribute(KelRecordColour colour, uint16_t saved);

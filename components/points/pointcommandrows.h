// The one table of the point commands: names, parameters, what they are for, what carries them out.
//
// Scripts, batches and help read it through ICommandTable.
#pragma once

#include <span>

class PointCommandRun;

struct PointParameter {
  const char* name;
  const char* help;   // meaning, unit and what it is when left out; an English key
  int fewestNumbers;  // 0 for a text
  int mostNumbers;    // 0 for a text
  bool required = false;
};

struct PointCommandRow {
  const char* name;
  const char* help;  // an English key
  std::span<const PointParameter> parameters;
  // False with a message in the run, or because the work was stopped. Throws std::bad_alloc.
  bool (*run)(PointCommandRun& run);
};

// In the order of their names.
std::span<const PointCommandRow> pointCommandRows();

// The names of a batch: the order of its files, and what a saved file is called. Any thread.
#pragma once

#include <ctime>

#include "components/batch/batchjob.h"

// Natural order: runs of digits compare by their value, letters without their case, and names that
// are equal so far by their units, so that no two names count as equal ("a2" before "a10").
bool comesBefore(const OroString& name, const OroString& other);

// The time of this moment where the program runs.
std::tm batchTime();

// The name that the file is saved under: prefix, name, postfix, "_20260131" for the date,
// "_235959" for the time, and the extension as it was.
OroString batchFileName(const OroString& inputName, const BatchJob& job, const std::tm& time);

// The file of that name in the directory, or, where something has that name, the first of "name_2",
// "name_3" and so on that nothing has. A null path when there are too many.
OroPath freeFile(const OroPath& directory, const OroString& name);

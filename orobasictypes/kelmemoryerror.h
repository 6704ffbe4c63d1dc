// What happens when memory is out for good: a record on the disk, a word to the user, and the end
// of the process with status -1, in this order. kelMalloc and kelRealloc do all of it by
// themselves; kelOutOfMemory, for a size that cannot even be asked for, stands in kelrealloc.h.
//
// A request that is refused while a record or a report is being made ends the process at once.
// Any thread.
#pragma once

#include <cstdint>

// Why, as reported.
inline constexpr int32_t kKelTempFileNotOpened = -1;
inline constexpr int32_t kKelTempFileNotWritten = -2;
inline constexpr int32_t kKelTempFileNotRead = -3;
inline constexpr int32_t kKelMemoryExhausted = -4;
inline constexpr int32_t kKelMemoryOther = -5;  // nobody here reports it

// Reports the code and ends the process.
[[noreturn]] void kelFatalMemoryError(int32_t code);

// Writes the record and does what kelFatalMemoryError does.
[[noreturn]] void kelFailMemory(int32_t code, int64_t attemptedBytes);

// Writes "memory.log" in the folder of the setting "Directories/Logs Directory": the figures of the
// machine and of the memory manager. It replaces the last record; a file that cannot be written is
// passed over. An attempted size of 0 is left out, one below 0 is shown as unsigned.
void kelWriteMemoryLog(int64_t attemptedBytes);

// Tells the user that memory is out and the application closes: through the error service when the
// setting "Memory/UseErrorService" is on, else in a plain box. With the setting on and no such
// service nothing is shown, nor for a code outside -5 to -1. Always false: nobody may carry on.
bool kelReportMemoryError(int32_t code);

// The saving of a batch: the document, or its active objects alone, to one file.
#pragma once

class OroPath;

// Tells whether the file is there, whole. What went wrong has been reported then. Main thread.
bool saveBatchFile(const OroPath& file, bool activeOnly);

// The lines of a settings journal as a document.
//
// For whoever merges a journal or shows it. Pure but for the document; one thread at a time.
#pragma once

#include <cstddef>
#include <string>

class IOroDOMXml;

// More than any session writes, and little enough for texts and documents in memory.
inline constexpr size_t kMostJournalBytes = size_t{256} << 20;

// False for bytes that are no journal. One whose last entry was cut off, when the process died,
// counts without that entry.
bool kelParseJournal(std::string lines, IOroDOMXml& document);

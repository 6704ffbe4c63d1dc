// KelSettingsJournal: the file beside a settings document that takes each changed setting as it is
// set, until it is merged into the document.
//
//   KelSettingsJournal journal;
//   if (journal.open(KelSettingsJournal::pathOf(document))) journal.write(line);
//
// An entry is written as one block and ends in a closing tag and a line feed. A process that dies
// leaves whole entries and at most one that is cut off. It owns its descriptor and closes it. One
// thread at a time; several processes may append to one file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class OroPath;

class KelSettingsJournal {
 public:
  KelSettingsJournal() = default;
  ~KelSettingsJournal() { close(); }
  KelSettingsJournal(const KelSettingsJournal&) = delete;
  KelSettingsJournal& operator=(const KelSettingsJournal&) = delete;

  // Opens for appending and makes the file when there is none.
  bool open(const OroPath& path);
  bool isOpen() const { return descriptor_ >= 0; }
  // Appends one entry. False when the file does not hold it whole; it then holds nothing of it.
  bool write(std::string_view entry);
  void close();

  // The journal of a document.
  static OroPath pathOf(const OroPath& document);
  // The bytes of a journal, `most` of them at most. False when there is none that can be read.
  static bool read(const OroPath& path, size_t most, std::string& contents);
  // Takes off the entry at the end that was cut off when the process died. False when there is
  // none, or what stands there is not the front of an entry.
  static bool removeCutEntry(std::string& contents);
  // Moves a journal that could not be merged out of the way, to a name that nobody reads, in place
  // of an older one, or removes it where that cannot be; warns the user of the one or the other.
  // The journal's own name is free afterwards.
  static void reject(const OroPath& path);

 private:
  int descriptor_ = -1;  // -1 while closed
};

// DocumentDouble: a settings document with its journal, in memory, and the reader and writer that a
// store makes for it while this object lives.
//
//   tests::DocumentDouble document;
//   document.values["A/b"] = "5";
//   KelDataStore store(true, 5, 20);  // has the double's reader and writer
//
// The writer appends a line to the journal for each changed persistent item; the reader merges the
// journal into the document when it first begins; committing merges too. Integers and narrow texts
// alone.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/basic/keldatafactories.h"

namespace tests {

class DocumentDouble {
 public:
  DocumentDouble();
  ~DocumentDouble();
  DocumentDouble(const DocumentDouble&) = delete;
  DocumentDouble& operator=(const DocumentDouble&) = delete;

  void merge();

  std::map<std::string, std::string> values;
  std::vector<std::string> journal;  // "path=value" lines
  bool journalFileMade = false;      // the writer has opened it
  bool readable = true;              // whether the reader can open the document
  bool writable = true;              // whether the writer can open the journal
  int commits = 0;
  std::vector<std::string> made;  // what the store asked for: "default reader", "xml reader p 0"

 private:
  const KelDataFactories before_;
};

}  // namespace tests

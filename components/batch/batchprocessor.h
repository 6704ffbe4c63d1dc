// BatchProcessor: opens each file of a directory, runs a script on it, and saves it to another
// directory.
//
// Files go in natural order of their names, one at a time: the document holds one file's objects.
// One that cannot be opened, whose script fails or that cannot be saved is reported and counted,
// and the rest go on; after a failed script nothing is saved, since a file in the output directory
// is taken for done. A script that the user interrupts ends the batch behind its file. A saved file
// never takes the place of another one. Main thread.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "components/batch/batchjob.h"
#include "interfaces/IOroBatchProcessingService.h"
#include "interfaces/IOroRunOutcome.h"
#include "orobasictypes/orooffers.h"

class BatchProgress;

class BatchProcessor : public IOroBatchProcessingService {
 public:
  static constexpr const char* className() { return "BatchProcessor"; }
  using Offers = OroOffers<BatchProcessor, IOroBatchProcessingService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void run() override;

 private:
  // A file that was begun and not done: the step at which it stopped, and why, in one line.
  struct Failure {
    OroString name;
    OroRunStep step;
    OroString reason;  // empty where nobody reported one
  };

  bool isPossible() const;
  std::vector<OroString> inputNames() const;
  bool runFiles(const std::vector<OroString>& names);
  size_t processFiles(const std::vector<OroString>& names, BatchProgress& progress);
  OroRunStep processFile(const OroString& name) const;
  bool openFile(const OroPath& file) const;
  bool runScript(const OroString& name) const;
  bool saveFile(const OroString& name) const;
  bool wasInterrupted() const;
  Failure failure(const OroString& name, OroRunStep step, const OroString& error) const;
  OroString summary(size_t files, size_t begun) const;
  std::string failureLines() const;

  BatchJob job_;
  std::tm time_{};  // of the start: all files of a batch have one stamp
  std::vector<Failure> failures_;
};

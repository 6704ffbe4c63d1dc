// BatchProcessor: opens each file of a directory, runs a script on it, and saves it to another
// directory.
//
// Files go in natural order of their names, one at a time: the document holds one file's objects.
// One that cannot be opened, whose script fails or that cannot be saved is reported and counted,
// and the rest go on; after a failed script nothing is saved, since a file in the output directory
// is taken for done. A saved file never takes the place of another one. Main thread.
#pragma once

#include <ctime>
#include <vector>

#include "components/batch/batchjob.h"
#include "interfaces/IOroBatchProcessingService.h"
#include "interfaces/IOroRunOutcome.h"
#include "orobasictypes/orooffers.h"

class BatchProcessor : public IOroBatchProcessingService {
 public:
  static constexpr const char* className() { return "BatchProcessor"; }
  using Offers = OroOffers<BatchProcessor, IOroBatchProcessingService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void run() override;

 private:
  // A file that was not done, and the step at which it stopped.
  struct Failure {
    OroString name;
    OroRunStep step;
  };

  bool isPossible() const;
  std::vector<OroString> inputNames() const;
  void runFiles(const std::vector<OroString>& names);
  OroRunStep processFile(const OroString& name) const;
  bool openFile(const OroPath& file) const;
  bool runScript(const OroString& name) const;
  bool saveFile(const OroString& name) const;
  OroString summary(size_t files) const;
  void printSummary(const OroString& summary) const;

  BatchJob job_;
  std::tm time_{};  // of the start: all files of a batch have one stamp
  std::vector<Failure> failures_;
};

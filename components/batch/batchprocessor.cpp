#include "components/batch/batchprocessor.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "components/batch/batchnames.h"
#include "components/batch/batchprogress.h"
#include "components/batch/batchreport.h"
#include "components/batch/batchsave.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IFileUtil.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroOpenOptions.h"
#include "interfaces/IScriptEngine.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr OroRunStep kNoStep = OroRunStep{};  // nothing failed
constexpr int32_t kReplaceObjects = 0;  // the opened file's objects are the document's only ones
constexpr int32_t kFilesOnly = 1;

// A step of one file, told to whoever gathers the outcome of the run.
class Step {
 public:
  Step(OroRunStep step, const OroString& subject) : step_(step) {
    if (outcome_) outcome_->stepBegun(step_, subject);
  }
  bool end(bool good) {
    if (outcome_) outcome_->stepEnded(step_, good ? kOroRunDone : kOroRunFailed);
    return good;
  }

 private:
  SPtr<IOroRunOutcome> outcome_;
  OroRunStep step_;
};

bool isDirectory(const OroPath& path) {
  SPtr<IFileUtil> files;
  return files && files->isDirectory(path);
}

bool holdsSeparator(const OroString& text) { return text.find(u'/') >= 0 || text.find(u'\\') >= 0; }

OroString setting(const char* path) {
  SPtr<IDataStore> store;
  return store ? store->GetOroString(path, nullptr) : OroString();
}

// The last line of a script's error says what happened; the lines before it say where.
OroString lastLine(const OroString& text) {
  std::u16string_view rest(text.wideText());
  while (!rest.empty() && (rest.back() == u'\n' || rest.back() == u'\r')) rest.remove_suffix(1);
  const size_t start = rest.rfind(u'\n');
  if (start != rest.npos) rest.remove_prefix(start + 1);
  return OroString(rest.data(), static_cast<int>(rest.size()));
}

const char* failureKey(OroRunStep step) {
  if (step == kOroRunOpen) return oroKey("%1: not opened");
  return step == kOroRunScript ? oroKey("%1: the script failed") : oroKey("%1: not saved");
}

}  // namespace

void BatchProcessor::run() {
  job_ = readBatchJob();
  time_ = batchTime();
  failures_.clear();
  Step batch(kOroRunBatch, oroShownPath(job_.inputDirectory));
  const bool possible = isPossible();
  if (possible) runFiles(inputNames());
  batch.end(possible);
}

// What would fail for each file is told once, and nothing is begun.
bool BatchProcessor::isPossible() const {
  if (job_.inputDirectory.isEmpty() || job_.outputDirectory.isEmpty()) {
    reportBatch(1, "A batch needs the options -inputDir and -outputDir");
  } else if (holdsSeparator(job_.prefix) || holdsSeparator(job_.postfix)) {
    reportBatch(1, "The options -prefix and -postfix take a part of a file name, not a directory");
  } else if (!isDirectory(job_.inputDirectory)) {
    reportBatch(1, "There is no directory %1", oroShownPath(job_.inputDirectory));
  } else if (!job_.outputDirectory.makeDirectory(true) || !isDirectory(job_.outputDirectory)) {
    reportBatch(1, "The directory %1 cannot be made", oroShownPath(job_.outputDirectory));
  } else if (!job_.script.isEmpty() && !SPtr<IScriptEngine>()) {
    reportBatch(1, "There is no script engine to run %1", job_.script);
  } else {
    return true;
  }
  return false;
}

std::vector<OroString> BatchProcessor::inputNames() const {
  SPtr<IFileUtil> files;
  OroArray<OroPath> found;
  if (files) files->listFiles(job_.inputDirectory, found, OroString(), 0, kFilesOnly);
  std::vector<OroString> names(found.begin(), found.end());
  std::sort(names.begin(), names.end(), comesBefore);
  return names;
}

void BatchProcessor::runFiles(const std::vector<OroString>& names) {
  if (names.empty()) {
    reportBatch(0, "The directory %1 holds no files", oroShownPath(job_.inputDirectory));
  }
  BatchProgress progress(static_cast<int32_t>(names.size()));
  for (size_t i = 0; i < names.size(); ++i) {
    progress.beginFile(static_cast<int32_t>(i) + 1, names[i]);
    const OroRunStep failed = processFile(names[i]);
    if (failed != kNoStep) failures_.push_back({names[i], failed});
    progress.endFile();
  }
  const OroString text = summary(names.size());
  progress.show(text);
  printSummary(text);
}

// The step that failed, or none.
OroRunStep BatchProcessor::processFile(const OroString& name) const {
  if (!openFile(job_.inputDirectory.joined(name))) return kOroRunOpen;
  if (!job_.script.isEmpty() && !runScript(name)) return kOroRunScript;
  return saveFile(name) ? kNoStep : kOroRunSave;
}

bool BatchProcessor::openFile(const OroPath& file) const {
  const BatchCommand command("Open File");
  Step step(kOroRunOpen, oroShownPath(file));
  SPtr<IOroOpenDoc> opener;
  if (!opener) {
    reportBatch(1, "There is nothing to open the file %1 with", oroShownPath(file));
    return step.end(false);
  }
  opener->setMode(kReplaceObjects);
  opener->setText(0, OroString::empty());
  SPtr<IOroOpenOptions> options;
  return step.end(opener->open(file, options.get(), 1));
}

bool BatchProcessor::runScript(const OroString& name) const {
  Step step(kOroRunScript, job_.script);
  SPtr<IScriptEngine> engine;
  if (!engine) return step.end(false);
  engine->runScript(job_.script, OroString::empty());
  const OroString error = setting("Python/Error String");
  if (!error.isEmpty())
    reportBatch(1, "The script failed on the file %1: %2", name, lastLine(error));
  return step.end(error.isEmpty());
}

bool BatchProcessor::saveFile(const OroString& name) const {
  const BatchCommand command("Save File");
  const OroString wanted = batchFileName(name, job_, time_);
  const OroPath file = freeFile(job_.outputDirectory, wanted);
  Step step(kOroRunSave, oroShownPath(file));
  if (file.isEmpty()) {
    reportBatch(1, "There are too many files named %1", wanted);
    return step.end(false);
  }
  if (!(file.fileName() == wanted)) {
    reportBatch(0, "There is a file %1 already, so %2 is written", wanted, file.fileName());
  }
  return step.end(saveBatchFile(file, job_.activeOnly));
}

OroString BatchProcessor::summary(size_t files) const {
  OroString text;
  return oroTranslate(text, "Batch of %1 files: %2 saved, %3 failed",
                      OroString(static_cast<int>(files)),
                      OroString(static_cast<int>(files - failures_.size())),
                      OroString(static_cast<int>(failures_.size())));
}

// For whoever started the batch at a prompt. Standard output belongs to the records when they go
// there, and these tell the same.
void BatchProcessor::printSummary(const OroString& summary) const {
  if (setting("GUI/CommandLine Log File") == "stdout") return;
  std::string text = std::string(summary.toUtf8()) + "\n";
  for (const Failure& failure : failures_) {
    OroString line;
    oroTranslate(line, failureKey(failure.step), failure.name);
    text += std::string("  ") + line.toUtf8() + "\n";
  }
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

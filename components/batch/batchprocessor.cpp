#include "components/batch/batchprocessor.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "components/batch/batcherrors.h"
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
constexpr const char* kScriptError = "Python/Error String";

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

OroString textOf(std::u16string_view text) {
  return OroString(text.data(), static_cast<int>(text.size()));
}

// The last line of a script's error says what happened; the lines before it say where.
OroString lastLine(const OroString& text) {
  std::u16string_view rest(text.wideText());
  while (!rest.empty() && (rest.back() == u'\n' || rest.back() == u'\r')) rest.remove_suffix(1);
  const size_t start = rest.rfind(u'\n');
  if (start != rest.npos) rest.remove_prefix(start + 1);
  return textOf(rest);
}

// The first line of a report, without the file in front of a place in it: a summary has named it.
OroString firstLine(const OroString& text, const OroPath& file) {
  std::u16string_view rest(text.wideText());
  rest = rest.substr(0, rest.find_first_of(u"\r\n"));
  std::u16string named(oroShownPath(file).wideText());
  named += u", ";
  if (rest.starts_with(named)) rest.remove_prefix(named.size());
  return textOf(rest);
}

std::string summaryLine(const char* key, const OroString& name, const OroString& reason) {
  OroString line;
  oroTranslate(line, key, name);
  std::string text = "  " + oroTerminalText(line);
  if (!reason.isEmpty()) text += ": " + oroTerminalText(reason);
  return text + "\n";
}

const char* failureKey(OroRunStep step) {
  if (step == kOroRunOpen) return oroKey("%1: not opened");
  return step == kOroRunScript ? oroKey("%1: the script failed") : oroKey("%1: not saved");
}

// For whoever started the batch at a prompt. Standard output belongs to the records when they go
// there, and these tell the same.
void print(const std::string& text) {
  if (setting("GUI/CommandLine Log File") == "stdout") return;
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace

void BatchProcessor::run() {
  job_ = readBatchJob();
  time_ = batchTime();
  failures_.clear();
  Step batch(kOroRunBatch, oroShownPath(job_.inputDirectory));
  batch.end(isPossible() && runFiles(inputNames()));
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

// False when the user ended it before its last file was begun.
bool BatchProcessor::runFiles(const std::vector<OroString>& names) {
  if (names.empty()) {
    reportBatch(0, "The directory %1 holds no files", oroShownPath(job_.inputDirectory));
  }
  BatchProgress progress(static_cast<int32_t>(names.size()));
  const size_t begun = processFiles(names, progress);
  if (begun < names.size()) {
    reportBatch(1, "The batch was interrupted at the file %1. Files not begun: %2",
                names[begun - 1], OroString(static_cast<int>(names.size() - begun)));
  }
  const OroString text = summary(names.size(), begun);
  progress.show(text);
  std::string lines = std::string(text.toUtf8()) + "\n" + failureLines();
  for (size_t i = begun; i < names.size(); ++i) {
    lines += summaryLine(oroKey("%1: not begun"), names[i], OroString());
  }
  print(lines);
  return begun == names.size();
}

// How many of them were begun.
size_t BatchProcessor::processFiles(const std::vector<OroString>& names, BatchProgress& progress) {
  BatchErrors::Listening errors;
  size_t begun = 0;
  while (begun < names.size()) {
    const OroString& name = names[begun++];
    progress.beginFile(static_cast<int32_t>(begun), name);
    const OroRunStep failed = processFile(name);
    const OroString error = errors.take();
    if (failed != kNoStep) failures_.push_back(failure(name, failed, error));
    progress.endFile();
    if (wasInterrupted()) break;
  }
  return begun;
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
  const OroString error = setting(kScriptError);
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

// A script engine says so of the script that ran last.
bool BatchProcessor::wasInterrupted() const {
  if (job_.script.isEmpty()) return false;
  SPtr<IDataStore> store;
  return store && store->GetInt("Python/Interrupted", nullptr) != 0;
}

BatchProcessor::Failure BatchProcessor::failure(const OroString& name, OroRunStep step,
                                                const OroString& error) const {
  if (step == kOroRunScript) return {name, step, lastLine(setting(kScriptError))};
  return {name, step, firstLine(error, job_.inputDirectory.joined(name))};
}

OroString BatchProcessor::summary(size_t files, size_t begun) const {
  const OroString all(static_cast<int>(files));
  const OroString saved(static_cast<int>(begun - failures_.size()));
  const OroString failed(static_cast<int>(failures_.size()));
  OroString text;
  if (begun == files) {
    return oroTranslate(text, "Batch of %1 files: %2 saved, %3 failed", all, saved, failed);
  }
  return oroTranslate(text, "Batch of %1 files, interrupted: %2 saved, %3 failed, %4 not begun",
                      all, saved, failed, OroString(static_cast<int>(files - begun)));
}

std::string BatchProcessor::failureLines() const {
  std::string lines;
  for (const Failure& failure : failures_) {
    lines += summaryLine(failureKey(failure.step), failure.name, failure.reason);
  }
  return lines;
}

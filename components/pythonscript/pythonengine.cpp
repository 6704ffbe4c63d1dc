#include "components/pythonscript/pythonengine.h"

#include <cstdio>
#include <new>
#include <string>

#include "interfaces/IDataStore.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kError = "Python/Error String";
constexpr const char* kInterrupted = "Python/Interrupted";
constexpr int32_t kErrorCapacity = 1048576;
// Of a longer text the middle goes: where it happened stands in front, what happened at the end.
constexpr int kErrorHead = 16384;
constexpr int kErrorTail = 16384;

void storeEnd(const OroString& error, bool interrupted) {
  SPtr<IDataStore> store;
  if (!store) return;
  store->CreateDirectory("Python");
  store->CreateOroString(kError, kErrorCapacity, OroString::empty(), 0);
  store->SetOroString(nullptr, kError, error);
  store->CreateInt(kInterrupted, 0, 0, 1, 0);
  store->SetInt(nullptr, kInterrupted, interrupted ? 1 : 0);
}

OroString shortened(const OroString& text) {
  const int length = text.length();
  if (length <= kErrorHead + kErrorTail) return text;
  OroString out = text.left(kErrorHead);
  out.append("\n...\n");
  out.append(text.mid(length - kErrorTail));
  return out;
}

OroString withoutLineEnd(const OroString& text) {
  int length = text.length();
  while (length > 0 && text.at(length - 1) == u'\n') --length;
  return text.left(length);
}

// False with a text when the file is no script that can be read.
bool readScript(const OroPath& path, std::string& source, OroString& problem) {
  OroFileReader file;
  if (!file.open(path)) {
    oroTranslate(problem, "Cannot open the script %1", oroShownPath(path));
    return false;
  }
  char block[1 << 14];
  while (const size_t got = file.read(block, sizeof block)) {
    source.append(block, got);
    if (source.size() <= PythonEngine::kLargestScript) continue;
    oroTranslate(problem, "The file %1 is too large for a script", oroShownPath(path));
    return false;
  }
  if (!file.failed()) return true;
  oroTranslate(problem, "The file %1 could not be read to its end", oroShownPath(path));
  return false;
}

// The person who started the script looks there, whether records are written or not.
void tellOnStandardError(const OroString& text) {
  std::fputs(text.toUtf8(), stderr);
  std::fputc('\n', stderr);
  std::fflush(stderr);
}

}  // namespace

PythonEnd PythonEngine::run(const OroString& file, const OroString& arguments) {
  try {
    const OroPath path(file);
    std::string source;
    OroString problem;
    if (!readScript(path, source, problem)) return {problem};
    return interpreter_.run(source.data(), source.size(), oroShownPath(path), arguments);
  } catch (const std::bad_alloc&) {
    OroString problem;
    return {oroTranslate(problem, "There is not enough memory to run the script %1", file)};
  }
}

void PythonEngine::runScript(const OroString& file, const OroString& arguments) {
  storeEnd(OroString::empty(), false);
  const PythonEnd end = run(file, arguments);
  const OroString problem = shortened(withoutLineEnd(end.problem));
  storeEnd(problem, end.interrupted);
  if (problem.isEmpty()) return;
  SPtr<IOroErrorService> errors;
  if (!errors || !errors->getFlag(KelCString::borrow("errorsOnStandardError"))) {
    tellOnStandardError(problem);
  }
  if (errors) errors->report(problem, 1, KelCString());
}

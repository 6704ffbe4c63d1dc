#include "gui/apps/main/commandlinesettings.h"

#include <cstdint>
#include <limits>

#include "interfaces/IDataStore.h"
#include "orobasictypes/orostring.h"

namespace {

using namespace commandlinesettings;

// Each parent must be declared by name: of a longer path only the whole is known.
constexpr const char* kDirectories[] = {"GUI", "Advanced", "Advanced/Batch Processing", "Scripting",
                                        "Python"};
constexpr const char* kDrivingIntegers[] = {kProgressWindow, kBatch, kExitOnMacroEnd};
constexpr const char* kDrivingTexts[] = {kLogFile, kScript, kInputFile, kOutputFile};

constexpr int32_t kPathCapacity = 32767;
constexpr int32_t kErrorCapacity = 1048576;
constexpr uint32_t kPersistent = 1;  // what a reader fills in
constexpr uint32_t kNotSaved = 0;

void declareInteger(IDataStore& store, const char* path, uint32_t flags) {
  using Limits = std::numeric_limits<int32_t>;
  store.CreateInt(path, 0, Limits::min(), Limits::max(), flags);
}

void takeFromDocument(IDataStore& store, const char* path) {
  store.AcceptPath(store.GetReader(), path);
  store.SetFlags(path, kNotSaved);
}

}  // namespace

void declareCommandLineSettings(IDataStore& store) {
  for (const char* directory : kDirectories) store.CreateDirectory(directory);
  declareInteger(store, kCommandLine, kNotSaved);
  store.CreateOroString(kScriptError, kErrorCapacity, OroString::empty(), kNotSaved);
  for (const char* path : kDrivingIntegers) {
    declareInteger(store, path, kPersistent);
    takeFromDocument(store, path);
  }
  for (const char* path : kDrivingTexts) {
    store.CreateOroString(path, kPathCapacity, OroString::empty(), kPersistent);
    takeFromDocument(store, path);
  }
}

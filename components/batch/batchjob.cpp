#include "components/batch/batchjob.h"

#include <limits>

#include "interfaces/IDataStore.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr const char* kDirectories[] = {"Advanced", "Advanced/Batch Processing", "Scripting"};
constexpr const char* kInputDirectory = "Advanced/Batch Processing/Input Directory";
constexpr const char* kOutputDirectory = "Advanced/Batch Processing/Output Directory";
constexpr const char* kPrefix = "Advanced/Batch Processing/Prefix";
constexpr const char* kPostfix = "Advanced/Batch Processing/Postfix";
constexpr const char* kDateAndTime = "Advanced/Batch Processing/Date and Time";
constexpr const char* kActiveOnly = "Advanced/Batch Processing/Save Active Only";
constexpr const char* kScript = "Scripting/Startup Macro";

constexpr int32_t kTextCapacity = 32767;
constexpr uint32_t kPersistent = 1;  // what a reader fills in
constexpr uint32_t kNotSaved = 0;

void takeFromDocument(IDataStore& store, const char* path) {
  store.AcceptPath(store.GetReader(), path);
  store.SetFlags(path, kNotSaved);
}

OroString text(IDataStore& store, const char* path) {
  if (!store.Exists(path)) {
    store.CreateOroString(path, kTextCapacity, OroString::empty(), kPersistent);
    takeFromDocument(store, path);
  }
  return store.GetOroString(path, nullptr);
}

int32_t number(IDataStore& store, const char* path) {
  if (!store.Exists(path)) {
    using Limits = std::numeric_limits<int32_t>;
    store.CreateInt(path, 0, Limits::min(), Limits::max(), kPersistent);
    takeFromDocument(store, path);
  }
  return store.GetInt(path, nullptr);
}

}  // namespace

BatchJob readBatchJob() {
  BatchJob job;
  SPtr<IDataStore> store;
  if (!store) return job;
  for (const char* directory : kDirectories) store->CreateDirectory(directory);
  job.inputDirectory = text(*store, kInputDirectory);
  job.outputDirectory = text(*store, kOutputDirectory);
  job.script = text(*store, kScript);
  job.prefix = text(*store, kPrefix);
  job.postfix = text(*store, kPostfix);
  job.dateAndTime = number(*store, kDateAndTime);
  job.activeOnly = number(*store, kActiveOnly) != 0;
  return job;
}

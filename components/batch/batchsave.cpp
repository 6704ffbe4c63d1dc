#include "components/batch/batchsave.h"

#include <cstdint>

#include "components/batch/batchreport.h"
#include "interfaces/IFileSaveData.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IOroDoc.h"
#include "interfaces/IOroDocObject.h"
#include "interfaces/IOroDocObjectItr.h"
#include "interfaces/IOroSaveDoc.h"
#include "interfaces/IOroWorldData.h"
#include "interfaces/IScriptEngine.h"
#include "interfaces/IWriteScene.h"
#include "interfaces/IWriteSceneV3.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"

namespace {

// The codes and the world's data are those of every save without a user interface.
constexpr int32_t kNativeFile = 1015;
constexpr int32_t kFirstOtherCode = 1000;
constexpr int32_t kActiveObjects = 1;
constexpr int32_t kAllObjects = 2;

constexpr GUID kWorldDataClass = {
    0xACB43DF0, 0xD0AE, 0x43F8, {0xBB, 0xFE, 0x3C, 0xCB, 0xD8, 0x0C, 0x50, 0x0E}};

bool belongsInFile(IOroDocObject& object) {
  if (!(object.name() == "World")) return true;
  auto* const world = oroQuery<IOroWorldData>(object.data(kWorldDataClass));
  return world != nullptr && !world->excludedFromSave();
}

void handOverObjects(IWriteScene& writer, int32_t which) {
  SPtr<IOroDoc> document;
  if (!document) return;
  const IPtr<IOroDocObjectItr> walk(document->objectIterator(which, 0, 0, 0));
  if (!walk) return;
  for (; !walk->atEnd(); walk->next()) {
    IOroDocObject* const object = walk->current();
    if (object != nullptr && writer.canSave(object) && belongsInFile(*object)) {
      writer.addObject(object);
    }
  }
}

// The code of the save; -1 when the writer cannot prepare files.
int32_t saveCode(IWriteScene& writer, const OroPath& file) {
  if (file.extension() == "cwl") return kNativeFile;
  auto* const preparer = oroQuery<IWriteSceneV3>(&writer);
  return preparer != nullptr ? preparer->prepare(file) : -1;
}

}  // namespace

bool saveBatchFile(const OroPath& file, bool activeOnly) {
  SPtr<IScriptEngine> engine;
  if (engine) engine->setContinue(1);
  const SPtr<IFileSaveData> saveData;
  const SPtr<IOroSaveDoc> saver;
  const SPtr<IFileTypeService> fileTypes;
  const IPtr<IWriteScene> writer(fileTypes ? fileTypes->writerFor() : nullptr);
  if (!saveData || !saver || !writer) {
    reportBatch(1, "There is nothing to save the file %1 with", oroShownPath(file));
    return false;
  }
  saveData->setPath(file);
  writer->setSaveData(saveData.get());
  const int32_t code = saveCode(*writer, file);
  saveData->setStatus(code);
  if (code >= 0 && code < kFirstOtherCode) {
    handOverObjects(*writer, activeOnly ? kActiveObjects : kAllObjects);
  }
  const bool saved = saver->save(saveData.get(), writer.get(), 0, 0);
  writer->setSaveData(nullptr);
  return saved;
}

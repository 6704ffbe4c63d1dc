#include "gui/apps/main/savestep.h"

#include <optional>

#include "gui/apps/main/commandrecord.h"
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
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t kNativeFile = 1015;      // code of a file that the document writes as a whole
constexpr int32_t kFirstOtherCode = 1000;  // below it the writer takes the objects one by one

constexpr GUID kWorldDataClass = {
    0xACB43DF0, 0xD0AE, 0x43F8, {0xBB, 0xFE, 0x3C, 0xCB, 0xD8, 0x0C, 0x50, 0x0E}};

// The code of the save; nothing when the writer cannot prepare files.
std::optional<int32_t> saveCode(IWriteScene* writer, const OroPath& path) {
  if (path.extension() == "cwl") return kNativeFile;
  auto* const preparer = oroQuery<IWriteSceneV3>(writer);
  if (preparer == nullptr) return std::nullopt;
  return preparer->prepare(path);
}

// The world is saved only when its data says that the user made something of it.
bool belongsInFile(IOroDocObject& object) {
  if (!(object.name() == "World")) return true;
  auto* const world = oroQuery<IOroWorldData>(object.data(kWorldDataClass));
  return world != nullptr && !world->excludedFromSave();
}

void handOverObjects(IWriteScene& writer) {
  SPtr<IOroDoc> document;
  if (!document) return;
  const IPtr<IOroDocObjectItr> walk(document->objectIterator(2, 0, 0, 0));
  if (!walk) return;
  for (; !walk->atEnd(); walk->next()) {
    IOroDocObject* const object = walk->current();
    if (object != nullptr && writer.canSave(object) && belongsInFile(*object)) {
      writer.addObject(object);
    }
  }
}

OroRunResult saveThrough(IWriteScene& writer, IFileSaveData& saveData, IOroSaveDoc* saver,
                         const OroPath& path) {
  const std::optional<int32_t> code = saveCode(&writer, path);
  if (!code) return kOroRunNobody;
  saveData.setStatus(*code);
  if (*code < kFirstOtherCode) handOverObjects(writer);
  if (saver == nullptr) return kOroRunNobody;
  return saver->save(&saveData, &writer, 0, 0) ? kOroRunDone : kOroRunFailed;
}

}  // namespace

OroRunResult saveFile(const OroString& file, IInfoBar2* bar, IScriptEngine* engine) {
  if (engine != nullptr) engine->setContinue(1);
  std::optional<CommandRecord> record(std::in_place, bar, "Save File");
  const OroPath path(file);
  const SPtr<IFileSaveData> saveData;
  if (saveData) saveData->setPath(path);
  const SPtr<IOroSaveDoc> saver;
  const SPtr<IFileTypeService> fileTypes;
  const IPtr<IWriteScene> writer(fileTypes ? fileTypes->writerFor() : nullptr);
  const bool canSave = saveData && writer;
  OroRunResult result = kOroRunNobody;
  if (canSave) {
    writer->setSaveData(saveData.get());
    result = saveThrough(*writer, *saveData, saver.get(), path);
  }
  record.reset();
  if (canSave) writer->setSaveData(nullptr);
  return result;
}

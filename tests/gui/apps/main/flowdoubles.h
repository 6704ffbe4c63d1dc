#pragma once

// Doubles of the services that the command-line flow uses. Each records what it was asked to do.

#include <functional>
#include <string>
#include <vector>

#include "interfaces/ICmdLine.h"
#include "interfaces/ICommandAccess.h"
#include "interfaces/ICommandRegistration.h"
#include "interfaces/IExitService.h"
#include "interfaces/IFileSaveData.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IGenApp.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IInfoBar2.h"
#include "interfaces/IOroBatchProcessingService.h"
#include "interfaces/IOroDoc.h"
#include "interfaces/IOroDocObject.h"
#include "interfaces/IOroDocObjectItr.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroOpenOptions.h"
#include "interfaces/IOroRunOutcome.h"
#include "interfaces/IOroSaveDoc.h"
#include "interfaces/IOroWorldData.h"
#include "interfaces/IPrimitivesService.h"
#include "interfaces/IScriptEngine.h"
#include "interfaces/IWriteScene.h"
#include "interfaces/IWriteSceneV3.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "tests/gui/apps/main/double.h"
#include "tests/gui/apps/main/events.h"

namespace tests {

struct GenApp : Double<GenApp, IGenApp> {
  static constexpr const char* className() { return "GenApp"; }
  std::function<void()> onPrepare;
  void prepare() override {
    event("prepare");
    if (onPrepare) onPrepare();
  }
};

struct CommandAccess : Double<CommandAccess, ICommandAccess> {
  static constexpr const char* className() { return "CommandAccess"; }
};

struct Primitives : Double<Primitives, IPrimitivesService> {
  static constexpr const char* className() { return "Primitives"; }
};

struct CommandRegistration : Double<CommandRegistration, ICommandRegistration> {
  static constexpr const char* className() { return "CommandRegistration"; }
  void registerCommands() override { event("registerCommands"); }
  void commandsRegistered() override { event("commandsRegistered"); }
};

struct CmdLine : Double<CmdLine, ICmdLine> {
  static constexpr const char* className() { return "CmdLine"; }
  bool accepts = true;
  OroString error{u"what is -x?", nullptr};
  std::function<void()> onParse;
  bool parse(int32_t argc, const OroString* argv) override {
    event("parse " + std::to_string(argc), argv[argc - 1]);
    if (onParse) onParse();
    return accepts;
  }
  const OroString& errorText() override { return error; }
};

struct ExitService : Double<ExitService, IExitService> {
  static constexpr const char* className() { return "ExitService"; }
  void exit(int32_t status) override { event("exit", status); }
};

struct InfoBar : Double<InfoBar, IInfoBar, IInfoBar2> {
  static constexpr const char* className() { return "InfoBar"; }
  const void* key = nullptr;  ///< of the last command
  void setStatusText(const OroString&) override {}
  void clearStatusText() override {}
  void setPercent(int32_t) override {}
  void clearPercent() override {}
  void setFraction(float) override {}
  void setFractionFor(const void*, float) override {}
  void startCommand(const void* id, const OroString& text) override {
    key = id;
    event("startCommand", text);
  }
  void stopCommand(const void* id) override {
    event(id == key ? "stopCommand" : "stopCommand of another id");
  }
  void currentCommand(OroString&) override {}
};

/// An info bar that cannot show commands.
struct PlainInfoBar : Double<PlainInfoBar, IInfoBar> {
  static constexpr const char* className() { return "PlainInfoBar"; }
  void setStatusText(const OroString&) override {}
  void clearStatusText() override {}
  void setPercent(int32_t) override {}
  void clearPercent() override {}
  void setFraction(float) override {}
  void setFractionFor(const void*, float) override {}
};

struct BatchService : Double<BatchService, IOroBatchProcessingService> {
  static constexpr const char* className() { return "BatchService"; }
  void run() override { event("batch"); }
};

struct ScriptEngine : Double<ScriptEngine, IScriptEngine> {
  static constexpr const char* className() { return "ScriptEngine"; }
  std::function<void()> onRun;
  void runScript(const OroString& file, const OroString& arguments) override {
    event("runScript", file);
    event("arguments", arguments);
    if (onRun) onRun();
  }
  void setContinue(int32_t flag) override { event("setContinue", flag); }
};

struct OpenOptions : Double<OpenOptions, IOroOpenOptions> {
  static constexpr const char* className() { return "OpenOptions"; }
};

struct OpenDoc : Double<OpenDoc, IOroOpenDoc> {
  static constexpr const char* className() { return "OpenDoc"; }
  bool open(const OroPath& path, IOroOpenOptions* options, int32_t quiet) override {
    event("open", path);
    event(options != nullptr ? "with options" : "without options");
    event("quiet", quiet);
    return false;
  }
  void setMode(int32_t mode) override { event("setMode", mode); }
  void setText(int32_t which, const OroString& text) override {
    event("setText " + std::to_string(which), text);
  }
};

struct WorldData : Double<WorldData, IOroWorldData> {
  static constexpr const char* className() { return "WorldData"; }
  bool excluded = false;
  bool excludedFromSave() override { return excluded; }
};

struct DocObject : Double<DocObject, IOroDocObject> {
  static constexpr const char* className() { return "DocObject"; }
  OroString text;
  IPtr<IOroUnknown> worldData;  ///< of the class of the world's data, or null
  explicit DocObject(const char* name, IOroUnknown* data = nullptr) : text(name), worldData(data) {}
  const OroString& name() override { return text; }
  IOroUnknown* data(const GUID& classId) override {
    constexpr GUID world = {
        0xACB43DF0, 0xD0AE, 0x43F8, {0xBB, 0xFE, 0x3C, 0xCB, 0xD8, 0x0C, 0x50, 0x0E}};
    return classId == world ? worldData.get() : nullptr;
  }
};

using DocObjects = std::vector<IPtr<IOroDocObject>>;

struct DocObjectItr : Double<DocObjectItr, IOroDocObjectItr> {
  static constexpr const char* className() { return "DocObjectItr"; }
  const DocObjects& objects;
  std::size_t at = 0;
  explicit DocObjectItr(const DocObjects& list) : objects(list) {}
  bool atEnd() override { return at >= objects.size(); }
  void next() override { ++at; }
  IOroDocObject* current() override { return atEnd() ? nullptr : objects[at].get(); }
};

struct Doc : Double<Doc, IOroDoc> {
  static constexpr const char* className() { return "Doc"; }
  DocObjects objects;
  bool hasIterator = true;
  void makeDocument() override { event("makeDocument"); }
  IOroDocObjectItr* objectIterator(int32_t kind, int32_t first, int32_t last,
                                   int32_t flags) override {
    event("objects", kind * 1000 + first * 100 + last * 10 + flags);
    return hasIterator ? new DocObjectItr(objects) : nullptr;
  }
};

struct SaveData : Double<SaveData, IFileSaveData> {
  static constexpr const char* className() { return "SaveData"; }
  OroPath file;
  int32_t code = 0;
  const OroPath& path() override { return file; }
  void setPath(const OroPath& path) override {
    event("setPath", path);
    file = path;
  }
  int32_t status() override { return code; }
  void setStatus(int32_t status) override {
    event("setStatus", status);
    code = status;
  }
};

/// What all writers do; the derived classes offer different interfaces.
template <class Self, class... More>
struct WriterDouble : Double<Self, IWriteScene, More...> {
  IFileSaveData* saveData = nullptr;
  void setSaveData(IFileSaveData* data) override {
    event(data != nullptr ? "setSaveData" : "setSaveData null");
    saveData = data;
  }
  bool canSave(IOroDocObject* object) override { return !(object->name() == "Camera"); }
  void addObject(IOroDocObject* object) override { event("addObject", object->name()); }
};

struct Writer : WriterDouble<Writer, IWriteSceneV3> {
  static constexpr const char* className() { return "Writer"; }
  int32_t code = 5;
  int32_t prepare(const OroPath& path) override {
    event("prepare", path);
    return code;
  }
};

/// A writer that cannot choose a format.
struct OldWriter : WriterDouble<OldWriter> {
  static constexpr const char* className() { return "OldWriter"; }
};

struct FileTypes : Double<FileTypes, IFileTypeService> {
  static constexpr const char* className() { return "FileTypes"; }
  IPtr<IWriteScene> writer;
  IWriteScene* writerFor() override {
    event("writerFor");
    return writer.get();
  }
};

struct RunOutcome : Double<RunOutcome, IOroRunOutcome> {
  static constexpr const char* className() { return "RunOutcome"; }
  int32_t status = -1;
  void stepBegun(int32_t step, const OroString& subject) override {
    event("step " + std::to_string(step) + " begun", subject);
  }
  void stepEnded(int32_t step, int32_t result) override {
    event("step " + std::to_string(step) + " ended", result);
  }
  void runEnded() override { event("run ended"); }
  int32_t exitStatus() override { return status; }
};

struct SaveDoc : Double<SaveDoc, IOroSaveDoc> {
  static constexpr const char* className() { return "SaveDoc"; }
  bool save(IFileSaveData* saveData, IWriteScene* writer, int32_t flags, int32_t options) override {
    event("save " + std::to_string(saveData->status()), saveData->path());
    event(writer != nullptr && flags == 0 && options == 0 ? "with writer" : "odd arguments");
    return false;
  }
};

}  // namespace tests

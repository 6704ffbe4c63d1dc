// SettingsWorld: a fixture with what settings documents live among: a folder with the document, a
// small XML library, the arguments, the directories and an error service that remembers.
//
//   write("velmora.iniml", document("<value name=\"a\" type=\"integer\">5</value>"));
//   EXPECT_THAT(errors.texts, IsEmpty());
//
// The directory "userconfig" is the folder "user", "config" is "installed"; both are empty at
// first. Asked for anything else, the directory service says "C:", as the real one does.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/basic/keldatafactories.h"
#include "base/basic/keldatastore.h"
#include "base/basic/testaccess.h"
#include "framework/kelregistry.h"
#include "interfaces/IOroDirService.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/testaccess.h"
#include "tests/base/basic/assertionlog.h"
#include "tests/framework/fakeservices.h"
#include "tests/platform/textof.h"
#include "tests/support/fakexml.h"
#include "tests/tempfolder.h"

namespace tests {

class FakeDirectories : public IOroDirService {
 public:
  static constexpr const char* className() { return "FakeDirectories"; }
  using Offers = OroOffers<FakeDirectories, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const OroPath& getDir(const char* name) override {
    const auto found = directories.find(name);
    return found == directories.end() ? unknown_ : found->second;
  }
  void setDir(const char*, const OroPath&) override {}

  std::map<std::string, OroPath> directories;

 private:
  OroPath unknown_{"C:"};
};

class SettingsWorld : public testing::Test {
 protected:
  static constexpr uint32_t kSaved = IKelDataItem::kPersistent | IKelDataItem::kJournalled;

  SettingsWorld() {
    errors = new FakeErrors;
    directories = new FakeDirectories;
    registry = new KelRegistry;
    xml.registerService(KelCString::borrow("IOroErrorService"), errors);
    xml.registerService(KelCString::borrow("IOroDirService"), directories);
    xml.registerService(KelCString::borrow("IOroRegistry"), registry);
    directories->directories["userconfig"] = pathOf("user");
    directories->directories["config"] = pathOf("installed");
    std::filesystem::create_directory(file("user"));
    std::filesystem::create_directory(file("installed"));
    forget();
  }
  ~SettingsWorld() override { forget(); }

  // As at the start of a process: what is looked up once is looked up anew.
  static void forget() {
    testaccess::resetDirPath();
    testaccess::resetSettingsPaths();
  }

  std::filesystem::path file(const std::filesystem::path& name) const { return folder.file(name); }
  OroPath pathOf(const std::filesystem::path& name) const {
    return OroPath(OroString(textOf(file(name)).c_str()));
  }
  void write(const std::filesystem::path& name, const std::string& bytes) {
    folder.write(name, bytes);
  }
  // "<none>" for a file that is not there.
  std::string read(const std::filesystem::path& name) const {
    return exists(name) ? folder.read(name) : "<none>";
  }
  bool exists(const std::filesystem::path& name) const {
    return std::filesystem::exists(file(name));
  }
  void addArgument(const std::string& text) {
    KelCString key(("MAIN_ARGV/" + std::to_string(++arguments_)).c_str());
    registry->setValue(key, KelCString(text.c_str()));
  }

  // A document with such content, as XML libraries write it.
  static std::string document(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore>\n" + content +
           "</OroDataStore>\n";
  }
  static std::string valueLine(const std::string& name, int value) {
    return "<value name=\"" + name + "\" type=\"integer\">" + std::to_string(value) + "</value>\n";
  }

  // A store with the default reader and writer and the settings a to e, integers of default 0.
  class Session {
   public:
    Session() : store(true, 5, 20) {
      for (const char* path : {"a", "b", "c", "d", "e"}) {
        store.CreateInt(path, 0, INT32_MIN, INT32_MAX, kSaved);
      }
    }
    bool set(const char* path, int32_t value) { return store.SetInt(nullptr, path, value); }
    int32_t get(const char* path) { return store.GetInt(path, nullptr); }
    bool load() { return store.Accept(store.GetReader()); }
    // The value that a start would find.
    int32_t loaded(const char* path) {
      store.AcceptPath(store.GetReader(), path);
      return get(path);
    }
    bool commit() { return store.CommitWriter(); }

    KelDataStore store;
  };

  TempFolder folder;
  AssertionLog assertions;
  FakeXml xml;
  FakeErrors* errors;            // the broker's
  FakeDirectories* directories;  // the broker's
  KelRegistry* registry;         // the broker's

 private:
  int arguments_ = 0;
};

}  // namespace tests

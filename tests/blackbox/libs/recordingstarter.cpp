// A library "initserver" with an application of its own, which notes each call that it gets as a
// line of the file "calls" in the current directory. The environment variable COWL_TEST_PLAN says
// what goes otherwise than well.

#include <cstdlib>
#include <fstream>
#include <string>

#include "components/kit/orocomponentrecord.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IHelpViewer.h"
#include "interfaces/IHelpVolume.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroAppStarter.h"
#include "interfaces/IOroClassRegistration.h"
#include "interfaces/IOroCompLangInitializer.h"
#include "interfaces/IOroDataReceiver.h"
#include "interfaces/IOroLanguageID.h"
#include "interfaces/IOroMManager.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"
#include "tests/gui/apps/main/double.h"

namespace {

constexpr GUID kComponent = {
    0x2D8F6A3B, 0x90C1, 0x4E57, {0x8B, 0x1D, 0x54, 0x3E, 0xA7, 0x60, 0xF2, 0x19}};
constexpr GUID kInitServerClass = {
    0x87B8EFFD, 0xA228, 0x495D, {0x96, 0xE0, 0xA5, 0x0F, 0xDB, 0xA4, 0x25, 0xA3}};
constexpr GUID kStarterClass = {
    0x5BE04C17, 0x6A2F, 0x4D93, {0x9E, 0x08, 0x71, 0xC5, 0x2B, 0xDF, 0x36, 0xA4}};
constexpr GUID kLanguageInitializerClass = {
    0x8C417E02, 0x3B5A, 0x4F6D, {0xA1, 0x97, 0x0E, 0x62, 0xD8, 0x4B, 0x35, 0xF0}};
constexpr const char* kLanguageInitializerText = "{8C417E02-3B5A-4F6D-A197-0E62D84B35F0}";
constexpr GUID kVolumeClass = {
    0x60EE8CA4, 0x39F8, 0x4CF1, {0xAB, 0x33, 0x8A, 0x2C, 0xAB, 0x41, 0x2B, 0x51}};
constexpr GUID kViewerClass = {
    0x0C9D5C8B, 0x341E, 0x4B42, {0x8F, 0xF2, 0x13, 0xCC, 0x34, 0xA4, 0xF3, 0x93}};

void note(const std::string& text) { std::ofstream("calls", std::ios::app) << text << '\n'; }

bool isPlanned(const char* plan) {
  const char* const planned = std::getenv("COWL_TEST_PLAN");
  return planned != nullptr && std::string(planned) == plan;
}

std::string registryText(const char* key) {
  const SPtr<Velmora::IOroRegistry> registry;
  KelCString owned(key);
  const KelCString* const value = registry ? registry->getValue(owned) : nullptr;
  return value != nullptr ? value->c_str() : "<absent>";
}

void setRegistryText(const char* key, const char* value) {
  const SPtr<Velmora::IOroRegistry> registry;
  KelCString owned(key);
  registry->setValue(owned, KelCString(value));
}

// Hears when the start writes the network's state.
struct NetworkReceiver : tests::Double<NetworkReceiver, IOroDataReceiver> {
  static constexpr const char* className() { return "NetworkReceiver"; }
  void OnIntChanged(const char* path, int32_t value) override {
    note(std::string(path) + " " + std::to_string(value));
  }
  void OnBlobChanged(const char*, const void*, int32_t) override {}
  void OnIntExChanged(const char*, int32_t, int32_t) override {}
  void OnOroStringChanged(const char*, const OroString&) override {}
  void OnStringChanged(const char*, const char*) override {}
  void OnFloatChanged(const char*, double) override {}
  void OnVoidFired(const char*) override {}
};

struct Starter : tests::Double<Starter, IOroAppStarter> {
  static constexpr const char* className() { return "Starter"; }
  void init(int32_t argc, const OroString* argv) override {
    std::string text = "starter init " + std::to_string(argc);
    for (int32_t i = 1; i < argc; ++i)
      text += std::string(" '") + OroString(argv[i]).toNarrow() + "'";
    note(text);
  }
  void initDone() override { note("starter initDone"); }
  int32_t start() override {
    note("starter start");
    return isPlanned("no start") ? 42 : 0;
  }
  int32_t run() override {
    note("starter run");
    return isPlanned("failed run") ? 7 : 0;
  }
  void shutDown() override { note("starter shutDown"); }
};

struct Language : tests::Double<Language, IOroLanguageID> {
  static constexpr const char* className() { return "Language"; }
  const KelCString& getLanguage() override { return code_; }
  void setLanguage(const KelCString& code) override {
    note(std::string("language ") + code.c_str());
    code_ = KelCString(code.c_str());
  }
  KelCString code_ = KelCString::empty();
};

struct LanguageInitializer : tests::Double<LanguageInitializer, IOroCompLangInitializer> {
  static constexpr const char* className() { return "LanguageInitializer"; }
  void initLanguage(IOroLanguageID* language) override {
    note(std::string("component language ") + language->getLanguage().c_str());
  }
};

struct Volume : tests::Double<Volume, IHelpVolume> {
  static constexpr const char* className() { return "Volume"; }
  void open(const OroPath& path) override {
    note(std::string("help volume ") + path.fileName().toNarrow());
  }
  void topicAddress(OroString&, const KelCString&) override {}
};

struct Viewer : tests::Double<Viewer, IHelpViewer> {
  static constexpr const char* className() { return "Viewer"; }
  Viewer() { note("help viewer"); }
  void show(const OroString&) override {}
};

struct MemoryManager : tests::Double<MemoryManager, OroMM::IOroMManager, IMemoryInit> {
  static constexpr const char* className() { return "MemoryManager"; }
  void* AllocBlock(int32_t, bool) override { return nullptr; }
  void FreeBlock(void*) override {}
  bool ReleaseMemory() override { return false; }
  int64_t CoreLimit() override { return 0; }
  int64_t SwapLimit() override { return 0; }
  int64_t SwapPages() override { return 0; }
  int64_t CorePages() override { return 0; }
  void end() override { note("memory manager end"); }
};

struct InitServer : tests::Double<InitServer, IKelInitServer> {
  static constexpr const char* className() { return "InitServer"; }
  InitServer() { note("init server"); }
  ~InitServer() override { note("init server gone"); }
  void setClassRegistration(IOroClassRegistration* registration) override {
    note(registration == oroBroker()->classRegistration() ? "setClassRegistration"
                                                          : "setClassRegistration of another");
    registration_ = registration;
  }
  bool readDescription(int32_t options) override {
    note("readDescription " + std::to_string(options));
    IOroObjBroker& broker = *oroBroker();
    // Of the all-zero component, which is this library.
    if (!isPlanned("no starter")) {
      registration_->registerClass(kStarterClass, GUID{}, {}, KelCString("Starter"));
      broker.registerInterface(KelCString("IOroAppStarter"), kStarterClass);
    }
    registration_->registerClass(kViewerClass, GUID{}, {}, KelCString("Viewer"));
    registration_->registerClass(kVolumeClass, GUID{}, {}, KelCString("Volume"));
    registration_->registerClass(kLanguageInitializerClass, GUID{}, {}, KelCString("Initializer"));
    broker.registerService(KelCString("IOroMManager"), new MemoryManager);
    broker.registerService(KelCString("IOroLanguageID"), new Language);
    setRegistryText("I18N/recordingstarter", kLanguageInitializerText);
    setRegistryText("HELP/chm/manual", "manual.chm");
    setRegistryText("HELP/chm/missing", "missing.chm");
    watchNetwork();
    return !isPlanned("no description");
  }
  void finish() override { note("finish"); }

 private:
  static void watchNetwork() {
    const SPtr<IDataStore> store;
    store->CreateDirectory("Network");
    store->CreateInt("Network/Internal", 7, 0, 10, 0);
    static NetworkReceiver receiver;
    store->AddReceiver("Network/Internal", &receiver);
  }

  IOroClassRegistration* registration_ = nullptr;
};

void started() {
  note("component, argument '" + registryText("MAIN_ARGV/1") + "', build '" +
       registryText("PRODUCT_INFO/Build Number") + "'");
  std::string text = "services";
  for (const char* name :
       {"IOroComponentManager", "IOroRegistry", "IProductInfo", "IDataStore", "IImageStore",
        "IOroTranslatorService", "IOroCustomTranslatorRegistry", "IHelpService",
        "IBucketMemoryPool", "IOroTranslator", "IFileUtil", "IOroHeapMemoryUsage",
        "IOroErrorService", "IOroDirService", "IOroNetworkService"}) {
    void* found = nullptr;
    oroGetService(KelCString::borrow(name), &found);
    if (found == nullptr) text += std::string(" without ") + name;
  }
  note(text);
}

void stopping() { note("component shutDown"); }

constexpr OroClassEntry kClasses[] = {
    {kInitServerClass, "InitServer", OroSharing::eachNew, oroMake<InitServer>},
    {kStarterClass, "Starter", OroSharing::shared, oroMake<Starter>},
    {kLanguageInitializerClass, "Initializer", OroSharing::eachNew, oroMake<LanguageInitializer>},
    {kVolumeClass, "Volume", OroSharing::eachNew, oroMake<Volume>},
    {kViewerClass, "Viewer", OroSharing::eachNew, oroMake<Viewer>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"recordingstarter", kComponent, kClasses, started,
                                            stopping};

// The library "blackbox_session": an application that does to its settings what its arguments say,
// in their order, so that a test can start a session, end it in any way and look at the next one.
//
//   create           declares the settings below "Session" and fetches their stored values
//   set:NAME=VALUE   changes one of them; NAME is Number, Ratio, Name, Title or State
//   show             writes the values to shown.txt in the current directory, a line for each
//   kill             ends the process as "kill -9" does, with nothing flushed and nobody told
#include <fstream>
#include <string>

#include "components/kit/orocomponentrecord.h"
#include "interfaces/IDataStore.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IOroAppStarter.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"
#include "tests/blackbox/killself.h"

namespace {

constexpr uint32_t kFlags = IKelDataItem::kPersistent | IKelDataItem::kJournalled;
constexpr int32_t kCapacity = 200;
constexpr const char* kPaths[] = {"Session/Number", "Session/Ratio", "Session/Name",
                                  "Session/Title", "Session/State"};
// Behind each wide text, so that it is more than the narrow arguments of a process can hold.
constexpr const char16_t* kWideTail = u" \u00FC\u20AC\r\n <b> & more\t";

void createSettings(IDataStore& store) {
  store.CreateDirectory("Session");
  store.CreateInt("Session/Number", -1, -1000000, 1000000, kFlags);
  store.CreateFloat("Session/Ratio", 0.5, -1e300, 1e300, kFlags);
  store.CreateString("Session/Name", kCapacity, "nobody", kFlags);
  store.CreateOroString("Session/Title", kCapacity, OroString("none"), kFlags);
  store.CreateBlob("Session/State", 1, "?", kFlags);
  for (const char* const path : kPaths) store.AcceptPath(store.GetReader(), path);
}

void set(IDataStore& store, const std::string& name, const std::string& value) {
  const std::string path = "Session/" + name;
  if (name == "Number") store.SetInt(nullptr, path.c_str(), std::stoi(value));
  if (name == "Ratio") store.SetFloat(nullptr, path.c_str(), std::stod(value));
  if (name == "Name") store.SetString(nullptr, path.c_str(), value.c_str());
  if (name == "Title") {
    OroString text(value.c_str());
    text.append(OroString(kWideTail));
    store.SetOroString(nullptr, path.c_str(), text);
  }
  if (name == "State") {
    store.SetBlob(nullptr, path.c_str(), value.data(), static_cast<int32_t>(value.size()));
  }
}

void show(IDataStore& store) {
  std::ofstream out("shown.txt", std::ios::binary);
  int32_t size = 0;
  const auto* const state = static_cast<const char*>(store.GetBlob("Session/State", size, nullptr));
  out << "Number=" << store.GetInt("Session/Number", nullptr) << '\n'
      << "Ratio=" << store.GetFloat("Session/Ratio", nullptr) << '\n'
      << "Name=" << store.GetString("Session/Name", nullptr) << '\n'
      << "Title=" << store.GetOroString("Session/Title", nullptr).toUtf8() << '\n'
      << "State=" << std::string(state, static_cast<size_t>(size)) << '\n'
      << "userconfig=" << oroShownPath(oroDirPath("userconfig")).toUtf8() << '\n';
}

class SessionStarter : public IOroAppStarter {
 public:
  static constexpr const char* className() { return "SessionStarter"; }
  using Offers = OroOffers<SessionStarter, IOroAppStarter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void init(int32_t argc, const OroString* argv) override {
    argc_ = argc;
    argv_ = argv;
  }
  void initDone() override {}
  int32_t start() override { return 0; }
  int32_t run() override {
    const SPtr<IDataStore> store;
    if (!store) return 1;
    for (int32_t i = 1; i < argc_; ++i) obey(*store, argv_[i].toNarrow());
    return 0;
  }
  void shutDown() override {}

 private:
  static void obey(IDataStore& store, const std::string& command) {
    if (command == "create") createSettings(store);
    if (command == "show") show(store);
    if (command == "kill") tests::killSelf();
    if (command.starts_with("set:")) {
      const size_t equals = command.find('=');
      set(store, command.substr(4, equals - 4), command.substr(equals + 1));
    }
  }

  int32_t argc_ = 0;
  const OroString* argv_ = nullptr;
};

constexpr GUID kComponentId = {
    0x51E6A0B3, 0x2C7D, 0x4F91, {0x8E, 0x5A, 0x07, 0xB4, 0x39, 0xD2, 0x6C, 0x18}};

constexpr OroClassEntry kClasses[] = {
    {{0xC83F5D17, 0x6B02, 0x4AE4, {0x97, 0x3D, 0xF1, 0x20, 0x8A, 0x4E, 0x5B, 0xD9}},
     SessionStarter::className(),
     OroSharing::shared,
     oroMake<SessionStarter>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"blackbox_session", kComponentId, kClasses};

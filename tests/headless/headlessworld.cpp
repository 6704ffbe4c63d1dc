#include "tests/headless/headlessworld.h"

#include "orobasictypes/testaccess.h"
#include "platform/crash.h"
#include "platform/messagebox.h"
#include "platform/text.h"

namespace tests {
namespace {

constexpr const char* kLogFile = "GUI/CommandLine Log File";
constexpr const char* kWindow = "GUI/CommandLine Progress Window";

int rememberBox(const std::u16string&, const std::u16string& text, unsigned) {
  HeadlessWorld::boxText() += text;
  return platform::answerOk;
}

}  // namespace

std::u16string& HeadlessWorld::boxText() {
  static std::u16string text;
  return text;
}

HeadlessWorld::HeadlessWorld()
    : broker_(std::make_unique<FakeBroker>()),
      store_(new KelDataStore(true, 50, 3000)),
      errors_(new ErrorService(true)) {
  platform::messageBoxHook = rememberBox;
  boxText().clear();
  broker_->registerService(KelCString::borrow("IDataStore"), store_.get());
  broker_->registerService(KelCString::borrow("IOroErrorService"), errors_.get());
  store_->CreateDirectory("GUI");
  store_->CreateOroString(kLogFile, 32767, OroString::empty(), 0);
  store_->CreateInt(kWindow, 0, 0, 1, 0);
}

HeadlessWorld::~HeadlessWorld() {
  headlesstest::forgetService();
  broker_.reset();
  errors_ = nullptr;
  store_ = nullptr;
  testaccess::resetModuleTranslator();
  platform::messageBoxHook = nullptr;
  platform::removeCrashHandler();
}

void HeadlessWorld::setLogFile(const OroString& text) {
  store_->SetOroString(nullptr, kLogFile, text);
}

void HeadlessWorld::setLogFile(const std::string& utf8) {
  setLogFile(OroString(platform::fromSystem(utf8).c_str()));
}

void HeadlessWorld::setProgressWindow(int value) { store_->SetInt(nullptr, kWindow, value); }

}  // namespace tests

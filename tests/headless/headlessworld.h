#pragma once

// A process with a broker, a settings store and an error service for one test of the headless
// service, and clean again after it.

#include <memory>
#include <string>

#include "base/basic/keldatastore.h"
#include "headless/testaccess.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orostring.h"
#include "services/errorservice.h"
#include "tests/support/fakebroker.h"

namespace tests {

class HeadlessWorld {
 public:
  HeadlessWorld();
  ~HeadlessWorld();

  tests::FakeBroker& broker() { return *broker_; }
  ErrorService& errors() { return *errors_; }
  /// What the message box showed; it never blocks.
  static std::u16string& boxText();

  void setLogFile(const OroString& text);
  void setLogFile(const std::string& utf8);
  void setProgressWindow(int value);

 private:
  std::unique_ptr<FakeBroker> broker_;
  IPtr<KelDataStore> store_;
  IPtr<ErrorService> errors_;
};

}  // namespace tests

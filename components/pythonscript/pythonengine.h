// PythonEngine: runs scripts written in Python.
//
// A script that fails leaves its traceback in the setting "Python/Error String"; it is also
// reported through the error service and stands on standard error. sys.exit() with a status other
// than 0 is a failure. The setting "Python/Interrupted" is 1 when the user's interrupt ended the
// script, else 0. Main thread only.
#pragma once

#include "components/pythonscript/pythoninterpreter.h"
#include "interfaces/IScriptEngine.h"
#include "orobasictypes/orooffers.h"

class PythonEngine : public IScriptEngine {
 public:
  static constexpr const char* className() { return "PythonEngine"; }
  using Offers = OroOffers<PythonEngine, IScriptEngine>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // A larger file is no script.
  static constexpr size_t kLargestScript = size_t{16} << 20;  // bytes

  // `arguments` are split as a shell does and stand in sys.argv behind the file.
  void runScript(const OroString& file, const OroString& arguments) override;
  // The host says so before it saves. A script's error ends with the script, so there is nothing
  // to change.
  void setContinue(int32_t) override {}

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  int32_t unusedSlot7() override { return 0; }
  int32_t unusedSlot8() override { return 0; }
  int32_t unusedSlot9() override { return 0; }
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }
  int32_t unusedSlot13() override { return 0; }

 private:
  PythonEnd run(const OroString& file, const OroString& arguments);

  PythonInterpreter interpreter_;
};

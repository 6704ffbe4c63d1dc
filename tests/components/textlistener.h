// TextListener: keeps the texts that the error service reports, for tests of what a person is
// told. Main thread.
#pragma once

#include <string>
#include <vector>

#include "interfaces/IOroErrorListener.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

namespace tests {

class TextListener : public IOroErrorListener {
 public:
  static constexpr const char* className() { return "TextListener"; }
  using Offers = OroOffers<TextListener, IOroErrorListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void onError(const OroString& text, const int32_t* severity, const KelCString&) override {
    texts.push_back((*severity == 1 ? "error: " : "warning: ") + std::string(text.toUtf8()));
  }

  std::vector<std::string> texts;  // each behind "error: " or "warning: "
};

}  // namespace tests

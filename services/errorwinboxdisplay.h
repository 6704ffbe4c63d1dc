// ErrorWinBoxDisplay: the error listener that shows a modal message box.
//
// The error service makes one for an interactive session and holds it; the box blocks whoever
// reports, and so all other reporters, until it is closed.
#pragma once

#include <cstdint>

#include "interfaces/IOroErrorListener.h"
#include "orobasictypes/orooffers.h"

class ErrorWinBoxDisplay : public IOroErrorListener {
 public:
  static constexpr const char* className() { return "ErrorWinBoxDisplay"; }

  // With `errorsOnly` warnings and unknown severities open no box.
  explicit ErrorWinBoxDisplay(bool errorsOnly) : errorsOnly_(errorsOnly) {}

  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override;

  using Offers = OroOffers<ErrorWinBoxDisplay, IOroErrorListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  const bool errorsOnly_;
};

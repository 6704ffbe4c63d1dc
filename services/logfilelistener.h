// LogfileListener: the error listener that writes each report as a line of a text file.
//
// It is made at start when an error log is asked for, and the error service holds it. The line is
// the text alone in its narrow form, which without the text service is its ASCII characters. A
// file that cannot be opened is no failure: nothing is written then.
#pragma once

#include <cstdint>
#include <memory>

#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroLogfileListener.h"
#include "orobasictypes/orooffers.h"

class OroOfstream;

class LogfileListener : public IOroErrorListener, public IOroLogfileListener {
 public:
  static constexpr const char* className() { return "LogfileListener"; }

  LogfileListener();
  ~LogfileListener() override;
  LogfileListener(const LogfileListener&) = delete;
  LogfileListener& operator=(const LogfileListener&) = delete;

  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override;
  void setLogFile(const OroPath& path) override;

  using Offers = OroOffers<LogfileListener, IOroErrorListener, IOroLogfileListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  bool opened_ = false;                  // a file was chosen, whether or not it could be opened
  std::unique_ptr<OroOfstream> stream_;  // null until a file is chosen
};

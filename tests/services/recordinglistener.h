// RecordingListener: an error listener that keeps what it heard, in a list that outlives it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "interfaces/IOroErrorListener.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"

namespace tests {

struct HeardError {
  std::string listener;
  std::string text;
  int32_t severity;
  std::string detail;
  const int32_t* severityAddress;
};

class RecordingListener : public IOroErrorListener {
 public:
  static constexpr const char* className() { return "RecordingListener"; }
  using Offers = OroOffers<RecordingListener, IOroErrorListener>;

  RecordingListener(std::vector<HeardError>& heard, std::string name)
      : heard_(heard), name_(std::move(name)) {}
  // Its death is heard as well.
  ~RecordingListener() override { heard_.push_back({name_, "(destroyed)", -1, "", nullptr}); }

  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override {
    heard_.push_back({name_, text.toUtf8(), *severity, detail.c_str(), severity});
    if (during) during();
  }

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  std::function<void()> during;  // runs inside onError

 private:
  std::vector<HeardError>& heard_;
  std::string name_;
};

}  // namespace tests

// Services that libraries and the loader ask for: an error service that remembers, a journal.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "tests/framework/libs/itestjournal.h"

namespace tests {

class FakeErrors : public IOroErrorService {
 public:
  static constexpr const char* className() { return "FakeErrors"; }
  using Offers = OroOffers<FakeErrors, IOroErrorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void addListener(IOroErrorListener*) override {}
  void removeListener(IOroErrorListener*) override {}
  void report(const OroString& text, int32_t severity, const KelCString& detail) override {
    texts.push_back(text.toNarrow());
    severities.push_back(severity);
    details.push_back(detail.c_str());
  }
  void setFlag(const KelCString&, bool) override {}
  bool getFlag(const KelCString&) override { return false; }
  void removeWinBoxDisplay() override {}
  void pushContext(const OroString&) override {}
  void popContext() override {}
  void getContext(OroStringArray&) override {}
  void clearContext() override {}
  bool setActive(bool) override { return true; }
  bool isActive() override { return true; }

  std::vector<std::string> texts;
  std::vector<int32_t> severities;
  std::vector<std::string> details;
};

class FakeJournal : public ITestJournal {
 public:
  static constexpr const char* className() { return "FakeJournal"; }
  using Offers = OroOffers<FakeJournal, ITestJournal>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void note(const char* text) override {
    const std::lock_guard guard(lock_);
    notes.push_back(text);
  }

  std::vector<std::string> notes;

 private:
  std::mutex lock_;
};

}  // namespace tests

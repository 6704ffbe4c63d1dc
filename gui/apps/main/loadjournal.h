// LoadJournal: which component libraries the run has loaded, or tried to, and the words about those
// that are loaded and are no component of ours.
//
//   const IPtr<LoadJournal> journal(new LoadJournal);
//   const LoadJournal::Listening listening(*journal);
//
// A library stands in it once, however often it is asked for, and is told once. Any thread.
#pragma once

#include <vector>

#include "framework/componentload.h"
#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/orooffers.h"
#include "platform/sync.h"

class LoadJournal : public IOroLoadJournal {
 public:
  static constexpr const char* className() { return "LoadJournal"; }
  using Offers = OroOffers<LoadJournal, IOroLoadJournal>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t count() override;
  bool load(int32_t index, OroString& path, int32_t& step, int64_t& nanoseconds) override;

  // For its life the journal hears of each load of the process.
  class Listening {
   public:
    explicit Listening(LoadJournal& journal);
    ~Listening();
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
  };

 private:
  bool enter(const ComponentLoad& load);
  static void report(const ComponentLoad& load);

  platform::CriticalSection lock_;  // guards loads_
  std::vector<ComponentLoad> loads_;
};

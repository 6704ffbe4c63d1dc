// RecordingReceiver: writes down what it hears, and then does what the test wants of a handler.
//
//   tests::RecordingReceiver receiver;
//   item.AddReceiver(&receiver);
//   item.Update(5, nullptr, false);
//   EXPECT_THAT(receiver.calls, ElementsAre("int A/b 5"));
//
// With a shared log several receivers write into one list, each line behind the receiver's name.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/orooffers.h"

namespace tests {

using Log = std::vector<std::string>;

class RecordingReceiver : public IOroDataReceiver {
 public:
  static constexpr const char* className() { return "RecordingReceiver"; }
  using Offers = OroOffers<RecordingReceiver, IOroDataReceiver>;

  RecordingReceiver() = default;
  RecordingReceiver(std::string name, Log& shared) : name_(std::move(name)), shared_(&shared) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void OnBlobChanged(const char* path, const void* data, int32_t size) override;
  void OnIntExChanged(const char* path, int32_t value, int32_t extra) override;
  void OnOroStringChanged(const char* path, const OroString& text) override;
  void OnStringChanged(const char* path, const char* text) override;
  void OnFloatChanged(const char* path, double value) override;
  void OnIntChanged(const char* path, int32_t value) override;
  void OnVoidFired(const char* path) override;

  Log calls;
  std::function<void()> handler;  // runs in each call, after it was written down

 private:
  void record(const std::string& call);

  std::string name_;
  Log* shared_ = nullptr;
};

}  // namespace tests

// A broker of this process over a manager without libraries, for the tests of the broker.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "framework/oroobjectbroker.h"
#include "framework/testaccess.h"
#include "orobasictypes/oromodule.h"
#include "tests/framework/fakes.h"

namespace tests {

class BrokerFixture : public testing::Test {
 protected:
  static constexpr GUID kComponent = idOf(0xC0);
  static constexpr GUID kClass = idOf(0xA1);
  static constexpr GUID kOtherClass = idOf(0xA2);

  BrokerFixture() {
    FakeObject::alive = 0;
    testaccess::resetDuplicateCount();
    broker_.emplace(&manager_);
    oroSetBroker(&*broker_);
    manager_.components[kComponent] = &component_;
  }
  ~BrokerFixture() override { broker_.reset(); }

  static KelCString name(const char* text) { return KelCString::borrow(text); }
  // Makes the class known, with the component behind it giving what `give` makes.
  void provide(int32_t status, std::function<IOroUnknown*()> give) {
    GUID known;
    if (broker_->getComponentId(kClass, known) == 0)
      broker_->registerClass(kClass, kComponent, {}, name("KelClass"));
    component_.status = status;
    component_.give = std::move(give);
  }
  // Any pointer, to see whether an operation writes to its output.
  static void* untouched() { return reinterpret_cast<void*>(0x40); }

  FakeManager manager_;
  FakeComponent component_;
  std::optional<OroObjectBroker> broker_;
};

}  // namespace tests

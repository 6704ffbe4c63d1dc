// The process as far as the component manager needs it: a manager, a broker over it, and the
// services registry, errors and journal.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/kelcomponentmanager.h"
#include "framework/kelregistry.h"
#include "framework/oroobjectbroker.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/testaccess.h"
#include "tests/framework/fakeservices.h"
#include "tests/framework/libs/testids.h"
#include "tests/framework/testlibrary.h"

namespace tests {

class ManagerFixture : public testing::Test {
 protected:
  ManagerFixture() {
    oroSetBroker(broker_.get());
    for (IOroUnknown* const kept :
         {static_cast<IOroUnknown*>(&registry_), static_cast<IOroUnknown*>(&errors_),
          static_cast<IOroUnknown*>(&journal_)}) {
      kept->addRef();  // the broker must not delete what is the fixture's
    }
    publish("IOroRegistry", registry_);
    publish("IOroErrorService", errors_);
    publish("ITestJournal", journal_);
    manager_->setBroker(broker_.get());
  }
  // Components go before the services that they tell.
  ~ManagerFixture() override {
    manager_.reset();
    broker_.reset();
    testaccess::resetModule();
  }

  // As in the host, where neither ends: for tests that publish objects of a library.
  void keepForGood() {
    static auto& managers = *new std::vector<std::unique_ptr<KelComponentManager>>;
    static auto& brokers = *new std::vector<std::unique_ptr<OroObjectBroker>>;
    managers.push_back(std::move(manager_));
    brokers.push_back(std::move(broker_));
  }

  void publish(const char* name, IOroUnknown& service) {
    broker_->registerService(KelCString::borrow(name), &service);
  }
  static KelCString group(const char* name) { return KelCString(name); }
  void known(const GUID& id, const char* library, const char* groupName = "") {
    manager_->registerComponent(testLibrary(library), id, KelCString(library), group(groupName));
  }
  IOroComponent* component(const GUID& id, const char* groupName = "") {
    IOroComponent* found = nullptr;
    manager_->getComponent(id, group(groupName), &found);
    return found;
  }
  void setRegistry(const std::string& key, const char* value) {
    KelCString text(key.c_str());
    registry_.setValue(text, KelCString(value));
  }

  KelRegistry registry_;
  FakeErrors errors_;
  FakeJournal journal_;
  std::unique_ptr<KelComponentManager> manager_ = std::make_unique<KelComponentManager>();
  std::unique_ptr<OroObjectBroker> broker_ = std::make_unique<OroObjectBroker>(manager_.get());
};

}  // namespace tests

#include "gui/apps/cowl/orocomponentcontainer.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/kelcomponentmanager.h"
#include "interfaces/IOroComponent.h"
#include "orobasictypes/orooffers.h"

namespace {

struct Record {
  int initialised = 0;
  int ended = 0;
  IOroObjBroker* broker = nullptr;
  OroComponentContainer* container = nullptr;
};

class RecordingComponent : public IOroComponent {
 public:
  static constexpr const char* className() { return "RecordingComponent"; }
  using Offers = OroOffers<RecordingComponent, IOroComponent>;

  explicit RecordingComponent(Record& record) : record_(record) {}
  ~RecordingComponent() override { ++record_.ended; }
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  void initialise(IOroObjBroker* broker) override {
    ++record_.initialised;
    record_.broker = broker;
    if (record_.container != nullptr) record_.container->component();
  }
  void shutDown() override {}
  int32_t getClassObject(const GUID&, IOroUnknown**) override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }

 private:
  Record& record_;
};

class ComponentContainer : public testing::Test {
 protected:
  Record record_;
  KelComponentManager manager_;
  IOroObjBroker* const broker_ = reinterpret_cast<IOroObjBroker*>(&record_);  // never called
  RecordingComponent* const component_ = new RecordingComponent(record_);
  std::unique_ptr<OroComponentContainer> container_ =
      std::make_unique<OroComponentContainer>(component_, &manager_, broker_);
};

TEST_F(ComponentContainer, MakesItsComponentReadyAtTheFirstRequest) {
  EXPECT_EQ(record_.initialised, 0);
  EXPECT_EQ(container_->component(), component_);
  EXPECT_EQ(container_->component(), component_);
  EXPECT_EQ(record_.initialised, 1);
  EXPECT_EQ(record_.broker, broker_);
  EXPECT_EQ(container_->componentManager(), &manager_);
}

TEST_F(ComponentContainer, AComponentMayAskForItself) {
  record_.container = container_.get();
  EXPECT_EQ(container_->component(), component_);
  EXPECT_EQ(record_.initialised, 1);
}

TEST_F(ComponentContainer, OwnsItsComponent) {
  container_.reset();
  EXPECT_EQ(record_.ended, 1);
  EXPECT_EQ(record_.initialised, 0);
}

TEST_F(ComponentContainer, IsAnEmptyBlockOfBytesThatNobodyCanAskFor) {
  EXPECT_EQ(container_->size(), 0u);
  EXPECT_EQ(container_->data(), nullptr);
  EXPECT_EQ(oroQuery<IOroClcBinary>(container_.get()), nullptr);
}

TEST_F(ComponentContainer, AnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQueryClass<OroComponentContainer>(container_.get()), container_.get());
  EXPECT_EQ(oroQuery<IOroComponentContainer>(container_.get()), container_.get());
}

TEST(ComponentContainerManaged, TheManagerMakesItReadyWhenItAsks) {
  Record record;
  {
    KelComponentManager manager;
    auto* const container =
        new OroComponentContainer(new RecordingComponent(record), &manager, nullptr);
    EXPECT_TRUE(manager.registerContainer(GUID{1, 2, 3, {}}, KelCString(), container));
    EXPECT_EQ(record.initialised, 0);
    IOroComponent* found = nullptr;
    EXPECT_TRUE(manager.getComponent(GUID{1, 2, 3, {}}, KelCString(), &found));
    EXPECT_EQ(record.initialised, 1);
  }
  EXPECT_EQ(record.ended, 1);
}

}  // namespace

#include "headless/attachheadless.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "headless/kelmockservice.h"
#include "orobasictypes/sptr.h"
#include "tests/blackbox/childprocess.h"
#include "tests/headless/headlessworld.h"
#include "tests/tempfolder.h"

namespace {

// A real service of a component, as far as its name goes.
class RealService : public IOroUnknown {
 public:
  static constexpr const char* className() { return "RealService"; }
  void queryInterface(const char* name, void* out) override {
    OroOffers<RealService>::query(*this, name, out);
  }
  const char* getClassName() const override { return className(); }
};

constexpr const char* kNames[] = {"IInfoBar", "IGuiBusyState", "IGuiStatusBar", "IGuiCursor",
                                  "IGuiThemeMgr"};

class AttachHeadless : public testing::Test {
 protected:
  bool served(const char* name) { return world_.broker().hasService(KelCString::borrow(name)); }
  bool servedByHeadless(const char* name) {
    void* found = nullptr;
    oroGetService(KelCString::borrow(name), &found);
    return found != nullptr;
  }
  void registerReal(const char* name) {
    world_.broker().registerService(KelCString::borrow(name), new RealService());
  }
  std::string log() { return tests::plainLines(folder_.read("log")); }

  tests::TempFolder folder_;
  tests::HeadlessWorld world_;
};

TEST_F(AttachHeadless, PublishesFiveNamesAndNoOther) {
  EXPECT_TRUE(attachHeadlessService());
  for (const char* name : kNames) EXPECT_TRUE(servedByHeadless(name)) << name;
  EXPECT_FALSE(served("IInfoBar2"));
  EXPECT_FALSE(served("IOroProgress"));
  EXPECT_FALSE(served("IOroErrorListener"));
  SPtr<IInfoBar> bar;
  EXPECT_EQ(oroQueryClass<KelMockService>(bar.get()), headlesstest::attachedService());
}

TEST_F(AttachHeadless, GivesProgressThroughTheBusyState) {
  attachHeadlessService();
  SPtr<IGuiBusyState> busy;
  IOroProgress* progress = oroQuery<IOroProgress>(busy.get());
  ASSERT_NE(progress, nullptr);
  EXPECT_TRUE(progress->Update(0.5f));
}

TEST_F(AttachHeadless, ARealServiceWinsNameByName) {
  registerReal("IGuiCursor");
  attachHeadlessService();
  EXPECT_FALSE(servedByHeadless("IGuiCursor"));
  EXPECT_TRUE(servedByHeadless("IInfoBar"));
}

TEST_F(AttachHeadless, MakesNothingWhenAllFiveAreServed) {
  for (const char* name : kNames) registerReal(name);
  world_.setLogFile(folder_.file("log").string());
  EXPECT_TRUE(attachHeadlessService());
  EXPECT_EQ(headlesstest::attachedService(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(folder_.file("log")));
  world_.errors().report(OroString("to the box"), 1, KelCString());
  EXPECT_NE(tests::HeadlessWorld::boxText(), u"");
  EXPECT_TRUE(detachHeadlessService());
}

TEST_F(AttachHeadless, RecordsReportsInPlaceOfTheMessageBox) {
  world_.setLogFile(folder_.file("log").string());
  world_.errors().report(OroString("early"), 1, KelCString());
  EXPECT_EQ(tests::HeadlessWorld::boxText(), u"ERROR:\nearly");
  attachHeadlessService();
  world_.errors().report(OroString("bad"), 1, KelCString());
  world_.errors().report(OroString("odd"), 0, KelCString());
  EXPECT_EQ(tests::HeadlessWorld::boxText(), u"ERROR:\nearly");
  detachHeadlessService();
  world_.errors().report(OroString("late"), 1, KelCString());
  EXPECT_EQ(tests::HeadlessWorld::boxText(), u"ERROR:\nearly");
  EXPECT_EQ(log(), "<log>\n<Error=\"bad\"/>\n<Warning=\"odd\"/>\n</log>\n");
}

TEST_F(AttachHeadless, TheObjectStaysPublishedAfterDetachAndDropsWhatItIsTold) {
  world_.setLogFile(folder_.file("log").string());
  attachHeadlessService();
  detachHeadlessService();
  detachHeadlessService();
  SPtr<IInfoBar> bar;
  ASSERT_TRUE(bar);
  bar->setPercent(5);
  EXPECT_EQ(log(), "<log>\n</log>\n");
}

TEST_F(AttachHeadless, ASecondAttachListensAgainWithClosedSinks) {
  world_.setLogFile(folder_.file("log").string());
  attachHeadlessService();
  KelMockService* first = headlesstest::attachedService();
  detachHeadlessService();
  attachHeadlessService();
  EXPECT_EQ(headlesstest::attachedService(), first);
  world_.errors().report(OroString("again"), 1, KelCString());
  EXPECT_EQ(log(), "<log>\n</log>\n");
  const int32_t held = first->refCount();
  detachHeadlessService();
  EXPECT_EQ(first->refCount(), held - 1);  // the listener's reference
}

TEST_F(AttachHeadless, AttachingTwiceListensOnce) {
  world_.setLogFile(folder_.file("log").string());
  attachHeadlessService();
  attachHeadlessService();
  world_.errors().report(OroString("once"), 1, KelCString());
  detachHeadlessService();
  EXPECT_EQ(log(), "<log>\n<Error=\"once\"/>\n</log>\n");
}

TEST(AttachHeadlessAlone, DoesNothingWithoutABroker) {
  EXPECT_TRUE(attachHeadlessService());
  EXPECT_EQ(headlesstest::attachedService(), nullptr);
  EXPECT_TRUE(detachHeadlessService());
}

}  // namespace

// OroString with and without the service for locale-aware text.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orowildcard.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::borrowed;
using tests::units;

// Answers unlike the plain rules everywhere, so that it shows who was asked.
class FakeStrSupport : public IOroStrSupport {
 public:
  static constexpr const char* className() { return "FakeStrSupport"; }
  using Offers = OroOffers<FakeStrSupport, IOroStrSupport>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t unusedSlot1() override { return 0; }
  void toNarrow(KelCString& out, const OroString& text) override {
    out = KelCString("<", OroString(text.length()).toUtf8(), ">");
  }
  int32_t compare(const OroString& left, const OroString& right) override {
    return -17 * left.compareOrdinal(right);
  }
  bool isSpace(char16_t unit) override { return unit == u'_'; }
  bool isDigit(char16_t unit) override { return unit == u'\u0663'; }
  bool contains(const OroString&, const OroString& part, bool caseSensitive) override {
    return part.isEmpty() && caseSensitive;
  }
  void stripSpace(OroString& text) override { text.append("|stripped"); }
  void normalize(OroString& text) override { text.append("_normal"); }
  void toLower(OroString& text) override { text.append("|low"); }
  void toUpper(OroString& text) override { text.append("|up"); }
};

class OroStringSupport : public testing::Test {
 protected:
  OroStringSupport() { testaccess::resetStrSupport(); }
  ~OroStringSupport() override { testaccess::resetStrSupport(); }

  void publish() { broker_.registerService(KelCString::borrow("IOroStrSupport"), support_); }

  tests::FakeBroker broker_;
  FakeStrSupport* const support_ = new FakeStrSupport;
  IPtr<IOroStrSupport> keep_{support_};
};

TEST_F(OroStringSupport, OperationsStandInTheirFixedOrder) {
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::unusedSlot1), 1);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::toNarrow), 2);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::compare), 3);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::isSpace), 4);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::isDigit), 5);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::contains), 6);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::stripSpace), 7);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::normalize), 8);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::toLower), 9);
  EXPECT_EQ(tests::slotNumber(&IOroStrSupport::toUpper), 10);
}

TEST_F(OroStringSupport, NarrowTextComesFromTheService) {
  publish();
  OroString text(u"caf\u00E9");
  EXPECT_STREQ(text.toNarrow(), "<4>");
  text.append(OroString(std::string(20, 'x').c_str()));
  EXPECT_STREQ(text.toNarrow(), "<24>");
  EXPECT_STREQ(OroString(u"abc", "own").toNarrow(), "own") << "a borrowed form needs nobody";
  EXPECT_STREQ(OroString().toNarrow(), "");
}

TEST_F(OroStringSupport, OrderComesFromTheServiceButNotTheOrdinalOne) {
  publish();
  EXPECT_TRUE(borrowed(u"b") < borrowed(u"a"));
  EXPECT_FALSE(borrowed(u"b") > borrowed(u"a"));
  EXPECT_TRUE(borrowed(u"a") > borrowed(u"b"));
  EXPECT_EQ(borrowed(u"b").compareOrdinal(borrowed(u"a")), 1);
}

TEST_F(OroStringSupport, ClassesOfUnitsComeFromTheServiceInsideTheText) {
  publish();
  const OroString text = borrowed(u"_ 1\u0663");
  EXPECT_TRUE(text.isSpace(0));
  EXPECT_FALSE(text.isSpace(1));
  EXPECT_FALSE(text.isDigit(2));
  EXPECT_TRUE(text.isDigit(3));
  EXPECT_FALSE(text.isSpace(4));
  EXPECT_FALSE(text.isDigit(-1));
}

TEST_F(OroStringSupport, ContainsAsksTheServiceAlone) {
  publish();
  EXPECT_TRUE(borrowed(u"abc").contains(OroString::empty(), true));
  EXPECT_FALSE(borrowed(u"abc").contains(OroString::empty(), false));
  EXPECT_FALSE(borrowed(u"abc").contains(borrowed(u"b"), true));
}

TEST_F(OroStringSupport, EditsAreDoneOnACopyOfItsOwn) {
  publish();
  const OroString text(u"Ab", "Ab");
  EXPECT_EQ(units(text.toLower()), u"Ab|low");
  EXPECT_EQ(units(text.toUpper()), u"Ab|up");
  EXPECT_EQ(units(text.stripSpace()), u"Ab|stripped");
  EXPECT_EQ(units(text), u"Ab");
  EXPECT_TRUE(OroString().toLower().isEmpty());
}

TEST_F(OroStringSupport, NormalizingReplacesWhatTheServiceCallsSpaceUnlessByABlank) {
  publish();
  const OroString text = borrowed(u"a_b");
  EXPECT_EQ(units(text.normalize(u' ')), u"a_b_normal");
  EXPECT_EQ(units(text.normalize(u'-')), u"a-b-normal");
  EXPECT_TRUE(OroString().normalize(u'-').isNull());
}

TEST_F(OroStringSupport, PathsAndPatternsLowerThroughTheService) {
  publish();
  OroWildcard pattern(borrowed(u"*.TXT"), true);
  EXPECT_TRUE(pattern.match(borrowed(u"a.TXT|low")));
  EXPECT_TRUE(pattern.matchIgnoringCase(borrowed(u"a.TXT")));
}

TEST_F(OroStringSupport, IsAskedForOnceAndKept) {
  publish();
  const int before = support_->refCount();
  EXPECT_STREQ(OroString(u"a").toNarrow(), "<1>");
  EXPECT_STREQ(OroString(u"ab").toNarrow(), "<2>");
  EXPECT_EQ(broker_.serviceRequests, 1);
  EXPECT_EQ(support_->refCount(), before + 1);
}

TEST_F(OroStringSupport, AMissIsRemembered) {
  EXPECT_STREQ(OroString(u"caf\u00E9").toNarrow(), "caf");
  publish();
  EXPECT_STREQ(OroString(u"caf\u00E9").toNarrow(), "caf");
  EXPECT_FALSE(borrowed(u"abc").contains(OroString::empty(), true));
  EXPECT_EQ(broker_.serviceRequests, 1);
}

TEST_F(OroStringSupport, ThreadsAskTogetherOnlyOnce) {
  kelPoolShutdown();
  kelPoolInstance();  // a pool that does not look for the service of pools
  publish();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int k = 0; k < 100; ++k) {
        OroString text(u"abc");
        EXPECT_STREQ(text.toNarrow(), "<3>");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(broker_.serviceRequests, 1);
}

// A broker whose answer needs strings itself, as making a component does.
class NestingBroker : public tests::FakeBroker {
 public:
  int32_t getService(const KelCString& name, void** out) override {
    EXPECT_STREQ(OroString(u"caf\u00E9").toNarrow(), "caf");
    return FakeBroker::getService(name, out);
  }
};

TEST(OroStringSupportNested, ALookUpThatUsesStringsFindsThePlainRules) {
  testaccess::resetStrSupport();
  {
    NestingBroker broker;
    IPtr<IOroStrSupport> support(new FakeStrSupport);
    broker.registerService(KelCString::borrow("IOroStrSupport"), support.get());
    EXPECT_STREQ(OroString(u"abc").toNarrow(), "<3>");
    EXPECT_EQ(broker.serviceRequests, 1);
    testaccess::resetStrSupport();
  }
}

}  // namespace

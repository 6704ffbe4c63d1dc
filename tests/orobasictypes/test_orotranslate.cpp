#include "orobasictypes/orotranslate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interfaces/IOroTranslator.h"
#include "interfaces/IOroTranslatorService.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "orobasictypes/testaccess.h"
#include "tests/support/fakebroker.h"
#include "tests/support/slotnumber.h"

namespace {

constexpr GUID kComponent{0xC0, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};

std::string narrow(const OroString& text) { return text.toNarrow(); }

std::vector<OroString> texts(int count) {
  std::vector<OroString> texts;
  for (int i = 1; i <= count; ++i) {
    texts.emplace_back("<");
    texts.back().append(OroString(i));
    texts.back().append(">");
  }
  return texts;
}

// Puts its mark in front of every key.
class MarkTranslator : public OroTrivialTranslator<> {
 public:
  explicit MarkTranslator(const char* mark) : mark_(mark) {}
  bool lookup(const char* key, OroString& out) override {
    out = OroString(mark_);
    out.append(key);
    return true;
  }

 private:
  const char* mark_;
};

// Has a translator for one component at most.
class OneTranslatorService : public IOroTranslatorService {
 public:
  static constexpr const char* className() { return "OneTranslatorService"; }
  using Offers = OroOffers<OneTranslatorService, IOroTranslatorService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IOroTranslator* createTranslator(const KelCString&, const GUID&) override { return nullptr; }
  IOroTranslator* getTranslator(const GUID& componentId) override {
    ++asked;
    return componentId == kComponent ? translator.get() : nullptr;
  }
  IOroLanguageID* getLanguageId() override { return nullptr; }
  void listTranslators(OroArray<GUID>&) override {}
  OroString& translateText(OroString& out, const char*) override { return out; }
  OroString& translateQualified(OroString& out, const char*) override { return out; }

  IPtr<IOroTranslator> translator;
  int asked = 0;
};

class TranslateTest : public ::testing::Test {
 protected:
  TranslateTest() {
    testaccess::resetModule();
    testaccess::resetModuleTranslator();
  }
  ~TranslateTest() override {
    testaccess::resetModuleTranslator();
    testaccess::resetModule();
  }

  std::string translated(const char* key) {
    OroString out;
    return narrow(oroTranslate(out, key));
  }
  std::string array(const char* key, int count) {
    const std::vector<OroString> arguments = texts(count);
    OroString out("before");
    return narrow(oroTranslateArray(out, key, count, arguments.data()));
  }
};

// --- Without services.

TEST_F(TranslateTest, AKeyIsItsOwnText) {
  EXPECT_EQ(translated("abc"), "abc");
  EXPECT_EQ(translated(""), "");
  EXPECT_EQ(translated("%1 of %2"), "%1 of %2");
}

TEST_F(TranslateTest, ANullKeyIsEmpty) {
  OroString out("before");
  EXPECT_TRUE(oroTranslate(out, nullptr).isEmpty());
}

TEST_F(TranslateTest, TheResultIsTheStringThatWasGiven) {
  OroString out("before");
  const OroString argument("x");
  EXPECT_EQ(&oroTranslate(out, "abc"), &out);
  EXPECT_EQ(&oroTranslate(out, "%1", argument), &out);
  EXPECT_EQ(&oroTranslateArray(out, "%1", 1, &argument), &out);
}

TEST_F(TranslateTest, WhatTheStringHeldBeforeIsGone) {
  OroString out(u"wide", "a literal that stands for it");
  EXPECT_EQ(narrow(oroTranslate(out, "abc")), "abc");
}

TEST_F(TranslateTest, BytesOfTheKeyAreWidenedWithTheirSign) {
  OroString out;
  oroTranslate(out, "caf\xE9");
  EXPECT_EQ(std::u16string(out.wideText()), u"caf\uFFE9");
}

TEST_F(TranslateTest, OneToSixArgumentsAreFilledIn) {
  const std::vector<OroString> a = texts(6);
  const char* const key = "%1%2%3%4%5%6.";
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0])), "<1>.");
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0], a[1])), "<1><2>.");
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0], a[1], a[2])), "<1><2><3>.");
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0], a[1], a[2], a[3])), "<1><2><3><4>.");
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0], a[1], a[2], a[3], a[4])), "<1><2><3><4><5>.");
  EXPECT_EQ(narrow(oroTranslate(out, key, a[0], a[1], a[2], a[3], a[4], a[5])),
            "<1><2><3><4><5><6>.");
}

TEST_F(TranslateTest, PlaceholdersMayStandInAnyOrder) {
  const std::vector<OroString> a = texts(2);
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, "%2 before %1", a[0], a[1])), "<2> before <1>");
}

TEST_F(TranslateTest, NumbersWithoutAnArgumentAreRemoved) {
  const OroString argument("x");
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, "[%1|%3|%9|%:]", argument)), "[x|||]");
}

TEST_F(TranslateTest, APercentThatIsNoPlaceholderStaysWithItsFollower) {
  const OroString argument("x");
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, "%%1 100% %d %0 %1", argument)), "%%1 100% %d %0 x");
  EXPECT_EQ(narrow(oroTranslate(out, "%1 at the end %", argument)), "x at the end %");
}

TEST_F(TranslateTest, TwoDigitsAreAPlaceholderAndADigit) {
  const OroString argument("x");
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, "%10", argument)), "x0");
}

TEST_F(TranslateTest, ArgumentsAreNotScanned) {
  OroString out;
  EXPECT_EQ(narrow(oroTranslate(out, "%1-%2", OroString("%2"), OroString("%1"))), "%2-%1");
}

TEST_F(TranslateTest, TheResultMayBeOneOfTheArguments) {
  OroString text("a.xyz");
  EXPECT_EQ(narrow(oroTranslate(text, "cannot open %1: %2", text, OroString("gone"))),
            "cannot open a.xyz: gone");
}

TEST_F(TranslateTest, NullArgumentsOfATranslatorAreEmpty) {
  const OroString argument("x");
  OroString out;
  IOroTranslator* const translator = oroModuleTranslator();
  EXPECT_EQ(narrow(translator->translate1(out, "[%1]", nullptr)), "[]");
  EXPECT_EQ(narrow(translator->translate3(out, "[%1%2%3]", nullptr, &argument, nullptr)), "[x]");
  EXPECT_EQ(narrow(translator->translate6(out, "[%1%2%3%4%5%6]", nullptr, nullptr, nullptr, nullptr,
                                          nullptr, &argument)),
            "[x]");
}

TEST_F(TranslateTest, AnArrayMayHoldMoreThanTenArguments) {
  EXPECT_EQ(array("%1 %2 %3 %4 %5 %6 %7 %8 %9 %10 %11 %12", 12),
            "<1> <2> <3> <4> <5> <6> <7> <8> <9> <10> <11> <12>");
  EXPECT_EQ(array("%1 and %12", 12), "<1> and <12>");
}

TEST_F(TranslateTest, AnArrayIsFilledInNumberOrderAtTheFirstPlace) {
  EXPECT_EQ(array("%12 %1", 1), "<1>2 %1");
  EXPECT_EQ(array("%1 %1", 1), "<1> %1");
  EXPECT_EQ(array("%10 %1", 10), "<1>0 %1");
}

TEST_F(TranslateTest, ArgumentsOfAnArrayAreScannedForHigherNumbers) {
  const OroString arguments[] = {OroString("%2"), OroString("two")};
  OroString out;
  EXPECT_EQ(narrow(oroTranslateArray(out, "%1 %2", 2, arguments)), "two %2");
}

TEST_F(TranslateTest, AnArrayOfNoneLeavesThePlaceholders) {
  EXPECT_EQ(array("%1 %2", 0), "%1 %2");
  OroString out;
  EXPECT_EQ(narrow(oroTranslateArray(out, "%1", -3, nullptr)), "%1");
}

TEST_F(TranslateTest, ACountWithoutAnArrayIsOfEmptyArguments) {
  OroString out;
  EXPECT_EQ(narrow(oroTranslateArray(out, "[%1%2] %3", 2, nullptr)), "[] %3");
}

TEST_F(TranslateTest, NumbersThatAreNotInTheTextAreSkipped) {
  EXPECT_EQ(array("only %3", 5), "only <3>");
  EXPECT_EQ(array("none", 3), "none");
  EXPECT_EQ(array("%", 3), "%");
}

TEST_F(TranslateTest, AnArrayReachesToNinetyNine) {
  EXPECT_EQ(array("%99", 99), "<9>9");
  EXPECT_EQ(array("%9 %99", 99), "<9> <99>");
  EXPECT_EQ(array("%1 %10 %100", 100), "<1> <10> %100");
}

TEST_F(TranslateTest, TheResultMayBeInTheArray) {
  std::vector<OroString> a = texts(2);
  EXPECT_EQ(narrow(oroTranslateArray(a[0], "%1 %2", 2, a.data())), "<1> <2>");
}

// --- Which translator.

TEST_F(TranslateTest, TheModulesTranslatorIsNeverNullAndStaysTheSame) {
  IOroTranslator* const first = oroModuleTranslator();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(oroModuleTranslator(), first);
  EXPECT_STREQ(first->getClassName(), "OroTrivialTranslator");
}

TEST_F(TranslateTest, TheTrivialTranslatorOnceHeldIsNotReplacedByTheServices) {
  translated("too early");
  tests::FakeBroker broker;
  broker.registerService(KelCString("IOroTranslatorService"), new OneTranslatorService);
  broker.registerService(KelCString("IOroTranslator"), new MarkTranslator("app:"));
  EXPECT_EQ(translated("abc"), "abc");
  testaccess::resetModuleTranslator();
  EXPECT_EQ(translated("abc"), "app:abc");
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, AComponentWithATranslatorOfItsOwnUsesIt) {
  tests::FakeBroker broker;
  const IPtr<OneTranslatorService> service = new OneTranslatorService;
  service->translator = new MarkTranslator("own:");
  broker.registerService(KelCString("IOroTranslatorService"), service.get());
  broker.registerService(KelCString("IOroTranslator"), new MarkTranslator("app:"));
  oroModuleIdentity().componentId = kComponent;
  EXPECT_EQ(translated("abc"), "own:abc");
  EXPECT_EQ(translated("def"), "own:def");
  EXPECT_EQ(service->asked, 1);
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, AComponentWithoutOneUsesTheApplications) {
  tests::FakeBroker broker;
  broker.registerService(KelCString("IOroTranslatorService"), new OneTranslatorService);
  broker.registerService(KelCString("IOroTranslator"), new MarkTranslator("app:"));
  oroModuleIdentity().componentId = kComponent;
  EXPECT_EQ(translated("abc"), "app:abc");
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, TheApplicationsIsAskedForOnlyThroughTheTranslatorService) {
  tests::FakeBroker broker;
  broker.registerService(KelCString("IOroTranslator"), new MarkTranslator("app:"));
  EXPECT_EQ(translated("abc"), "abc");
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, WithoutAnyTheTrivialOneServes) {
  tests::FakeBroker broker;
  broker.registerService(KelCString("IOroTranslatorService"), new OneTranslatorService);
  EXPECT_EQ(translated("abc"), "abc");
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, AnotherTranslatorMayBeSetBeforeTheServicesHaveChosen) {
  translated("too early");
  oroSetModuleTranslator(new MarkTranslator("set:"));
  EXPECT_EQ(translated("abc"), "set:abc");
  oroSetModuleTranslator(new MarkTranslator("again:"));
  EXPECT_EQ(translated("abc"), "again:abc");
}

TEST_F(TranslateTest, WhatTheServicesHaveChosenStays) {
  tests::FakeBroker broker;
  broker.registerService(KelCString("IOroTranslatorService"), new OneTranslatorService);
  broker.registerService(KelCString("IOroTranslator"), new MarkTranslator("app:"));
  translated("first");
  const IPtr<MarkTranslator> late = new MarkTranslator("late:");
  oroSetModuleTranslator(late.get());
  EXPECT_EQ(translated("abc"), "app:abc");
  EXPECT_EQ(late->refCount(), 1);
  testaccess::resetModuleTranslator();
}

TEST_F(TranslateTest, TheTranslatorIsHeldByTheModule) {
  const IPtr<MarkTranslator> mine = new MarkTranslator("mine:");
  oroSetModuleTranslator(mine.get());
  EXPECT_EQ(mine->refCount(), 2);
  oroSetModuleTranslator(nullptr);
  EXPECT_EQ(mine->refCount(), 1);
  EXPECT_EQ(translated("abc"), "abc");
}

// --- The trivial translator.

TEST(OroTrivialTranslatorTest, ItAnswersForItsClassAndItsInterface) {
  const IPtr<OroTrivialTranslator<>> translator = new OroTrivialTranslator<>;
  EXPECT_EQ(oroQuery<IOroTranslator>(translator.get()), translator.get());
  EXPECT_EQ(oroQueryClass<OroTrivialTranslator<>>(translator.get()), translator.get());
}

TEST(OroTrivialTranslatorTest, ItKeepsItsLanguage) {
  const IPtr<OroTrivialTranslator<>> translator = new OroTrivialTranslator<>;
  EXPECT_FALSE(translator->setLanguage(nullptr));
}

TEST(OroTrivialTranslatorTest, EveryKeyIsFoundAndIsABufferOfItsOwn) {
  const IPtr<OroTrivialTranslator<>> translator = new OroTrivialTranslator<>;
  OroString out;
  EXPECT_TRUE(translator->lookup("key", out));
  EXPECT_TRUE(out == "key");
  EXPECT_GT(out.textCapacity(), 0);
}

// A table in which nothing is found and `out` is left alone.
class EmptyTranslator : public OroTrivialTranslator<> {
 public:
  bool lookup(const char*, OroString&) override { return false; }
};

TEST(OroTrivialTranslatorTest, WhatALookupLeavesAloneIsEmpty) {
  const IPtr<EmptyTranslator> translator = new EmptyTranslator;
  const OroString argument("x");
  OroString out("before");
  EXPECT_TRUE(translator->translate(out, "key").isNull());
  out = OroString("before");
  EXPECT_TRUE(translator->translate1(out, "key %1", &argument).isNull());
  out = OroString("before");
  EXPECT_TRUE(translator->translateArray(out, "key %1", 1, &argument).isNull());
}

// Needs memory before it comes to the key.
class BusyTranslator : public OroTrivialTranslator<> {
 public:
  bool lookup(const char* key, OroString& out) override {
    const OroString others[] = {OroString("x"), OroString("y"), OroString("z")};
    return OroTrivialTranslator::lookup(key, out);
  }
};

TEST(OroTrivialTranslatorTest, TheKeyMayBeAFormOfTheResult) {
  const IPtr<BusyTranslator> translator = new BusyTranslator;
  OroString out("key");
  EXPECT_EQ(narrow(translator->translate(out, out.toNarrow())), "key");
  EXPECT_EQ(narrow(translator->translate(out, out.toUtf8())), "key");
}

// Hands out texts of the program itself.
class BorrowingTranslator : public OroTrivialTranslator<> {
 public:
  bool lookup(const char*, OroString& out) override {
    out = OroString(u"[%1]", nullptr);
    return true;
  }
};

TEST(OroTrivialTranslatorTest, PlaceholdersOfABorrowedTextStay) {
  const IPtr<BorrowingTranslator> translator = new BorrowingTranslator;
  const OroString argument("x");
  OroString out;
  EXPECT_EQ(narrow(translator->translate1(out, "key", &argument)), "[%1]");
  EXPECT_EQ(narrow(translator->translateArray(out, "key", 1, &argument)), "[x]");
}

TEST(OroTrivialTranslatorTest, LookupIsTheTenthOperation) {
  // Behind the destructor of the interface, which has two places in the table.
  EXPECT_EQ(tests::slotNumber(&OroTrivialTranslator<>::lookup), 10 + 2);
}

TEST(IOroTranslatorTest, OperationsStandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IOroTranslator::translateArray), 1);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate6), 2);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate5), 3);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate4), 4);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate3), 5);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate2), 6);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate1), 7);
  EXPECT_EQ(slotNumber(&IOroTranslator::translate), 8);
  EXPECT_EQ(slotNumber(&IOroTranslator::setLanguage), 9);
}

}  // namespace

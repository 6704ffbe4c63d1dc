#include "services/oroxlifftranslator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "interfaces/IOroExternalTranslator.h"
#include "orobasictypes/orosystemtext.h"
#include "services/orotranslatorservice.h"
#include "services/translator.h"
#include "tests/services/translationworld.h"
#include "tests/support/slotnumber.h"

namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using tests::TestLanguage;

std::string unit(const std::string& inside) { return "<trans-unit>" + inside + "</trans-unit>"; }

std::string pair(const std::string& source, const std::string& target) {
  return unit("<source>" + source + "</source><target>" + target + "</target>");
}

std::string document(const std::string& units) {
  return "<xliff><file><body>" + units + "</body></file></xliff>";
}

class XliffTranslator : public tests::TranslationWorld {
 protected:
  XliffTranslator() {
    publish("IOroLanguageID", inForce_.get());
    listen();
  }
  // A translator of the component "points" whose file of German has these units.
  OroXLIFFTranslator& german(const std::string& bytes) {
    publishXml("IOroDOMXml");
    writeLanguage("points_de", bytes);
    return inLanguage("de");
  }
  OroXLIFFTranslator& inLanguage(const char* code) {
    const IPtr<TestLanguage> language = new TestLanguage(code);
    translator_ = new OroXLIFFTranslator;
    translator_->setBaseName(languages().joined("points"));
    translator_->setLanguage(language.get());
    return *translator_;
  }
  // What a unit with these children gives for the key "key".
  std::u16string ofUnit(const std::string& children) {
    return text(german(document(unit(children))), "key");
  }
  // The one report that was heard, from `from` on.
  std::string reportedPath() const {
    const std::string begin = "Translation file not found or oarsing error: ";
    if (heard.size() != 1 || !heard[0].text.starts_with(begin)) return "(no report)";
    EXPECT_EQ(heard[0].severity, 1);
    EXPECT_EQ(heard[0].detail, "");
    return heard[0].text.substr(begin.size());
  }
  std::string shown(const char* name) const {
    return oroShownPath(languages().joined(name)).toUtf8();
  }

  IPtr<TestLanguage> inForce_ = new TestLanguage("");
  IPtr<OroXLIFFTranslator> translator_;
};

TEST_F(XliffTranslator, TheFileHasTheLanguageAtItsNameAndNoExtension) {
  auto& translator = german(document(pair("Open",
                                          "\xC3\x96"
                                          "ffnen")));
  EXPECT_EQ(text(translator, "Open"), u"\u00D6ffnen");
  EXPECT_EQ(text(translator, "Close"), u"Close");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(XliffTranslator, ALanguageIsPutBehindTheBaseName) {
  publishXml("IOroDOMXml");
  text(inLanguage("zh-cn"), "Open");
  EXPECT_EQ(reportedPath(), shown("points_zh-cn"));
}

TEST_F(XliffTranslator, EveryCodeWithEnInItIsEnglishAndNeedsNoFile) {
  publishXml("IOroDOMXml");
  for (const char* code : {"en", "en-us", "xen", "rENen", "french-en"}) {
    writeLanguage(std::string("points_") + code, document(pair("Open", "translated")));
    EXPECT_EQ(text(inLanguage(code), "Open"), u"Open") << code;
  }
  EXPECT_THAT(heard, IsEmpty());
  writeLanguage("points_EN", document(pair("Open", "translated")));
  EXPECT_EQ(text(inLanguage("EN"), "Open"), u"translated") << "the letters are small ones";
}

TEST_F(XliffTranslator, AFileThatIsMissingIsReportedOnce) {
  publishXml("IOroDOMXml");
  auto& translator = inLanguage("de");
  EXPECT_EQ(text(translator, "Open"), u"Open");
  EXPECT_EQ(text(translator, "Close"), u"Close");
  EXPECT_EQ(reportedPath(), shown("points_de"));
}

TEST_F(XliffTranslator, AFileThatIsNoDocumentIsReportedAndGivesNothing) {
  auto& translator = german(document(pair("Open", "translated")) + "<");
  EXPECT_EQ(text(translator, "Open"), u"Open");
  EXPECT_EQ(reportedPath(), shown("points_de"));
}

TEST_F(XliffTranslator, WithoutDocumentsTheKeysShowAsTheyAre) {
  writeLanguage("points_de", document(pair("Open", "translated")));
  publishXml("IOroDOMXmlV2");
  EXPECT_EQ(text(inLanguage("de"), "Open"), u"Open");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(XliffTranslator, WithoutAnErrorServiceNobodyIsTold) {
  tests::FakeBroker bare;
  bare.registerService(KelCString::borrow("IOroLanguageID"), inForce_.get());
  EXPECT_EQ(text(inLanguage("de"), "Open"), u"Open");
  EXPECT_THAT(heard, IsEmpty());
  oroSetBroker(&broker_);
}

TEST_F(XliffTranslator, TheOnlyAttemptIsAtTheFirstText) {
  publishXml("IOroDOMXml");
  writeLanguage("points_de", document(pair("Open", "translated")));
  const IPtr<OroXLIFFTranslator> translator = new OroXLIFFTranslator;
  const IPtr<TestLanguage> german = new TestLanguage("de");
  EXPECT_EQ(text(*translator, "Open"), u"Open");
  EXPECT_TRUE(translator->setBaseName(languages().joined("points")));
  EXPECT_TRUE(translator->setLanguage(german.get()));
  EXPECT_EQ(text(*translator, "Open"), u"Open");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(XliffTranslator, ALaterLanguageDoesNotLoadAgain) {
  auto& translator = german(document(pair("Open", "translated")));
  writeLanguage("points_fr", document(pair("Open", "ouvrir")));
  EXPECT_EQ(text(translator, "Open"), u"translated");
  const IPtr<TestLanguage> french = new TestLanguage("fr");
  EXPECT_TRUE(translator.setLanguage(french.get()));
  EXPECT_EQ(text(translator, "Open"), u"translated");
}

TEST_F(XliffTranslator, NoBaseNameAndNoLanguageLoadNothing) {
  publishXml("IOroDOMXml");
  writeLanguage("points_de", document(pair("Open", "translated")));
  const IPtr<TestLanguage> language = new TestLanguage("de");
  const IPtr<OroXLIFFTranslator> nameless = new OroXLIFFTranslator;
  nameless->setLanguage(language.get());
  EXPECT_EQ(text(*nameless, "Open"), u"Open");
  const IPtr<OroXLIFFTranslator> speechless = new OroXLIFFTranslator;
  speechless->setBaseName(languages().joined("points"));
  EXPECT_EQ(text(*speechless, "Open"), u"Open");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(XliffTranslator, TheLanguageIsSetOnTheService) {
  inLanguage("de");
  EXPECT_STREQ(inForce_->getLanguage().text(), "de");
  EXPECT_TRUE(translator_->setLanguage(nullptr));
  EXPECT_STREQ(inForce_->getLanguage().text(), "de");
  EXPECT_TRUE(translator_->setLanguage(inForce_.get()));
  EXPECT_STREQ(inForce_->getLanguage().text(), "de");
}

TEST_F(XliffTranslator, TheServiceIsHeldAndAskedForAfresh) {
  inLanguage("de");
  EXPECT_EQ(inForce_->refCount(), 3) << "here, by the broker and by the translator";
  tests::FakeBroker bare;
  EXPECT_TRUE(translator_->setLanguage(inForce_.get())) << "also without the service";
  oroSetBroker(&broker_);
  EXPECT_EQ(inForce_->refCount(), 2);
  EXPECT_EQ(text(*translator_, "Open"), u"Open");
  EXPECT_THAT(heard, IsEmpty()) << "no language, so no file";
}

TEST_F(XliffTranslator, AnEmptyCodeIsALanguageLikeAnyOther) {
  publishXml("IOroDOMXml");
  writeLanguage("points_", document(pair("Open", "translated")));
  EXPECT_EQ(text(inLanguage(""), "Open"), u"translated");
}

TEST_F(XliffTranslator, OnlyChildrenInTheirOwnPlaceCount) {
  auto& translator = german(
      "<any><file><body>" + pair("a", "1") + "<group>" + pair("b", "2") + "</group>" +
      pair("c", "3") + "</body><header>" + pair("d", "4") + "</header><body>" + pair("e", "5") +
      "</body>" + pair("f", "6") + "</file><body>" + pair("g", "7") + "</body><File><body>" +
      pair("h", "8") + "</body></File><file><Body>" + pair("i", "9") +
      "</Body><body><Trans-Unit><source>j</source><target>10</target></Trans-Unit>" +
      unit("<Source>k</Source><Target>11</Target>") + pair("l", "12") + "</body></file></any>");
  std::string found;
  for (char key = 'a'; key <= 'l'; ++key) {
    const std::string name(1, key);
    if (text(translator, name.c_str()) != std::u16string(1, key)) found += key;
  }
  EXPECT_EQ(found, "acel");
}

TEST_F(XliffTranslator, ATargetMayStandInFrontOfItsSource) {
  EXPECT_EQ(ofUnit("<target>text</target><source>key</source>"), u"text");
}

TEST_F(XliffTranslator, AnEmptyTargetGivesNoEntry) {
  EXPECT_EQ(ofUnit("<source>key</source><target></target>"), u"key");
  EXPECT_EQ(ofUnit("<source>key</source><target/>"), u"key");
  EXPECT_EQ(ofUnit("<source>key</source>"), u"key");
  EXPECT_EQ(ofUnit("<target>text</target>"), u"key");
}

TEST_F(XliffTranslator, ALaterTargetThatIsNotEmptyStillCounts) {
  EXPECT_EQ(ofUnit("<source>key</source><target/><target>text</target>"), u"text");
  EXPECT_EQ(ofUnit("<target/><source>key</source><note/><target>text</target>"), u"text");
  EXPECT_EQ(ofUnit("<target>text</target><target/><source>key</source>"), u"text");
  EXPECT_EQ(ofUnit("<target>old</target><target>text</target><source>key</source>"), u"text");
}

TEST_F(XliffTranslator, TheFirstCompletePairEndsTheUnit) {
  EXPECT_EQ(ofUnit("<source>key</source><target>text</target><target>more</target>"), u"text");
  EXPECT_EQ(ofUnit("<source>key</source><target>text</target><source>other</source>"), u"text");
  EXPECT_EQ(ofUnit("<source>other</source><source>key</source><target>text</target>"), u"text");
}

TEST_F(XliffTranslator, AnEmptySourceIsAKeyToo) {
  auto& translator = german(document(pair("", "nothing")));
  EXPECT_EQ(text(translator, ""), u"nothing");
}

TEST_F(XliffTranslator, TheLastEntryOfAKeyStands) {
  auto& translator = german(document(pair("key", "first") + pair("key", "second")));
  EXPECT_EQ(text(translator, "key"), u"second");
}

TEST_F(XliffTranslator, BlanksOfATextAreKept) {
  EXPECT_EQ(ofUnit("<source>key</source><target> a\tb  </target>"), u" a\tb  ");
}

TEST_F(XliffTranslator, KeysAreFoundByTheirNarrowForm) {
  auto& translator = german(document(pair("Caf\xC3\xA9", "text")));
  EXPECT_EQ(text(translator, "Caf"), u"text");
  EXPECT_EQ(text(translator, "Caf\xC3\xA9"), u"Caf\uFFC3\uFFA9") << "no entry: its bytes widened";
}

TEST_F(XliffTranslator, WhatTheFileLacksIsAskedOfTheApplication) {
  auto& translator = german(document(pair("Open", "translated")));
  publishXml("IOroDOMXmlV2");
  writeLanguage("velmora.de.resx",
                "<root><data name='Close'><value>of the host</value></data>"
                "<data name='Open'><value>of the host</value></data></root>");
  const IPtr<Translator> application = new Translator;
  ASSERT_TRUE(application->setLanguage(inForce_.get()));
  publish("IOroTranslator", application.get());
  EXPECT_EQ(text(translator, "Close"), u"of the host");
  EXPECT_EQ(text(translator, "Open"), u"translated");
  EXPECT_EQ(text(translator, "Save"), u"Save");
}

TEST_F(XliffTranslator, TheApplicationsTranslatorIsAskedForOnce) {
  auto& translator = german(document(""));
  text(translator, "Open");
  publish("IOroTranslator", new Translator);
  const int before = broker_.serviceRequests;
  text(translator, "Open");
  EXPECT_EQ(broker_.serviceRequests, before + 1);
  text(translator, "Open");
  EXPECT_EQ(broker_.serviceRequests, before + 1);
}

TEST_F(XliffTranslator, AsTheApplicationsTranslatorItDoesNotAskItself) {
  auto& translator = german(document(pair("Open", "translated")));
  publish("IOroTranslator", &translator);
  EXPECT_EQ(text(translator, "Close"), u"Close");
}

TEST_F(XliffTranslator, EveryFormFillsItsPlaceholders) {
  auto& translator = german(document(pair("%1 of %2", "%2: %1") + pair("k", "%1%2%3%4%5%6")));
  const OroString a("a"), b("b"), c("c"), d("d"), e("e"), f("f");
  OroString out;
  const auto narrow = [](const OroString& text) { return std::string(text.toNarrow()); };
  EXPECT_EQ(narrow(translator.translate2(out, "%1 of %2", &a, &b)), "b: a");
  EXPECT_EQ(narrow(translator.translate1(out, "k", &a)), "a");
  EXPECT_EQ(narrow(translator.translate3(out, "k", &a, &b, &c)), "abc");
  EXPECT_EQ(narrow(translator.translate4(out, "k", &a, &b, &c, &d)), "abcd");
  EXPECT_EQ(narrow(translator.translate5(out, "k", &a, &b, &c, &d, &e)), "abcde");
  EXPECT_EQ(narrow(translator.translate6(out, "k", &a, &b, &c, &d, &e, &f)), "abcdef");
  const OroString array[] = {OroString("x"), OroString("y")};
  EXPECT_EQ(narrow(translator.translateArray(out, "%1 of %2", 2, array)), "y: x");
  EXPECT_EQ(narrow(translator.translate1(out, "no %1 entry", &a)), "no a entry");
}

TEST_F(XliffTranslator, TheServiceMakesOneOfItsKind) {
  publishXml("IOroDOMXml");
  writeLanguage("points_de", document(pair("Open", "translated")));
  const IPtr<OroTranslatorService> service = new OroTranslatorService(OroXLIFFTranslator::make);
  IOroTranslator* const made = service->createTranslator(KelCString("XLIFF"), GUID{1, 2, 3, {}});
  auto* const files = oroQuery<IOroExternalTranslator>(made);
  ASSERT_NE(files, nullptr);
  EXPECT_TRUE(files->setBaseName(languages().joined("points")));
  const IPtr<TestLanguage> language = new TestLanguage("de");
  service->setLanguage(language.get());
  EXPECT_EQ(text(*made, "Open"), u"translated");
}

TEST_F(XliffTranslator, ItAnswersForBothInterfaces) {
  inLanguage("de");
  EXPECT_EQ(oroQuery<IOroTranslator>(translator_.get()), translator_.get());
  EXPECT_EQ(oroQuery<IOroExternalTranslator>(translator_.get()), translator_.get());
  EXPECT_EQ(oroQueryClass<OroXLIFFTranslator>(translator_.get()), translator_.get());
  EXPECT_STREQ(translator_->getClassName(), "OroXLIFFTranslator");
  EXPECT_EQ(tests::slotNumber(&IOroExternalTranslator::setBaseName), 1);
}

}  // namespace

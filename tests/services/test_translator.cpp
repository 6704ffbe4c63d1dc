#include "services/translator.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/services/translationworld.h"

namespace {

using tests::TestLanguage;

std::string data(const std::string& name, const std::string& value) {
  return "<data name=\"" + name + "\"><value>" + value + "</value></data>";
}

class TranslatorTest : public tests::TranslationWorld {
 protected:
  bool setLanguage(const char* code) {
    const IPtr<TestLanguage> language = new TestLanguage(code);
    return translator_->setLanguage(language.get());
  }
  // Reads a table of the one language of these tests, in a translator of its own.
  bool readResx(const std::string& inside) {
    writeLanguage("velmora.de.resx", "<root>" + inside + "</root>");
    translator_ = new Translator;
    return setLanguage("de");
  }
  bool readPo(const std::string& bytes) {
    writeLanguage("de.po", bytes);
    translator_ = new Translator;
    return setLanguage("de");
  }
  std::u16string at(const char* key) { return text(*translator_, key); }
  // What a pair of lines with these texts between the quotes gives for the key "key".
  std::u16string ofPair(const std::string& key, const std::string& value) {
    EXPECT_TRUE(readPo("msgid \"" + key + "\"\r\nmsgstr \"" + value + "\"\r\n"));
    return at("key");
  }

  IPtr<Translator> translator_ = new Translator;
};

TEST_F(TranslatorTest, WithoutFilesAKeyIsItsText) {
  EXPECT_FALSE(setLanguage("de"));
  EXPECT_EQ(at("Open"), u"Open");
  OroString out;
  EXPECT_TRUE(translator_->lookup("Open", out));
  EXPECT_EQ(at("Caf\xC3\xA9"), u"Caf\uFFC3\uFFA9");
}

TEST_F(TranslatorTest, NoLanguageIsNoFile) {
  EXPECT_FALSE(translator_->setLanguage(nullptr));
  EXPECT_EQ(at("Open"), u"Open");
}

// The table of resources.

TEST_F(TranslatorTest, AResourceTableIsReadByLanguage) {
  publishXml("IOroDOMXmlV2");
  EXPECT_TRUE(readResx(data("Open",
                            "\xC3\x96"
                            "ffnen") +
                       data("Close",
                            "schlie\xC3\x9F"
                            "en")));
  EXPECT_EQ(at("Open"), u"\u00D6ffnen");
  EXPECT_EQ(at("Close"), u"schlie\u00DFen");
  EXPECT_FALSE(setLanguage("fr"));
}

TEST_F(TranslatorTest, AResourceTableNeedsTheSecondKindOfDocuments) {
  publishXml("IOroDOMXml");
  EXPECT_FALSE(readResx(data("Open", "text")));
  EXPECT_EQ(at("Open"), u"Open");
}

TEST_F(TranslatorTest, ATableThatIsNoDocumentIsAFailureAndNotReported) {
  publishXml();
  listen();
  writeLanguage("velmora.de.resx", "<root>" + data("Open", "text"));
  EXPECT_FALSE(setLanguage("de"));
  EXPECT_EQ(at("Open"), u"Open");
  EXPECT_TRUE(heard.empty());
}

TEST_F(TranslatorTest, OnlyDataOfTheRootCount) {
  publishXml();
  EXPECT_TRUE(readResx("<resheader name='a'><value>1</value></resheader>" + data("b", "2") +
                       "<group>" + data("c", "3") +
                       "</group><Data name='d'><value>4</value></Data>"
                       "<data name='e'><Value>5</Value></data><data name='f'/>"
                       "<data><value>7</value></data><data Name='h'><value>8</value></data>"
                       "<data name='i'><comment>no</comment><value>9</value><value>0</value></data>"
                       "<data name='j'><group><value>10</value></group></data>"));
  std::string found;
  for (char key = 'a'; key <= 'j'; ++key) {
    const std::string name(1, key);
    if (at(name.c_str()) != std::u16string(1, key)) found += key;
  }
  EXPECT_EQ(found, "bi");
  EXPECT_EQ(at("i"), u"9") << "the first value";
}

TEST_F(TranslatorTest, EscapesOfATableAreResolvedInNameAndValue) {
  publishXml();
  EXPECT_TRUE(readResx(data("a\\nb\\t\\&quot;", "1\\n2\\t\\\"3")));
  EXPECT_EQ(at("a\nb\t\""), u"1\n2\t\"3");
}

TEST_F(TranslatorTest, EmptyNamesAndValuesOfATableAreLeftOut) {
  publishXml();
  EXPECT_TRUE(readResx(data("", "text") + data("key", "") + data("key", "text") + data("key", "")));
  EXPECT_EQ(at(""), u"");
  EXPECT_EQ(at("key"), u"text");
}

TEST_F(TranslatorTest, TrailingBlanksOfATableAreCut) {
  publishXml();
  EXPECT_TRUE(readResx(data("a", "text  ") + data("b", "    ") + data("c", "\\t\\n ") +
                       data("d", "x\\n") + data("e", "x  ")));
  EXPECT_EQ(at("a"), u"text");
  EXPECT_EQ(at("b"), u"  ");
  EXPECT_EQ(at("c"), u"\t\n");
  EXPECT_EQ(at("d"), u"x\n");
  EXPECT_EQ(at("e"), u"x ") << "the first two units are not looked at";
}

TEST_F(TranslatorTest, ATableIsPreferredWhenBothFilesExist) {
  publishXml();
  publishStrip();
  writeLanguage("de.po",
                "msgid \"Open\"\r\nmsgstr \"of the lines\"\r\n"
                "msgid \"Close\"\r\nmsgstr \"of the lines\"\r\n");
  EXPECT_TRUE(readResx(data("Open", "of the table")));
  EXPECT_EQ(at("Open"), u"of the table");
  EXPECT_EQ(at("Close"), u"Close");
}

TEST_F(TranslatorTest, ATableThatFailsDoesNotBringInTheLines) {
  publishStrip();
  writeLanguage("de.po", "msgid \"Open\"\r\nmsgstr \"of the lines\"\r\n");
  writeLanguage("velmora.de.resx", "<root/>");
  EXPECT_FALSE(setLanguage("de"));
  EXPECT_EQ(at("Open"), u"Open");
}

TEST_F(TranslatorTest, AFurtherLanguageKeepsTheTextsThatItDoesNotHave) {
  publishXml();
  EXPECT_TRUE(readResx(data("Open", "auf") + data("Close", "zu")));
  writeLanguage("velmora.fr.resx", "<root>" + data("Open", "ouvrir") + "</root>");
  EXPECT_TRUE(setLanguage("fr"));
  EXPECT_EQ(at("Open"), u"ouvrir");
  EXPECT_EQ(at("Close"), u"zu");
}

TEST_F(TranslatorTest, AFolderOfTheNameIsNoFile) {
  publishXml();
  publishStrip();
  std::filesystem::create_directory(folder_.file("lang") / "velmora.de.resx");
  writeLanguage("de.po", "msgid \"Open\"\r\nmsgstr \"of the lines\"\r\n");
  EXPECT_TRUE(setLanguage("de"));
  EXPECT_EQ(at("Open"), u"of the lines");
}

TEST_F(TranslatorTest, PlaceholdersOfATextAreFilled) {
  publishXml();
  EXPECT_TRUE(readResx(data("%1 of %2", "%2: %1")));
  const OroString a("a"), b("b");
  OroString out;
  EXPECT_EQ(tests::narrow(translator_->translate2(out, "%1 of %2", &a, &b)), "b: a");
  EXPECT_EQ(tests::narrow(translator_->translate2(out, "%1 of %2", &a, &b)), "b: a") << "again";
}

// A file by its own name.

TEST_F(TranslatorTest, AFileIsLoadedByItsNameWithEitherExtension) {
  publishXml();
  publishStrip();
  EXPECT_FALSE(translator_->load(base("own.txt")));
  folder_.write("own.po", "msgid \"Open\"\r\nmsgstr \"of the lines\"\r\n");
  EXPECT_TRUE(translator_->load(base("own.txt")));
  EXPECT_EQ(at("Open"), u"of the lines");
  folder_.write("own.resx", "<root>" + data("Open", "of the table") + "</root>");
  EXPECT_TRUE(translator_->load(base("own")));
  EXPECT_EQ(at("Open"), u"of the table");
  EXPECT_TRUE(translator_->load(base("own.po"))) << "the table is preferred here too";
}

// Lines of message ids and strings.

TEST_F(TranslatorTest, LinesGiveTexts) {
  publishStrip();
  EXPECT_TRUE(
      readPo("# a comment\r\nmsgid \"Open\"\r\nmsgstr \"auf\"\r\n\r\n"
             "#: somewhere\r\nmsgid \"Close\"\r\nmsgstr \"zu\""));
  EXPECT_EQ(at("Open"), u"auf");
  EXPECT_EQ(at("Close"), u"zu") << "the file's end ends a line";
}

TEST_F(TranslatorTest, WithoutATextServiceLinesGiveNothing) {
  EXPECT_TRUE(readPo("msgid \"Open\"\r\nmsgstr \"auf\"\r\n"));
  EXPECT_EQ(at("Open"), u"Open");
}

TEST_F(TranslatorTest, EscapesOfALineAreResolvedInThisOrder) {
  publishStrip();
  EXPECT_EQ(ofPair("key", "a\\tb  "), u"a\tb");
  EXPECT_EQ(ofPair("key", "\\\"a\\\"\\nb"), u"\"a\"\nb");
  EXPECT_EQ(ofPair("key", "a\\\\nb"), u"a\\\nb") << "a doubled backslash is no escape";
  EXPECT_EQ(ofPair("key", "\\\\\"x"), u"\\\"x");
  EXPECT_EQ(ofPair("key", "a\\r\\b"), u"a\\r\\b");
  ofPair("a\\n\\\"b\\\"\\t", "text");
  EXPECT_EQ(at("a\n\"b\"\t"), u"text");
}

TEST_F(TranslatorTest, TrailingBlanksOfALineAreCutDownToTwoUnits) {
  publishStrip();
  EXPECT_EQ(ofPair("key", "ab    "), u"ab");
  EXPECT_EQ(ofPair("key", "a    "), u"a ");
  EXPECT_EQ(ofPair("key", "    "), u"  ");
  EXPECT_EQ(ofPair("key", " "), u" ");
  EXPECT_EQ(ofPair("key", "abc\\n"), u"abc\n");
  EXPECT_EQ(ofPair("key", "abc\\t "), u"abc\t");
  EXPECT_EQ(ofPair("key  ", "text"), u"key") << "the blanks of a key stay";
  EXPECT_EQ(at("key  "), u"text");
}

TEST_F(TranslatorTest, BlanksAroundALineDoNotMatter) {
  publishStrip();
  EXPECT_TRUE(readPo("  msgid \"Open\" \t\r\n\tmsgstr \"auf\"  \r\n"));
  EXPECT_EQ(at("Open"), u"auf");
}

TEST_F(TranslatorTest, AKeywordHasOneBlankBehindIt) {
  publishStrip();
  EXPECT_TRUE(
      readPo("msgid\t\"a\"\r\nmsgstr \"1\"\r\nMSGID \"b\"\r\nmsgstr \"2\"\r\n"
             "msgid_plural \"c\"\r\nmsgstr[0] \"3\"\r\nxmsgid \"d\"\r\nmsgstr \"4\"\r\n"));
  for (const char* key : {"a", "b", "c", "d"}) EXPECT_EQ(at(key).size(), 1u) << key;
  EXPECT_EQ(at("a"), u"a");
  EXPECT_TRUE(readPo("msgid  \"e\"\r\nmsgstr \"5\"\r\n"));
  EXPECT_EQ(at("\"e"), u"5") << "the first and the last unit are cut off, whatever they are";
}

TEST_F(TranslatorTest, TheQuotesAreNotLookedAt) {
  publishStrip();
  EXPECT_TRUE(readPo("msgid <Open>\r\nmsgstr 'auf\r\n"));
  EXPECT_EQ(at("Open"), u"au");
}

TEST_F(TranslatorTest, ALineWithoutRoomForQuotesFailsTheReadAndNothingElse) {
  publishStrip();
  EXPECT_FALSE(
      readPo("msgid \"Open\"\r\nmsgstr x\r\nmsgstr \"auf\"\r\n"
             "msgid \"Close\"\r\nmsgid x\r\nmsgstr \"zu\"\r\n"));
  EXPECT_EQ(at("Open"), u"auf") << "such a value clears nothing";
  EXPECT_EQ(at("Close"), u"zu") << "nor does such a key";
}

TEST_F(TranslatorTest, AKeywordAloneIsNoLineOfItsKind) {
  publishStrip();
  EXPECT_TRUE(readPo("msgid \"Open\"\r\nmsgstr \r\nmsgstr \"auf\"\r\n"));
  EXPECT_EQ(at("Open"), u"auf");
}

TEST_F(TranslatorTest, EveryValueLineClearsKeyAndValue) {
  publishStrip();
  EXPECT_TRUE(
      readPo("msgid \"Open\"\r\nmsgstr \"\"\r\nmsgstr \"auf\"\r\n"
             "msgid \"Close\"\r\nmsgstr \"zu\"\r\nmsgstr \"again\"\r\n"));
  EXPECT_EQ(at("Open"), u"Open");
  EXPECT_EQ(at("Close"), u"zu");
}

TEST_F(TranslatorTest, ATextOverSeveralLinesIsNotRead) {
  publishStrip();
  EXPECT_TRUE(
      readPo("msgctxt \"menu\"\r\nmsgid \"\"\r\n\"Open\"\r\nmsgstr \"\"\r\n\"auf\"\r\n"
             "msgid \"Clo\"\r\n\"se\"\r\nmsgstr \"zu\"\r\n\"!\"\r\n"));
  EXPECT_EQ(at("Open"), u"Open");
  EXPECT_EQ(at("Close"), u"Close");
  EXPECT_EQ(at("Clo"), u"zu");
}

TEST_F(TranslatorTest, BareLineFeedsMakeOneLine) {
  publishStrip();
  EXPECT_TRUE(readPo("msgid \"Open\"\nmsgstr \"auf\"\n"));
  EXPECT_EQ(at("Open"), u"Open");
  EXPECT_TRUE(readPo("# all of this is a comment\nmsgid \"Open\"\nmsgstr \"auf\"\r\n"));
  EXPECT_EQ(at("Open"), u"Open");
}

TEST_F(TranslatorTest, AFileWithAMarkIsReadInUnits) {
  publishStrip();
  EXPECT_TRUE(readPo(wideBytes(u"msgid \"Open\"\r\nmsgstr \"\u00F6ffnen \u4E2D\"\r\n")));
  EXPECT_EQ(at("Open"), u"\u00F6ffnen \u4E2D");
}

TEST_F(TranslatorTest, BytesOfAFileWithoutAMarkAreWidenedWithTheirSign) {
  publishStrip();
  EXPECT_TRUE(readPo("msgid \"Open\"\r\nmsgstr \"\xC3\xB6\"\r\n"));
  EXPECT_EQ(at("Open"), u"\uFFC3\uFFB6");
  EXPECT_TRUE(readPo("msgid \"Caf\xC3\xA9\"\r\nmsgstr \"text\"\r\n"));
  EXPECT_EQ(at("Caf"), u"text") << "keys are narrow";
}

TEST_F(TranslatorTest, TheLastTextOfAKeyStands) {
  publishStrip();
  EXPECT_TRUE(readPo("msgid \"a\"\r\nmsgstr \"1\"\r\nmsgid \"a\"\r\nmsgstr \"2\"\r\n"));
  EXPECT_EQ(at("a"), u"2");
}

TEST_F(TranslatorTest, AnEmptyFileIsReadAndGivesNothing) {
  publishStrip();
  EXPECT_TRUE(readPo(""));
  EXPECT_TRUE(readPo("\xFF\xFE"));
}

TEST_F(TranslatorTest, ItIsATrivialTranslatorWithTexts) {
  EXPECT_STREQ(translator_->getClassName(), "Translator");
  EXPECT_EQ(oroQuery<IOroTranslator>(translator_.get()), translator_.get());
  EXPECT_EQ(oroQueryClass<Translator>(translator_.get()), translator_.get());
  EXPECT_EQ(oroQueryClass<OroTrivialTranslator<>>(translator_.get()), translator_.get());
}

}  // namespace

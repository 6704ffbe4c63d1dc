#include "services/oroinputunicodestream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "orobasictypes/orotranslate.h"
#include "orobasictypes/testaccess.h"
#include "services/orounicodestream.h"
#include "services/translator.h"
#include "tests/services/translationworld.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Lines = std::vector<std::u16string>;

class InputUnicodeStream : public tests::TranslationWorld {
 protected:
  OroPath written(const std::string& bytes) {
    folder_.write("in.txt", bytes);
    return base("in.txt");
  }
  Lines linesOf(const std::string& bytes, const char* delimiter = "\n") {
    OroInputUnicodeStream file(written(bytes));
    EXPECT_TRUE(file.isOpen());
    Lines lines;
    OroString line;
    while (file.readLine(line, OroString(delimiter))) lines.emplace_back(line.wideText());
    EXPECT_TRUE(line.isEmpty());
    atEnd_ = file.atEnd();
    return lines;
  }

  bool atEnd_ = false;
};

TEST_F(InputUnicodeStream, ALineEndIsCarriageReturnAndLineFeedInBytes) {
  EXPECT_THAT(linesOf("one\r\n\r\ntwo\r\n"), ElementsAre(u"one", u"", u"two"));
  EXPECT_TRUE(atEnd_);
}

TEST_F(InputUnicodeStream, ALineEndIsCarriageReturnAndLineFeedInUnits) {
  EXPECT_THAT(linesOf(wideBytes(u"\u00E9\u4E2D\r\n\r\ntwo")),
              ElementsAre(u"\u00E9\u4E2D", u"", u"two"));
  EXPECT_TRUE(atEnd_);
}

TEST_F(InputUnicodeStream, AFileWithBareLineFeedsIsOneLine) {
  EXPECT_THAT(linesOf("one\ntwo\n"), ElementsAre(u"one\ntwo\n"));
  EXPECT_THAT(linesOf(wideBytes(u"one\ntwo")), ElementsAre(u"one\ntwo"));
  EXPECT_THAT(linesOf("one\rtwo\r\r\nthree"), ElementsAre(u"one\rtwo\r", u"three"));
}

TEST_F(InputUnicodeStream, AnyOtherDelimiterIsTakenAsItIs) {
  EXPECT_THAT(linesOf("a;b;;c", ";"), ElementsAre(u"a", u"b", u"", u"c"));
  EXPECT_THAT(linesOf(wideBytes(u"a--b-c"), "--"), ElementsAre(u"a", u"b-c"));
  EXPECT_THAT(linesOf("a\r\nb\n", "\r\n"), ElementsAre(u"a", u"b\n"));
}

TEST_F(InputUnicodeStream, AnEmptyDelimiterReadsToTheEnd) {
  EXPECT_THAT(linesOf("a\r\nb", ""), ElementsAre(u"a\r\nb"));
}

TEST_F(InputUnicodeStream, BytesAreWidenedWithTheirSign) {
  EXPECT_THAT(linesOf("\xE9\x7F\x80\r\n"), ElementsAre(u"\uFFE9\u007F\uFF80"));
}

TEST_F(InputUnicodeStream, OnlyTheMarkOfLowByteFirstMakesUnits) {
  EXPECT_THAT(linesOf("\xFE\xFF"
                      "ab"),
              ElementsAre(u"\uFFFE\uFFFF"
                          u"ab"));
  EXPECT_THAT(linesOf("\xEF\xBB\xBF"
                      "ab"),
              ElementsAre(u"\uFFEF\uFFBB\uFFBF"
                          u"ab"));
  EXPECT_THAT(linesOf("\xFF"
                      "ab"),
              ElementsAre(u"\uFFFF"
                          u"ab"));
}

TEST_F(InputUnicodeStream, AFileShorterThanAMarkIsOneOfBytes) {
  EXPECT_THAT(linesOf(""), IsEmpty());
  EXPECT_TRUE(atEnd_);
  EXPECT_THAT(linesOf("a"), ElementsAre(u"a"));
  EXPECT_THAT(linesOf("\xFF"), ElementsAre(u"\uFFFF"));
  EXPECT_THAT(linesOf("\xFF\xFE"), IsEmpty());
}

TEST_F(InputUnicodeStream, HalfAUnitAtTheEndIsNone) {
  EXPECT_THAT(linesOf(wideBytes(u"ab") + "c"), ElementsAre(u"ab"));
  EXPECT_THAT(linesOf("\xFF\xFE"
                      "c"),
              IsEmpty());
}

TEST_F(InputUnicodeStream, AUnitZeroEndsWhatIsStoredOfALine) {
  EXPECT_THAT(linesOf(std::string("ab\0cd\r\nef", 9)), ElementsAre(u"ab", u"ef"));
  EXPECT_THAT(linesOf(wideBytes(std::u16string(u"ab\0cd\r\nef", 9))), ElementsAre(u"ab", u"ef"));
}

TEST_F(InputUnicodeStream, ALongLineIsReadWhole) {
  const std::string line(100'000, 'x');
  EXPECT_THAT(linesOf(line + "\r\n" + line + "\r\r\n"),
              ElementsAre(std::u16string(100'000, u'x'), std::u16string(100'000, u'x') + u"\r"));
}

TEST_F(InputUnicodeStream, DelimitersAreFoundAtEveryPlace) {
  for (size_t before : {509, 510, 511, 512, 513, 1021, 1022, 1023, 1024, 1025}) {
    EXPECT_THAT(linesOf(std::string(before, 'x') + "\r\ny"),
                ElementsAre(std::u16string(before, u'x'), u"y"))
        << before;
  }
}

TEST_F(InputUnicodeStream, ALineAboveTheLimitEndsTheReading) {
  const std::string most(OroInputUnicodeStream::kMostUnits, 'x');
  EXPECT_THAT(linesOf(most + "\r\nnext").size(), 2u);
  EXPECT_TRUE(atEnd_);
  EXPECT_THAT(linesOf("first\r\n" + most + "xxxx\r\nnext"), ElementsAre(u"first"));
  EXPECT_FALSE(atEnd_);
}

TEST_F(InputUnicodeStream, ItKnowsTheSizeOfItsFile) {
  EXPECT_EQ(OroInputUnicodeStream(written("12345")).size(), 5);
  EXPECT_EQ(OroInputUnicodeStream(written("")).size(), 0);
}

TEST_F(InputUnicodeStream, WithoutAFileThereIsNothingToRead) {
  OroInputUnicodeStream none;
  OroInputUnicodeStream missing(base("missing.txt"));
  OroInputUnicodeStream folder(languages());
  for (OroInputUnicodeStream* stream : {&none, &missing, &folder}) {
    EXPECT_FALSE(stream->isOpen());
    EXPECT_FALSE(stream->atEnd());
    EXPECT_EQ(stream->size(), 0);
    OroString line("before");
    EXPECT_FALSE(stream->readLine(line, OroString("\n")));
    EXPECT_TRUE(line.isEmpty());
  }
}

TEST_F(InputUnicodeStream, AfterTheEndItIsNotOpenAnyMore) {
  OroInputUnicodeStream file(written("a"));
  EXPECT_TRUE(file.isOpen());
  OroString line;
  EXPECT_TRUE(file.readLine(line, OroString("\n")));
  EXPECT_FALSE(file.isOpen());
  EXPECT_FALSE(file.readLine(line, OroString("\n")));
}

TEST_F(InputUnicodeStream, TheLanguageTellsHowFilesAreKept) {
  oroSetModuleTranslator(new Translator);
  EXPECT_TRUE(OroInputUnicodeStream().isNarrow());
  publishXml();
  writeLanguage("velmora.xx.resx",
                "<root><data name='kel:unicode'><value>yes</value></data></root>");
  const IPtr<Translator> translator = new Translator;
  const IPtr<tests::TestLanguage> language = new tests::TestLanguage("xx");
  ASSERT_TRUE(translator->setLanguage(language.get()));
  testaccess::resetModuleTranslator();
  oroSetModuleTranslator(translator.get());
  EXPECT_FALSE(OroInputUnicodeStream().isNarrow());
  EXPECT_FALSE(OroInputUnicodeStream(written("ab")).isNarrow()) << "until the front was read";
  OroUnicodeStream out(base("out.txt"));
  out.write(OroString("ab"));
  OroInputUnicodeStream in(base("out.txt"));
  OroString line;
  EXPECT_TRUE(in.readLine(line, OroString("\n")));
  EXPECT_EQ(tests::narrow(line), "ab");
}

TEST_F(InputUnicodeStream, AMarkWinsOverTheLanguage) {
  ASSERT_TRUE(OroInputUnicodeStream().isNarrow());
  EXPECT_THAT(linesOf(wideBytes(u"\u4E2D")), ElementsAre(u"\u4E2D"));
}

}  // namespace

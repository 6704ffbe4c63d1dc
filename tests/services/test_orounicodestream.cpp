#include "services/orounicodestream.h"

#include <gtest/gtest.h>

#include <string>

#include "interfaces/IOroTranslator.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/orotrivialtranslator.h"
#include "orobasictypes/testaccess.h"
#include "services/oroinputunicodestream.h"
#include "tests/services/servicetest.h"

namespace {

// Every text is the one that it was made with.
class OneText : public OroTrivialTranslator<> {
 public:
  explicit OneText(const char* text) : text_(text) {}
  bool lookup(const char* key, OroString& out) override {
    asked += key;
    out = OroString(text_);
    return true;
  }
  std::string asked;

 private:
  const char* text_;
};

class UnicodeStream : public tests::ServiceTest {
 protected:
  void inLanguage(const char* mark) {
    testaccess::resetModuleTranslator();
    oroSetModuleTranslator(new OneText(mark));
  }
  // What a file holds after the texts were written to it, one by one.
  std::string fileOf(std::initializer_list<const char16_t*> texts) {
    OroUnicodeStream file(base("out.txt"));
    for (const char16_t* const text : texts) file.write(OroString(text));
    EXPECT_TRUE(file.isOpen());
    return folder_.read("out.txt");
  }
};

TEST_F(UnicodeStream, AWideFileHasTheMarkOnceAndWholeUnits) {
  inLanguage("yes");
  EXPECT_EQ(fileOf({u"a\u4E2D", u"b"}), std::string("\xFF\xFE"
                                                    "a\0\x2D\x4E"
                                                    "b\0",
                                                    8));
}

TEST_F(UnicodeStream, ANarrowFileHasNoMarkAndLowBytesAlone) {
  inLanguage("no");
  EXPECT_EQ(fileOf({u"a\u4E2D", u"b"}),
            "a\x2D"
            "b");
}

TEST_F(UnicodeStream, OnlyTheWholeWordMakesAFileWide) {
  const auto isNarrow = [this](const char* mark) {
    inLanguage(mark);
    return oroLanguageIsNarrow() && OroUnicodeStream().isNarrow();
  };
  EXPECT_TRUE(isNarrow("Yes"));
  EXPECT_TRUE(isNarrow("yes "));
  EXPECT_TRUE(isNarrow(""));
  EXPECT_FALSE(isNarrow("yes"));
  testaccess::resetModuleTranslator();
  EXPECT_TRUE(oroLanguageIsNarrow()) << "without a translation the text is its key";
}

TEST_F(UnicodeStream, TheKeyOfTheMarkIsAsked) {
  const IPtr<OneText> translator = new OneText("no");
  testaccess::resetModuleTranslator();
  oroSetModuleTranslator(translator.get());
  OroUnicodeStream file(base("out.txt"));
  EXPECT_EQ(translator->asked, "kel:unicode");
}

TEST_F(UnicodeStream, TheMarkIsWrittenWithTheFirstText) {
  inLanguage("yes");
  {
    const OroUnicodeStream untouched(base("out.txt"));
    EXPECT_TRUE(untouched.isOpen());
  }
  EXPECT_EQ(folder_.read("out.txt"), "");
  EXPECT_EQ(fileOf({u""}), "\xFF\xFE");
}

TEST_F(UnicodeStream, ALineEndsInCarriageReturnAndLineFeedInBothForms) {
  inLanguage("no");
  { OroUnicodeStream(base("narrow.txt")).writeLine(OroString("a\nb")); }
  EXPECT_EQ(folder_.read("narrow.txt"), "a\nb\r\n");
  inLanguage("yes");
  { OroUnicodeStream(base("wide.txt")).writeLine(OroString("a")); }
  EXPECT_EQ(folder_.read("wide.txt"), std::string("\xFF\xFE"
                                                  "a\0\r\0\n\0",
                                                  8));
}

TEST_F(UnicodeStream, AFileIsReplaced) {
  folder_.write("out.txt", "something longer");
  inLanguage("no");
  EXPECT_EQ(fileOf({u"a"}), "a");
}

TEST_F(UnicodeStream, WithoutAFileTextsGoNowhere) {
  OroUnicodeStream none;
  OroUnicodeStream missing(base("no folder").joined("out.txt"));
  for (OroUnicodeStream* stream : {&none, &missing}) {
    EXPECT_FALSE(stream->isOpen());
    stream->writeLine(OroString("a"));
    EXPECT_FALSE(stream->isOpen());
  }
}

TEST_F(UnicodeStream, WhatIsWrittenIsReadAgain) {
  for (const char* mark : {"yes", "no"}) {
    inLanguage(mark);
    {
      OroUnicodeStream out(base("out.txt"));
      for (int i = 0; i < 300; ++i) out.writeLine(OroString(i));
      out.write(OroString("end"));
    }
    OroInputUnicodeStream in(base("out.txt"));
    OroString line;
    for (int i = 0; i < 300; ++i) {
      ASSERT_TRUE(in.readLine(line, OroString("\n")));
      ASSERT_EQ(tests::narrow(line), std::to_string(i));
    }
    EXPECT_TRUE(in.readLine(line, OroString("\n")));
    EXPECT_EQ(tests::narrow(line), "end");
    EXPECT_FALSE(in.readLine(line, OroString("\n")));
  }
}

}  // namespace

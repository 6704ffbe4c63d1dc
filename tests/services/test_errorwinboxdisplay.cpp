#include "services/errorwinboxdisplay.h"

#include <gtest/gtest.h>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/orotranslate.h"
#include "platform/process.h"
#include "tests/services/brackettranslator.h"
#include "tests/services/servicetest.h"

namespace {

class ErrorWinBoxDisplayTest : public tests::ServiceTest {
 protected:
  void show(bool errorsOnly, int32_t severity, const char* detail = "") {
    const IPtr<ErrorWinBoxDisplay> display = new ErrorWinBoxDisplay(errorsOnly);
    display->onError(OroString("no such file"), &severity, KelCString(detail));
  }
};

TEST_F(ErrorWinBoxDisplayTest, AnErrorIsShownWithItsLabelAndTheErrorIcon) {
  show(true, 1);
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_EQ(boxes()[0].text, u"ERROR:\nno such file");
  EXPECT_EQ(boxes()[0].style, 16u);
}

TEST_F(ErrorWinBoxDisplayTest, TheDetailStandsOnALineOfItsOwn) {
  show(true, 1, "access denied");
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_EQ(boxes()[0].text, u"ERROR:\nno such file\naccess denied");
}

TEST_F(ErrorWinBoxDisplayTest, BytesOfTheDetailAreWidenedWithTheirSign) {
  show(true, 1, "caf\xE9");
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_EQ(boxes()[0].text, u"ERROR:\nno such file\ncaf\uFFE9");
}

TEST_F(ErrorWinBoxDisplayTest, TheTitleIsTheFileNameOfTheExecutable) {
  show(true, 1);
  ASSERT_EQ(boxes().size(), 1u);
  const std::u16string path = platform::executablePath(1024);
  const size_t separator = path.find_last_of(u"\\/");
  EXPECT_EQ(boxes()[0].title, path.substr(separator + 1));
  EXPECT_EQ(boxes()[0].title.substr(0, 13), u"test_services");
}

TEST_F(ErrorWinBoxDisplayTest, OnlyErrorsAreShownWhenSoMade) {
  for (const int32_t severity : {0, 2, 3, -1}) show(true, severity);
  EXPECT_TRUE(boxes().empty());
}

TEST_F(ErrorWinBoxDisplayTest, OtherSeveritiesHaveTheWarningIcon) {
  show(false, 0);
  show(false, 2);
  show(false, -1);
  show(false, 1);
  ASSERT_EQ(boxes().size(), 4u);
  EXPECT_EQ(boxes()[0].text, u"WARNING:\nno such file");
  EXPECT_EQ(boxes()[0].style, 48u);
  EXPECT_EQ(boxes()[1].text, u"Unknown:\nno such file");
  EXPECT_EQ(boxes()[1].style, 48u);
  EXPECT_EQ(boxes()[2].text, u"Unknown:\nno such file");
  EXPECT_EQ(boxes()[2].style, 48u);
  EXPECT_EQ(boxes()[3].style, 16u);
}

TEST_F(ErrorWinBoxDisplayTest, LabelAndFormAreTranslated) {
  oroSetModuleTranslator(new tests::BracketTranslator);
  show(true, 1, "denied");
  show(true, 1);
  ASSERT_EQ(boxes().size(), 2u);
  EXPECT_EQ(boxes()[0].text, u"[[ERROR]:\nno such file\ndenied]");
  EXPECT_EQ(boxes()[1].text, u"[[ERROR]:\nno such file]");
}

TEST_F(ErrorWinBoxDisplayTest, PlaceholdersInTheReportStay) {
  const IPtr<ErrorWinBoxDisplay> display = new ErrorWinBoxDisplay(true);
  const int32_t severity = 1;
  display->onError(OroString("100% of %1 and %2"), &severity, KelCString("%3"));
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_EQ(boxes()[0].text, u"ERROR:\n100% of %1 and %2\n%3");
}

TEST_F(ErrorWinBoxDisplayTest, ItIsFoundByItsClassName) {
  const IPtr<ErrorWinBoxDisplay> display = new ErrorWinBoxDisplay(true);
  EXPECT_EQ(oroQueryClass<ErrorWinBoxDisplay>(display.get()), display.get());
  EXPECT_EQ(oroQuery<IOroErrorListener>(display.get()), display.get());
  EXPECT_EQ(oroQuery<IOroErrorService>(display.get()), nullptr);
}

}  // namespace

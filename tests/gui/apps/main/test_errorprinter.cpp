#include "gui/apps/main/errorprinter.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/componentload.h"
#include "gui/apps/main/loadjournal.h"
#include "gui/apps/main/oroappmain.h"
#include "interfaces/IOroObjBroker.h"
#include "tests/blackbox/childprocess.h"
#include "tests/gui/apps/main/appworld.h"

namespace {

class ErrorPrinterTest : public testing::Test {
 protected:
  ErrorPrinterTest() {
    application_.initEssential();
    errors_ = SPtr<IOroErrorService>();
    errors_->removeWinBoxDisplay();
  }

  // What a report leaves on standard error.
  std::string printed(const OroString& text, int32_t severity, const char* detail = "") {
    testing::internal::CaptureStderr();
    errors_->report(text, severity, KelCString(detail));
    return tests::plainLines(testing::internal::GetCapturedStderr());
  }
  bool flag() { return errors_->getFlag(KelCString::borrow("errorsOnStandardError")); }

  tests::AppWorld world_;
  OroAppMain application_;
  IPtr<IOroErrorService> errors_;
};

TEST_F(ErrorPrinterTest, PrintsErrorsAndNoWarnings) {
  const ErrorPrinter::Attached printing;
  EXPECT_EQ(printed(OroString(u"Cannot open the file \u00E4.xyz"), 1),
            "Cannot open the file \xC3\xA4.xyz\n");
  EXPECT_EQ(printed(OroString(u"a loss"), 0), "");
  EXPECT_EQ(printed(OroString(u"odd"), 7), "");
}

TEST_F(ErrorPrinterTest, PrintsContextAndDetail) {
  const ErrorPrinter::Attached printing;
  errors_->pushContext(OroString(u"while saving"));
  EXPECT_EQ(printed(OroString(u"no"), 2), "no\nwhile saving\n");
  errors_->popContext();
  EXPECT_EQ(printed(OroString(u"no"), 1, "why"), "no\nwhy\n");
}

TEST_F(ErrorPrinterTest, LetsNoControlCharacterThroughButLineEndsAndTabs) {
  const ErrorPrinter::Attached printing;
  EXPECT_EQ(printed(OroString(u"a\x1B[31mb\x7F\u009B\n\tc"), 1), "a?[31mb??\n\tc\n");
}

TEST_F(ErrorPrinterTest, PrintsTheLoadersWordsAboutALibraryOnce) {
  const IPtr<LoadJournal> journal(new LoadJournal);
  const LoadJournal::Listening listening(*journal);
  oroBroker()->registerService(KelCString::borrow(IOroLoadJournal::interfaceName()), journal.get());
  const ErrorPrinter::Attached printing;
  const OroString words(u"Fatal error: Could not load this DLL: \\lib\\odd.so; error code was: 2");
  EXPECT_NE(printed(words, 1), "");
  ComponentLoad load;
  load.path = OroString(u"\\lib\\odd");
  load.step = kOroLoadFile;
  tellComponentLoad(load);
  EXPECT_EQ(printed(words, 1), "");
  EXPECT_NE(printed(OroString(u"Fatal error: Could not load this DLL: \\lib\\odd2.so; error"), 1),
            "");
}

TEST_F(ErrorPrinterTest, PrintsWhileItIsAttachedAlone) {
  EXPECT_FALSE(flag());
  {
    const ErrorPrinter::Attached printing;
    EXPECT_TRUE(flag());
  }
  EXPECT_FALSE(flag());
  EXPECT_EQ(printed(OroString(u"no"), 1), "");
}

TEST(ErrorPrinterAlone, DoesNothingWithoutAnErrorService) { const ErrorPrinter::Attached printing; }

}  // namespace

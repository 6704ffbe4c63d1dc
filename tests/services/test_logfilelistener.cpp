#include "services/logfilelistener.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/services/servicetest.h"

namespace {

class LogfileListenerTest : public tests::ServiceTest {
 protected:
  void log(const OroString& text, int32_t severity = 1, const char* detail = "") {
    listener_->onError(text, &severity, KelCString(detail));
  }
  // The file's text with the system's line ends as line feeds.
  std::string logged(const char* file) const {
    std::string text = folder_.read(file);
    std::erase(text, '\r');
    return text;
  }

  IPtr<LogfileListener> listener_ = new LogfileListener;
};

TEST_F(LogfileListenerTest, EachReportIsALineOfItsTextAlone) {
  listener_->setLogFile(base("a.log"));
  log(OroString("first"), 1, "the detail");
  log(OroString("second"), 0);
  EXPECT_EQ(logged("a.log"), "first\nsecond\n");
}

TEST_F(LogfileListenerTest, ALineIsInTheFileAsSoonAsItIsReported) {
  listener_->setLogFile(base("a.log"));
  EXPECT_EQ(logged("a.log"), "");
  log(OroString("first"));
  EXPECT_EQ(logged("a.log"), "first\n");
}

TEST_F(LogfileListenerTest, AReportOfSeveralLinesStaysSeveralLines) {
  listener_->setLogFile(base("a.log"));
  log(OroString("one\ntwo\nthree"));
  log(OroString("four"));
  EXPECT_EQ(logged("a.log"), "one\ntwo\nthree\nfour\n");
}

TEST_F(LogfileListenerTest, CharactersBeyondAsciiAreLost) {
  listener_->setLogFile(base("a.log"));
  log(OroString(u"caf\u00E9 \u20AC100"));
  EXPECT_EQ(logged("a.log"), "caf 100\n");
}

TEST_F(LogfileListenerTest, ATextIsNoFormat) {
  listener_->setLogFile(base("a.log"));
  log(OroString("%s %n %1"));
  EXPECT_EQ(logged("a.log"), "%s %n %1\n");
}

TEST_F(LogfileListenerTest, AnEmptyReportIsAnEmptyLine) {
  listener_->setLogFile(base("a.log"));
  log(OroString());
  EXPECT_EQ(logged("a.log"), "\n");
}

TEST_F(LogfileListenerTest, AnOldLogIsReplaced) {
  folder_.write("a.log", "of yesterday\n");
  listener_->setLogFile(base("a.log"));
  log(OroString("today"));
  EXPECT_EQ(logged("a.log"), "today\n");
}

TEST_F(LogfileListenerTest, TheFirstFileIsKept) {
  listener_->setLogFile(base("a.log"));
  listener_->setLogFile(base("b.log"));
  log(OroString("text"));
  EXPECT_EQ(logged("a.log"), "text\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.file("b.log")));
}

TEST_F(LogfileListenerTest, AFileThatCannotBeOpenedIsSilentAndThereIsNoSecondTry) {
  listener_->setLogFile(base("missing").joined("a.log"));
  log(OroString("lost"));
  listener_->setLogFile(base("b.log"));
  log(OroString("lost too"));
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(LogfileListenerTest, WithoutAFileNothingHappens) {
  log(OroString("lost"));
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(LogfileListenerTest, ItAnswersForBothListeners) {
  EXPECT_EQ(oroQuery<IOroErrorListener>(listener_.get()), listener_.get());
  EXPECT_EQ(oroQuery<IOroLogfileListener>(listener_.get()), listener_.get());
  IOroLogfileListener* const asLog = oroQuery<IOroLogfileListener>(listener_.get());
  asLog->setLogFile(base("a.log"));
  const int32_t severity = 0;
  asLog->onError(OroString("through the other door"), &severity, KelCString());
  EXPECT_EQ(logged("a.log"), "through the other door\n");
}

}  // namespace

#include "services/logfilelistener.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "interfaces/IOroStrSupport.h"
#include "orobasictypes/testaccess.h"
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

TEST_F(LogfileListenerTest, LinesEndAsThoseOfTheSystemsTextFilesDo) {
  std::ofstream(folder_.file("text")) << "first\nsecond\n";
  listener_->setLogFile(base("a.log"));
  log(OroString("first\nsecond"));
  EXPECT_EQ(folder_.read("a.log"), folder_.read("text"));
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

// Narrow text as Latin-1; the rest as without the service.
class LatinSupport : public IOroStrSupport {
 public:
  static constexpr const char* className() { return "LatinSupport"; }
  using Offers = OroOffers<LatinSupport, IOroStrSupport>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t unusedSlot1() override { return 0; }
  void toNarrow(KelCString& out, const OroString& text) override {
    out.assign(text.wideText(), text.length());
  }
  int32_t compare(const OroString& left, const OroString& right) override {
    return left.compareOrdinal(right);
  }
  bool isSpace(char16_t unit) override { return unit == u' '; }
  bool isDigit(char16_t unit) override { return unit >= u'0' && unit <= u'9'; }
  bool contains(const OroString& text, const OroString& part, bool) override {
    return text.find(part) >= 0;
  }
  void stripSpace(OroString&) override {}
  void normalize(OroString&) override {}
  void toLower(OroString&) override {}
  void toUpper(OroString&) override {}
};

TEST_F(LogfileListenerTest, CharactersBeyondAsciiStayAsTheTextServiceGivesThem) {
  testaccess::resetStrSupport();
  publish("IOroStrSupport", new LatinSupport);
  listener_->setLogFile(base("a.log"));
  log(OroString(u"caf\u00E9"));
  EXPECT_EQ(logged("a.log"), "caf\xE9\n");
  testaccess::resetStrSupport();
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

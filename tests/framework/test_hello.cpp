// The component that docs/components.md builds: what the page shows is what is compiled, and what
// the page says of it is true.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "examples/hello/igreeter.h"
#include "framework/testaccess.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/sptr.h"
#include "tests/framework/fakes.h"
#include "tests/framework/managerfixture.h"
#include "tests/testpaths.h"

namespace {

std::string fileText(const std::filesystem::path& path) {
  std::ifstream in(tests::sourceDir() / path, std::ios::binary);
  EXPECT_TRUE(in) << path;
  std::string text{std::istreambuf_iterator<char>(in), {}};
  std::erase(text, '\r');
  return text;
}

std::string page() { return fileText("docs/components.md"); }

// The block that the page shows under the name of a file.
std::string shown(const std::string& file) {
  const std::string text = page();
  const size_t marker = text.find("<!-- " + file + " -->\n```");
  if (marker == text.npos) return "(not shown)";
  const size_t begin = text.find('\n', text.find("```", marker)) + 1;
  return text.substr(begin, text.find("```", begin) - begin);
}

// The id between braces that follows `lead` on the page.
GUID idAfter(const std::string& lead) {
  const std::string text = page();
  const size_t begin = text.find(lead + " {") + lead.size() + 1;
  GUID id;
  EXPECT_TRUE(oroParseGuid(text.substr(begin, text.find('}', begin) + 1 - begin), id)) << lead;
  return id;
}

// What a message begins with whose row on the page goes on with `rest`.
std::string messageLead(const std::string& rest) {
  const std::string text = page();
  const size_t row = text.rfind("\n| \"", text.find(rest)) + 4;
  return text.substr(row, text.find_first_of(".[", row) - row);
}

constexpr GUID kSecondComponent = testids::makeId(0x5EC00001);
constexpr GUID kSecondClass = testids::makeId(0x5EC00002);

class Hello : public tests::ManagerFixture {
 protected:
  // What the init server does with the description on the page.
  Hello() {
    const GUID componentId = idAfter("component hello");
    const GUID classId = idAfter("class KelGreeter");
    known(componentId, "hello");
    broker_->registerClass(classId, componentId, {}, KelCString("KelGreeter"));
    broker_->registerInterface(KelCString("IGreeter"), classId);
  }
  ~Hello() override { keepForGood(); }  // it publishes an object
};

TEST(ComponentsPage, ShowsTheFilesThatAreCompiled) {
  for (const char* const file :
       {"examples/hello/igreeter.h", "examples/hello/hello.cpp", "examples/CMakeLists.txt"}) {
    EXPECT_EQ(shown(file), fileText(file)) << file;
  }
}

TEST_F(Hello, FirstRequestLoadsTheLibraryAndLaterOnesFindTheObject) {
  EXPECT_TRUE(broker_->hasService(KelCString("IGreeter")));
  const SPtr<IGreeter> greeter;
  ASSERT_TRUE(greeter) << (errors_.texts.empty() ? "" : errors_.texts[0]);
  const int32_t before = greeter->greeted();
  EXPECT_TRUE(greeter->greet(OroString("World")) == "Hello, World!");
  const SPtr<IGreeter> again;
  EXPECT_EQ(again.get(), greeter.get());
  EXPECT_EQ(again->greeted(), before + 1);
  EXPECT_STREQ(greeter->getClassName(), "KelGreeter");
}

TEST_F(Hello, MessagesOfThePageAreTheOnesInUse) {
  testaccess::resetDuplicateCount();
  const GUID classId = idAfter("class KelGreeter");
  testing::internal::CaptureStderr();
  broker_->registerClass(classId, kSecondComponent, {}, KelCString("KelGreeter"));
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed.rfind(messageLead("on standard error"), 0), 0u) << printed;

  tests::FakeObserver observer;
  tests::FakeObserver last;
  broker_->attach(&observer);
  broker_->attach(&last);
  void* found = nullptr;
  for (const char* const library : {"absent", "fw_noentry", "fw_version99"}) {
    known(kSecondComponent, library);
    broker_->registerClass(kSecondClass, kSecondComponent, {}, KelCString("KelOther"));
    EXPECT_EQ(broker_->createObject(kSecondClass, KelCString("IGreeter"), &found), 0);
    ASSERT_FALSE(observer.texts.empty());
    const std::string lead = messageLead("| The library did not load");
    EXPECT_EQ(observer.texts.back().rfind(lead, 0), 0u) << observer.texts.back();
    broker_->unregisterClass(kSecondClass);
  }
}

TEST_F(Hello, SilenceValueOfThePageIsTheOneInUse) {
  const std::string key = "COMPONENT/absent/OpenFailsSilently";
  EXPECT_NE(page().find("`COMPONENT/hello/OpenFailsSilently`"), std::string::npos);
  setRegistry(key, "1");
  known(testids::kUnknown, "absent");
  EXPECT_EQ(component(testids::kUnknown), nullptr);
  EXPECT_TRUE(errors_.texts.empty());
}

}  // namespace

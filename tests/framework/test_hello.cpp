// The component that docs/components.md builds: what the page shows is what is compiled, and what
// the page says of it is true.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "examples/hello/igreeter.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/sptr.h"
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

TEST_F(Hello, SilenceValueOfThePageIsTheOneInUse) {
  const std::string key = "COMPONENT/absent/OpenFailsSilently";
  EXPECT_NE(page().find("`COMPONENT/hello/OpenFailsSilently`"), std::string::npos);
  setRegistry(key, "1");
  known(testids::kUnknown, "absent");
  EXPECT_EQ(component(testids::kUnknown), nullptr);
  EXPECT_TRUE(errors_.texts.empty());
}

}  // namespace

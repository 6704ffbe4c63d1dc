#include "framework/orodynamiclibrary.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/sharedlibrary.h"
#include "tests/framework/managerfixture.h"
#include "tests/tempfolder.h"

namespace {

class DynamicLibrary : public tests::ManagerFixture {
 protected:
  ~DynamicLibrary() override {
    library_.unload();
    platform::setLibraryDirectory(u"");
  }
  bool load(const OroString& path, const char* extension = "") {
    return library_.load(path, OroString(extension));
  }

  OroDynamicLibrary library_;
};

TEST_F(DynamicLibrary, LibraryWithoutExtensionGetsThePlatforms) {
  EXPECT_TRUE(load(tests::testLibrary("fw_recorder")));
  EXPECT_NE(library_.handle, nullptr);
  EXPECT_NE(library_.symbol("EntryPoint"), nullptr);
  EXPECT_EQ(library_.symbol("NoSuchThing"), nullptr);
  EXPECT_TRUE(errors_.texts.empty());
  library_.unload();
  EXPECT_EQ(library_.handle, nullptr);
  EXPECT_EQ(library_.symbol("EntryPoint"), nullptr);
}

TEST_F(DynamicLibrary, GivenExtensionIsAppendedAsItIs) {
  const std::string suffix = OroString(platform::librarySuffix()).toNarrow();
  EXPECT_TRUE(load(tests::testLibrary("fw_recorder"), suffix.c_str()));
  library_.unload();
  EXPECT_FALSE(load(tests::testLibrary("fw_recorder"), ".other"));
}

TEST_F(DynamicLibrary, FailureIsReportedAsAnErrorWithTheNameAndTheSystemsWords) {
  const OroString path = tests::testLibrary("fw_missing");
  EXPECT_FALSE(load(path));
  ASSERT_EQ(errors_.texts.size(), 1u);
  const std::string lead = std::string("Fatal error: Could not load this DLL: ") + path.toNarrow() +
                           OroString(platform::librarySuffix()).toNarrow() + "; error code was: 0x";
  EXPECT_EQ(errors_.texts[0].substr(0, lead.size()), lead);
  const size_t colon = errors_.texts[0].find(':', lead.size());
  ASSERT_NE(colon, std::string::npos);
  EXPECT_GT(errors_.texts[0].size(), colon + 1);  // words behind the number
  EXPECT_EQ(errors_.severities[0], 1);
  EXPECT_EQ(errors_.details[0], "");
}

TEST_F(DynamicLibrary, SilentFailureIsNotReported) {
  library_.silent = true;
  EXPECT_FALSE(load(tests::testLibrary("fw_missing")));
  EXPECT_TRUE(errors_.texts.empty());
}

TEST_F(DynamicLibrary, FileThatIsNoLibraryIsAFailure) {
  const tests::TempFolder folder;
  const OroString path = tests::wideTextOf(folder.write("text.so", "not a library"));
  EXPECT_FALSE(load(path.left(path.length() - 3), ".so"));
  EXPECT_EQ(errors_.texts.size(), 1u);
}

TEST_F(DynamicLibrary, LibraryIsFoundByItsBareNameWhenItsFolderIsWrong) {
  platform::setLibraryDirectory(tests::wideTextOf(tests::testLibsDir()).wideText());
  EXPECT_TRUE(load(OroString("no\\such\\folder\\fw_recorder")));
}

TEST_F(DynamicLibrary, SlashIsNoSeparatorForTheBareName) {
  platform::setLibraryDirectory(tests::wideTextOf(tests::testLibsDir()).wideText());
  EXPECT_FALSE(load(OroString("no/such/folder/fw_recorder")));
  EXPECT_TRUE(load(OroString("fw_recorder")));  // a bare name from the start
}

TEST_F(DynamicLibrary, EmptyPathIsAFailure) {
  EXPECT_FALSE(load(OroString()));
  EXPECT_FALSE(load(OroString("\\")));
  EXPECT_EQ(errors_.texts.size(), 2u);
}

TEST_F(DynamicLibrary, PatternAndSuffixAreThePlatforms) {
  const std::string suffix = OroString(platform::librarySuffix()).toNarrow();
  EXPECT_EQ(std::string(OroDynamicLibrary::pattern().toNarrow()), "*" + suffix);
  const OroString name(("points" + suffix).c_str());
  EXPECT_TRUE(OroDynamicLibrary::withoutSuffix(name) == "points");
  EXPECT_TRUE(OroDynamicLibrary::withoutSuffix(OroString("a")).isEmpty());
}

}  // namespace

// What the Windows side promises beyond the shared tests.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/knownfolders.h"
#include "platform/process.h"
#include "platform/sharedlibrary.h"
#include "platform/text.h"
#include "platform/win32/win32gate.h"
#include "tests/platform/childprocess.h"
#include "tests/testpaths.h"

namespace {

using platform::KnownFolder;

TEST(WindowsFolders, AllAreThere) {
  for (const auto folder :
       {KnownFolder::documents, KnownFolder::appData, KnownFolder::commonAppData,
        KnownFolder::profile, KnownFolder::commonDocuments}) {
    const std::u16string path = platform::knownFolderPath(folder);
    ASSERT_GT(path.size(), 3u) << static_cast<int>(folder);
    EXPECT_EQ(path.substr(1, 2), u":\\");
  }
}

TEST(WindowsVersionBlock, HasRoomAndHoldsTheVersion) {
  std::vector<std::uint8_t> block;
  ASSERT_TRUE(platform::versionBlock(u"C:\\windows\\system32\\kernel32.dll", block));
  EXPECT_GE(block.size(), 4096u);
  const std::u16string key = u"ProductVersion";
  const std::string bytes(block.begin(), block.end());
  const std::string wanted(reinterpret_cast<const char*>(key.c_str()), (key.size() + 1) * 2);
  EXPECT_NE(bytes.find(wanted), bytes.npos);
}

TEST(WindowsProcess, HasAnInstance) {
  EXPECT_EQ(platform::systemInstanceHandle(), GetModuleHandleW(nullptr));
}

TEST(WindowsProcess, RuntimeErrorsGoToABox) {
  const int before = _set_error_mode(_REPORT_ERRMODE);
  platform::reportRuntimeErrorsInBox();
  EXPECT_EQ(_set_error_mode(_REPORT_ERRMODE), 2);
  _set_error_mode(before);
}

// A letter and its accent are one character of the code page.
TEST(WindowsArguments, AreComposed) {
  const auto result =
      tests::runChild(tests::testLibsDir() / "platformecho", {u"e\u0301t", u"o\u0308o\u0308"});
  const auto composed = [](std::u16string_view text) {
    std::string hex;
    char digits[3];
    for (const char byte : platform::toCodePage(text)) {
      std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
      hex += digits;
    }
    return hex + ";";
  };
  EXPECT_EQ(result.output, composed(u"\u00E9t") + composed(u"\u00F6\u00F6"));
}

TEST(WindowsLibraries, EndInDll) { EXPECT_EQ(std::u16string(platform::librarySuffix()), u".dll"); }

TEST(WindowsLibraries, MissingOneHasTheNumberOfTheSystem) {
  std::string error;
  const platform::LibraryErrorMode silent(true);
  EXPECT_EQ(platform::openLibrary(u"C:\\no\\such.dll", platform::LibrarySearch::plain, &error),
            nullptr);
  EXPECT_TRUE(error.starts_with("0x7e:") || error.starts_with("0x3:")) << error;
}

TEST(WindowsLibraries, ErrorModeIsSetAndPutBack) {
  const UINT before = SetErrorMode(0);
  SetErrorMode(2);
  {
    const platform::LibraryErrorMode loud(false);
    EXPECT_EQ(GetErrorMode(), 1u);
  }
  {
    const platform::LibraryErrorMode silent(true);
    EXPECT_EQ(GetErrorMode(), 0x8003u);
  }
  EXPECT_EQ(GetErrorMode(), 2u);
  SetErrorMode(before);
}

}  // namespace
